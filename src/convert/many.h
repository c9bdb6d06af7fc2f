// Many conversions on all cores: each in a process of its own, as the car's tables belong to a process; one that
// crashes fails alone.
#pragma once

#include "convert/conversion.h"

#include <cstddef>
#include <functional>

struct ManyConversions {
    std::size_t count = 0;
    std::function<ConvertOutcome(std::size_t)> convert;                     // in a process of its own
    std::function<void(std::size_t, const ConvertOutcome&)> report;         // in the order of the numbers
    std::function<void(std::size_t finished)> progress{[](std::size_t) {}}; // whenever one ended
};

// At most `jobs` at a time, which is 1 or more.
void run_many(const ManyConversions& many, int jobs);
