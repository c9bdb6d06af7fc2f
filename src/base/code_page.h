// Code page 437, the characters of the game's texts and of the font, against Unicode.
#pragma once

#include <string>
#include <string_view>

// The character of code page 437, 32 to 126 or 128 to 255, for a Unicode character; 0 when the page has none there. The
// pictures that the page has in place of control characters cannot be typed: their codes are keys.
unsigned char code_page_437(char32_t character);

// The same text in UTF-8. Control characters and the code 127, which no one reads as text, become blanks.
std::string utf8_from_code_page(std::string_view text);
