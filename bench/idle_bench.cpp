// Wake-ups and processor time while nobody touches anything, on every screen, against a minimal SDL program that blocks
// until there is an event: idle_bench [SECONDS].

#include "alternate.h"
#include "two_programs.h"

#include <chrono>
#include <thread>

namespace {

constexpr std::chrono::seconds settling{2};
constexpr std::uint32_t title_colour = colour::title;
constexpr const char* titles[] = {"= FILES =", "= 3D EDITOR =", "= DASH MANAGER =", "= PHYSICAL PARAMETERS ="};

// What a program has used so far.
struct Used {
    long sleeps;
    double milliseconds;

    explicit Used(const StartedProgram& program)
        : sleeps(program.sleeps()), milliseconds(program.processor_time() * 1000) {}
};

bool watch(const char* title, const StartedProgram& editor, const StartedProgram& minimal, std::chrono::seconds time) {
    const Used editor_before(editor), minimal_before(minimal);
    std::this_thread::sleep_for(time);
    const Used editor_after(editor), minimal_after(minimal);
    const long sleeps = editor_after.sleeps - editor_before.sleeps;
    const double used = editor_after.milliseconds - editor_before.milliseconds;
    std::printf("idle %s, %lld s: %ld wake-ups, %.3f ms; minimal SDL program: %ld wake-ups, %.3f ms\n", title,
                static_cast<long long>(time.count()), sleeps, used, minimal_after.sleeps - minimal_before.sleeps,
                minimal_after.milliseconds - minimal_before.milliseconds);
    const bool kept = report_at_most(title, static_cast<double>(sleeps), "wake-ups", 0);
    return report_at_most(title, used, "ms of processor time", 0) && kept;
}

} // namespace

int main(int argument_count, char** arguments) {
    const std::chrono::seconds time{argument_count > 1 ? std::atoi(arguments[1]) : 30};
    const Ground ground;
    const auto minimal = ground.show_minimal_program();
    const auto editor = ground.show_editor();
    bool kept = true;
    for (int cell = 0; cell < 4; ++cell) {
        editor->window().click(cell * 48 + 24, 620);
        if (!editor->window().wait_for_text(16, 16, titles[cell], title_colour)) return 1;
        std::this_thread::sleep_for(settling);
        kept &= watch(titles[cell], editor->process(), minimal->process(), time);
    }
    return kept ? 0 : 1;
}
