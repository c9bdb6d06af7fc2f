// Triangles: rows between two sides that are stepped with 8 fractional bits, closed by the outline.
//
// A side is stepped in numbers that are cut, and falls short of its true place by up to a pixel or two at the far end
// of a long one; the outline covers the gap. What the outline sets on a row is found together with the row's span, so
// that most rows are one run of pixels.
#include "drawing/triangle.h"

#include "drawing/plotter.h"
#include "drawing/triangle_sides.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace {

using Corners = std::array<Corner, 3>;

// The four corners of a half: two sides over the same rows.
struct Half {
    Corner left_top, left_bottom, right_top, right_bottom;

    int top() const { return left_top.y; }
    int bottom() const { return left_bottom.y; }
};

// Draws halves of triangles into rows of one depth.
template <typename Rows>
class TrianglePainter {
public:
    TrianglePainter(Rows rows, const Rectangle& clip) : rows_(rows), clip_(clip) {}

    void draw(Corners corners) const {
        order_by_row(corners);
        const auto& [top, middle, bottom] = corners;
        if (top.y == bottom.y) return draw_row(corners);
        if (middle.y == bottom.y) return draw_flat_bottom(top, middle, bottom);
        if (top.y == middle.y) return draw_flat_top(top, middle, bottom);
        const Corner opposite{top.x + share(bottom.x - top.x, middle.y - top.y, bottom.y - top.y), middle.y};
        draw_flat_bottom(top, middle, opposite);
        draw_flat_top(middle, opposite, bottom);
    }

private:
    static void order_by_row(Corners& corners) {
        const auto order = [&](std::size_t upper, std::size_t lower) {
            if (corners[upper].y > corners[lower].y) std::swap(corners[upper], corners[lower]);
        };
        order(0, 1);
        order(1, 2);
        order(0, 1);
    }
    static void order_by_column(Corner& left, Corner& right) {
        if (left.x > right.x) std::swap(left, right);
    }

    // whole x part / parts, cut towards zero. The longer division takes several times as long.
    static int share(int whole, int part, int parts) {
        const std::int64_t product = std::int64_t{whole} * part;
        const int narrow = static_cast<int>(product);
        return narrow == product ? narrow / parts : static_cast<int>(product / parts);
    }

    // Whether the screen shows none of these rows; then not even the outline is drawn.
    static bool off_screen(int top, int bottom) { return top > triangle_last_row || bottom < 0; }

    void draw_row(const Corners& corners) const {
        const auto [least, greatest] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
        if (!off_screen(corners[0].y, corners[0].y)) fill({least, greatest}, corners[0].y);
    }
    void draw_flat_bottom(const Corner& top, Corner left, Corner right) const {
        if (off_screen(top.y, left.y)) return;
        order_by_column(left, right);
        draw_half({top, left, top, right}, left, right);
    }
    void draw_flat_top(Corner left, Corner right, const Corner& bottom) const {
        if (off_screen(left.y, bottom.y)) return;
        order_by_column(left, right);
        draw_half({left, bottom, right, bottom}, left, right);
    }

    // The sides, and the line between the corners on its flat end, which is in the runs when there is one a row.
    void draw_half(const Half& half, const Corner& left, const Corner& right) const {
        if (has_one_run_a_row(half)) return draw_runs(half);
        draw_sides(half);
        fill({left.x, right.x}, left.y);
    }

    void draw_sides(const Half& half) const {
        const int first = std::max(half.top(), clip_.y1), last = std::min(half.bottom(), clip_.y2);
        if (first > last) return;
        Side left(half.left_top, half.left_bottom, first), right(half.right_top, half.right_bottom, first);
        for (int row = first; row <= last; ++row) {
            const int from = left.column_and_next_row(), to = right.column_and_next_row();
            Run run = left.line_and_next_row();
            if (is_filled(from, to, row)) run = join(run, span_of(from, to), row);
            fill(join(run, right.line_and_next_row(), row), row);
        }
    }

    // Whether it is small, nothing of it is cut, and no row is the first column alone.
    bool has_one_run_a_row(const Half& half) const {
        return half.bottom() - half.top() <= ShortSide::most_rows &&
               std::min(half.left_top.x, half.left_bottom.x) >= std::max(clip_.x1, 1) &&
               std::max(half.right_top.x, half.right_bottom.x) <= std::min(clip_.x2, triangle_last_column) &&
               half.top() >= clip_.y1 && half.bottom() <= std::min(clip_.y2, triangle_last_row);
    }

    void draw_runs(const Half& half) const {
        ShortSide left(half.left_top, half.left_bottom, ShortSide::Place::left);
        ShortSide right(half.right_top, half.right_bottom, ShortSide::Place::right);
        for (int row = half.top(); row <= half.bottom(); ++row) {
            const auto [from, to] = std::minmax({left.column(), right.column()});
            rows_.fill(std::min(from, left.left_line_end()), std::max(to, right.right_line_end()), row);
            left.next_row();
            right.next_row();
        }
    }

    // Whether the span between two sides is drawn on a row.
    //
    // ODDITY triangle-skips-column-zero (kept): a row of which only the screen's first column would show is left to the
    // outline.
    static bool is_filled(int from, int to, int row) {
        return row <= triangle_last_row && from <= triangle_last_column && to >= 0 && (from > 0 || to > 0);
    }
    // Its pixels, also when the sides have crossed.
    static Run span_of(int from, int to) {
        const int first = std::max(from, 0), last = std::min(to, triangle_last_column);
        return {std::min(first, last), std::max(first, last)};
    }

    // The run of both; where they do not touch the first one is drawn at once.
    Run join(const Run& run, const Run& other, int row) const {
        if (run.joins(other)) return run.with(other);
        fill(run, row);
        return other;
    }

    void fill(const Run& run, int row) const {
        const int first = std::max(run.first, clip_.x1), last = std::min(run.last, clip_.x2);
        if (first <= last && row >= clip_.y1 && row <= clip_.y2) rows_.fill(first, last, row);
    }

    const Rows rows_;
    const Rectangle clip_;
};

Rectangle around(const Corners& corners) {
    const auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
    const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
    return {left, top, right, bottom};
}

} // namespace

void DRAWTRIANGLE(Canvas& canvas, std::int16_t x1, std::int16_t y1, std::int16_t x2, std::int16_t y2, std::int16_t x3,
                  std::int16_t y3, std::uint32_t colour) {
    const Corners corners{{{x1, y1}, {x2, y2}, {x3, y3}}};
    const Rectangle area = intersection(around(corners), canvas.clip());
    if (area.empty()) return;
    Plotter plotter(canvas, colour);
    plotter.with_rows([&](auto rows) { TrianglePainter(rows, canvas.clip()).draw(corners); });
    plotter.touch(area);
}
