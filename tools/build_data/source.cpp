#include "source.h"

#include "base/text.h"
#include "image/picture_file.h"

#include <charconv>
#include <fstream>

namespace {

template <typename Number, typename... Base>
Number parse(const SourceLine& line, const std::string& field, Base... base) {
    Number value{};
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value, base...);
    if (error != std::errc() || end != field.data() + field.size()) line.fail("\"" + field + "\" is no number");
    return value;
}

std::vector<std::string> fields_of(std::string_view text) {
    std::vector<std::string> fields;
    for (text = without_leading_blanks(text); !text.empty(); text = without_leading_blanks(text)) {
        fields.emplace_back(text.substr(0, text.find(' ')));
        text.remove_prefix(fields.back().size());
    }
    return fields;
}

} // namespace

void SourceLine::fail(const std::string& reason) const {
    throw SourceError(file.string() + ":" + std::to_string(number) + ": " + reason);
}

const std::string& SourceLine::field(std::size_t index) const {
    if (index >= fields.size()) fail("too few fields");
    return fields[index];
}

long SourceLine::integer(std::size_t index) const { return parse<long>(*this, field(index)); }

long SourceLine::integer_within(std::size_t index, long least, long most) const {
    const long value = integer(index);
    if (value < least || value > most)
        fail(field(index) + " is not within " + std::to_string(least) + " .. " + std::to_string(most));
    return value;
}

double SourceLine::real(std::size_t index) const { return parse<double>(*this, field(index)); }
unsigned long SourceLine::hexadecimal(std::size_t index) const { return parse<unsigned long>(*this, field(index), 16); }

long whole_number(const SourceLine& line, const std::string& text) { return parse<long>(line, text); }

std::vector<SourceLine> read_source_lines(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream) throw SourceError(file.string() + ": cannot be read");
    std::vector<SourceLine> lines;
    std::string text;
    for (int number = 1; std::getline(stream, text); ++number) {
        const std::string_view content = trimmed(text);
        if (content.empty() || content[0] == '#') continue;
        lines.push_back({file, number, std::string(content), fields_of(content)});
    }
    return lines;
}

ImageHandle read_png(const std::filesystem::path& file) {
    ImageHandle image = LoadRGBAFile(file);
    if (!image) throw SourceError(file.string() + ": " + picture_failure());
    return image;
}
