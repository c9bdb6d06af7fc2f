// Any bytes as a TGA file: decoded as a second, literal reader decodes them, and an image that comes out can be written
// and read again.
#include "expect.h"
#include "literal_reader.h"

#include "image/tga.h"

#include <algorithm>

namespace {

bool same_pixels(const Image& a, const Image& b) {
    return a.width() == b.width() && a.height() == b.height() && a.bytes_per_pixel() == b.bytes_per_pixel() &&
           std::ranges::equal(a.bytes(), b.bytes());
}

struct Header {
    std::size_t id_length = 0, map_type = 0, type = 0, map_first = 0, map_length = 0, map_bits = 0;
    std::size_t x = 0, y = 0, width = 0, height = 0, depth = 0, descriptor = 0;
};

Header header_of(LiteralReader& reader) {
    Header h;
    for (std::size_t* byte : {&h.id_length, &h.map_type, &h.type})
        reader.number(1, *byte);
    reader.number(2, h.map_first);
    reader.number(2, h.map_length);
    reader.number(1, h.map_bits);
    for (std::size_t* word : {&h.x, &h.y, &h.width, &h.height})
        reader.number(2, *word);
    reader.number(1, h.depth);
    reader.number(1, h.descriptor);
    return h;
}

bool is_read(const Header& h) {
    const bool has_alpha = h.descriptor % 16 != 0;
    if (h.type == 9) return h.depth == 8 && (h.map_bits == 24 || h.map_bits == 32);
    if (h.type != 2 && h.type != 10) return false;
    return h.depth == 16 || (h.depth == 24 && !has_alpha) || (h.depth == 32 && has_alpha);
}

int error_of(const Header& h) {
    if (h.width > 8192 || h.height > 8192) return 202;
    if (h.descriptor / 16 % 2 == 1) return 203;
    return h.width == 0 || h.height == 0 || !is_read(h) ? 205 : 0;
}

// The next pixel as an image has it.
bool next_pixel(LiteralReader& reader, const Header& h, std::uint32_t& pixel) {
    if (!reader.number(h.depth / 8, pixel)) return false;
    if (h.depth == 24) pixel += 0xFF000000;
    if (h.type == 10 && h.depth == 16) {
        const std::uint32_t red = pixel >> 10 & 31, green = pixel >> 5 & 31, blue = pixel & 31;
        pixel = red << 11 | green << 6 | blue;
    }
    return true;
}

// In the order of the file, as far as they go.
std::vector<std::uint32_t> pixels_of(LiteralReader reader, const Header& h) {
    reader.go_to(18 + h.id_length + (h.map_type == 0 ? 0 : h.map_bits / 8 * h.map_length));
    std::vector<std::uint32_t> pixels;
    const std::size_t all = h.width * h.height;
    std::uint32_t packet = 0, pixel = 0;
    while (pixels.size() < all && (h.type == 2 || reader.number(1, packet))) {
        const bool run = h.type != 2 && packet >= 128;
        std::size_t count = h.type == 2 ? all : packet % 128 + 1;
        if (run && !next_pixel(reader, h, pixel)) return pixels;
        for (; count > 0 && pixels.size() < all; --count) {
            if (!run && !next_pixel(reader, h, pixel)) return pixels;
            pixels.push_back(pixel);
        }
    }
    return pixels;
}

void check_pixels(const TargaPicture& picture, const Header& h, const std::vector<std::uint32_t>& pixels) {
    const Image& image = *picture.image;
    const std::size_t width = h.width, height = h.height;
    expect(static_cast<std::size_t>(image.width()) == width && static_cast<std::size_t>(image.height()) == height,
           "the same sides");
    expect(picture.whole == (pixels.size() == width * height), "whether every pixel was there is told");
    for (std::size_t i = 0; i < width * height; ++i) {
        const std::size_t y = h.descriptor / 32 % 2 == 1 ? i / width : height - 1 - i / width;
        expect(image.pixel(static_cast<int>(i % width), static_cast<int>(y)) == (i < pixels.size() ? pixels[i] : 0),
               "the same pixels");
    }
}

void check_colour_map(std::span<const std::byte> file, const TargaPicture& picture, const Header& h) {
    LiteralReader reader(file, 18 + h.id_length);
    std::vector<TargaEntry> map;
    while (h.type == 9 && map.size() < h.map_length && h.map_first + map.size() < 256) {
        const std::string entry = reader.text(h.map_bits / 8);
        if (entry.size() < h.map_bits / 8) break;
        const auto value = [&](std::size_t i) { return static_cast<std::uint8_t>(entry[i]); };
        map.push_back({value(0), value(1), value(2)});
    }
    expect(picture.colour_map == map, "the same colour map");
    expect(picture.first_entry == (h.type == 9 ? h.map_first : 0), "from the same entry on");
}

void check_size(std::span<const std::byte> file, const Header& h) {
    const auto size = targa_size(file);
    expect(size.has_value() == (is_read(h) && h.descriptor / 16 % 2 == 0), "a size of what can be decoded");
    if (!size) return;
    expect(static_cast<std::size_t>(size->width) == h.width && static_cast<std::size_t>(size->height) == h.height,
           "the size of the header");
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
    expect(again.whole && again.image && same_pixels(*again.image, image), "an 8-bit picture comes back the same");
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
    LiteralReader reader(file);
    const Header header = header_of(reader);
    check_size(file, header);
    const TargaPicture picture = decode_targa(file);
    expect((picture.image == nullptr) == (picture.error != 0), "there is a picture or an error");
    expect(picture.error == error_of(header) || picture.error == targa_error::no_memory, "the same error");
    expect(!input_is_good || picture.whole, "a good file has every pixel");
    if (!picture.image || !is_small(*picture.image)) return 0;
    check_pixels(picture, header, pixels_of(reader, header));
    check_colour_map(file, picture, header);
    write_and_read_again(*picture.image, palette_of(picture));
    return 0;
}
