// Circles, ellipses and arcs.
//
// The outline is evaluated, not walked: where it is flatter than a diagonal there is one pixel a column, elsewhere one
// pixel a row, each computed from the figure's equation. So only the columns and rows inside the clip rectangle cost
// anything, whatever the radius. The half-axes are rounded to whole pixels. All four quadrants are mirror images of
// one, in which y points upwards here.
#include "drawing/drawing.h"
#include "drawing/plotter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double full_turn = 2 * std::numbers::pi;

// An angle's remainder within 0 .. full_turn.
double within_turn(double angle) {
    const double rest = std::fmod(angle, full_turn);
    return rest < 0 ? rest + full_turn : rest;
}

// The other coordinate of an ellipse with this half-axis along the given coordinate and that one across it.
double height_at(double along, double half_axis, double other_half_axis) {
    if (half_axis == 0) return other_half_axis;
    if (along >= half_axis) return 0;
    return other_half_axis / half_axis * std::sqrt((half_axis - along) * (half_axis + along));
}

double share(double part, double whole) { return whole > 0 ? std::clamp(part / whole, -1.0, 1.0) : 0; }

// The pixels of one quadrant, relative to the centre.
class Quadrant {
public:
    Quadrant(std::int64_t half_width, std::int64_t half_height)
        : half_width_(static_cast<double>(half_width)), half_height_(static_cast<double>(half_height)) {
        const double diagonal = std::hypot(half_width_, half_height_);
        last_column_ = diagonal > 0 ? static_cast<std::int64_t>(half_width_ / diagonal * half_width_) : 0;
        rows_ = top_of(last_column_);
        join();
    }

    double half_width() const { return half_width_; }
    double half_height() const { return half_height_; }

    // Columns 0 .. last_column() have one pixel each, at top_of() the column.
    std::int64_t last_column() const { return last_column_; }
    std::int64_t top_of(std::int64_t column) const {
        return std::max(rows_, whole_pixel(height_at(static_cast<double>(column), half_width_, half_height_)));
    }
    // Rows 0 .. rows() - 1, which lie below those, have one pixel each, at side_of() the row.
    std::int64_t rows() const { return rows_; }
    std::int64_t side_of(std::int64_t row) const {
        return whole_pixel(height_at(static_cast<double>(row), half_height_, half_width_));
    }

    // Angles of the pixels, up to a quarter turn, measured as if both half-axes were equal.
    double angle_of_column(std::int64_t column) const {
        return std::acos(share(static_cast<double>(column), half_width_));
    }
    double angle_of_row(std::int64_t row) const { return std::asin(share(static_cast<double>(row), half_height_)); }

private:
    // Fits the last column and the first row below it to each other: no gap, and no corner pixel too many.
    void join() {
        const std::int64_t next = rows_ == 0 ? whole_pixel(half_width_) + 1 : side_of(rows_ - 1);
        last_column_ = std::max(last_column_, next - 1);
        if (last_column_ > 0 && next <= last_column_ && top_of(last_column_ - 1) == rows_) --last_column_;
    }

    double half_width_, half_height_;
    std::int64_t last_column_ = 0;
    std::int64_t rows_ = 0;
};

// Which part of the outline is drawn.
class Sweep {
public:
    Sweep(double start, double end) {
        length_ = end - start;
        if (length_ < 0) length_ = within_turn(length_);
        start_ = within_turn(start);
    }

    bool whole() const { return length_ >= full_turn; }
    double start() const { return start_; }
    double end() const { return start_ + length_; }
    // Takes the pixel at this angle in, which is the nearest one to an end.
    void reach_start(double angle) {
        const double missing = nearest_turn(start_ - angle);
        if (missing <= 0) return;
        start_ -= missing;
        length_ += missing;
    }
    void reach_end(double angle) { length_ += std::max(nearest_turn(angle - end()), 0.0); }
    bool covers(double angle) const {
        const double past_start = within_turn(angle - start_);
        return past_start <= length_ + slack || past_start >= full_turn - slack;
    }

private:
    // Less than a pixel of the largest figure, more than the rounding of the angles.
    static constexpr double slack = 1e-10;

    static double nearest_turn(double angle) { return std::remainder(angle, full_turn); }

    double start_ = 0, length_ = 0;
};

// Pixel of the outline nearest to an angle, with the angle that it counts as.
struct OutlinePixel {
    std::int64_t x, y;
    double angle;
};

// An angle of the first quadrant, seen in the quadrant of the signs.
double mirrored_angle(double angle, bool left, bool below) {
    const double upper = left ? std::numbers::pi - angle : angle;
    return below ? full_turn - upper : upper;
}

OutlinePixel outline_pixel(const Quadrant& quadrant, double angle) {
    const double x = std::cos(angle) * quadrant.half_width();
    const double y = std::sin(angle) * quadrant.half_height();
    const std::int64_t column = whole_pixel(std::abs(x));
    const std::int64_t row = whole_pixel(std::abs(y));
    const bool by_column = column <= quadrant.last_column() && row >= quadrant.rows();
    const double first = by_column ? quadrant.angle_of_column(column) : quadrant.angle_of_row(row);
    const std::int64_t across = by_column ? column : quadrant.side_of(row);
    const std::int64_t up = by_column ? quadrant.top_of(column) : row;
    return {x < 0 ? -across : across, y < 0 ? -up : up, mirrored_angle(first, x < 0, y < 0)};
}

struct Centre {
    std::int64_t x, y;
};

// Calls visit(column, left side?) for every column 0 .. last, to both sides of the centre, that the clip shows.
template <typename Visit>
void for_each_shown(std::int64_t centre, std::int64_t last, int clip_first, int clip_last, Visit visit) {
    const std::int64_t from = std::max<std::int64_t>(clip_first - centre, -last);
    const std::int64_t to = std::min<std::int64_t>(clip_last - centre, last);
    for (std::int64_t offset = from; offset <= to; ++offset)
        visit(offset);
}

template <typename Keep>
void plot_outline(Plotter& plotter, const Centre& centre, const Quadrant& quadrant, Keep keep) {
    const Rectangle& clip = plotter.clip();
    for_each_shown(centre.x, quadrant.last_column(), clip.x1, clip.x2, [&](std::int64_t x) {
        const std::int64_t top = quadrant.top_of(std::abs(x));
        const double angle = quadrant.angle_of_column(std::abs(x));
        if (keep(mirrored_angle(angle, x < 0, false))) plotter.pixel(centre.x + x, centre.y - top);
        if (keep(mirrored_angle(angle, x < 0, true))) plotter.pixel(centre.x + x, centre.y + top);
    });
    for_each_shown(centre.y, quadrant.rows() - 1, clip.y1, clip.y2, [&](std::int64_t y) {
        const std::int64_t side = quadrant.side_of(std::abs(y));
        const double angle = quadrant.angle_of_row(std::abs(y));
        // On the screen y grows downwards: positive offsets are the lower half.
        if (keep(mirrored_angle(angle, false, y > 0))) plotter.pixel(centre.x + side, centre.y + y);
        if (keep(mirrored_angle(angle, true, y > 0))) plotter.pixel(centre.x - side, centre.y + y);
    });
}

// The outline and all that it encloses: rows in the middle, above and below them the columns' remainders.
void plot_filled(Plotter& plotter, const Centre& centre, const Quadrant& quadrant) {
    const Rectangle& clip = plotter.clip();
    for_each_shown(centre.y, quadrant.rows() - 1, clip.y1, clip.y2, [&](std::int64_t y) {
        const std::int64_t side = quadrant.side_of(std::abs(y));
        plotter.across(centre.x - side, centre.x + side, centre.y + y);
    });
    for_each_shown(centre.x, quadrant.last_column(), clip.x1, clip.x2, [&](std::int64_t x) {
        const std::int64_t top = quadrant.top_of(std::abs(x));
        plotter.down(centre.x + x, centre.y - top, centre.y - quadrant.rows());
        plotter.down(centre.x + x, centre.y + quadrant.rows(), centre.y + top);
    });
}

void plot_arc(Plotter& plotter, const Centre& centre, const Quadrant& quadrant, Sweep sweep) {
    sweep.reach_start(outline_pixel(quadrant, sweep.start()).angle);
    sweep.reach_end(outline_pixel(quadrant, sweep.end()).angle);
    plot_outline(plotter, centre, quadrant, [&](double angle) { return sweep.covers(angle); });
}

void plot_radius(Plotter& plotter, const Centre& centre, const Quadrant& quadrant, double angle) {
    const OutlinePixel end = outline_pixel(quadrant, angle);
    plot_line(plotter, centre.x, centre.y, centre.x + end.x, centre.y - end.y);
}

Quadrant quadrant_of(double radius, double aspect) {
    const double longer = std::min(radius, 1e30);
    const double shorter = aspect > 1 ? longer / aspect : longer * aspect;
    const std::int64_t half_width = whole_pixel(aspect > 1 ? shorter : longer);
    const std::int64_t half_height = whole_pixel(aspect > 1 ? longer : shorter);
    return {half_width, half_height};
}

} // namespace

void draw_circle(Canvas& canvas, double x, double y, double radius, std::uint32_t colour, double aspect, double start,
                 double end, bool filled) {
    if (!are_numbers({x, y}) || !(radius >= 0) || !(aspect > 0) || !std::isfinite(start) || !std::isfinite(end)) return;
    Plotter plotter(canvas, colour);
    if (plotter.clip().empty()) return;

    const Centre centre{whole_pixel(x), whole_pixel(y)};
    const Quadrant quadrant = quadrant_of(radius, aspect);
    const Sweep sweep(std::abs(start), std::abs(end));
    if (!sweep.whole())
        plot_arc(plotter, centre, quadrant, sweep);
    else if (filled)
        plot_filled(plotter, centre, quadrant);
    else
        plot_outline(plotter, centre, quadrant, [](double) { return true; });
    if (start < 0) plot_radius(plotter, centre, quadrant, std::abs(start));
    if (end < 0) plot_radius(plotter, centre, quadrant, std::abs(end));
    canvas.pen_x = x;
    canvas.pen_y = y;
}
