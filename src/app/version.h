// The program's name and version, as its window shows them.
#pragma once

#include <string>

inline const std::string program_title = "Karosmit 1.0.4";
