// Words for looking at pictures in tests.
#pragma once

#include "drawing/drawing.h"

#include <cstring>
#include <string>
#include <vector>

constexpr std::uint32_t black = 0xFF000000;
constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t green = 0xFF00FF00;

inline bool inside(const Rectangle& rectangle, int x, int y) { return rectangle.contains({x, y}); }

// The raw pixels of a row, for looking at many quickly.
inline std::vector<std::uint32_t> row_pixels(const Image& image, int y) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(image.width()));
    if (image.bytes_per_pixel() == 4) {
        std::memcpy(pixels.data(), image.row(y).data(), pixels.size() * sizeof pixels[0]);
    } else {
        for (int x = 0; x < image.width(); ++x)
            pixels[static_cast<std::size_t>(x)] = image.pixel(x, y);
    }
    return pixels;
}

// How many pixels have this colour.
inline int count(const Image& image, std::uint32_t colour) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        const std::vector<std::uint32_t> row = row_pixels(image, y);
        const std::uint32_t* const pixels = row.data();
        for (int x = 0; x < image.width(); ++x)
            found += pixels[x] == colour;
    }
    return found;
}

// The smallest rectangle around the pixels of this colour.
inline Rectangle around(const Image& image, std::uint32_t colour) {
    Rectangle found;
    for (int y = 0; y < image.height(); ++y) {
        const std::vector<std::uint32_t> row = row_pixels(image, y);
        const std::uint32_t* const pixels = row.data();
        int first = 0, last = image.width() - 1;
        while (first <= last && pixels[first] != colour)
            ++first;
        while (last >= first && pixels[last] != colour)
            --last;
        if (first <= last) found = bounding(found, {first, y, last, y});
    }
    return found;
}

// The picture as text, "." for black and "#" for anything else, to be compared and to be read in a failure.
inline std::string picture(const Image& image) {
    std::string text;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            text += image.pixel(x, y) == black ? '.' : '#';
        text += '\n';
    }
    return text;
}
