// A path from outside, dropped on the window or named in the command line, in the words of the Files screen.
#pragma once

#include <string>

struct DroppedPath {
    std::string folder; // to be entered
    std::string name{}; // to be loaded, as the File field has it; empty for a folder
};
// A parameter file named as a car's is ("carabcd.res") stands for the car, as its row in the list does. Any other name
// is that file, also one without an extension. What is no folder counts as a file.
DroppedPath dropped_path(const std::string& path);
