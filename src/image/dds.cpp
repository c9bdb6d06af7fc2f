#include "image/dds.h"

#include "base/byte_reader.h"

#include <array>
#include <bit>

namespace {

using FileBytes = std::span<const std::byte>;

constexpr std::uint32_t magic = 0x20534444; // "DDS "
constexpr std::uint32_t header_bytes = 124, format_bytes = 32;
constexpr std::uint64_t pixels_start = 4 + header_bytes;
constexpr std::uint64_t height_offset = 12, width_offset = 16, format_offset = 76;

constexpr std::uint32_t has_alpha = 0x1, has_code = 0x4, has_rgb = 0x40; // of the pixel format's flags
constexpr std::uint32_t dxt1 = 0x31545844, dxt3 = 0x33545844, dxt5 = 0x35545844;

constexpr std::size_t row_alignment = 16;

struct PixelFormat {
    std::uint32_t flags = 0, code = 0, bits = 0;
    std::array<std::uint32_t, 4> masks{}; // red, green, blue, alpha
};

std::uint32_t word_at(FileBytes file, std::uint64_t offset) {
    std::uint32_t value = 0;
    ByteReader(file, offset).u32(value);
    return value;
}

PixelFormat read_format(FileBytes file) {
    ByteReader reader(file, format_offset + 4);
    PixelFormat format;
    reader.u32(format.flags);
    reader.u32(format.code);
    reader.u32(format.bits);
    for (std::uint32_t& mask : format.masks)
        reader.u32(mask);
    return format;
}

std::uint32_t argb(std::uint32_t alpha, std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return alpha << 24 | red << 16 | green << 8 | blue;
}

// --- whole values ---------------------------------------------------------------------------------------------------

// The part of a value under a mask, spread over 0 .. 255.
std::uint32_t channel(std::uint32_t value, std::uint32_t mask) {
    if (mask == 0) return 0;
    const int shift = std::countr_zero(mask);
    const std::uint64_t part = (value & mask) >> shift, largest = mask >> shift;
    return static_cast<std::uint32_t>((part * 255 + largest / 2) / largest);
}

std::uint32_t pixel_of(std::uint32_t value, const PixelFormat& format) {
    const bool opaque = !(format.flags & has_alpha) || format.masks[3] == 0;
    return argb(opaque ? 255 : channel(value, format.masks[3]), channel(value, format.masks[0]),
                channel(value, format.masks[1]), channel(value, format.masks[2]));
}

std::uint32_t value_of(FileBytes bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        value = value << 8 | std::to_integer<std::uint32_t>(bytes[i]);
    return value;
}

void decode_values(FileBytes pixels, const PixelFormat& format, Image& image) {
    ByteReader reader(pixels);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.set_pixel(x, y, pixel_of(value_of(reader.view(format.bits / 8)), format));
}

// --- blocks ---------------------------------------------------------------------------------------------------------

constexpr int block_side = 4;
constexpr std::size_t colour_bytes = 8, alpha_bytes = 8;

using Colours = std::array<std::uint32_t, 4>; // 0x00RRGGBB
using Alphas = std::array<std::uint32_t, block_side * block_side>;

std::uint32_t mixed(std::uint32_t a, std::uint32_t b, std::uint32_t part_a, std::uint32_t part_b) {
    std::uint32_t result = 0;
    for (int shift = 16; shift >= 0; shift -= 8)
        result = result << 8 | ((a >> shift & 255) * part_a + (b >> shift & 255) * part_b) / (part_a + part_b);
    return result;
}

// The colours that a block's pixels choose from. DXT1 has three and a hole when the first of its two is not the larger.
Colours block_colours(std::uint16_t first, std::uint16_t second, bool may_have_hole) {
    Colours colours{raw_to_argb(first, 2) & 0xFFFFFF, raw_to_argb(second, 2) & 0xFFFFFF};
    if (may_have_hole && first <= second) {
        colours[2] = mixed(colours[0], colours[1], 1, 1);
    } else {
        colours[2] = mixed(colours[0], colours[1], 2, 1);
        colours[3] = mixed(colours[0], colours[1], 1, 2);
    }
    return colours;
}

// Four bits a pixel.
Alphas plain_alphas(FileBytes block) {
    Alphas alphas{};
    for (std::size_t i = 0; i < alphas.size(); ++i)
        alphas[i] = (std::to_integer<std::uint32_t>(block[i / 2]) >> (i % 2 * 4) & 15) * 17;
    return alphas;
}

// Two values, and three bits a pixel to choose one of them or of what lies between.
Alphas mixed_alphas(FileBytes block) {
    const std::uint32_t first = std::to_integer<std::uint32_t>(block[0]);
    const std::uint32_t second = std::to_integer<std::uint32_t>(block[1]);
    const std::uint32_t steps = first > second ? 7 : 5;
    std::array<std::uint32_t, 8> values{first, second};
    for (std::uint32_t i = 1; i < steps; ++i)
        values[i + 1] = ((steps - i) * first + i * second) / steps;
    if (steps == 5) values[7] = 255;

    std::uint64_t choices = 0;
    for (std::size_t i = alpha_bytes; i-- > 2;)
        choices = choices << 8 | std::to_integer<std::uint64_t>(block[i]);
    Alphas alphas{};
    for (std::size_t i = 0; i < alphas.size(); ++i)
        alphas[i] = values[choices >> 3 * i & 7];
    return alphas;
}

Alphas block_alphas(std::uint32_t code, ByteReader& reader) {
    if (code == dxt3) return plain_alphas(reader.view(alpha_bytes));
    if (code == dxt5) return mixed_alphas(reader.view(alpha_bytes));
    Alphas opaque;
    opaque.fill(255);
    return opaque;
}

void decode_block(ByteReader& reader, std::uint32_t code, Image& image, int left, int top) {
    const Alphas alphas = block_alphas(code, reader);
    std::uint16_t first = 0, second = 0;
    std::uint32_t choices = 0;
    reader.u16(first);
    reader.u16(second);
    reader.u32(choices);
    const Colours colours = block_colours(first, second, code == dxt1);
    const bool has_hole = code == dxt1 && first <= second;
    for (std::size_t i = 0; i < alphas.size(); ++i) {
        const std::uint32_t choice = choices >> 2 * i & 3;
        const int x = left + static_cast<int>(i) % block_side, y = top + static_cast<int>(i) / block_side;
        image.set_pixel(x, y, has_hole && choice == 3 ? 0 : alphas[i] << 24 | colours[choice]);
    }
}

void decode_blocks(FileBytes pixels, std::uint32_t code, Image& image) {
    ByteReader reader(pixels);
    for (int top = 0; top < image.height(); top += block_side)
        for (int left = 0; left < image.width(); left += block_side)
            decode_block(reader, code, image, left, top);
}

// --- files ----------------------------------------------------------------------------------------------------------

bool is_block_format(const PixelFormat& format) {
    return (format.flags & has_code) && (format.code == dxt1 || format.code == dxt3 || format.code == dxt5);
}

bool is_value_format(const PixelFormat& format) {
    return !(format.flags & has_code) && (format.flags & has_rgb) && format.bits % 8 == 0 && format.bits >= 8 &&
           format.bits <= 32;
}

// What the pixels take; the sides are at most what a picture may have.
std::size_t pixel_bytes(const PixelFormat& format, PictureSize size) {
    const auto width = static_cast<std::size_t>(size.width), height = static_cast<std::size_t>(size.height);
    if (!is_block_format(format)) return width * height * (format.bits / 8);
    const std::size_t blocks = ((width + 3) / block_side) * ((height + 3) / block_side);
    return blocks * (format.code == dxt1 ? colour_bytes : alpha_bytes + colour_bytes);
}

} // namespace

bool is_dds(FileBytes file) { return word_at(file, 0) == magic; }

std::optional<PictureSize> dds_size(FileBytes file) {
    if (file.size() < pixels_start || !is_dds(file) || word_at(file, 4) != header_bytes ||
        word_at(file, format_offset) != format_bytes)
        return {};
    const std::uint32_t width = word_at(file, width_offset), height = word_at(file, height_offset);
    constexpr std::uint32_t largest = 0x7FFFFFFF;
    return PictureSize{static_cast<int>(std::min(width, largest)), static_cast<int>(std::min(height, largest))};
}

ImageHandle decode_dds(FileBytes file, PictureSize most) {
    const auto size = dds_size(file);
    if (!size || !size->has_area() || !size->fits(most)) return nullptr;
    const PixelFormat format = read_format(file);
    if (!is_block_format(format) && !is_value_format(format)) return nullptr;
    const FileBytes pixels = file.subspan(pixels_start);
    if (pixels.size() < pixel_bytes(format, *size)) return nullptr;

    ImageHandle image = create_image(size->width, size->height, 0, 32, row_alignment);
    if (!image) return image;
    if (is_block_format(format)) {
        decode_blocks(pixels, format.code, *image);
    } else {
        decode_values(pixels, format, *image);
    }
    return image;
}
