#include "model/preview.h"

#include "base/reset.h"
#include "model/colours.h"
#include "model/document.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <vector>

namespace {

constexpr std::uint32_t mask_colour = 0xFFFFFFFF;
using ColourTable = std::array<std::uint32_t, 256>;

// What the pictures of a bitmap follow from, and the pictures.
struct Previews {
    Shared<Pixels> pixels; // held, so that the block keeps its identity
    std::uint16_t width = 0, height = 0;
    bool mask = false;
    ImageHandle twice, three_times;
};
std::vector<Previews> kept;

bool is_mask(const BitmapRecord& bitmap) { return bitmap.is_mask != 0; }

bool shows(const Previews& previews, const BitmapRecord& bitmap) {
    return previews.pixels.is(bitmap.pixels) && previews.width == bitmap.width && previews.height == bitmap.height &&
           previews.mask == is_mask(bitmap);
}

bool in_table(const Previews& previews) {
    return std::any_of(BITMAP.begin(), BITMAP.end(), [&](const auto& bitmap) { return shows(previews, bitmap); });
}

Previews& previews_of(const BitmapRecord& bitmap) {
    const auto found = std::ranges::find_if(kept, [&](const auto& previews) { return shows(previews, bitmap); });
    if (found != kept.end()) return *found;
    std::erase_if(kept, [](const Previews& previews) { return !in_table(previews); });
    kept.push_back({bitmap.pixels, bitmap.width, bitmap.height, is_mask(bitmap), nullptr, nullptr});
    return kept.back();
}

ColourTable colours_of(bool mask) {
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

ImageHandle enlarged(const BitmapRecord& bitmap, int scale) {
    ImageHandle image = create_image(bitmap.width * scale, bitmap.height * scale, 0, 32);
    if (!image) return image;
    const ColourTable colours = colours_of(is_mask(bitmap));
    const std::size_t width = bitmap.width;
    std::vector<std::uint32_t> row(width * static_cast<std::size_t>(scale));
    for (int y = 0; y < bitmap.height; ++y) {
        const auto first = static_cast<std::size_t>(y) * width;
        widen(std::span(*bitmap.pixels).subspan(first, width), colours, static_cast<std::size_t>(scale), row);
        for (int copy = 0; copy < scale; ++copy)
            std::memcpy(image->row(y * scale + copy).data(), row.data(), row.size() * sizeof row[0]);
    }
    return image;
}

} // namespace

const Image* preview(const BitmapRecord& bitmap, int scale) {
    if (bitmap.pixels->empty() || !has_pixel_buffer(bitmap)) return nullptr;
    Previews& previews = previews_of(bitmap);
    ImageHandle& image = scale == 2 ? previews.twice : previews.three_times;
    if (!image) image = enlarged(bitmap, scale);
    return image.get();
}

void forget_previews() { kept.clear(); }

std::size_t kept_previews() { return kept.size(); }

namespace {
const ResetWithProgram registered(forget_previews);
}
