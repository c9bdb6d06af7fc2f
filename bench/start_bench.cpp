// From the start of the process to the whole Files screen in the window, against a minimal SDL program.

#include "alternate.h"
#include "two_programs.h"

int main() {
    const Ground ground;
    const Comparison times = compare_starts(
        31, [&] { return ground.show_editor(); }, [&] { return ground.show_minimal_program(); });
    print_times("start to first frame", "minimal SDL program", times);
    return report_at_most("start to first frame", 1 / times.ratio, "x minimal SDL program", 1) ? 0 : 1;
}
