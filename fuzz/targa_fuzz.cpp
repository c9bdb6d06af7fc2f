// Any bytes as a TGA file: decoded twice with the same pixels and colour map, and an image that comes out can be
// written and read again.
#include "expect.h"

#include "image/tga.h"

#include <algorithm>

namespace {

bool same_pixels(const Image& a, const Image& b) {
    return a.width() == b.width() && a.height() == b.height() && a.bytes_per_pixel() == b.bytes_per_pixel() &&
           std::ranges::equal(a.bytes(), b.bytes());
}

// Large pictures would take the time that other inputs need.
bool is_small(const Image& image) { return image.bytes().size() <= std::size_t{1} << 20; }

// 256 entries as blue, green, red bytes: where the colour map has none they are 0.
TargaPalette palette_of(const TargaPicture& picture) {
    TargaPalette palette{};
    std::size_t at = 3 * picture.first_entry;
    for (const TargaEntry& entry : picture.colour_map)
        for (const std::uint8_t value : {entry.blue, entry.green, entry.red})
            palette.at(at++) = value;
    return palette;
}

// The 16-bit writer drops the lowest bit of green, which a plain file may hold.
bool same_but_lowest_green(const Image& a, const Image& b) {
    constexpr std::uint32_t kept = 0xFFDF;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if ((a.pixel(x, y) & kept) != b.pixel(x, y)) return false;
    return a.width() == b.width() && a.height() == b.height();
}

void check_8_bit(const Image& image, const TargaPalette& palette) {
    const TargaPicture again = decode_targa(encode_targa_8(image, palette));
    expect(again.image && same_pixels(*again.image, image), "an 8-bit picture comes back the same");
    expect(palette_of(again) == palette, "with its colour map");
}

void check_16_bit(const Image& image) {
    const TargaPicture again = decode_targa(encode_targa_16(image));
    expect(again.image && same_but_lowest_green(image, *again.image), "a 16-bit picture comes back but for one bit");
}

void check_32_bit(const Image& image) {
    const TargaPicture again = decode_targa(encode_targa_32(image));
    expect(again.image && same_pixels(*again.image, image), "a 32-bit picture comes back the same");
}

void write_and_read_again(const Image& image, const TargaPalette& palette) {
    switch (image.bytes_per_pixel()) {
    case 1: return check_8_bit(image, palette);
    case 2: return check_16_bit(image);
    default: return check_32_bit(image);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = input_bytes(data, size);
    const TargaPicture picture = decode_targa(file);
    expect((picture.image == nullptr) == (picture.error != 0), "there is a picture or an error");

    const TargaPicture second = decode_targa(file);
    expect(second.error == picture.error, "the same file gives the same outcome");
    expect(second.first_entry == picture.first_entry && second.colour_map == picture.colour_map,
           "and the same colour map");
    if (!picture.image || !is_small(*picture.image)) return 0;
    expect(same_pixels(*picture.image, *second.image), "and the same pixels");
    write_and_read_again(*picture.image, palette_of(picture));
    return 0;
}
