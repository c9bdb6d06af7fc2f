#include "drawing/plotter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

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

template <typename Pixel>
void fill_run(std::uint8_t* first, std::int64_t count, std::uint32_t raw) {
    const Pixel pixel = static_cast<Pixel>(raw);
    for (std::int64_t i = 0; i < count; ++i)
        std::memcpy(first + i * std::int64_t{sizeof pixel}, &pixel, sizeof pixel);
}

} // namespace

Plotter::Plotter(Canvas& canvas, std::uint32_t colour)
    : canvas_(canvas), image_(canvas.image()), clip_(canvas.clip()),
      raw_(colour_to_raw(colour, image_.bytes_per_pixel())) {}

Plotter::~Plotter() { canvas_.add_damage(touched_); }

void Plotter::touch(int x1, int y1, int x2, int y2) { touched_ = bounding(touched_, {x1, y1, x2, y2}); }

void Plotter::pixel(std::int64_t x, std::int64_t y) { across(x, x, y); }

void Plotter::across(std::int64_t x1, std::int64_t x2, std::int64_t y) {
    if (y < clip_.y1 || y > clip_.y2) return;
    const int left = static_cast<int>(std::max<std::int64_t>(x1, clip_.x1));
    const int right = static_cast<int>(std::min<std::int64_t>(x2, clip_.x2));
    if (x1 > clip_.x2 || x2 < clip_.x1 || left > right) return;
    const int row = static_cast<int>(y);
    std::uint8_t* const first = image_.row(row).data() + left * image_.bytes_per_pixel();
    const int count = right - left + 1;
    switch (image_.bytes_per_pixel()) {
    case 1: fill_run<std::uint8_t>(first, count, raw_); break;
    case 2: fill_run<std::uint16_t>(first, count, raw_); break;
    default: fill_run<std::uint32_t>(first, count, raw_); break;
    }
    touch(left, row, right, row);
}

void Plotter::down(std::int64_t x, std::int64_t y1, std::int64_t y2) {
    const std::int64_t last = std::min<std::int64_t>(y2, clip_.y2);
    for (std::int64_t y = std::max<std::int64_t>(y1, clip_.y1); y <= last; ++y)
        pixel(x, y);
}
