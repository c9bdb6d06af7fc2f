// How the picture lies in a window of any size: where, how large, which of its pixels is under the pointer, and its
// pixels in the window's.
//
// The picture keeps its proportions and is centred; what it leaves free is black. When a whole number of window pixels
// for each picture pixel fills at least seven eighths of the size that would fit, it is drawn so, sharp; otherwise it
// is drawn as large as it fits, smoothed.
#pragma once

#include "drawing/drawing.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

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

// The source pixels that make up each pixel of a row or column scaled from one length to another, with their weights.
class Taps {
public:
    struct Tap {
        int index;
        std::uint32_t weight; // of one pixel they add up to 256
    };

    Taps(int from, int to);
    std::span<const Tap> of(int pixel) const;

private:
    std::vector<Tap> taps_;
    std::vector<std::size_t> ends_; // of each pixel's taps
};

// Draws the picture scaled to one placement: what that takes is worked out once.
class Scaler {
public:
    explicit Scaler(const Placement& placement);

    const Placement& placement() const { return placement_; }

    // Draws the window's pixels of `area`, which lie on the picture, into `window`: 0xAARRGGBB words, `pitch` words
    // from one row to the next. The image has 32 bits and the placement's picture size. Every pixel is the same
    // whatever the area it is drawn with.
    void draw(const Image& picture, const Rectangle& area, std::span<std::uint32_t> window, std::size_t pitch) const;

private:
    void draw_smooth(const Image& picture, const Rectangle& area, std::span<std::uint32_t> window,
                     std::size_t pitch) const;

    Placement placement_;
    Taps columns_, rows_; // empty where nothing is smoothed
};
