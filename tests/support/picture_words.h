// Words for looking at pictures in tests.
#pragma once

#include "drawing/drawing.h"

#include <string>

constexpr std::uint32_t black = 0xFF000000;
constexpr std::uint32_t white = 0xFFFFFFFF;
constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t green = 0xFF00FF00;

inline bool inside(const Rectangle& rectangle, int x, int y) { return rectangle.contains({x, y}); }

// How many pixels have this colour.
inline int count(const Image& image, std::uint32_t colour) {
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            found += image.pixel(x, y) == colour;
    return found;
}

// The smallest rectangle around the pixels of this colour.
inline Rectangle around(const Image& image, std::uint32_t colour) {
    Rectangle found;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) == colour) found = bounding(found, {x, y, x, y});
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
