// Two ways of doing the same, timed in turn in one run, so that whatever else the machine does hits both alike.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

inline double milliseconds_of(auto&& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

inline double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

struct Comparison {
    double ours = 0, theirs = 0; // medians, milliseconds
    double ratio = 0;            // median of theirs / ours, round by round
};

inline Comparison compare(int rounds, auto&& ours, auto&& theirs) {
    ours();
    theirs();
    std::vector<double> our_times, their_times, ratios;
    for (int round = 0; round < rounds; ++round) {
        // Who begins changes from round to round.
        double first = round % 2 ? milliseconds_of(theirs) : milliseconds_of(ours);
        double second = round % 2 ? milliseconds_of(ours) : milliseconds_of(theirs);
        if (round % 2) std::swap(first, second);
        our_times.push_back(first);
        their_times.push_back(second);
        ratios.push_back(second / first);
    }
    return {median(our_times), median(their_times), median(ratios)};
}

// Prints the line that says whether a ratio keeps its limit, and returns it.
inline bool report(const char* what, double ratio, const char* unit, double limit) {
    const bool kept = ratio > limit;
    std::printf("%s: %.2f x %s (limit > %.1f) %s\n", what, ratio, unit, limit, kept ? "ok" : "MISSED");
    return kept;
}
