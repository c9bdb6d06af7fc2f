#include "icon.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {

constexpr int channels = 4;
constexpr std::size_t alpha = 3;

// Sums of blue, green, red, each times alpha, and of alpha.
using Sums = std::array<double, channels>;

void add_pixel(Sums& sums, std::uint32_t pixel, double share) {
    const double weight = share * (pixel >> 24);
    for (std::size_t channel = 0; channel < alpha; ++channel)
        sums[channel] += weight * (pixel >> 8 * channel & 0xFF);
    sums[alpha] += weight;
}

std::uint32_t pixel_of(const Sums& sums) {
    if (sums[alpha] == 0) return 0;
    auto pixel = static_cast<std::uint32_t>(std::lround(sums[alpha])) << 24;
    for (std::size_t channel = 0; channel < alpha; ++channel)
        pixel |= static_cast<std::uint32_t>(std::lround(sums[channel] / sums[alpha])) << 8 * channel;
    return pixel;
}

// How much of the pixel from `at` to `at` + 1 lies between two places.
double share_of(int at, double from, double to) {
    return std::max(0.0, std::min<double>(at + 1, to) - std::max<double>(at, from));
}

} // namespace

ImageHandle scaled_icon(const Image& icon, int size) {
    ImageHandle scaled = create_image(size, size, 0, 32);
    const double step = static_cast<double>(icon.width()) / size;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const double left = x * step, top = y * step;
            Sums sums{};
            for (int from_y = static_cast<int>(top); from_y < top + step && from_y < icon.height(); ++from_y)
                for (int from_x = static_cast<int>(left); from_x < left + step && from_x < icon.width(); ++from_x)
                    add_pixel(sums, icon.pixel(from_x, from_y),
                              share_of(from_x, left, left + step) * share_of(from_y, top, top + step) / (step * step));
            scaled->set_pixel(x, y, pixel_of(sums));
        }
    return scaled;
}
