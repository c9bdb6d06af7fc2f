// An off-screen picture: owned pixels of 8, 16 or 32 bits, top row first.
//
// A 32-bit pixel is the little-endian word 0xAARRGGBB (bytes blue, green, red, alpha), a 16-bit pixel is 5-6-5 red,
// green, blue, an 8-bit pixel is a palette index.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>

constexpr std::uint32_t transparent_mask_32 = 0xFFFF00FF;
constexpr std::uint16_t transparent_mask_16 = 0xF81F;
constexpr std::uint8_t transparent_mask_8 = 0;

// What pixels are that nobody has set yet. Zero: the memory is the system's untouched zero pages until something is
// drawn, so that a large empty picture costs nothing. Unset: anything, for whoever sets them all at once.
enum class NewPixels : std::uint8_t { zero, unset };

class Image {
public:
    // Throws std::bad_alloc when there is not enough memory.
    Image(int width, int height, int bytes_per_pixel, std::size_t pitch, NewPixels pixels = NewPixels::zero);

    int width() const { return width_; }
    int height() const { return height_; }
    int bytes_per_pixel() const { return bytes_per_pixel_; }
    std::size_t pitch() const { return pitch_; } // bytes from one row to the next

    // The pixel area: height x pitch bytes.
    std::span<std::uint8_t> bytes() { return {pixels_.get(), size()}; }
    std::span<const std::uint8_t> bytes() const { return {pixels_.get(), size()}; }
    // One row: width x bytes_per_pixel bytes. The row must exist.
    std::span<std::uint8_t> row(int y);
    std::span<const std::uint8_t> row(int y) const;

    // One pixel as the raw value of the image's depth. Outside the image: 0, and nothing is set.
    std::uint32_t pixel(int x, int y) const;
    void set_pixel(int x, int y, std::uint32_t raw);

private:
    struct Free {
        void operator()(std::uint8_t* memory) const { std::free(memory); }
    };

    std::size_t size() const { return pitch_ * static_cast<std::size_t>(height_); }

    int width_, height_, bytes_per_pixel_;
    std::size_t pitch_;
    std::unique_ptr<std::uint8_t[], Free> pixels_;
};

// Raw pixel values of one depth as 0xAARRGGBB and back. 5-6-5 is spread over the full range and opaque; an index is its
// palette entry, opaque; back to an index goes to the nearest palette entry.
std::uint32_t raw_to_argb(std::uint32_t raw, int bytes_per_pixel);
std::uint32_t argb_to_raw(std::uint32_t argb, int bytes_per_pixel);

// The palette entry nearest to a colour, by a plain scan: the smallest |dR| + |dG| + |dB|, the lowest index on ties;
// alpha takes no part. The one definition of "nearest"; whoever asks for a whole picture takes NearestPaletteEntry.
std::uint8_t nearest_palette_entry_by_scan(const std::array<std::uint32_t, 256>& entries, std::uint32_t colour);
// Farther than any two colours can be from each other.
constexpr int farther_than_any_colour = 1000;

using ImageHandle = std::unique_ptr<Image>;

// A new image of `depth` bits (8, 16, 32; 0 means 32), filled with the raw value `fill`, or with the transparent mask
// colour of its depth when none is given. Rows are not padded unless row_alignment asks for a multiple of that many
// bytes. Null when a side is not 1 .. 32767, the depth is another one, or memory is short.
ImageHandle create_image(int width, int height, std::optional<std::uint32_t> fill = std::nullopt, int depth = 0,
                         std::size_t row_alignment = 1);

// The same with rows that are not padded, and with pixels that the caller is about to set, every one of them.
ImageHandle create_unset_image(int width, int height, int depth);

struct ImageInfo {
    int width = 0, height = 0, bytes_per_pixel = 0;
    std::size_t pitch = 0;
    std::uint8_t* pixels = nullptr;
};
ImageInfo image_info(Image& image);

// The palette of 8-bit images, 0x00RRGGBB per entry: one for the whole program, as the screen of 8 bits had. Starts as
// a grey ramp. Indices outside 0 .. 255 read as 0 and set nothing.
std::uint32_t palette_entry(int index);
void set_palette_entry(int index, std::uint8_t red, std::uint8_t green, std::uint8_t blue);
