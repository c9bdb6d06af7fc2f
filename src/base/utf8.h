// UTF-8, the text of file names and of what is typed. A byte that belongs to no character stands for itself.
#pragma once

#include <cstddef>
#include <string_view>

// The character that begins at a place inside the text, and how many bytes it has; no character (0) for a byte that
// begins none.
struct Utf8Character {
    char32_t code = 0;
    std::size_t length = 1;
};
Utf8Character utf8_character_at(std::string_view text, std::size_t at);

// Where the character begins that the byte at this place belongs to; the end of the text for any place behind it.
std::size_t utf8_start_of(std::string_view text, std::size_t at);

std::size_t utf8_count(std::string_view text);
// `count` characters from the one numbered `first` on, 0 being the first of all, as far as they exist.
std::string_view utf8_characters(std::string_view text, std::size_t first, std::size_t count);
