// Code page 437, the characters of the game's texts and of the font, against Unicode.
#pragma once

#include <string>
#include <string_view>

// The character of code page 437, 32 to 126 or 128 to 255, for a Unicode character; 0 when the page has none there. The
// pictures that the page has in place of control characters cannot be typed: their codes are keys.
unsigned char code_page_437(char32_t character);

// The same text in UTF-8. Control characters and the code 127, which no one reads as text, become blanks.
std::string utf8_from_code_page(std::string_view text);

// A file name, or a text with one in it, as the font shows it: one byte for each character of UTF-8, "?" for those that
// the page does not have. A byte that is no part of UTF-8 is taken for one of the page's, as names from DOS disks are.
std::string code_page_from_utf8(std::string_view text);
