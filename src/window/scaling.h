// How the picture lies in a window of any size: where, how large, which of its pixels is under the pointer, and its
// pixels in the window's.
//
// The picture keeps its proportions and is centred; what it leaves free is black. When a whole number of window pixels
// for each picture pixel fills at least seven eighths of the size that would fit, it is drawn so, sharp; otherwise it
// is drawn as large as it fits, smoothed.
#pragma once

#include "drawing/drawing.h"

#include <cstdint>
#include <optional>
#include <span>

struct Size {
    int width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

struct Placement {
    Size picture, window;
    int x = 0, y = 0;          // the picture's top left corner in the window
    int width = 0, height = 0; // its size there, at least 1
    bool sharp = true;         // both are whole multiples of the picture's

    bool operator==(const Placement&) const = default;
};

Placement place_picture(Size picture, Size window);

// The picture's pixel at a place in the window, measured in window pixels; none in the black borders and outside.
std::optional<Point> picture_point(const Placement& placement, double x, double y);

// The window's pixels that depend on these of the picture's.
Rectangle window_area(const Placement& placement, const Rectangle& changed);

// Draws the window's pixels of `area`, which lie on the picture, into `window`: 0xAARRGGBB words, `pitch` words from
// one row to the next. The image has 32 bits and the placement's picture size.
void draw_scaled(const Image& picture, const Placement& placement, const Rectangle& area,
                 std::span<std::uint32_t> window, std::size_t pitch);
