// The bitmaps in a project file:
//
//   u8 count, then of each: id, u16 width, u16 height, u16 word 3, u16 word 4, i16 relative x, y, i16 absolute x, y,
//   four flag bytes, u8 is mask, u8 has mask, id of its mask, width x height palette indices
#pragma once

#include "base/byte_reader.h"
#include "base/byte_writer.h"
#include "model/bitmap_record.h"

#include <vector>

struct ProjectBitmaps {
    std::vector<BitmapRecord> bitmaps; // at most max_bitmaps of max_bitmap_pixels in all
    bool cut = false;                  // one was read over for want of room
};
// The bitmaps whose id the file holds whole; what it lacks of one is 0. Where masks lead back to themselves, the bitmap
// that closes the circle loses its mask.
ProjectBitmaps read_project_bitmaps(ByteReader& reader);

// Ids are cut or filled with blanks to four characters, pixels that a bitmap lacks are 0.
void write_project_bitmaps(ByteWriter& writer, const std::vector<BitmapRecord>& bitmaps);
