// Pictures from one kind of file into another: TGA, PNG, BMP.
#pragma once

#include "base/byte_writer.h"
#include "image/image.h"

#include <span>
#include <string_view>

// The picture of a file, of 32 bits; which kind it is follows from the extension of its name. Refuses what is no such
// picture, and also what the editor takes as far as it goes: a file that ends early or, where the kind has checksums,
// was changed.
ImageHandle decode_whole_picture(std::string_view name, std::span<const std::byte> file);

// The bytes of a file of the kind that the name's extension says.
Bytes encode_picture(std::string_view name, const Image& image);
