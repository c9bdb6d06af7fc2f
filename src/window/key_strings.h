// The keys as the screens compare them: one character, or character 255 and the scancode's character.
#pragma once

#include <string>

namespace key {
inline const std::string escape = "\x1B", enter = "\r", backspace = "\b", tab = "\t";
inline const std::string home = "\xFFG", up = "\xFFH", page_up = "\xFFI", left = "\xFFK", right = "\xFFM",
                         end = "\xFFO", down = "\xFFP", page_down = "\xFFQ", insert = "\xFFR", delete_ = "\xFFS",
                         shift_tab = "\xFF\x0F", close_window = "\xFFk";
// Control and a letter, "A" .. "Z".
inline std::string control(char letter) { return std::string(1, static_cast<char>(letter - 'A' + 1)); }
// One character from " " to "~".
inline bool printable(const std::string& k) { return k.size() == 1 && k[0] >= ' ' && k[0] <= '~'; }
} // namespace key
