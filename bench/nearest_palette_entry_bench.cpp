// Nearest palette entries for pictures of the dashboard's size, 64,000 pixels of a photograph and of noise, against the
// plain scan of all 256 entries. The exact same indices must come out.
#include "alternate.h"
#include "image/image.h"
#include "model/colours.h"
#include "pictures.h"

#include <benchmark/benchmark.h>

#include <functional>

namespace {

constexpr int rounds = 21;
constexpr int repetitions = 4; // imports a round, so that both sides of a round take about as long

using Palette = std::array<std::uint32_t, 256>;

// Sixteen pure colours, then fifteen ramps of sixteen shades each.
Palette ramps() {
    Palette palette{};
    for (std::uint32_t i = 0; i < 16; ++i)
        palette[i] = 0xFF000000 | (i & 4 ? 0xAA0000u : 0) | (i & 2 ? 0xAA00u : 0) | (i & 1 ? 0xAAu : 0) |
                     (i & 8 ? 0x555555u : 0);
    std::mt19937 random(7);
    for (std::uint32_t ramp = 1; ramp < 16; ++ramp) {
        const auto end = static_cast<std::uint32_t>(random()) | 0x606060;
        for (std::uint32_t shade = 0; shade < 16; ++shade) {
            std::uint32_t colour = 0xFF;
            for (int shift = 16; shift >= 0; shift -= 8)
                colour = colour << 8 | (end >> shift & 0xFF) * (shade + 1) / 16;
            palette[ramp * 16 + shade] = colour;
        }
    }
    return palette;
}

std::vector<std::uint32_t> colours_of(const Image& image) {
    std::vector<std::uint32_t> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colours.push_back(image.pixel(x, y));
    return colours;
}

// Every pixel another colour, so that nothing can be learnt from one pixel for the next.
std::vector<std::uint32_t> noise(std::size_t pixels) {
    std::mt19937 random(8);
    std::vector<std::uint32_t> colours(pixels);
    for (std::uint32_t& colour : colours)
        colour = static_cast<std::uint32_t>(random());
    return colours;
}

bool measure(const char* what, const Palette& palette, const std::vector<std::uint32_t>& colours) {
    std::vector<std::uint8_t> quick(colours.size()), scanned(colours.size());
    const auto quickly = [&] {
        for (int i = 0; i < repetitions; ++i) {
            const NearestPaletteEntry nearest(palette);
            std::ranges::transform(colours, quick.begin(), std::cref(nearest));
            benchmark::DoNotOptimize(quick.data());
        }
    };
    const auto scan = [&] {
        for (std::size_t i = 0; i < colours.size(); ++i)
            scanned[i] = nearest_palette_entry_by_scan(palette, colours[i]);
        benchmark::DoNotOptimize(scanned.data());
    };
    const Comparison times = compare(rounds, quickly, scan);
    if (quick != scanned) {
        std::printf("%s: the indices differ\n", what);
        return false;
    }
    print_times(what, "plain scan", times, repetitions);
    return report(what, times.ratio * repetitions, "as fast as the plain scan", 4);
}

} // namespace

int main() {
    const Palette palette = ramps();
    const auto photo = colours_of(*photograph(320, 200));
    bool kept = measure("nearest palette entry, photograph", palette, photo);
    kept &= measure("nearest palette entry, noise", palette, noise(photo.size()));
    return kept ? 0 : 1;
}
