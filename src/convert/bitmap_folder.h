// A dashboard bitmap file as a folder of pictures with a layout: what goes into the folder, and the way back.
#pragma once

#include "base/byte_writer.h"
#include "model/bitmap_record.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

struct NamedFile {
    std::string name; // in the folder, or a whole path
    Bytes content;
};

// The layout and a PNG a bitmap. The alpha of a picture comes from the bitmap's mask where the mask is as large; the
// mask then has no picture of its own. Needs the palette. Refuses bitmaps larger than a picture can be.
std::vector<NamedFile> bitmap_folder(const std::vector<BitmapRecord>& bitmaps);

// The bitmaps of a layout, with the pictures that `picture` gives by their names in the folder. A pixel whose colour
// the palette has takes the lowest entry of that colour, unless the layout keeps another one of the same colour; other
// colours take the nearest entry, and of masks an alpha of 128 or more is opaque, as in an import. A picture may have
// another size than the layout says as long as it fits the canvas.
using PictureBytes = std::function<Bytes(const std::string& name)>;
std::vector<BitmapRecord> read_bitmap_folder(std::string_view layout, const PictureBytes& picture);
