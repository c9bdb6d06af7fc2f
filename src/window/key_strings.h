// The keys as the screens compare them: one character, or character 255 and the scancode's character.
#pragma once

#include <string>
#include <string_view>

namespace key {
inline constexpr const char *escape = "\x1B", *enter = "\r", *backspace = "\b", *tab = "\t";
inline constexpr const char *home = "\xFFG", *up = "\xFFH", *page_up = "\xFFI", *left = "\xFFK", *right = "\xFFM",
                            *end = "\xFFO", *down = "\xFFP", *page_down = "\xFFQ", *insert = "\xFFR",
                            *delete_ = "\xFFS", *shift_tab = "\xFF\x0F", *f1 = "\xFF;", *f2 = "\xFF<",
                            *close_window = "\xFFk",
                            *dropped = "\xFF\xFE"; // no key: a file was dropped on the window
// Control and a letter, "A" .. "Z"; ctrl is the same for tables of constants.
inline std::string control(char letter) { return std::string(1, static_cast<char>(letter - 'A' + 1)); }
template <char letter>
inline constexpr char control_text[2] = {static_cast<char>(letter - 'A' + 1), 0};
template <char letter>
inline constexpr const char* ctrl = control_text<letter>;
// One character from " " to "~".
inline bool printable(std::string_view k) { return k.size() == 1 && k[0] >= ' ' && k[0] <= '~'; }
} // namespace key
