// The colour cube is cut into small cells. Of a cell only those palette entries can win that are, at their best, not
// farther from it than some entry is at its worst, and of these only the ones that no other one beats everywhere in the
// cell. Their list is made when the first colour of the cell is asked for. A picture's colours lie in few cells, so
// that a whole import makes a few hundred lists of about five entries and scans those.
#include "image/image.h"
#include "model/colours.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>
#include <vector>

namespace {

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

// By how much `a` is farther than `b` where it compares best, within the values first .. first + cell_width - 1 of a
// channel: the difference of two distances only rises or only falls along a channel.
int least_lag(int a, int b, int first) {
    const int last = first + cell_width - 1;
    return std::min(std::abs(first - a) - std::abs(first - b), std::abs(last - a) - std::abs(last - b));
}

// Whether `winner` is chosen before `loser` for every colour of the cell.
bool beats(const Candidate& winner, const Candidate& loser, const Channels& corner) {
    const int lag = least_lag(loser.colour.red, winner.colour.red, corner.red) +
                    least_lag(loser.colour.green, winner.colour.green, corner.green) +
                    least_lag(loser.colour.blue, winner.colour.blue, corner.blue);
    return lag > 0 || (lag == 0 && winner.index < loser.index);
}

// Without the entries that another one of the list always beats. `favourite` beats most of them and is tried first.
std::vector<Candidate> without_beaten(std::vector<Candidate> list, const Candidate& favourite, const Channels& corner) {
    std::erase_if(list, [&](const Candidate& loser) { return beats(favourite, loser, corner); });
    std::vector<Candidate> kept;
    std::ranges::copy_if(list, std::back_inserter(kept), [&](const Candidate& loser) {
        return std::ranges::none_of(list, [&](const Candidate& winner) { return beats(winner, loser, corner); });
    });
    return kept;
}

// One channel of all palette entries.
using ChannelValues = std::array<std::int16_t, 256>;

// Adds how near and how far the values first .. first + cell_width - 1 of a channel are from every entry's.
void add_reach(const ChannelValues& values, int first, ChannelValues& least, ChannelValues& most) {
    const int last = first + cell_width - 1;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int below = first - values[i];
        const int above = values[i] - last;
        least[i] = static_cast<std::int16_t>(least[i] + std::max({below, above, 0}));
        most[i] = static_cast<std::int16_t>(most[i] + std::max(-below, -above));
    }
}

Channels corner_of(const Channels& colour) {
    const auto start = [](int value) { return static_cast<std::int16_t>(value >> cell_shift << cell_shift); };
    return {start(colour.red), start(colour.green), start(colour.blue)};
}

} // namespace

struct NearestPaletteEntry::Index {
    explicit Index(const std::array<std::uint32_t, 256>& palette) : lists(cell_count) {
        for (std::size_t i = 0; i < palette.size(); ++i) {
            const Channels entry = channels_of(palette[i]);
            red[i] = entry.red;
            green[i] = entry.green;
            blue[i] = entry.blue;
        }
    }

    Candidate candidate(std::size_t i) const { return {{red[i], green[i], blue[i]}, static_cast<std::uint8_t>(i)}; }

    std::vector<Candidate> candidates_near(const Channels& colour) const {
        const Channels corner = corner_of(colour);
        ChannelValues least{}, most{};
        add_reach(red, corner.red, least, most);
        add_reach(green, corner.green, least, most);
        add_reach(blue, corner.blue, least, most);
        const auto favourite = static_cast<std::size_t>(std::ranges::min_element(most) - most.begin());
        std::vector<Candidate> list;
        for (std::size_t i = 0; i < least.size(); ++i)
            if (least[i] <= most[favourite]) list.push_back(candidate(i));
        return without_beaten(std::move(list), candidate(favourite), corner);
    }

    ChannelValues red{}, green{}, blue{};
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
    // Distance and index in one number: its smallest value is the nearest entry, of equally near ones the lowest.
    int best = farther_than_any_colour << 8;
    for (const Candidate& candidate : list)
        best = std::min(best, distance(candidate.colour, wanted) << 8 | candidate.index);
    return static_cast<std::uint8_t>(best & 0xFF);
}
