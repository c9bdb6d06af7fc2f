// What the figures are made of, for the drawing sources only: whole pixels, cut at the clip rectangle.
#pragma once

#include "drawing/canvas.h"

#include <array>
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

// The rows of a picture of one depth, with the value that its pixels are set to. All coordinates must lie inside it.
template <typename Pixel>
class PixelRows {
public:
    PixelRows(std::uint8_t* pixels, std::size_t pitch, Pixel value) : pixels_(pixels), pitch_(pitch) {
        block_.fill(value);
    }

    void set(int x, int y) const { put<pixel_bytes>(address(x, y)); }
    // From x1 to x2, which must not lie before it. Runs are short as a rule: few stores, which may overlap, and few
    // branches, which no processor could foresee.
    void fill(int x1, int x2, int y) const {
        std::uint8_t* at = address(x1, y);
        const int bytes = (x2 - x1 + 1) * pixel_bytes;
        if (bytes < block_bytes) return fill_part(at, bytes);
        std::uint8_t* const last_block = at + bytes - block_bytes;
        put<block_bytes>(last_block);
        do {
            put<block_bytes>(at);
            at += block_bytes;
        } while (at < last_block);
    }

private:
    static constexpr int pixel_bytes = sizeof(Pixel), block_bytes = 16;

    std::uint8_t* address(int x, int y) const {
        return pixels_ + static_cast<std::size_t>(y) * pitch_ + static_cast<std::size_t>(x) * sizeof(Pixel);
    }
    template <int bytes>
    void put(std::uint8_t* at) const {
        std::memcpy(at, block_.data(), bytes);
    }
    // Less than a block: two stores, from either end.
    void fill_part(std::uint8_t* at, int bytes) const {
        if (bytes >= 8) return put_at_both_ends<8>(at, bytes);
        if (bytes >= 4) return put_at_both_ends<4>(at, bytes);
        if (bytes >= 2) return put_at_both_ends<2>(at, bytes);
        put<1>(at);
    }
    template <int part>
    void put_at_both_ends(std::uint8_t* at, int bytes) const {
        put<part>(at);
        put<part>(at + bytes - part);
    }

    std::uint8_t* pixels_;
    std::size_t pitch_;
    std::array<Pixel, block_bytes / sizeof(Pixel)> block_;
};

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

    // For figures of many small pieces, which cut themselves at the clip rectangle: calls draw(rows) with PixelRows of
    // the picture's depth. What is set so counts as touched only when touch() says so.
    template <typename Draw>
    void with_rows(Draw draw) const {
        switch (bytes_per_pixel_) {
        case 1: draw(PixelRows(pixels_, pitch_, static_cast<std::uint8_t>(raw_))); break;
        case 2: draw(PixelRows(pixels_, pitch_, static_cast<std::uint16_t>(raw_))); break;
        default: draw(PixelRows(pixels_, pitch_, raw_)); break;
        }
    }
    void touch(const Rectangle& area) { touched_ = bounding(touched_, area); }

private:
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
