// A scan over planes of 16-bit numbers, in two passes: the smallest distance, then its first index. Neither pass
// decides anything on its way, so that the compiler takes many entries at once.
#include "model/colours.h"

#include <algorithm>

namespace {

std::int16_t channel(std::uint32_t colour, int shift) { return static_cast<std::int16_t>(colour >> shift & 0xFF); }

// All in 16 bits, where the compiler finds the machine's own operations.
std::int16_t difference(std::int16_t a, std::int16_t b) {
    const auto signed_difference = static_cast<std::int16_t>(a - b);
    const auto opposite = static_cast<std::int16_t>(-signed_difference);
    return signed_difference > opposite ? signed_difference : opposite;
}

} // namespace

NearestPaletteEntry::NearestPaletteEntry(const std::array<std::uint32_t, 256>& palette) {
    for (std::size_t i = 0; i < palette.size(); ++i) {
        red_[i] = channel(palette[i], 16);
        green_[i] = channel(palette[i], 8);
        blue_[i] = channel(palette[i], 0);
    }
}

std::uint8_t NearestPaletteEntry::operator()(std::uint32_t colour) const {
    const std::int16_t red = channel(colour, 16), green = channel(colour, 8), blue = channel(colour, 0);
    Plane distances;
    std::int16_t smallest = 3 * 255;
    for (std::size_t i = 0; i < distances.size(); ++i) {
        distances[i] = static_cast<std::int16_t>(difference(red_[i], red) + difference(green_[i], green) +
                                                 difference(blue_[i], blue));
        smallest = std::min(smallest, distances[i]);
    }
    std::int16_t first = 255;
    for (std::int16_t i = 0; i < 256; ++i)
        first = std::min(first, distances[static_cast<std::size_t>(i)] == smallest ? i : std::int16_t{255});
    return static_cast<std::uint8_t>(first);
}
