// The program around a library that is linked with only what it may use; linking it is the proof, running it does
// nothing.
int main() { return 0; }
