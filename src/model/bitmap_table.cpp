#include "model/bitmap_table.h"

#include <algorithm>
#include <utility>

namespace {
constexpr std::uint8_t yes = 255, no = 0;

// Ids are four characters: "dot " ends in a blank.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> mask_pairs = {
    {{"dast", "dasm"}, {"dot ", "dota"}, {"ins1", "inm1"}, {"ins3", "inm3"}, {"gnob", "gnab"}}};

std::int16_t sum_in_16_bits(std::int16_t a, std::int16_t b) { return static_cast<std::int16_t>(a + b); }
} // namespace

int RBM(std::string_view id) {
    for (int i = 1; i <= BITMAPS; ++i)
        if (BITMAP[i].name == id) return i;
    return 0;
}

std::string_view mask_of(std::string_view owner) {
    for (const auto& [id, mask] : mask_pairs)
        if (id == owner) return mask;
    return {};
}

int mask_index(const BitmapRecord& owner) { return owner.has_mask == no ? 0 : RBM(owner.mask_name); }

bool is_mask_id(std::string_view id) {
    return std::ranges::any_of(mask_pairs, [id](const auto& pair) { return pair.second == id; });
}

bool is_instrument_panel(std::string_view id) { return std::ranges::count(instrument_panels, id) != 0; }

bool has_pixel_buffer(const BitmapRecord& bitmap) {
    return bitmap.pixels->size() == std::size_t{bitmap.width} * bitmap.height;
}

std::size_t bitmap_pixels() {
    std::size_t count = 0;
    for (int i = 1; i <= BITMAPS; ++i)
        count += BITMAP[i].pixels->size();
    return count;
}

void link_mask(BitmapRecord& bitmap) {
    bitmap.mask_name = mask_of(bitmap.name);
    bitmap.has_mask = bitmap.mask_name.empty() ? no : yes;
    bitmap.is_mask = is_mask_id(bitmap.name) ? yes : no;
}

void drop_bitmap(int index) {
    if (index < 1 || index > BITMAPS) return;
    BITMAP[index] = {};
    if (index != BITMAPS) std::swap(BITMAP[index], BITMAP[BITMAPS]);
    --BITMAPS;
}

void resolve_positions() {
    const int parent = RBM("ins2");
    const BitmapRecord& origin = BITMAP[parent];
    for (int i = 1; i <= BITMAPS; ++i) {
        BitmapRecord& bitmap = BITMAP[i];
        const bool panel = is_instrument_panel(bitmap.name);
        bitmap.absolute_x = sum_in_16_bits(bitmap.relative_x, panel ? origin.relative_x : std::int16_t{0});
        bitmap.absolute_y = sum_in_16_bits(bitmap.relative_y, panel ? origin.relative_y : std::int16_t{0});
    }
}

void reset_bitmaps() {
    for (BitmapRecord& bitmap : BITMAP)
        bitmap = {};
    BITMAPS = 0;
}
