// The folder in which the program keeps what no person put there: unsaved work, files that a save replaced.
#pragma once

#include <string>

// $XDG_STATE_HOME/karosmit, or ~/.local/state/karosmit where that variable does not hold an absolute path; without "/"
// at its end. Empty without a home.
std::string state_folder();
// Makes the folder, and those that it lies in, readable by the owner alone. False, with the reason in the system's
// words, when it cannot be.
bool make_private_folder(const std::string& path, std::string& reason);
// A path as a person writes it: with "~" for the home.
std::string path_for_people(const std::string& path);
