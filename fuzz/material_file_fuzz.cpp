// Any bytes as the material table, the palette and the colour schemes: read as a second, literal reader reads them, and
// what was read is written and read as the same.
#include "expect.h"
#include "literal_reader.h"

#include "base/byte_reader.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"

#include <string>

namespace {
constexpr std::uint32_t as_it_was = 0xFF123456;

// The words of a table; those that the file does not hold whole stay as they were.
std::array<std::uint32_t, 256> words_of(std::span<const std::byte> file) {
    std::array<std::uint32_t, 256> words{};
    LiteralReader reader(file);
    for (std::uint32_t& word : words)
        if (!reader.number(4, word)) word = as_it_was;
    return words;
}

void check_materials(std::span<const std::byte> file) {
    std::array<MaterialColour, 256> materials{}, again{};
    materials.fill({as_it_was, as_it_was >> 24});
    decode_materials(file, materials);
    const auto words = words_of(file);
    for (std::size_t i = 0; i < words.size(); ++i) {
        expect(materials[i].colour == (words[i] | 0xFF000000), "the same colour");
        expect(materials[i].attribute == words[i] >> 24, "the same attribute");
    }
    const Bytes written = encode_materials(materials);
    decode_materials(written, again);
    expect(encode_materials(again) == written, "materials come back the same");
}

void check_palette(std::span<const std::byte> file) {
    std::array<std::uint32_t, 256> palette{}, again{};
    palette.fill(as_it_was);
    decode_palette(file, palette);
    expect(palette == words_of(file), "the same colours");
    decode_palette(encode_palette(palette), again);
    expect(palette == again, "the palette comes back the same");
}

ColourSchemes schemes_of(const std::string& text) {
    ColourSchemes schemes;
    for (const std::string& line : lines_of(text)) {
        std::string rest = bare(line.substr(0, line.find(';')));
        if (rest.empty() || schemes.size() == 32) continue;
        schemes.emplace_back();
        for (std::uint8_t& material : schemes.back()) {
            const std::size_t blank = std::min(rest.find(' '), rest.size());
            material = static_cast<std::uint8_t>(integer_in(rest.substr(0, blank)));
            rest = bare(rest.substr(blank));
        }
    }
    return schemes;
}

void check_schemes(const std::string& text) {
    const auto schemes = decode_colour_schemes(text);
    expect(schemes == schemes_of(text), "the same schemes");
    std::string written;
    for (const auto& scheme : schemes) {
        for (const std::uint8_t material : scheme)
            written += std::to_string(material) + " ";
        written += "; scheme\r\n";
    }
    expect(decode_colour_schemes(written) == schemes, "schemes come back the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = input_bytes(data, size);
    check_materials(file);
    check_palette(file);
    check_schemes(ByteReader(file).text(size));
    return 0;
}
