#include "formats/material_file.h"

#include "base/byte_reader.h"
#include "base/config.h"
#include "base/file_io.h"
#include "base/text.h"

#include <algorithm>
#include <string>

namespace {
constexpr std::size_t materials_size = 256 * sizeof(std::uint32_t);
constexpr std::uint32_t opaque = 0xFF000000;
constexpr int attribute_shift = 24;
constexpr std::size_t first_base_material = 200;
constexpr std::array<std::uint32_t, 4> base_colours = {0xFF804000, 0xFF904800, 0xFFA05000, 0xFFB05800};

std::string_view without_comment(std::string_view line) { return trimmed(line.substr(0, line.find(';'))); }

// Four numbers separated by blanks, their low 8 bits each; what is missing or no number is 0.
std::array<std::uint8_t, 4> colour_scheme(std::string_view line) {
    std::array<std::uint8_t, 4> scheme{};
    for (std::uint8_t& material : scheme) {
        material = static_cast<std::uint8_t>(leading_integer(line) & 0xFF);
        line = without_leading_blanks(line.substr(std::min(line.find(' '), line.size())));
    }
    return scheme;
}

void keep_schemes(const ColourSchemes& schemes) {
    PJCOLS = 0;
    for (const auto& scheme : schemes)
        PJCOL[++PJCOLS] = scheme;
}
} // namespace

void decode_materials(std::span<const std::byte> file, std::array<MaterialColour, 256>& materials) {
    ByteReader reader(file);
    for (MaterialColour& material : materials) {
        std::uint32_t word = 0;
        if (!reader.u32(word)) return;
        material.attribute = static_cast<std::uint8_t>(word >> attribute_shift);
        material.colour = word | opaque;
    }
}

Bytes encode_materials(const std::array<MaterialColour, 256>& materials) {
    ByteWriter writer;
    for (const MaterialColour& material : materials)
        writer.u32((material.colour & ~opaque) | std::uint32_t{material.attribute} << attribute_shift);
    return writer.take();
}

ColourSchemes decode_colour_schemes(std::string_view text) {
    ColourSchemes schemes;
    std::string_view line;
    while (schemes.size() < max_colour_schemes && next_line(text, line)) {
        line = without_comment(line);
        if (!line.empty()) schemes.push_back(colour_scheme(line));
    }
    return schemes;
}

void LOADMATERIALS() {
    // ODDITY base-colours-need-file (kept): the base materials have colours of their own only where there is a table
    // file.
    if (const auto file = load_and_note(PROGDIR + "material.dat", materials_size)) {
        for (std::size_t i = 0; i < base_colours.size(); ++i)
            MATERIAL[first_base_material + i].colour = base_colours[i];
        decode_materials(*file, MATERIAL);
    }
    // ODDITY schemes-from-current-directory (kept): unlike the other data files the schemes belong to the user's
    // directory, so that every set of cars may have its own.
    const auto schemes = load_and_note("pjobs.cfg", largest_text);
    if (schemes.failed()) return;
    keep_schemes(schemes ? decode_colour_schemes(ByteReader(*schemes).text_view()) : ColourSchemes());
}
