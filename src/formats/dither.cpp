#include "formats/dither.h"

#include "model/colours.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

constexpr std::uint32_t colour_bits = 0xFFFFFF;
constexpr int opaque_from = 128;
constexpr std::size_t channels = 3;

using Channels = std::array<int, channels>;

Channels channels_of(std::uint32_t colour) {
    return {static_cast<int>(colour >> 16 & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
            static_cast<int>(colour & 0xFF)};
}

std::uint32_t colour_of(const Channels& values) {
    std::uint32_t colour = 0;
    for (const int value : values)
        colour = colour << 8 | static_cast<std::uint32_t>(std::clamp(value, 0, 255));
    return colour;
}

// A picture's pixels one by one, in the order of the rows.
Pixels converted(const Image& picture, auto&& index_at) {
    Pixels pixels;
    pixels.reserve(static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height()));
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            pixels.push_back(index_at(x, y, picture.pixel(x, y)));
    return pixels;
}

Pixels nearest_entries(const Image& picture, const NearestPaletteEntry& nearest) {
    return converted(picture, [&](int, int, std::uint32_t pixel) { return nearest(pixel & colour_bits); });
}

// --- ordered --------------------------------------------------------------------------------------------------------

constexpr int pattern_size = 8;
constexpr int strength = 32; // from the darkest to the brightest of the pattern, in steps of a channel

// The thresholds of the pattern, 0 .. 63: each bit of the place, from the lowest on, decides about ever smaller steps.
constexpr int threshold(int x, int y) {
    int value = 0;
    for (int bit = 0; bit < 3; ++bit) {
        const int across = x >> bit & 1, down = y >> bit & 1;
        value = value << 2 | (across ^ down) << 1 | down;
    }
    return value;
}

Pixels in_a_pattern(const Image& picture, const NearestPaletteEntry& nearest,
                    const std::array<std::uint32_t, 256>& palette) {
    constexpr int cells = pattern_size * pattern_size;
    return converted(picture, [&](int x, int y, std::uint32_t pixel) {
        const std::uint8_t plain = nearest(pixel & colour_bits);
        if ((palette[plain] & colour_bits) == (pixel & colour_bits)) return plain;
        Channels values = channels_of(pixel);
        const int offset = (2 * threshold(x % pattern_size, y % pattern_size) + 1 - cells) * strength / (2 * cells);
        for (int& value : values)
            value += offset;
        return nearest(colour_of(values));
    });
}

// --- Floyd-Steinberg ------------------------------------------------------------------------------------------------

// What a row of pixels is off by, in sixteenths; a cell more at either end.
class ErrorRow {
public:
    explicit ErrorRow(int width) : errors_(static_cast<std::size_t>(width) + 2) {}

    Channels& at(int x) { return errors_[static_cast<std::size_t>(x + 1)]; }
    void add(int x, const Channels& error, int sixteenths) {
        for (std::size_t c = 0; c < channels; ++c)
            at(x)[c] += error[c] * sixteenths;
    }
    void clear() { std::ranges::fill(errors_, Channels{}); }

private:
    std::vector<Channels> errors_;
};

Pixels with_error_handed_on(const Image& picture, const NearestPaletteEntry& nearest,
                            const std::array<std::uint32_t, 256>& palette) {
    ErrorRow here(picture.width()), below(picture.width());
    return converted(picture, [&](int x, int y, std::uint32_t pixel) {
        if (x == 0 && y > 0) {
            std::swap(here, below);
            below.clear();
        }
        if (static_cast<int>(pixel >> 24) < opaque_from) return nearest(pixel & colour_bits);
        Channels wanted = channels_of(pixel);
        for (std::size_t c = 0; c < channels; ++c)
            wanted[c] = std::clamp(wanted[c] + here.at(x)[c] / 16, 0, 255);
        const std::uint8_t index = nearest(colour_of(wanted));
        const Channels got = channels_of(palette[index]);
        Channels error{};
        for (std::size_t c = 0; c < channels; ++c)
            error[c] = wanted[c] - got[c];
        here.add(x + 1, error, 7);
        below.add(x - 1, error, 3);
        below.add(x, error, 5);
        below.add(x + 1, error, 1);
        return index;
    });
}

} // namespace

const char* dither_name(Dither dither) {
    constexpr std::array<const char*, dithers> names{"none", "ordered", "Floyd-Steinberg"};
    return names[static_cast<std::size_t>(dither)];
}

Pixels dithered(const Image& picture, const std::array<std::uint32_t, 256>& palette, Dither dither) {
    const NearestPaletteEntry nearest(palette);
    switch (dither) {
    case Dither::ordered: return in_a_pattern(picture, nearest, palette);
    case Dither::floyd_steinberg: return with_error_handed_on(picture, nearest, palette);
    case Dither::none: break;
    }
    return nearest_entries(picture, nearest);
}
