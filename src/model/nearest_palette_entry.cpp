// The colour cube is cut into small cells. Of a cell only those palette entries can win that are, at their best, not
// farther from it than some entry is at its worst; their list is made when the first colour of the cell is asked for. A
// picture's colours lie in few cells, so that a whole import makes a few hundred short lists and scans those.
#include "model/colours.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

constexpr int farther_than_any = 1000;

int channel(std::uint32_t colour, int shift) { return static_cast<int>(colour >> shift & 0xFF); }

struct Channels {
    std::int16_t red, green, blue;
};

Channels channels_of(std::uint32_t colour) {
    return {static_cast<std::int16_t>(channel(colour, 16)), static_cast<std::int16_t>(channel(colour, 8)),
            static_cast<std::int16_t>(channel(colour, 0))};
}

int distance(const Channels& a, const Channels& b) {
    return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
}

// An entry that may win in a cell.
struct Candidate {
    Channels colour;
    std::uint8_t index;
};

constexpr int cell_shift = 4; // a cell is 16 values of each channel wide
constexpr int cell_width = 1 << cell_shift;
constexpr std::size_t cells_a_channel = 256 >> cell_shift;
constexpr std::size_t cell_count = cells_a_channel * cells_a_channel * cells_a_channel;

std::size_t cell_of(std::uint32_t colour) {
    const auto part = [&](int shift) { return std::size_t{colour >> (shift + cell_shift) & (cells_a_channel - 1)}; };
    return (part(16) * cells_a_channel + part(8)) * cells_a_channel + part(0);
}

// How near and how far the values first .. first + cell_width - 1 of a channel are from a value.
struct Reach {
    int least, most;
};
Reach reach(int value, int first) {
    const int last = first + cell_width - 1;
    return {std::max({first - value, 0, value - last}), std::max(std::abs(value - first), std::abs(last - value))};
}
Reach reach(const Channels& entry, const Channels& corner) {
    const Reach red = reach(entry.red, corner.red);
    const Reach green = reach(entry.green, corner.green);
    const Reach blue = reach(entry.blue, corner.blue);
    return {red.least + green.least + blue.least, red.most + green.most + blue.most};
}

Channels corner_of(const Channels& colour) {
    const auto start = [](int value) { return static_cast<std::int16_t>(value >> cell_shift << cell_shift); };
    return {start(colour.red), start(colour.green), start(colour.blue)};
}

} // namespace

struct NearestPaletteEntry::Index {
    explicit Index(const std::array<std::uint32_t, 256>& palette) : lists(cell_count) {
        std::ranges::transform(palette, entries.begin(), channels_of);
    }

    // In the order of the palette, so that the first of several nearest ones is the lowest.
    std::vector<Candidate> candidates_near(const Channels& colour) const {
        const Channels corner = corner_of(colour);
        std::array<int, 256> least{};
        int worst_of_the_best = farther_than_any;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const Reach entry = reach(entries[i], corner);
            least[i] = entry.least;
            worst_of_the_best = std::min(worst_of_the_best, entry.most);
        }
        std::vector<Candidate> list;
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (least[i] <= worst_of_the_best) list.push_back({entries[i], static_cast<std::uint8_t>(i)});
        return list;
    }

    std::array<Channels, 256> entries{};
    std::vector<std::vector<Candidate>> lists; // one a cell, empty until asked for
};

NearestPaletteEntry::NearestPaletteEntry(const std::array<std::uint32_t, 256>& palette)
    : index_(std::make_unique<Index>(palette)) {}
NearestPaletteEntry::~NearestPaletteEntry() = default;
NearestPaletteEntry::NearestPaletteEntry(NearestPaletteEntry&&) noexcept = default;
NearestPaletteEntry& NearestPaletteEntry::operator=(NearestPaletteEntry&&) noexcept = default;

std::uint8_t NearestPaletteEntry::operator()(std::uint32_t colour) const {
    const Channels wanted = channels_of(colour);
    auto& list = index_->lists[cell_of(colour)];
    if (list.empty()) list = index_->candidates_near(wanted);
    std::uint8_t best = 0;
    int best_distance = farther_than_any;
    for (const Candidate& candidate : list) {
        const int candidate_distance = distance(candidate.colour, wanted);
        if (candidate_distance >= best_distance) continue;
        best = candidate.index;
        best_distance = candidate_distance;
    }
    return best;
}

std::uint8_t nearest_palette_entry_by_scan(const std::array<std::uint32_t, 256>& palette, std::uint32_t colour) {
    std::uint8_t best = 0;
    int best_distance = farther_than_any;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const int entry_distance = std::abs(channel(palette[i], 16) - channel(colour, 16)) +
                                   std::abs(channel(palette[i], 8) - channel(colour, 8)) +
                                   std::abs(channel(palette[i], 0) - channel(colour, 0));
        if (entry_distance >= best_distance) continue;
        best = static_cast<std::uint8_t>(i);
        best_distance = entry_distance;
    }
    return best;
}
