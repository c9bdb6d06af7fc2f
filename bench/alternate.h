// Two ways of doing the same, timed in turn in one run, so that whatever else the machine does hits both alike.
#pragma once

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

// Processor time of this thread: what else the machine does takes no part.
inline double processor_milliseconds() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

inline double milliseconds_of(auto&& work) {
    const double begin = processor_milliseconds();
    work();
    return processor_milliseconds() - begin;
}

inline double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

struct Comparison {
    double ours = 0, theirs = 0; // fastest rounds, milliseconds
    double our_median = 0, their_median = 0;
    double ratio = 0; // median of theirs / ours, round by round
};

// Of times that were taken in turn.
inline Comparison comparison_of(const std::vector<double>& ours, const std::vector<double>& theirs) {
    std::vector<double> ratios;
    for (std::size_t round = 0; round < ours.size(); ++round)
        ratios.push_back(theirs[round] / ours[round]);
    return {std::ranges::min(ours), std::ranges::min(theirs), median(ours), median(theirs), median(ratios)};
}

inline Comparison compare(int rounds, auto&& ours, auto&& theirs) {
    ours();
    theirs();
    std::vector<double> our_times, their_times;
    for (int round = 0; round < rounds; ++round) {
        // Who begins changes from round to round.
        if (round % 2 == 0) our_times.push_back(milliseconds_of(ours));
        their_times.push_back(milliseconds_of(theirs));
        if (round % 2 != 0) our_times.push_back(milliseconds_of(ours));
    }
    return comparison_of(our_times, their_times);
}

// Prints what both sides took, the rival by its name. A round does our work `repetitions` times.
inline void print_times(const char* what, const char* rival, const Comparison& times, int repetitions = 1) {
    std::printf("%s: median %.3f ms, fastest %.3f; %s: median %.3f ms, fastest %.3f\n", what,
                times.our_median / repetitions, times.ours / repetitions, rival, times.their_median, times.theirs);
}

// Prints the line that says whether a ratio keeps its limit, and returns it.
inline bool report(const char* what, double ratio, const char* unit, double limit) {
    const bool kept = ratio > limit;
    std::printf("%s: %.2f x %s (limit > %.2f) %s\n", what, ratio, unit, limit, kept ? "ok" : "MISSED");
    return kept;
}

// Prints the line that says whether a figure keeps its limit, and returns it.
inline bool report_at_most(const char* what, double figure, const char* unit, double limit) {
    const bool kept = figure <= limit;
    std::printf("%s: %.3f %s (limit %.2f) %s\n", what, figure, unit, limit, kept ? "ok" : "MISSED");
    return kept;
}
