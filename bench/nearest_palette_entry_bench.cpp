// Nearest palette entries for a picture of the dashboard's size, 64,000 pixels like a photograph's, against the plain
// scan of all 256 entries. The exact same indices must come out.
#include "alternate.h"
#include "image/image.h"
#include "model/colours.h"
#include "pictures.h"

#include <benchmark/benchmark.h>

#include <functional>

namespace {

constexpr int rounds = 21;
// Imports a round, each with lists of its own, so that both sides of a round take about as long.
constexpr int repetitions = 16;

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

} // namespace

int main() {
    const Palette palette = ramps();
    const auto colours = colours_of(*photograph(320, 200));
    std::vector<std::uint8_t> quick(colours.size()), scanned(colours.size());
    const auto scan = [&] {
        for (std::size_t i = 0; i < colours.size(); ++i)
            scanned[i] = nearest_palette_entry_by_scan(palette, colours[i]);
        benchmark::DoNotOptimize(scanned.data());
    };

    const Comparison import = compare(
        rounds,
        [&] {
            for (int i = 0; i < repetitions; ++i) {
                const NearestPaletteEntry nearest(palette);
                std::ranges::transform(colours, quick.begin(), std::cref(nearest));
                benchmark::DoNotOptimize(quick.data());
            }
        },
        scan);
    if (quick != scanned) {
        std::printf("nearest palette entry: the indices differ\n");
        return 1;
    }

    const NearestPaletteEntry learnt(palette);
    std::ranges::transform(colours, quick.begin(), std::cref(learnt));
    const Comparison again = compare(
        rounds,
        [&] {
            for (int i = 0; i < repetitions; ++i) {
                std::ranges::transform(colours, quick.begin(), std::cref(learnt));
                benchmark::DoNotOptimize(quick.data());
            }
        },
        scan);
    if (quick != scanned) {
        std::printf("nearest palette entry: the indices differ when asked again\n");
        return 1;
    }

    std::printf("one import of %zu pixels: %.2f ms, of which %.2f ms make the lists; scan %.2f ms; lists already made: "
                "%.1f x\n",
                colours.size(), import.ours / repetitions, (import.ours - again.ours) / repetitions, import.theirs,
                again.ratio * repetitions);
    const double ratio = import.ratio * repetitions;
    return report("nearest palette entry, lists included", ratio, "the plain scan", 10.0) ? 0 : 1;
}
