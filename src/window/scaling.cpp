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

// The picture's 32-bit words of one row, from a column on.
void read_row(const Image& picture, int y, std::size_t first, std::vector<std::uint32_t>& words) {
    const auto bytes = picture.row(y).subspan(first * sizeof(std::uint32_t), words.size() * sizeof(std::uint32_t));
    std::memcpy(words.data(), bytes.data(), bytes.size());
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
    const int left = (area.x1 - placement.x) / scale, right = (area.x2 - placement.x) / scale;
    const int first_times = scale - (area.x1 - placement.x) % scale;
    const auto length = static_cast<std::size_t>(area.x2 - area.x1 + 1);
    std::vector<std::uint32_t> words(static_cast<std::size_t>(right - left + 1));
    for (int y = area.y1; y <= area.y2; ++y) {
        const auto start = static_cast<std::size_t>(y) * pitch + static_cast<std::size_t>(area.x1);
        const std::span<std::uint32_t> target = window.subspan(start, length);
        if (y > area.y1 && (y - placement.y) % scale != 0) {
            std::copy_n(window.begin() + static_cast<std::ptrdiff_t>(start - pitch), length, target.begin());
            continue;
        }
        read_row(picture, (y - placement.y) / scale, static_cast<std::size_t>(left), words);
        if (scale == 1)
            std::copy_n(words.begin(), length, target.begin());
        else
            repeat_words(words, scale, first_times, target);
    }
}

constexpr std::uint32_t unity = 256; // of the weights

using Tap = Taps::Tap;

// Of one pixel: a triangle around its centre, as wide as the distance of two pixels of the coarser side.
std::vector<Tap> taps_of(int pixel, int from, int to) {
    const double ratio = static_cast<double>(from) / to;
    const double centre = (pixel + 0.5) * ratio - 0.5;
    const double reach = std::max(1.0, ratio);
    std::vector<Tap> taps;
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
    std::erase_if(taps, [](Tap tap) { return tap.weight == 0; });
    return taps;
}

constexpr std::uint16_t half = unity / 2; // so that halves round up

// One row of the window's height, still with the picture's columns, of which only those that are needed. A channel's
// weighed sum is never more than 255 * 256 + 128, so that 16 bits hold it.
class BlendedRow {
public:
    BlendedRow(int first, int last)
        : first_(static_cast<std::size_t>(first)), sums_(channels * static_cast<std::size_t>(last - first + 1)),
          blended_(sums_.size()) {}

    void blend(const Image& picture, std::span<const Tap> taps) {
        std::ranges::fill(sums_, half);
        for (const Tap& tap : taps)
            add(picture.row(tap.index).subspan(channels * first_, sums_.size()), tap.weight);
        for (std::size_t i = 0; i < sums_.size(); ++i)
            blended_[i] = static_cast<std::uint8_t>(sums_[i] >> 8);
    }

    // One pixel of the window.
    std::uint32_t pixel(std::span<const Tap> taps) const {
        std::uint32_t red_blue = half << 16 | half, green = half;
        for (const Tap& tap : taps) {
            const std::uint32_t word = word_at(static_cast<std::size_t>(tap.index));
            red_blue += (word & 0x00FF00FF) * tap.weight;
            green += (word >> 8 & 0xFF) * tap.weight;
        }
        return 0xFF000000 | (red_blue >> 8 & 0x00FF00FF) | (green & 0xFF00);
    }

private:
    static constexpr std::size_t channels = 4;

    void add(std::span<const std::uint8_t> source, std::uint32_t weight) {
        for (std::size_t i = 0; i < sums_.size(); ++i)
            sums_[i] = static_cast<std::uint16_t>(sums_[i] + source[i] * weight);
    }

    std::uint32_t word_at(std::size_t column) const {
        std::uint32_t word = 0;
        std::memcpy(&word, &blended_[channels * (column - first_)], sizeof word);
        return word;
    }

    const std::size_t first_; // column
    std::vector<std::uint16_t> sums_;
    std::vector<std::uint8_t> blended_;
};

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

Taps::Taps(int from, int to) {
    for (int pixel = 0; pixel < to; ++pixel) {
        const std::vector<Tap> taps = taps_of(pixel, from, to);
        taps_.insert(taps_.end(), taps.begin(), taps.end());
        ends_.push_back(taps_.size());
    }
}

std::span<const Taps::Tap> Taps::of(int pixel) const {
    const auto number = static_cast<std::size_t>(pixel);
    const std::size_t begin = number == 0 ? 0 : ends_[number - 1];
    return std::span(taps_).subspan(begin, ends_[number] - begin);
}

Scaler::Scaler(const Placement& placement)
    : placement_(placement), columns_(placement.picture.width, placement.sharp ? 0 : placement.width),
      rows_(placement.picture.height, placement.sharp ? 0 : placement.height) {}

void Scaler::draw(const Image& picture, const Rectangle& area, std::span<std::uint32_t> window,
                  std::size_t pitch) const {
    if (area.empty()) return;
    if (placement_.sharp)
        draw_sharp(picture, placement_, area, window, pitch);
    else
        draw_smooth(picture, area, window, pitch);
}

void Scaler::draw_smooth(const Image& picture, const Rectangle& area, std::span<std::uint32_t> window,
                         std::size_t pitch) const {
    BlendedRow row(columns_.of(area.x1 - placement_.x).front().index, columns_.of(area.x2 - placement_.x).back().index);
    for (int y = area.y1; y <= area.y2; ++y) {
        row.blend(picture, rows_.of(y - placement_.y));
        const auto target = window.subspan(static_cast<std::size_t>(y) * pitch);
        for (int x = area.x1; x <= area.x2; ++x)
            target[static_cast<std::size_t>(x)] = row.pixel(columns_.of(x - placement_.x));
    }
}
