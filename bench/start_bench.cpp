// From the start of the process to the whole Files screen in the window, against a minimal SDL program.

#include "alternate.h"
#include "two_programs.h"

#include <vector>

int main() {
    constexpr int rounds = 21;
    const Ground ground;
    // Both begin equally with what the system keeps of them from an earlier start.
    ground.show_editor();
    ground.show_minimal_program();
    std::vector<double> editor_times, minimal_times, ratios;
    for (int round = 0; round < rounds; ++round) {
        std::unique_ptr<ShownProgram> editor, minimal;
        const auto time_editor = [&] { return waiting_milliseconds([&] { editor = ground.show_editor(); }); };
        const auto time_minimal = [&] {
            return waiting_milliseconds([&] { minimal = ground.show_minimal_program(); });
        };
        // Who begins changes from round to round; one has ended before the other starts.
        if (round % 2 == 0) editor_times.push_back(time_editor());
        editor.reset();
        minimal_times.push_back(time_minimal());
        minimal.reset();
        if (round % 2 == 1) editor_times.push_back(time_editor());
        ratios.push_back(editor_times.back() / minimal_times.back());
    }
    std::printf("start to first frame: editor %.1f ms, minimal SDL program %.1f ms (medians of %d rounds)\n",
                median(editor_times), median(minimal_times), rounds);
    return report_at_most("start to first frame", median(ratios), "x minimal SDL program", 1.25) ? 0 : 1;
}
