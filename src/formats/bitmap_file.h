// The dashboard bitmap file (".vsh"): an archive whose every resource is one 8-bit bitmap with a 16-byte header.
//
//   0  u16 width   2  u16 height   4  u16 word 3   6  u16 word 4   8  u16 relative x   10  u16 relative y
//   12 four flag bytes   16 width x height palette indices
#pragma once

#include "base/byte_writer.h"
#include "base/file_status.h"
#include "model/bitmap_table.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The bitmaps of a file, in file order, without previews. A resource whose pixels the file does not hold whole keeps
// its size; the missing pixels are 0, as is what it lacks of the header. Entries that the file's tables do not hold are
// left out, and so are bitmaps with which the file's pixels would be more than max_bitmap_pixels.
struct BitmapFile {
    std::vector<BitmapRecord> bitmaps;
    bool cut = false; // a bitmap was left out for its size
    FileRemark remark = FileRemark::none;
};
BitmapFile decode_bitmap_file(std::span<const std::byte> file);

// The bytes of one bitmap's resource: header and pixels.
Bytes encode_bitmap(const BitmapRecord& bitmap);

// The bytes of a file of all entries of BITMAP that have their pixels and belong to the first file (dashboard) or the
// second (dots, knob and digits), in table order.
enum class BitmapSet { dashboard, dots_and_digits };
Bytes encode_bitmap_file(BitmapSet set);
// Which set a path stands for: the dashboard when its file name begins with "stda" in any case.
BitmapSet bitmap_set_for(std::string_view path);
// Whether a file of this set takes the bitmap: it has its pixels and an id of the set.
bool belongs_to(const BitmapRecord& bitmap, BitmapSet set);
// "/id/id/.../": the ids of a set.
std::string_view bitmap_set_ids(BitmapSet set);

// Merges bitmaps into BITMAP, replacing those of the same id, resolves the positions and binds
// the items. What finds no room in the table (100 bitmaps, max_bitmap_pixels) is left out; a bitmap of its id then
// stays. False when anything was left out, be it here or by the decoder.
bool merge_bitmap_file(BitmapFile file);

// Merges the bitmaps of a file. "File not found" changes nothing; whatever was left out is reported as "Too large, cut
// to fit".
FileOutcome LOADVSH(const std::string& filename);
// Writes the set that the path stands for. Reports "Invalid file name" or "Write error".
FileOutcome SAVEVSH(const std::string& filename);
