#include "drawing/plotter.h"

#include <algorithm>
#include <cmath>

std::int64_t whole_pixel(double coordinate) {
    constexpr double limit = farthest_coordinate;
    return static_cast<std::int64_t>(std::nearbyint(std::clamp(coordinate, -limit, limit)));
}

bool are_numbers(std::initializer_list<double> coordinates) {
    return std::ranges::none_of(coordinates, [](double value) { return std::isnan(value); });
}

namespace {

// A colour as the raw value of a depth: an index is the colour's low byte.
std::uint32_t colour_to_raw(std::uint32_t colour, int bytes_per_pixel) {
    return bytes_per_pixel == 1 ? colour & 0xFF : argb_to_raw(colour, bytes_per_pixel);
}

} // namespace

Plotter::Plotter(Canvas& canvas, std::uint32_t colour)
    : canvas_(canvas), clip_(canvas.clip()), pixels_(canvas.image().bytes().data()), pitch_(canvas.image().pitch()),
      bytes_per_pixel_(canvas.image().bytes_per_pixel()), raw_(colour_to_raw(colour, bytes_per_pixel_)) {}

Plotter::~Plotter() { canvas_.add_damage(touched_); }

void Plotter::pixel(std::int64_t x, std::int64_t y) { across(x, x, y); }

void Plotter::across(std::int64_t x1, std::int64_t x2, std::int64_t y) {
    if (y < clip_.y1 || y > clip_.y2 || x1 > clip_.x2 || x2 < clip_.x1 || x1 > x2) return;
    const int left = static_cast<int>(std::max<std::int64_t>(x1, clip_.x1));
    const int right = static_cast<int>(std::min<std::int64_t>(x2, clip_.x2));
    const int row = static_cast<int>(y);
    with_rows([&](auto rows) { rows.fill(left, right, row); });
    touch({left, row, right, row});
}

void Plotter::down(std::int64_t x, std::int64_t y1, std::int64_t y2) {
    if (x < clip_.x1 || x > clip_.x2 || y1 > clip_.y2 || y2 < clip_.y1 || y1 > y2) return;
    const int first = static_cast<int>(std::max<std::int64_t>(y1, clip_.y1));
    const int last = static_cast<int>(std::min<std::int64_t>(y2, clip_.y2));
    const int column = static_cast<int>(x);
    with_rows([&](auto rows) {
        for (int y = first; y <= last; ++y)
            rows.set(column, y);
    });
    touch({column, first, column, last});
}
