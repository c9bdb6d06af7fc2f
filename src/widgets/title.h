// The window's title: the program's name and version, and the name of the car that was loaded last.
#pragma once

#include <string>

// "Karosmit 1.0.4", and " - " with the name unless that is empty.
std::string title_for(const std::string& car_name);
// Gives the window the title for TITLENAME, if it has another one.
void show_title();
