#include "model/bitmap_table.h"

#include "model/colours.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

Table<BitmapRecord, 0, max_bitmaps> BITMAP;
std::uint8_t BITMAPS = 0;

namespace {
constexpr std::uint8_t yes = 255, no = 0;
constexpr std::uint32_t mask_colour = 0xFFFFFFFF;

// Ids are four characters: "dot " ends in a blank.
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> mask_pairs = {
    {{"dast", "dasm"}, {"dot ", "dota"}, {"ins1", "inm1"}, {"ins3", "inm3"}, {"gnob", "gnab"}}};
constexpr std::array<std::string_view, 4> instrument_panels = {"ins1", "ins3", "inm1", "inm3"};

using ColourTable = std::array<std::uint32_t, 256>;

ColourTable preview_colours(bool mask) {
    if (!mask) return PAL;
    ColourTable colours;
    colours.fill(mask_colour);
    colours[0] = 0;
    return colours;
}

// Every pixel of the row `scale` times, as 32-bit colours.
void widen(std::span<const std::uint8_t> pixels, const ColourTable& colours, std::size_t scale,
           std::vector<std::uint32_t>& row) {
    auto out = row.begin();
    for (const std::uint8_t pixel : pixels)
        out = std::fill_n(out, scale, colours[pixel]);
}

ImageHandle enlarged(const BitmapRecord& bitmap, const ColourTable& colours, int scale) {
    ImageHandle image = create_image(bitmap.width * scale, bitmap.height * scale, 0, 32);
    if (!image) return image;
    const std::size_t width = bitmap.width;
    std::vector<std::uint32_t> row(width * static_cast<std::size_t>(scale));
    for (int y = 0; y < bitmap.height; ++y) {
        const auto first = static_cast<std::size_t>(y) * width;
        widen(std::span(bitmap.pixels).subspan(first, width), colours, static_cast<std::size_t>(scale), row);
        for (int copy = 0; copy < scale; ++copy)
            std::memcpy(image->row(y * scale + copy).data(), row.data(), row.size() * sizeof row[0]);
    }
    return image;
}

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

bool is_mask_id(std::string_view id) {
    return std::ranges::any_of(mask_pairs, [id](const auto& pair) { return pair.second == id; });
}

bool is_instrument_panel(std::string_view id) { return std::ranges::count(instrument_panels, id) != 0; }

bool has_pixel_buffer(const BitmapRecord& bitmap) {
    return bitmap.pixels.size() == std::size_t{bitmap.width} * bitmap.height;
}

std::size_t bitmap_pixels() {
    std::size_t count = 0;
    for (int i = 1; i <= BITMAPS; ++i)
        count += BITMAP[i].pixels.size();
    return count;
}

void link_mask(BitmapRecord& bitmap) {
    bitmap.mask_name = mask_of(bitmap.name);
    bitmap.has_mask = bitmap.mask_name.empty() ? no : yes;
    bitmap.is_mask = is_mask_id(bitmap.name) ? yes : no;
}

const Image* preview(BitmapRecord& bitmap, int scale) {
    ImageHandle& image = scale == 2 ? bitmap.preview_2x : bitmap.preview_3x;
    if (!image && !bitmap.pixels.empty() && has_pixel_buffer(bitmap))
        image = enlarged(bitmap, preview_colours(bitmap.is_mask != no), scale);
    return image.get();
}

void forget_previews(BitmapRecord& bitmap) {
    bitmap.preview_2x.reset();
    bitmap.preview_3x.reset();
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
