// DirectDraw surfaces: the first picture of a file whose pixels are whole RGB(A) values of 8 to 32 bits, or DXT1, DXT3
// or DXT5 blocks.
#pragma once

#include "image/image.h"
#include "image/picture_size.h"

#include <cstddef>
#include <optional>
#include <span>

bool is_dds(std::span<const std::byte> file);
// What the header says, or nothing when it is no whole header.
std::optional<PictureSize> dds_size(std::span<const std::byte> file);
// The picture, of 32 bits, its rows padded to 16 bytes. Null for another pixel format, for a side of 0 or one larger
// than `most`, for a file that does not hold all its pixels, and when memory is short.
ImageHandle decode_dds(std::span<const std::byte> file, PictureSize most);
