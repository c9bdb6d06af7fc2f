// The program's name and version, as the window's title shows them.
#pragma once

#include <string_view>

constexpr std::string_view program_title = "Karosmit 1.0.4";
