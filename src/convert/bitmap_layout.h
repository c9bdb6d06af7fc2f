// layout.txt, what a folder of pictures says of a dashboard bitmap file beside its pictures: the order of the bitmaps,
// their places and header words, and pixels that a picture cannot carry.
//
//     bitmap "dash" dash.png  320 97  0 103  0 0  0 0 0 0     id, picture, width, height, x, y, header words 3 and 4,
//     mask   "dasm" of "dast" 320 97  ...                     four flags; this one is the alpha of the picture of
//     "dast" mask   "dota" dota.png  9 9     ...                     and this one the alpha of its own empty  "roof" 0
//     0     ...                     has no area and no picture pixels 1200:16x8 ... of the bitmap before: from 1200 on,
//     16, eight times
#pragma once

#include "model/bitmap_record.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::string_view layout_file_name = "layout.txt";

struct PixelRun {
    std::size_t at = 0, count = 0;
    std::uint8_t value = 0;

    bool operator==(const PixelRun&) const = default;
};

struct LayoutRow {
    enum class Kind { bitmap, mask, empty };
    Kind kind = Kind::bitmap;
    BitmapRecord bitmap;          // as a file has it, without pixels
    std::string picture{};        // file name in the folder; empty where there is none of its own
    std::string owner{};          // of a mask without a picture
    std::vector<PixelRun> kept{}; // in rising order

    bool operator==(const LayoutRow&) const = default;
};

std::string layout_text(const std::vector<LayoutRow>& rows);
// Refuses unknown and malformed rows with the number of their line.
std::vector<LayoutRow> read_layout(std::string_view text);
