// The record of one dashboard bitmap.
#pragma once

#include "base/shared.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

constexpr int canvas_width = 320, canvas_height = 200; // of the dashboard
constexpr int max_bitmaps = 100;
// Pixels of all bitmaps together: a whole canvas each. With both previews a pixel takes 53 bytes, so that no file,
// however it lies about sizes, makes the table need more than 324 MiB.
constexpr std::size_t max_bitmap_pixels = std::size_t{max_bitmaps} * canvas_width * canvas_height;

using Pixels = std::vector<std::uint8_t>;

struct BitmapRecord {
    std::string name; // four characters; empty in a free entry
    std::uint16_t width = 0, height = 0;
    std::uint16_t header_word_3 = 0, header_word_4 = 0; // kept as read
    std::int16_t relative_x = 0, relative_y = 0;        // as stored in the file
    std::int16_t absolute_x = 0, absolute_y = 0;        // on the 320 x 200 canvas
    std::array<std::uint8_t, 4> flags{};                // kept as read
    Shared<Pixels> pixels;                              // width x height palette indices, top row first, or none
    std::uint8_t is_mask = 0, has_mask = 0;             // 255 or 0
    std::string mask_name;                              // meaningful when has_mask is 255

    bool operator==(const BitmapRecord&) const = default;
};
