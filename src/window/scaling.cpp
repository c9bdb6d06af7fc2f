#include "window/scaling.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

namespace {

// Of the size that would fit, what a whole-number scale must fill to be preferred.
constexpr double sharp_enough = 7.0 / 8.0;

int scaled(int length, double scale) { return std::max(1, static_cast<int>(std::lround(length * scale))); }

// The picture's 32-bit words of one row.
void read_row(const Image& picture, int y, std::vector<std::uint32_t>& words) {
    std::memcpy(words.data(), picture.row(y).data(), words.size() * sizeof(std::uint32_t));
}

// Every word so many times; the first one only `first` times, and no more than the target holds.
void repeat_words(std::span<const std::uint32_t> words, int scale, int first, std::span<std::uint32_t> target) {
    auto next = target.begin();
    auto times = first;
    for (auto word = words.begin(); next != target.end(); ++word, times = scale)
        next = std::fill_n(next, std::min<std::ptrdiff_t>(times, target.end() - next), *word);
}

void draw_sharp(const Image& picture, const Placement& placement, const Rectangle& area,
                std::span<std::uint32_t> window, std::size_t pitch) {
    const int scale = placement.width / placement.picture.width;
    const int left = (area.x1 - placement.x) / scale;
    const int first_times = scale - (area.x1 - placement.x) % scale;
    const auto length = static_cast<std::size_t>(area.x2 - area.x1 + 1);
    std::vector<std::uint32_t> source(static_cast<std::size_t>(placement.picture.width));
    const std::span<std::uint32_t> words = std::span(source).subspan(static_cast<std::size_t>(left));
    for (int y = area.y1; y <= area.y2; ++y) {
        const auto start = static_cast<std::size_t>(y) * pitch + static_cast<std::size_t>(area.x1);
        const std::span<std::uint32_t> target = window.subspan(start, length);
        if (y > area.y1 && (y - placement.y) % scale != 0) {
            std::copy_n(window.begin() + static_cast<std::ptrdiff_t>(start - pitch), length, target.begin());
            continue;
        }
        read_row(picture, (y - placement.y) / scale, source);
        if (scale == 1)
            std::copy_n(words.begin(), length, target.begin());
        else
            repeat_words(words, scale, first_times, target);
    }
}

// Weights are in 256ths, so that two channels can be weighed in one multiplication.
constexpr std::uint32_t unity = 256;

struct Tap {
    int index;
    std::uint32_t weight;
};
using Taps = std::vector<Tap>; // weights add up to unity

// The source pixels that make up one pixel of a row or column scaled from `from` to `to` pixels: a triangle around its
// centre, as wide as the distance of two pixels of the coarser side.
Taps taps_of(int pixel, int from, int to) {
    const double ratio = static_cast<double>(from) / to;
    const double centre = (pixel + 0.5) * ratio - 0.5;
    const double reach = std::max(1.0, ratio);
    Taps taps;
    double sum = 0;
    for (int i = static_cast<int>(std::floor(centre - reach)) + 1; i < centre + reach; ++i)
        sum += 1 - std::abs(i - centre) / reach;
    std::uint32_t given = 0;
    for (int i = static_cast<int>(std::floor(centre - reach)) + 1; i < centre + reach; ++i) {
        const double share = (1 - std::abs(i - centre) / reach) / sum;
        const auto weight = static_cast<std::uint32_t>(std::lround(share * unity));
        taps.push_back({std::clamp(i, 0, from - 1), std::min(weight, unity - given)});
        given += taps.back().weight;
    }
    auto heaviest = std::max_element(taps.begin(), taps.end(), [](Tap a, Tap b) { return a.weight < b.weight; });
    heaviest->weight += unity - given;
    return taps;
}

std::vector<Taps> taps_of_range(int first, int last, int from, int to) {
    std::vector<Taps> all;
    for (int pixel = first; pixel <= last; ++pixel)
        all.push_back(taps_of(pixel, from, to));
    return all;
}

// A weighed sum of pixels, red and blue in one word.
struct Blend {
    std::uint32_t red_blue = 0x00800080, green = 0x80; // halves round up

    void add(std::uint32_t pixel, std::uint32_t weight) {
        red_blue += (pixel & 0x00FF00FF) * weight;
        green += (pixel >> 8 & 0xFF) * weight;
    }
    std::uint32_t pixel() const { return 0xFF000000 | (red_blue >> 8 & 0x00FF00FF) | (green & 0xFF00); }
};

// One row of the window's height, still of the picture's width.
void blend_rows(const Image& picture, const Taps& taps, std::vector<std::uint32_t>& row) {
    std::vector<Blend> sums(row.size());
    std::vector<std::uint32_t> source(row.size());
    for (const Tap& tap : taps) {
        if (tap.weight == 0) continue;
        read_row(picture, tap.index, source);
        for (std::size_t x = 0; x < row.size(); ++x)
            sums[x].add(source[x], tap.weight);
    }
    std::transform(sums.begin(), sums.end(), row.begin(), [](const Blend& sum) { return sum.pixel(); });
}

std::uint32_t blend_pixels(const std::vector<std::uint32_t>& row, const Taps& taps) {
    Blend sum;
    for (const Tap& tap : taps)
        sum.add(row[static_cast<std::size_t>(tap.index)], tap.weight);
    return sum.pixel();
}

void draw_smooth(const Image& picture, const Placement& placement, const Rectangle& area,
                 std::span<std::uint32_t> window, std::size_t pitch) {
    const std::vector<Taps> columns =
        taps_of_range(area.x1 - placement.x, area.x2 - placement.x, placement.picture.width, placement.width);
    std::vector<std::uint32_t> row(static_cast<std::size_t>(placement.picture.width));
    for (int y = area.y1; y <= area.y2; ++y) {
        blend_rows(picture, taps_of(y - placement.y, placement.picture.height, placement.height), row);
        std::uint32_t* target = &window[static_cast<std::size_t>(y) * pitch + static_cast<std::size_t>(area.x1)];
        std::transform(columns.begin(), columns.end(), target,
                       [&](const Taps& taps) { return blend_pixels(row, taps); });
    }
}

} // namespace

Placement place_picture(Size picture, Size window) {
    const double fitting = std::min(static_cast<double>(window.width) / picture.width,
                                    static_cast<double>(window.height) / picture.height);
    const double whole = std::floor(fitting);
    Placement placement;
    placement.picture = picture;
    placement.window = window;
    placement.sharp = whole >= 1 && whole >= fitting * sharp_enough;
    const double scale = placement.sharp ? whole : fitting;
    placement.width = scaled(picture.width, scale);
    placement.height = scaled(picture.height, scale);
    placement.x = (window.width - placement.width) / 2;
    placement.y = (window.height - placement.height) / 2;
    return placement;
}

std::optional<Point> picture_point(const Placement& placement, double x, double y) {
    const double picture_x = (x - placement.x) * placement.picture.width / placement.width;
    const double picture_y = (y - placement.y) * placement.picture.height / placement.height;
    const bool inside =
        picture_x >= 0 && picture_y >= 0 && picture_x < placement.picture.width && picture_y < placement.picture.height;
    if (!inside) return std::nullopt;
    return Point{static_cast<int>(picture_x), static_cast<int>(picture_y)};
}

Rectangle window_area(const Placement& placement, const Rectangle& changed) {
    // Smoothing spreads a pixel over its neighbours.
    const int reach = placement.sharp ? 0 : 1;
    const double across = static_cast<double>(placement.width) / placement.picture.width;
    const double down = static_cast<double>(placement.height) / placement.picture.height;
    const Rectangle area{placement.x + static_cast<int>(std::floor((changed.x1 - reach) * across)) - reach,
                         placement.y + static_cast<int>(std::floor((changed.y1 - reach) * down)) - reach,
                         placement.x + static_cast<int>(std::ceil((changed.x2 + 1 + reach) * across)) - 1 + reach,
                         placement.y + static_cast<int>(std::ceil((changed.y2 + 1 + reach) * down)) - 1 + reach};
    const Rectangle picture{placement.x, placement.y, placement.x + placement.width - 1,
                            placement.y + placement.height - 1};
    const Rectangle window{0, 0, placement.window.width - 1, placement.window.height - 1};
    return intersection(area, intersection(picture, window));
}

void draw_scaled(const Image& picture, const Placement& placement, const Rectangle& area,
                 std::span<std::uint32_t> window, std::size_t pitch) {
    if (area.empty()) return;
    if (placement.sharp)
        draw_sharp(picture, placement, area, window, pitch);
    else
        draw_smooth(picture, placement, area, window, pitch);
}
