#include "expect.h"

#include "base/byte_reader.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"

#include <string>

namespace {
void check_materials(std::span<const std::byte> file) {
    std::array<MaterialColour, 256> materials{}, again{};
    decode_materials(file, materials);
    const Bytes written = encode_materials(materials);
    decode_materials(written, again);
    expect(encode_materials(again) == written, "materials come back the same");
}

void check_palette(std::span<const std::byte> file) {
    std::array<std::uint32_t, 256> palette{}, again{};
    decode_palette(file, palette);
    decode_palette(encode_palette(palette), again);
    expect(palette == again, "the palette comes back the same");
}

void check_schemes(std::string_view text) {
    const auto schemes = decode_colour_schemes(text);
    expect(schemes.size() <= max_colour_schemes, "no more schemes than there is room for");
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
