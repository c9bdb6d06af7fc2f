// Triangles: rows between two edges that are stepped with 8 fractional bits, closed by the outline.
//
// All divisions cut towards zero. An edge therefore falls short of its true place by up to a pixel or two at the far
// end of a long side, and the outline covers the gap.
#include "drawing/triangle.h"

#include "drawing/plotter.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int fraction_bits = 8;

struct Corner {
    std::int64_t x, y;
};
using Corners = std::array<Corner, 3>;

// One side of the filled rows: where it is on the row `top`, and how far it goes a row, in 1/256 pixels.
struct Edge {
    std::int64_t start, step, top;

    Edge(const Corner& from, const Corner& to)
        : start(from.x << fraction_bits), step(((to.x - from.x) << fraction_bits) / (to.y - from.y)), top(from.y) {}

    std::int64_t on_row(std::int64_t row) const { return start + step * (row - top); }
};

// The pixels from one end to the other, both included, whichever lies to the right.
class RowFiller {
public:
    explicit RowFiller(Plotter& plotter) : plotter_(plotter), left_(plotter.clip().x1), right_(plotter.clip().x2) {}

    void fill(std::int64_t one_end, std::int64_t other_end, int row) {
        if (one_end > triangle_last_column || other_end < 0) return;
        const int from = static_cast<int>(std::max<std::int64_t>(one_end, 0));
        const int to = static_cast<int>(std::min<std::int64_t>(other_end, triangle_last_column));
        // ODDITY triangle-skips-column-zero (kept): a row of which only the screen's first column would show is left
        // to the outline.
        if (from == 0 && to == 0) return;
        const int first = std::max(std::min(from, to), left_), last = std::min(std::max(from, to), right_);
        if (first > last) return;
        plotter_.fill_inside(first, last, row);
        least_ = std::min(least_, first);
        most_ = std::max(most_, last);
    }
    // The rectangle around what was filled, when these are the rows.
    Rectangle filled(int first_row, int last_row) const { return {least_, first_row, most_, last_row}; }

private:
    Plotter& plotter_;
    const int left_, right_;
    int least_ = triangle_last_column + 1, most_ = -1;
};

void fill_rows(Plotter& plotter, const Edge& left, const Edge& right, const Corners& corners) {
    const Rectangle& clip = plotter.clip();
    const std::int64_t first = std::max<std::int64_t>({corners[0].y, 0, clip.y1});
    const std::int64_t last = std::min<std::int64_t>({corners[2].y, triangle_last_row, clip.y2});
    std::int64_t at_left = left.on_row(first), at_right = right.on_row(first);
    RowFiller filler(plotter);
    for (int row = static_cast<int>(first); row <= last; ++row) {
        filler.fill(at_left >> fraction_bits, at_right >> fraction_bits, row);
        at_left += left.step;
        at_right += right.step;
    }
    plotter.touch(filler.filled(static_cast<int>(first), static_cast<int>(last)));
}

void draw_outline(Plotter& plotter, const Corners& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Corner &from = corners[i], &to = corners[(i + 1) % corners.size()];
        plot_line(plotter, from.x, from.y, to.x, to.y);
    }
}

void order_by_row(Corners& corners) {
    const auto order = [&](std::size_t upper, std::size_t lower) {
        if (corners[upper].y > corners[lower].y) std::swap(corners[upper], corners[lower]);
    };
    order(0, 1);
    order(1, 2);
    order(0, 1);
}

void order_by_column(Corner& left, Corner& right) {
    if (left.x > right.x) std::swap(left, right);
}

void draw_triangle(Plotter& plotter, Corners corners) {
    order_by_row(corners);
    auto& [top, middle, bottom] = corners;
    if (top.y > triangle_last_row || bottom.y < 0) return;
    if (top.y != middle.y && middle.y != bottom.y) {
        const Corner opposite{top.x + (middle.y - top.y) * (bottom.x - top.x) / (bottom.y - top.y), middle.y};
        draw_triangle(plotter, {top, middle, opposite});
        draw_triangle(plotter, {middle, opposite, bottom});
        return;
    }
    if (top.y != middle.y) {
        order_by_column(middle, bottom);
        fill_rows(plotter, {top, middle}, {top, bottom}, corners);
    } else if (middle.y != bottom.y) {
        order_by_column(top, middle);
        fill_rows(plotter, {top, bottom}, {middle, bottom}, corners);
    }
    draw_outline(plotter, corners);
}

} // namespace

void DRAWTRIANGLE(Canvas& canvas, std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2, std::int16_t x3,
                  std::int16_t y3, std::uint32_t colour) {
    Plotter plotter(canvas, colour);
    if (plotter.clip().empty()) return;
    draw_triangle(plotter, {{{x1, y1}, {x2, y2}, {x3, y3}}});
}
