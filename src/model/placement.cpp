#include "model/placement.h"

#include "model/bitmap_table.h"
#include "model/items.h"

#include <cstdint>
#include <string_view>

namespace {

std::int16_t in_16_bits(int value) { return static_cast<std::int16_t>(value); }

// ODDITY oversized-bitmap-at-negative (kept): the lower bound comes first and the upper one second, so that what is
// larger than its room ends left of it or above it.
std::int16_t clamped(int wanted, int size, int room) {
    std::int16_t at = in_16_bits(wanted);
    if (at < 0) at = 0;
    if (at + size > room) at = in_16_bits(room - size);
    return at;
}

void place_panel(BitmapRecord& panel, const BitmapRecord& parent, int x, int y) {
    panel.relative_x = clamped(x - parent.relative_x, panel.width, parent.width);
    panel.absolute_x = in_16_bits(panel.relative_x + parent.relative_x);
    panel.relative_y = clamped(y - parent.relative_y, panel.height, parent.height);
    panel.absolute_y = in_16_bits(panel.relative_y + parent.relative_y);
}

void place_on_canvas(BitmapRecord& bitmap, int x, int y) {
    const int left = bitmap.absolute_x - bitmap.relative_x, top = bitmap.absolute_y - bitmap.relative_y;
    bitmap.absolute_x = clamped(x, bitmap.width, canvas_width);
    bitmap.relative_x = in_16_bits(bitmap.absolute_x - left);
    bitmap.absolute_y = clamped(y, bitmap.height, canvas_height);
    bitmap.relative_y = in_16_bits(bitmap.absolute_y - top);
}

void copy_positions(const BitmapRecord& from, BitmapRecord& to) {
    to.relative_x = from.relative_x;
    to.relative_y = from.relative_y;
    to.absolute_x = from.absolute_x;
    to.absolute_y = from.absolute_y;
}

void carry_panels(const BitmapRecord& instruments) {
    for (const std::string_view id : instrument_panels)
        if (const int index = RBM(id)) {
            BitmapRecord& panel = BITMAP[index];
            panel.absolute_x = in_16_bits(panel.relative_x + instruments.relative_x);
            panel.absolute_y = in_16_bits(panel.relative_y + instruments.relative_y);
        }
}

} // namespace

void MOVEDASHIMAGETO(int index, int x, int y) {
    if (index < 1 || index > BITMAPS) return;
    BitmapRecord& bitmap = BITMAP[index];
    if (is_instrument_panel(bitmap.name)) {
        place_panel(bitmap, BITMAP[RBM("ins2")], x, y);
    } else {
        place_on_canvas(bitmap, x, y);
    }
    if (const int mask = mask_index(bitmap)) copy_positions(bitmap, BITMAP[mask]);
    if (bitmap.name == "ins2") carry_panels(bitmap);
}

// The mask goes first, and with it the last bitmap may move into its place. A mask's own mask stays, so that links in a
// ring come to an end.
void REMOVEBITMAP(int index) {
    if (index < 1 || index > BITMAPS) return;
    const int mask = mask_index(BITMAP[index]);
    if (mask != 0 && mask != index) {
        const bool moves = index == BITMAPS;
        drop_bitmap(mask);
        if (moves) index = mask;
    }
    drop_bitmap(index);
    UPDATEDASHITEMS();
}
