// Converting one source into one target. Which kind each is follows from its name; nothing is written before all of it
// is known to be right.
#pragma once

#include <string>

struct ConvertOptions {
    int model = 0;      // slot of the car: 0 showroom, 1 game, 2 intro, 3 and 4 auxiliary
    int paint_job = 1;  // counted from 1, as on the screen
    bool force = false; // replace targets that are there
};

struct ConvertOutcome {
    bool done = false;
    std::string text{}; // what became of it, or why it did not; without a line end
};

// Uses the tables of the car, whatever they hold; needs PAL and MATERIAL where colours are to be known. When it fails,
// the target is as it was before.
ConvertOutcome convert(const std::string& source, const std::string& target, const ConvertOptions& options);

// What check_car says of a car, its four files or its project: a line a finding, each beginning with the source, or one
// line that there is none. Done when it could be read and nothing serious was found.
ConvertOutcome check(const std::string& source);
