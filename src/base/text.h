// Small words about text, ASCII only: bytes above 127 are taken as they are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

std::string lower_case(std::string_view text);
std::string upper_case(std::string_view text);
// Without blanks at the front, at the end, at both (blanks only, no tabs).
std::string_view without_leading_blanks(std::string_view text);
std::string_view without_trailing_blanks(std::string_view text);
std::string_view trimmed(std::string_view text);
// From the last "." on, lower-cased; empty when there is none.
std::string extension_of(std::string_view file_name);
// The text in lines of at most `width` characters: broken behind a blank (which goes) or a "/" where one stands in the
// second half of the line or later, else in the middle of a word. No line for an empty text.
std::vector<std::string> wrapped(std::string_view text, std::size_t width);
// Takes the next line off `rest`, without its line end ("\n" or "\r\n"). False when `rest` is used up.
bool next_line(std::string_view& rest, std::string_view& line);
// The whole number at the start of the text, 0 when there is none; leading blanks and a sign are taken. Kept in 32
// bits.
long leading_integer(std::string_view text);
