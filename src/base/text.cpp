#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace {
char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char to_upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
} // namespace

std::string lower_case(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), to_lower);
    return result;
}

std::string upper_case(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), to_upper);
    return result;
}

std::string_view without_leading_blanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

std::string_view without_trailing_blanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trimmed(std::string_view text) { return without_leading_blanks(without_trailing_blanks(text)); }

std::string extension_of(std::string_view file_name) {
    const std::size_t dot = file_name.rfind('.');
    return dot == std::string_view::npos ? std::string() : lower_case(file_name.substr(dot));
}

namespace {

// How many characters of the text make the next line.
std::size_t line_length(std::string_view text, std::size_t width) {
    if (text.size() <= width) return text.size();
    if (text[width] == ' ') return width;
    const std::size_t last = text.substr(0, width).find_last_of(" /");
    return last == std::string_view::npos || last + 1 < (width + 1) / 2 ? width : last + 1;
}

} // namespace

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    while (!text.empty() && width > 0) {
        const std::size_t length = line_length(text, width);
        lines.emplace_back(without_trailing_blanks(text.substr(0, length)));
        text.remove_prefix(length);
        if (text.starts_with(' ')) text.remove_prefix(1);
    }
    return lines;
}

bool next_line(std::string_view& rest, std::string_view& line) {
    if (rest.empty()) return false;
    const std::size_t end = rest.find('\n');
    line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return true;
}

long leading_integer(std::string_view text) {
    text = without_leading_blanks(text);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc::result_out_of_range) return value;
    return text.starts_with('-') ? std::numeric_limits<std::int32_t>::min() : std::numeric_limits<std::int32_t>::max();
}
