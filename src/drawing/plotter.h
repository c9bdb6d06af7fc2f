// What the figures are made of, for the drawing sources only: whole pixels, cut at the clip rectangle.
#pragma once

#include "drawing/canvas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

// Wide enough for every picture and small enough that the products of the line and the circle stay exact in 64 bits.
constexpr std::int64_t farthest_coordinate = std::int64_t{1} << 29;

// The nearest whole pixel, halves to the even one, at most farthest_coordinate from the origin. The coordinate must be
// a number; infinities are.
std::int64_t whole_pixel(double coordinate);

// Whether all of them are numbers.
bool are_numbers(std::initializer_list<double> coordinates);

// Sets pixels of one colour and adds what it touched to the canvas's damage when it goes.
class Plotter {
public:
    Plotter(Canvas& canvas, std::uint32_t colour);
    ~Plotter();
    Plotter(const Plotter&) = delete;
    Plotter& operator=(const Plotter&) = delete;

    const Rectangle& clip() const { return clip_; }
    void pixel(std::int64_t x, std::int64_t y);
    // All pixels from (x1, y) to (x2, y), or from (x, y1) to (x, y2); none when the second lies before the first.
    void across(std::int64_t x1, std::int64_t x2, std::int64_t y);
    void down(std::int64_t x, std::int64_t y1, std::int64_t y2);

    // For figures of many small pieces, which cut themselves: what lies inside the clip rectangle for certain. It
    // counts as touched only when touch() says so.
    void set_inside(int x, int y) const {
        std::uint8_t* const at = address(x, y);
        switch (bytes_per_pixel_) {
        case 1: set_raw<std::uint8_t>(at); break;
        case 2: set_raw<std::uint16_t>(at); break;
        default: set_raw<std::uint32_t>(at); break;
        }
    }
    void fill_inside(int x1, int x2, int y) const {
        std::uint8_t* const first = address(x1, y);
        const std::size_t count = static_cast<std::size_t>(x2 - x1 + 1);
        switch (bytes_per_pixel_) {
        case 1: fill_raw<std::uint8_t>(first, count); break;
        case 2: fill_raw<std::uint16_t>(first, count); break;
        default: fill_raw<std::uint32_t>(first, count); break;
        }
    }
    void touch(const Rectangle& area) { touched_ = bounding(touched_, area); }

private:
    std::uint8_t* address(int x, int y) const {
        return pixels_ + static_cast<std::size_t>(y) * pitch_ +
               static_cast<std::size_t>(x) * static_cast<std::size_t>(bytes_per_pixel_);
    }
    template <typename Pixel>
    void set_raw(std::uint8_t* at) const {
        const Pixel pixel = static_cast<Pixel>(raw_);
        std::memcpy(at, &pixel, sizeof pixel);
    }
    template <typename Pixel>
    void fill_raw(std::uint8_t* first, std::size_t count) const {
        const Pixel pixel = static_cast<Pixel>(raw_);
        for (std::size_t i = 0; i < count; ++i)
            std::memcpy(first + i * sizeof pixel, &pixel, sizeof pixel);
    }

    Canvas& canvas_;
    const Rectangle clip_;
    std::uint8_t* const pixels_;
    const std::size_t pitch_;
    const int bytes_per_pixel_;
    const std::uint32_t raw_;
    Rectangle touched_;
};

// The Bresenham line between two whole pixels, both included.
void plot_line(Plotter& plotter, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2);
