// What the history and the keeping of unsaved work cost at the tables' capacity: noticing a step in every pass, taking
// a whole car's load back, ten thousand steps in memory, handing the car over to be written.
#include "alternate.h"
#include "app/history.h"
#include "app/recovery.h"
#include "formats/saved_car.h"
#include "full_document.h"
#include "params/parameter_table.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

constexpr int rounds = 31;

bool measure(const char* what, const char* unit, double limit, int repetitions, double units_a_millisecond,
             auto&& work) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(milliseconds_of([&] {
                            for (int i = 0; i < repetitions; ++i)
                                work();
                        }) *
                        units_a_millisecond / repetitions);
    std::printf("%s: fastest %.2f %s\n", what, std::ranges::min(times), unit);
    return report_at_most(what, median(times), unit, limit);
}

bool measure_undo_of_a_load() {
    const CarDocument before = DOCUMENT;
    for (auto& model : CAR)
        model.edit().verts[7].y = 3;
    for (auto& model : CAR)
        for (auto& vertex : model.edit().verts)
            vertex.y += 1;
    for (int i = 1; i <= BITMAPS; ++i)
        BITMAP[i].pixels = Pixels(max_bitmap_pixels / max_bitmaps, 3);
    note_load(before, "full.car", {});
    History history(before);
    history.note(DOCUMENT, "", 0);
    return measure("undo and redo of the load of a whole car", "ms", 2 * 5, 1, 1, [&] {
        history.undo(DOCUMENT);
        history.redo(DOCUMENT);
    });
}

bool measure_ten_thousand_steps() {
    History history(DOCUMENT);
    constexpr int steps = 10'000;
    for (int step = 1; step <= steps; ++step) {
        // As moving the wheels does: 24 vertices.
        SHAPEMODEL& model = CAR[1].edit();
        for (std::size_t k = 8; k < 32; ++k)
            model.verts[k].x = step + static_cast<double>(k) / 3;
        history.note(DOCUMENT, "*", step);
    }
    const bool all = history.steps() == steps;
    return report_at_most("10,000 steps of moved wheels", static_cast<double>(history.bytes()) / (1 << 20), "MiB",
                          64) &&
           all;
}

// The person's input waits for this, not for the disk.
bool measure_recovery() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "karosmit-bench-state";
    ::setenv("XDG_STATE_HOME", folder.c_str(), 1);
    bool kept = true;
    {
        Recovery recovery;
        std::vector<double> times;
        for (int round = 0; round < rounds; ++round) {
            CAR[0].edit().verts[0].x = round + 0.5;
            times.push_back(milliseconds_of([&] {
                recovery.changed();
                recovery.keep_now();
                CAR[0].edit().verts[1].x = round; // the first edit while the copy lives
            }));
        }
        std::printf("handing the car over to be kept: longest %.3f ms\n", std::ranges::max(times));
        kept = report_at_most("handing the car over to be kept", median(times), "ms", 16);
    }
    std::filesystem::remove_all(folder);
    return kept;
}

} // namespace

int main() {
    INITPARAMTARGETS();
    fill_document();
    begin_with_saved_car();
    History history(DOCUMENT);
    bool kept = measure("noticing that nothing was done, a pass", "microseconds", 50, 200, 1000,
                        [&] { history.note(DOCUMENT, "", 0); });
    int turn = 0;
    kept &= measure("noticing a moved vertex", "microseconds", 50, 20, 1000, [&] {
        CAR[4].edit().verts[511].z = ++turn;
        history.note(DOCUMENT, "*", 0);
    });
    kept &= measure("judging what is saved", "microseconds", 50, 20, 1000,
                    [] { benchmark::DoNotOptimize(saved_car().unsaved); });
    kept &= measure_undo_of_a_load();
    kept &= measure_ten_thousand_steps();
    kept &= measure_recovery();
    return kept ? 0 : 1;
}
