// The bitmaps as the screen shows them, twice and three times their size: a cache beside the table, never a part of it.
#pragma once

#include "image/image.h"
#include "model/bitmap_table.h"

#include <cstddef>

// The bitmap `scale` (2 or 3) times its size, a 32-bit image of square blocks: palette colours, or for a mask opaque
// white (not 0) and nothing (0). Painted when it is first asked for, so that loading a car does not wait for pictures
// that nobody looks at, and kept as long as the table holds these pixels. Null when the bitmap has no area or no
// pixels, or when an image of that size cannot be. The picture lives until the next call after its pixels left the
// table.
const Image* preview(const BitmapRecord& bitmap, int scale);

// All are painted anew when they are asked for: the palette has changed, or the program ends.
void forget_previews();
// How many bitmaps have a picture.
std::size_t kept_previews();
