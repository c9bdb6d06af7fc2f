// The dashboard bitmaps: the table BITMAP with its fill count, the look-up by id, the mask pairs and the previews.
#pragma once

#include "base/table.h"
#include "image/image.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

constexpr int max_bitmaps = 100;
// Pixels of all bitmaps together: a whole canvas each. With both previews a pixel takes 53 bytes, so that no file,
// however it lies about sizes, makes the table need more than 324 MiB.
constexpr std::size_t max_bitmap_pixels = std::size_t{max_bitmaps} * 320 * 200;

struct BitmapRecord {
    std::string name; // four characters; empty in a free entry
    std::uint16_t width = 0, height = 0;
    std::uint16_t header_word_3 = 0, header_word_4 = 0; // kept as read
    std::int16_t relative_x = 0, relative_y = 0;        // as stored in the file
    std::int16_t absolute_x = 0, absolute_y = 0;        // on the 320 x 200 canvas
    std::array<std::uint8_t, 4> flags{};                // kept as read
    std::vector<std::uint8_t> pixels;                   // width x height palette indices, top row first, or none
    ImageHandle preview_2x, preview_3x;                 // painted when first asked for; see preview()
    std::uint8_t is_mask = 0, has_mask = 0;             // 255 or 0
    std::string mask_name;                              // meaningful when has_mask is 255
};

extern Table<BitmapRecord, 0, max_bitmaps> BITMAP; // entry 0 is the canvas, 1 .. BITMAPS are in use, without holes
extern std::uint8_t BITMAPS;

// Index of the first entry of exactly this name, or 0.
int RBM(std::string_view id);

// The mask that belongs to an owner ("dast" -> "dasm"), or an empty text.
std::string_view mask_of(std::string_view owner);
// "dasm", "inm1", "inm3", "dota", "gnab".
bool is_mask_id(std::string_view id);
// "ins1", "ins3", "inm1", "inm3": placed relative to "ins2".
bool is_instrument_panel(std::string_view id);

// Whether the bitmap has its pixels. One without area has a buffer of no bytes, and has it.
bool has_pixel_buffer(const BitmapRecord& bitmap);
// The pixels of all entries in use.
std::size_t bitmap_pixels();

// Sets is_mask, has_mask and mask_name from the name.
void link_mask(BitmapRecord& bitmap);
// The bitmap `scale` (2 or 3) times its size, a 32-bit image of square blocks: palette colours, or for a mask opaque
// white (not 0) and nothing (0). Painted when it is first asked for, so that loading a car does not wait for pictures
// that nobody looks at. Null when the bitmap has no area or no pixels, or when an image of that size cannot be.
const Image* preview(BitmapRecord& bitmap, int scale);
// For whoever changes the pixels or what they mean: the previews are painted anew.
void forget_previews(BitmapRecord& bitmap);
// Empties the record (pixels and previews freed, name empty), swaps the record with the last used entry and lowers
// BITMAPS. An index outside 1 .. BITMAPS changes nothing.
void drop_bitmap(int index);
// Absolute positions of all entries from their relative ones: panels add the relative position of "ins2".
void resolve_positions();

// Empties the whole table, the canvas entry included.
void reset_bitmaps();
