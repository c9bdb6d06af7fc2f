// Writing one dashboard bitmap out as a picture file.
#pragma once

#include "formats/bitmap_exchange.h"
#include "image/image.h"
#include "model/bitmap_table.h"

#include <string>

// The bitmap in its palette's colours, of 32 bits; where a mask is given that is as large, its pixels taken from 255
// are the alpha. Null when the bitmap has no area, is wider or higher than a picture can be, or memory is short.
ImageHandle export_image(const BitmapRecord& bitmap, const BitmapRecord* mask);

// Writes the bitmap of this id, with its mask as alpha, as the kind of file that the path's extension names in either
// case: ".tga", ".bmp", ".png" by itself; ".jpg" and ".jpeg" by the converter that the configuration's "imagick" names,
// which is run on "temp.tga" in WORKDIR and waited for, at most 20 seconds. Nothing is written for another extension.
// Whatever fails, a file that was there before stays whole. The file-status record is not touched.
BitmapExchange SAVEBITMAP(const std::string& id, const std::string& path);
