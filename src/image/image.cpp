#include "image/image.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

// Pixels are little-endian words; they are copied to and from the machine's own without turning them round.
static_assert(std::endian::native == std::endian::little);

namespace {

constexpr int largest_side = 32767;

std::array<std::uint32_t, 256> grey_ramp() {
    std::array<std::uint32_t, 256> ramp{};
    for (std::uint32_t i = 0; i < ramp.size(); ++i)
        ramp[i] = i << 16 | i << 8 | i;
    return ramp;
}

std::array<std::uint32_t, 256>& palette() {
    static std::array<std::uint32_t, 256> entries = grey_ramp();
    return entries;
}

std::uint8_t* memory_of(std::size_t size, NewPixels pixels) {
    size = std::max<std::size_t>(size, 1);
    void* memory = pixels == NewPixels::zero ? std::calloc(size, 1) : std::malloc(size);
    if (!memory) throw std::bad_alloc();
    return static_cast<std::uint8_t*>(memory);
}

std::uint32_t mask_colour(int bytes_per_pixel) {
    switch (bytes_per_pixel) {
    case 1: return transparent_mask_8;
    case 2: return transparent_mask_16;
    default: return transparent_mask_32;
    }
}

void fill(Image& image, std::uint32_t raw) {
    if (raw == 0) return; // as it was created
    for (int x = 0; x < image.width(); ++x)
        image.set_pixel(x, 0, raw);
    for (int y = 1; y < image.height(); ++y)
        std::ranges::copy(image.row(0), image.row(y).begin());
}

bool is_depth(int depth) { return depth == 8 || depth == 16 || depth == 32; }
bool is_side(int side) { return side >= 1 && side <= largest_side; }

int channel(std::uint32_t colour, int shift) { return static_cast<int>(colour >> shift & 0xFF); }

int channel_difference(std::uint32_t a, std::uint32_t b, int shift) {
    return std::abs(channel(a, shift) - channel(b, shift));
}

std::uint32_t rgb565_to_argb(std::uint32_t raw) {
    const std::uint32_t red = raw >> 11 & 31;
    const std::uint32_t green = raw >> 5 & 63;
    const std::uint32_t blue = raw & 31;
    return 0xFF000000 | (red << 3 | red >> 2) << 16 | (green << 2 | green >> 4) << 8 | (blue << 3 | blue >> 2);
}

} // namespace

Image::Image(int width, int height, int bytes_per_pixel, std::size_t pitch, NewPixels pixels)
    : width_(width), height_(height), bytes_per_pixel_(bytes_per_pixel), pitch_(pitch),
      pixels_(memory_of(size(), pixels)) {}

std::span<std::uint8_t> Image::row(int y) {
    return bytes().subspan(static_cast<std::size_t>(y) * pitch_, static_cast<std::size_t>(width_ * bytes_per_pixel_));
}

std::span<const std::uint8_t> Image::row(int y) const {
    return bytes().subspan(static_cast<std::size_t>(y) * pitch_, static_cast<std::size_t>(width_ * bytes_per_pixel_));
}

std::uint32_t Image::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
    std::uint32_t raw = 0;
    std::memcpy(&raw, row(y).data() + x * bytes_per_pixel_, static_cast<std::size_t>(bytes_per_pixel_));
    return raw;
}

void Image::set_pixel(int x, int y, std::uint32_t raw) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    std::memcpy(row(y).data() + x * bytes_per_pixel_, &raw, static_cast<std::size_t>(bytes_per_pixel_));
}

std::uint32_t raw_to_argb(std::uint32_t raw, int bytes_per_pixel) {
    switch (bytes_per_pixel) {
    case 1: return 0xFF000000 | palette()[raw & 0xFF];
    case 2: return rgb565_to_argb(raw);
    default: return raw;
    }
}

std::uint8_t nearest_palette_entry_by_scan(const std::array<std::uint32_t, 256>& entries, std::uint32_t colour) {
    std::uint8_t best = 0;
    int best_distance = farther_than_any_colour;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const int distance = channel_difference(entries[i], colour, 16) + channel_difference(entries[i], colour, 8) +
                             channel_difference(entries[i], colour, 0);
        if (distance >= best_distance) continue;
        best = static_cast<std::uint8_t>(i);
        best_distance = distance;
    }
    return best;
}

std::uint32_t argb_to_raw(std::uint32_t argb, int bytes_per_pixel) {
    switch (bytes_per_pixel) {
    case 1: return nearest_palette_entry_by_scan(palette(), argb);
    case 2: return (argb >> 8 & 0xF800) | (argb >> 5 & 0x07E0) | (argb >> 3 & 0x001F);
    default: return argb;
    }
}

namespace {

// Null when memory is short.
ImageHandle make_image(int width, int height, int bytes_per_pixel, std::size_t pitch, NewPixels pixels) {
    try {
        return std::make_unique<Image>(width, height, bytes_per_pixel, pitch, pixels);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

ImageHandle create_image(int width, int height, std::optional<std::uint32_t> fill_value, int depth,
                         std::size_t row_alignment) {
    if (depth == 0) depth = 32;
    if (!is_side(width) || !is_side(height) || !is_depth(depth)) return nullptr;
    const int bytes_per_pixel = depth / 8;
    const std::size_t alignment = std::clamp<std::size_t>(row_alignment, 1, 4096);
    const std::size_t row_bytes = static_cast<std::size_t>(width * bytes_per_pixel);
    const std::size_t pitch = (row_bytes + alignment - 1) / alignment * alignment;
    ImageHandle image = make_image(width, height, bytes_per_pixel, pitch, NewPixels::zero);
    if (image) fill(*image, fill_value.value_or(mask_colour(bytes_per_pixel)));
    return image;
}

ImageHandle create_unset_image(int width, int height, int depth) {
    if (!is_side(width) || !is_side(height) || !is_depth(depth)) return nullptr;
    const std::size_t pitch = static_cast<std::size_t>(width * depth / 8);
    return make_image(width, height, depth / 8, pitch, NewPixels::unset);
}

ImageInfo image_info(Image& image) {
    return {image.width(), image.height(), image.bytes_per_pixel(), image.pitch(), image.bytes().data()};
}

std::uint32_t palette_entry(int index) {
    return index < 0 || index > 255 ? 0 : palette()[static_cast<std::size_t>(index)];
}

void set_palette_entry(int index, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    if (index < 0 || index > 255) return;
    palette()[static_cast<std::size_t>(index)] = std::uint32_t{red} << 16 | std::uint32_t{green} << 8 | blue;
}
