// Replacing one dashboard bitmap, and with it its mask, by a picture file.
#pragma once

#include "formats/bitmap_exchange.h"
#include "formats/dither.h"
#include "image/image.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// A picture that can become a bitmap: of 32 bits, at most 320 x 200; or null and the reason for a person.
struct ImportedPicture {
    ImageHandle image{};
    std::string reason{};
};
// Decodes a picture file by the extension in its name: ".tga" as a Truevision file, anything else as whatever it is.
ImportedPicture decode_import(std::string_view path, std::span<const std::byte> file);

// What a mask has for a pixel of a picture: 0 where the alpha is 128 or more, else 255.
std::uint8_t mask_value(std::uint32_t argb);

// Puts the picture into the table as the bitmap of this id: what is there of that id goes, the new one is appended at
// the canvas's corner (panels at that of "ins2"), its header words and flags 0; then the same for its mask, made from
// the picture's alpha: 128 and more is opaque. The items are bound anew. The picture must be one that decode_import
// gives. Nothing is changed when there is no room for the bitmap and its mask.
struct Import {
    bool done = false;
    std::size_t foreign_colours = 0; // colours of the picture that the palette does not have
};
Import import_bitmap(const std::string& id, const Image& picture, Dither dither = Dither::none);

// Reads a picture file and imports it. The file-status record says "File not found", "Read error" or success, whatever
// else was wrong with the file; the result says it all.
BitmapExchange LOADBITMAP(const std::string& id, const std::string& path, Dither dither = Dither::none);
