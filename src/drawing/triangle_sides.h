// The sloping sides of a triangle, row by row, for the drawing sources only.
//
// A side does two things on a row: it ends the filled span, and its line of the outline sets pixels. The span's ends
// are stepped with 8 fractional bits, in divisions that cut towards zero, and rounded down. The line is the one that
// plot_line draws.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

constexpr int span_fraction_bits = 8;

struct Corner {
    int x, y;
};

// Pixels of one row, both ends included.
struct Run {
    int first, last;

    bool joins(const Run& other) const { return other.first <= last + 1 && other.last >= first - 1; }
    Run with(const Run& other) const { return {std::min(first, other.first), std::max(last, other.last)}; }
};

// A side of any size. Span's end and line are asked once a row.
//
// With `across` columns over `down` rows, the first of the line's pixels on the k-th row lies
// ceil((2 x across x k - shift) / (2 x down)) columns from the upper end. A steep line has this one pixel a row; a flat
// one goes on to where the next row begins.
class Side {
public:
    Side(const Corner& upper, const Corner& lower, int first_row)
        : x_(upper.x), leftwards_(lower.x < upper.x), across_(std::abs(lower.x - upper.x)), down_(lower.y - upper.y) {
        const int rows = first_row - upper.y;
        const int step = (across_ << span_fraction_bits) / down_;
        step_ = leftwards_ ? -step : step;
        position_ = static_cast<int>(std::int64_t{upper.x} * (1 << span_fraction_bits) + std::int64_t{step_} * rows);

        const std::int64_t divisor = 2 * down_, numerator = std::int64_t{2} * across_ * rows - shift();
        const auto cut = numerator / divisor; // towards zero, which is up for what is negative
        reached_ = static_cast<int>(cut * divisor < numerator ? cut + 1 : cut);
        excess_ = static_cast<int>(reached_ * divisor - numerator);
    }

    // The span's end on this row.
    int column_and_next_row() {
        const int column = position_ >> span_fraction_bits;
        position_ += step_;
        return column;
    }

    // What the line sets on this row.
    Run line_and_next_row() {
        const int first = std::max(reached_, 0);
        reach_next_row();
        const int last = flat() ? std::min(reached_ - 1, across_) : first;
        return leftwards_ ? Run{x_ - last, x_ - first} : Run{x_ + first, x_ + last};
    }

private:
    bool flat() const { return across_ >= down_; }
    // A half row between two columns belongs to a flat line's left part.
    int shift() const {
        if (!flat()) return down_;
        return leftwards_ ? across_ : across_ - 1;
    }
    void reach_next_row() {
        reached_ += across_ / down_;
        excess_ -= 2 * (across_ % down_);
        if (excess_ < 0) {
            excess_ += 2 * down_;
            ++reached_;
        }
    }

    int x_;
    bool leftwards_;
    int across_, down_;
    int position_, step_;  // of the span's end, in 1/256 pixels
    int reached_, excess_; // the quotient, and by how much it exceeds the fraction
};

// A side of few rows in a picture of few columns: how far the row's run reaches, span and line together.
//
// Over so few rows the span falls short by less than half a pixel, so that it touches what the line sets. And the line
// needs no exact fractions: it is stepped with 16 fractional bits, upwards of the true place by less than 1 / 512,
// while two places that are told apart lie 1 / 256 apart at least.
class ShortSide {
public:
    static constexpr int most_rows = 128;

    enum class Place : std::uint8_t { left, right };

    ShortSide(const Corner& upper, const Corner& lower, Place place)
        : outermost_(place == Place::left ? std::min(upper.x, lower.x) : std::max(upper.x, lower.x)),
          span_(upper.x << span_fraction_bits) {
        const bool leftwards = lower.x < upper.x;
        const int across = std::abs(lower.x - upper.x), down = lower.y - upper.y;
        const int step = (across << line_fraction_bits) / down;
        const int span_step = step >> (line_fraction_bits - span_fraction_bits);
        span_step_ = leftwards ? -span_step : span_step;
        line_step_ = leftwards ? -step : step + 1;
        line_ = (upper.x << line_fraction_bits) +
                (across < down ? steep_start(leftwards, place) : flat_start(leftwards, place));
    }

    int column() const { return span_ >> span_fraction_bits; } // the span's end
    // The outer end of the line's pixels, of a left side and of a right one.
    int left_line_end() const { return std::max((line_ >> line_fraction_bits) + 1, outermost_); }
    int right_line_end() const { return std::min(line_ >> line_fraction_bits, outermost_); }
    void next_row() {
        span_ += span_step_;
        line_ += line_step_;
    }

private:
    static constexpr int line_fraction_bits = 16;
    static constexpr int one = 1 << line_fraction_bits;

    // Rounds to the nearest column, halves towards the upper end: a little less or a little more than a half, with room
    // for the steps' excess.
    static int steep_start(bool leftwards, Place place) {
        const int half = leftwards ? one / 2 + one / 1024 : one / 2 - 3 * one / 1024;
        return place == Place::left ? half - one : half; // left_line_end() is one column further
    }
    // Where the line passes from one row to the next: the row's lower end on the side where it runs outwards, its upper
    // end where it runs inwards.
    int flat_start(bool leftwards, Place place) const {
        const bool outwards = leftwards == (place == Place::left);
        return (outwards ? line_step_ : 0) - (line_step_ >> 1);
    }

    int outermost_;
    int span_, span_step_ = 0;
    int line_, line_step_ = 0;
};
