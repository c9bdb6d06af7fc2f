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

// The palette of 8-bit images as blue, green, red bytes.
TargaPalette screen_palette() {
    TargaPalette palette{};
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = static_cast<std::uint8_t>(palette_entry(static_cast<int>(i / 3)) >> i % 3 * 8);
    return palette;
}

void clear_screen_palette() {
    for (int i = 0; i < 256; ++i)
        set_palette_entry(i, 0, 0, 0);
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
    std::int16_t error = 0;
    TargaPalette read{};
    const auto again = decode_targa(encode_targa_8(image, palette), &read, error);
    expect(again && same_pixels(*again, image), "an 8-bit picture comes back the same");
    expect(read == palette, "with its colour map");
}

void check_16_bit(const Image& image) {
    std::int16_t error = 0;
    const auto again = decode_targa(encode_targa_16(image), nullptr, error);
    expect(again && same_but_lowest_green(image, *again), "a 16-bit picture comes back but for one bit");
}

void check_32_bit(const Image& image) {
    std::int16_t error = 0;
    const auto again = decode_targa(encode_targa_32(image), nullptr, error);
    expect(again && same_pixels(*again, image), "a 32-bit picture comes back the same");
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
    std::int16_t error = 0, second_error = 0;
    TargaPalette palette{};
    const auto image = decode_targa(file, &palette, error);
    expect((image == nullptr) == (error != 0), "there is a picture or an error");

    clear_screen_palette();
    const auto second = decode_targa(file, nullptr, second_error);
    expect(second_error == error, "the same file gives the same outcome");
    expect(screen_palette() == palette, "and the same colour map, wherever it goes");
    if (!image || !is_small(*image)) return 0;
    expect(same_pixels(*image, *second), "and the same pixels");
    write_and_read_again(*image, palette);
    return 0;
}
