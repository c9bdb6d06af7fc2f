// The dashboard bitmaps: the look-up by id, the mask pairs and the positions. The table itself, BITMAP with its fill
// count BITMAPS, is a member of the document.
#pragma once

#include "model/document.h"

#include <array>
#include <cstddef>
#include <string_view>

// Index of the first entry of exactly this name, or 0.
int RBM(std::string_view id);

// The mask that belongs to an owner ("dast" -> "dasm"), or an empty text.
std::string_view mask_of(std::string_view owner);
// Index of the bitmap that the record's mask link leads to, or 0.
int mask_index(const BitmapRecord& owner);
// "dasm", "inm1", "inm3", "dota", "gnab".
bool is_mask_id(std::string_view id);
// Placed relative to "ins2".
constexpr std::array<std::string_view, 4> instrument_panels = {"ins1", "ins3", "inm1", "inm3"};
bool is_instrument_panel(std::string_view id);

// Whether the bitmap has its pixels. One without area has a buffer of no bytes, and has it.
bool has_pixel_buffer(const BitmapRecord& bitmap);
// The pixels of all entries in use.
std::size_t bitmap_pixels();

// Sets is_mask, has_mask and mask_name from the name.
void link_mask(BitmapRecord& bitmap);
// Empties the record (pixels freed, name empty), swaps the record with the last used entry and lowers
// BITMAPS. An index outside 1 .. BITMAPS changes nothing.
void drop_bitmap(int index);
// Absolute positions of all entries from their relative ones: panels add the relative position of "ins2".
void resolve_positions();

// Empties the whole table, the canvas entry included.
void reset_bitmaps();
