// Truevision TGA images: the variants that the editor reads, and its run-length writers.
#pragma once

#include "base/byte_writer.h"
#include "image/image.h"
#include "image/picture_size.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

// Outcome of the last call: 0 and "" when it succeeded.
extern std::int16_t TARGAERROR;
extern std::string TARGAERRORMESSAGE;

// Sets both; `bits` is the depth that the message of wrong_depth names.
void set_targa_error(std::int16_t code, int bits = 0);

namespace targa_error {
constexpr std::int16_t no_image = 101;      // "No image in buffer"
constexpr std::int16_t wrong_depth = 102;   // "Not a 32bit image. Unsupported" (16bit, 8bit)
constexpr std::int16_t cannot_create = 103; // "Failed to create image file"
constexpr std::int16_t not_found = 201;     // "File not found"
constexpr std::int16_t too_large = 202;     // "Image is too large"
constexpr std::int16_t inverted_x = 203;    // "Format not supported: X axis is inverted"
constexpr std::int16_t no_memory = 204;     // "Could not allocate a buffer to decompress image"
constexpr std::int16_t unsupported = 205;   // "Unsupported format"
constexpr std::int16_t read_error = 206;    // "Read error": the file is there but could not be read
} // namespace targa_error

// 256 x blue, green, red.
using TargaPalette = std::array<std::uint8_t, 768>;

// Reads a TGA file. Null on failure, with the code and message set. The colour map of an 8-bit image goes into
// `palette`, or, without one, into the palette of 8-bit images: only the entries below 256 that the file holds whole. A
// pixel stream that ends early leaves the rest of the image 0; one that runs past the image is cut. A side of 0 is an
// unsupported format. The largest image takes 256 MB of addresses, but memory only for the pixels that the file really
// brings. Of the file itself at most largest_targa bytes are read.
ImageHandle TARGALOAD(const std::string& filename, TargaPalette* palette = nullptr);

struct TargaEntry {
    std::uint8_t blue = 0, green = 0, red = 0;

    bool operator==(const TargaEntry&) const = default;
};

struct TargaPicture {
    ImageHandle image{};                  // null on failure
    std::int16_t error = 0;               // 0 for success
    std::size_t first_entry = 0;          // the index that the colour map begins with
    std::vector<TargaEntry> colour_map{}; // of an 8-bit image, the entries that TARGALOAD would set
    bool whole = false;                   // the file had a value for every pixel
};
// The same from memory; nothing outside the picture is touched. Checked in this order: too_large, inverted_x,
// unsupported, no_memory.
TargaPicture decode_targa(std::span<const std::byte> file);

// The sides that a file's header gives, however large; nothing when the file is none that could be decoded.
std::optional<PictureSize> targa_size(std::span<const std::byte> file);

// Writers. `image` may be null (code 101). Short memory counts as a file that cannot be created (code 103). TARGASAVE8
// takes the palette as blue, green, red bytes; an empty one means all 256 entries of the palette of 8-bit images.
void TARGASAVE(const std::string& filename, const Image* image);
void TARGASAVE32(const std::string& filename, const Image* image);
void TARGASAVE16(const std::string& filename, const Image* image);
void TARGASAVE8(const std::string& filename, const Image* image, std::span<const std::uint8_t> palette);

// TARGASAVE32 with the top row first, for programs that take rows as they come, whatever the header says of them.
void save_targa_from_the_top(const std::string& filename, const Image* image);

// The bytes that the writers write; the image must be of the depth in the name. One without area has no packets.
enum class TargaRows { bottom_up, top_down };
Bytes encode_targa_32(const Image& image, TargaRows rows = TargaRows::bottom_up);
Bytes encode_targa_16(const Image& image);
Bytes encode_targa_8(const Image& image, std::span<const std::uint8_t> palette);
