// What the figures are made of, for the drawing sources only: whole pixels, cut at the clip rectangle.
#pragma once

#include "drawing/canvas.h"

#include <cstdint>
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

private:
    void touch(int x1, int y1, int x2, int y2);

    Canvas& canvas_;
    Image& image_;
    const Rectangle clip_;
    const std::uint32_t raw_;
    Rectangle touched_;
};

// The Bresenham line between two whole pixels, both included.
void plot_line(Plotter& plotter, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2);
