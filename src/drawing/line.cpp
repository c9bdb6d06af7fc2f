// Lines: Bresenham's, cut by arithmetic instead of by walking.
//
// A line is stepped along its longer side; after i steps its shorter side has moved by m(i) = i x shorter / longer,
// rounded, halves down. It starts at the end where the longer side's coordinate is smaller, so that a line and the same
// line drawn backwards are the same pixels. Only the steps whose pixel lies inside the clip rectangle are visited.
#include "drawing/plotter.h"

#include <algorithm>
#include <utility>

namespace {

struct Steps {
    std::int64_t first, last;
};

// Smallest i with m(i) >= moved; shorter must not be 0.
std::int64_t first_step_with(std::int64_t moved, std::int64_t longer, std::int64_t shorter) {
    if (moved <= 0) return 0;
    const std::int64_t needed = 2 * longer * moved - longer + 1;
    return (needed + 2 * shorter - 1) / (2 * shorter);
}

// A line in terms of its longer side: `along` goes up from start to end, `across` moves by `direction`.
struct Course {
    std::int64_t along, across; // the start
    std::int64_t longer, shorter;
    int direction;

    bool lies_within(int along_from, int along_to, int across_from, int across_to) const {
        const auto [least, most] = std::minmax({across, across + direction * shorter});
        return along >= along_from && along + longer <= along_to && least >= across_from && most <= across_to;
    }

    // Steps whose pixel lies within the given bounds of both coordinates.
    Steps within(int along_from, int along_to, int across_from, int across_to) const {
        if (lies_within(along_from, along_to, across_from, across_to)) return {0, longer};
        Steps steps{std::max<std::int64_t>(along_from - along, 0), std::min<std::int64_t>(along_to - along, longer)};
        // How far `across` may have moved, as a distance from the start.
        const std::int64_t least = direction > 0 ? across_from - across : across - across_to;
        const std::int64_t most = direction > 0 ? across_to - across : across - across_from;
        if (most < 0 || least > shorter) return {0, -1};
        if (shorter == 0) return steps;
        steps.first = std::max(steps.first, first_step_with(least, longer, shorter));
        if (most < shorter) steps.last = std::min(steps.last, first_step_with(most + 1, longer, shorter) - 1);
        return steps;
    }

    // Calls put(along, across) for the pixels of the steps, of which there must be one, and touch() with the first and
    // the last of them.
    template <typename Put, typename Touch>
    void walk(const Steps& steps, Put put, Touch touch) const {
        // m(i) is the quotient by `whole`; the remainder tells when it grows next.
        const std::int64_t whole = std::max<std::int64_t>(2 * longer, 1);
        const std::int64_t sum = 2 * steps.first * shorter + std::max<std::int64_t>(longer - 1, 0);
        const std::int64_t moved = sum < whole ? 0 : sum / whole;
        std::int64_t remainder = sum - moved * whole;
        int at = static_cast<int>(across + direction * moved);
        const int first = static_cast<int>(along + steps.first), last = static_cast<int>(along + steps.last);
        const int first_across = at;
        for (int i = first;; ++i) {
            put(i, at);
            if (i == last) break;
            remainder += 2 * shorter;
            if (remainder >= whole) {
                remainder -= whole;
                at += direction;
            }
        }
        touch(first, first_across, last, at);
    }
};

Course course(std::int64_t along1, std::int64_t across1, std::int64_t along2, std::int64_t across2) {
    if (along1 > along2) {
        std::swap(along1, along2);
        std::swap(across1, across2);
    }
    return {along1, across1, along2 - along1, std::abs(across2 - across1), across2 >= across1 ? 1 : -1};
}

} // namespace

void plot_line(Plotter& plotter, std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2) {
    const Rectangle& clip = plotter.clip();
    if (clip.empty()) return;
    if (y1 == y2) return plotter.across(std::min(x1, x2), std::max(x1, x2), y1);
    const bool flat = std::abs(x2 - x1) >= std::abs(y2 - y1);
    const Course line = flat ? course(x1, y1, x2, y2) : course(y1, x1, y2, x2);
    const Steps steps =
        flat ? line.within(clip.x1, clip.x2, clip.y1, clip.y2) : line.within(clip.y1, clip.y2, clip.x1, clip.x2);
    if (steps.first > steps.last) return;
    const auto touched = [&](int left, int top, int right, int bottom) {
        plotter.touch({std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)});
    };
    plotter.with_rows([&](auto rows) {
        if (flat)
            line.walk(
                steps, [&](int x, int y) { rows.set(x, y); }, touched);
        else
            line.walk(
                steps, [&](int y, int x) { rows.set(x, y); },
                [&](int top, int left, int bottom, int right) { touched(left, top, right, bottom); });
    });
}
