// Picture files of other programs: reading PNG, JPEG, BMP, TGA and DDS as images of 32 bits, writing PNG and BMP. The
// library that does most of it sees no file before it was found harmless.
#pragma once

#include "base/byte_writer.h"
#include "base/file_io.h"
#include "image/image.h"
#include "image/picture_size.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

constexpr PictureSize largest_picture{4096, 4096};
constexpr std::size_t largest_picture_file = std::size_t{64} << 20;

inline constexpr std::string_view not_a_picture = "Not a picture that can be read";

// What the file's header says of its size, whichever kind it is; nothing when it is no picture. A file whose tables
// would harm the decoder is none.
std::optional<PictureSize> picture_size(std::span<const std::byte> file);

struct DecodedPicture {
    ImageHandle image{};  // of 32 bits, its rows padded to 16 bytes; null when the file gives none
    std::string reason{}; // then the decoder's own words
};
// A picture larger than `most`, which is at most largest_picture, is refused before anything is decoded. What a
// picture that ends early lacks is 0; PNG and DDS files that end early give none.
DecodedPicture decode_picture(std::span<const std::byte> file, PictureSize most = largest_picture);

// Reads a picture file. Null on failure, and why is in picture_failure().
ImageHandle LoadRGBAFile(const std::string& filename);
// The last failure of LoadRGBAFile; a success leaves it as it was.
const std::string& picture_failure();

// The bytes of a PNG file, with alpha or without, and of a Windows bitmap: 24 bits a pixel, which everything reads; 32
// bits with an alpha mask in the header when a 32-bit image has a pixel that is not opaque. Nothing when memory is
// short or the image has more pixels than the format's writer can count.
std::optional<Bytes> encode_png(const Image& image, bool with_alpha);
std::optional<Bytes> encode_bmp(const Image& image);

// Encode and save. An image that cannot be encoded counts as a write that failed.
SaveOutcome SavePNGFile(const Image& image, const std::string& filename, bool with_alpha);
SaveOutcome save_bmp(const Image& image, const std::string& filename);
