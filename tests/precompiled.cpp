// Stands for the headers that all tests share, compiled once.
