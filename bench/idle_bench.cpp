// Processor time of ten seconds in which nobody touches anything, against a minimal SDL program that waits for events
// in the same way.

#include "alternate.h"
#include "two_programs.h"

#include <chrono>
#include <thread>

int main() {
    constexpr std::chrono::seconds watched{10};
    const Ground ground;
    const auto editor = ground.show_editor();
    const auto minimal = ground.show_minimal_program();
    std::this_thread::sleep_for(std::chrono::seconds{2});
    const double editor_before = editor->process().processor_time();
    const double minimal_before = minimal->process().processor_time();
    std::this_thread::sleep_for(watched);
    const double editor_used = editor->process().processor_time() - editor_before;
    const double minimal_used = minimal->process().processor_time() - minimal_before;
    std::printf("idle: editor %.2f ms, minimal SDL program %.2f ms of processor time in 10 s\n", editor_used * 1000,
                minimal_used * 1000);
    bool kept = report_at_most("idle", editor_used / static_cast<double>(watched.count()) * 100, "% of one core", 0.5);
    kept &= report_at_most("idle", editor_used / minimal_used, "x minimal SDL program", 2);
    return kept ? 0 : 1;
}
