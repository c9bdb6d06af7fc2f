// Unsaved work that the program keeps by itself: projects in the state folder, each with a line of text beside it.
//
// A piece of work has a stem, which names its files: "<stem>.car" the project, "<stem>.txt" the line (when, the car's
// name, from which folder), "<stem>.lock" what the program that works on it keeps locked as long as it runs: nobody
// else is offered that work.
#pragma once

#include "files/transfer.h"
#include "model/document.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

struct KeptWork {
    std::string stem;
    std::time_t when = 0;
    std::string car; // its name, in characters of the font
};

constexpr int most_kept_works = 20;
constexpr int kept_days = 30;
constexpr int most_offered_works = 3;

// Keeps the car under a stem, which is claimed by this program from now on. False, with the reason, when it could not;
// what was kept there before stays. May be called by any thread.
bool keep_work(const std::string& stem, const CarDocument& car, const std::string& folder, std::string& reason);
// It is in files of the person's own, or nobody's work any more. May be called by any thread.
void drop_kept_work(const std::string& stem);
// A stem that no other work has.
std::string new_stem();

// The newest pieces of work of programs that run no more, the newest first.
std::vector<KeptWork> offered_works();
// As a row of a list tells it: "Unsaved: Haldmark Brux, 21 Nov 18:32".
std::string shown_work(const KeptWork& work);
// Loads it like any project. This program goes on with it under the same stem.
TransferReport load_kept_work(const std::string& stem);
// Work that was kept by another run and is this one's now, with the car as it was loaded.
struct AdoptedWork {
    std::string stem;
    CarDocument car;
};
// What the car of DOCUMENT was loaded from, if that is kept work.
const AdoptedWork* adopted_work();
// It is kept no more: whatever was loaded from it has no kept work any longer. False when nothing was.
bool forget_adopted_work(const std::string& stem);

// Removes what is older than 30 days or too much, and what killed programs left half done. Work of programs that run
// stays.
void tidy_kept_works();
