#include "base/utf8.h"

namespace {

// The bytes that the first one of a character announces; 0 when none begins with it.
std::size_t announced_length(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    if (first >= 0xF0 && first < 0xF5) return 4;
    return 0;
}

std::size_t place_of(std::string_view text, std::size_t character) {
    std::size_t at = 0;
    for (; character > 0 && at < text.size(); --character)
        at += utf8_character_at(text, at).length;
    return at;
}

} // namespace

Utf8Character utf8_character_at(std::string_view text, std::size_t at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const std::size_t length = announced_length(first);
    if (length == 1) return {first, 1};
    if (length == 0 || length > text.size() - at) return {};
    char32_t code = first & (0xFFu >> (length + 1));
    for (const char following : text.substr(at + 1, length - 1)) {
        const auto byte = static_cast<unsigned char>(following);
        if ((byte & 0xC0) != 0x80) return {};
        code = code << 6 | (byte & 0x3F);
    }
    return {code, length};
}

std::size_t utf8_start_of(std::string_view text, std::size_t at) {
    if (at >= text.size()) return text.size();
    std::size_t start = 0;
    for (std::size_t next = 0; next <= at; next += utf8_character_at(text, next).length)
        start = next;
    return start;
}

std::size_t utf8_count(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += utf8_character_at(text, at).length)
        ++count;
    return count;
}

std::string_view utf8_characters(std::string_view text, std::size_t first, std::size_t count) {
    text.remove_prefix(place_of(text, first));
    return text.substr(0, place_of(text, count));
}
