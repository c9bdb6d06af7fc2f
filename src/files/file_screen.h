// The Files screen: a directory browser through which every car file is loaded and saved, and the file picker of the
// Dash manager.
#pragma once

#include "widgets/key_table.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace file_screen_mode {
constexpr std::uint8_t cars = 1;     // the Files screen
constexpr std::uint8_t pictures = 2; // the picker: names with extensions that no reader knows are its result
} // namespace file_screen_mode

// The names that the picker lists (file_list.h).
constexpr std::string_view picture_filter = ".tga.bmp.jpg.jpeg.png.gif.pcx.";

// Runs the screen until another one is picked, the program is to end (CURMENU = 255), or, as a picker, a name was
// chosen: then the result is "L:" (to load) or "S:" (to save) followed by the File field; otherwise it is empty.
std::string FILEHANDLING(std::uint8_t mode);
std::vector<KeyHelpTable> file_screen_keys();
