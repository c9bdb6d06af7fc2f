// Two builds of the editor, in turn in one run, each in a real window of its own: compare_programs NEW OLD. Starting,
// resting, the pointer over the file list and over the torque curve, listing a long directory.

#include "alternate.h"
#include "two_programs.h"

#include <chrono>
#include <fstream>
#include <thread>

namespace {

constexpr int rounds = 15;
constexpr int steps_a_round = 40;
constexpr int listed_files = 2000;
constexpr std::chrono::milliseconds between_steps{6}; // long enough for either to have done its step
constexpr std::chrono::seconds rest{10};

// A program on a display of its own.
struct Contender {
    Ground ground;
    std::string path;
    std::unique_ptr<ShownProgram> shown;

    explicit Contender(std::string of_program) : path(std::move(of_program)) {}
    void show() { shown = ground.show_editor(path); }
    RealWindow& window() const { return shown->window(); }
    double processor_milliseconds() const { return shown->process().processor_time() * 1000; }

    // The processor time that a round of such steps takes.
    double time_of(auto&& step) const {
        const double before = processor_milliseconds();
        for (int i = 0; i < steps_a_round; ++i) {
            step(window(), i);
            std::this_thread::sleep_for(between_steps);
        }
        return processor_milliseconds() - before;
    }
};

void print(const char* what, const Comparison& times, int steps) {
    std::printf("%-28s new: median %.3f ms, fastest %.3f; old: median %.3f ms, fastest %.3f; new / old %.2f\n", what,
                times.our_median / steps, times.ours / steps, times.their_median / steps, times.theirs / steps,
                1 / times.ratio);
}

void measure(const char* what, const Contender& ours, const Contender& theirs, auto&& step) {
    ours.time_of(step);
    theirs.time_of(step);
    std::vector<double> our_times, their_times;
    for (int round = 0; round < rounds; ++round) {
        our_times.push_back(ours.time_of(step));
        their_times.push_back(theirs.time_of(step));
    }
    print(what, comparison_of(our_times, their_times), steps_a_round);
}

void measure_rest(const Contender& ours, const Contender& theirs) {
    std::this_thread::sleep_for(std::chrono::seconds{2});
    const double our_before = ours.processor_milliseconds(), their_before = theirs.processor_milliseconds();
    const long our_sleeps = ours.shown->process().sleeps(), their_sleeps = theirs.shown->process().sleeps();
    std::this_thread::sleep_for(rest);
    std::printf("%-28s new: %ld wake-ups, %.2f ms; old: %ld wake-ups, %.2f ms\n", "idle, 10 s",
                ours.shown->process().sleeps() - our_sleeps, ours.processor_milliseconds() - our_before,
                theirs.shown->process().sleeps() - their_sleeps, theirs.processor_milliseconds() - their_before);
}

void fill(const Ground& ground) {
    for (int i = 0; i < listed_files; ++i)
        std::ofstream(ground.folder() / ("car" + std::to_string(1000 + i) + ".res")) << "x";
}

bool go_to_parameters(const Contender& contender) {
    contender.window().click(3 * 48 + 24, 620);
    return contender.window().wait_for_text(16, 16, "= PHYSICAL PARAMETERS =", colour::title);
}

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 3) {
        std::fprintf(stderr, "compare_programs NEW OLD\n");
        return 2;
    }
    Contender ours(arguments[1]), theirs(arguments[2]);
    print("start to first frame",
          compare_starts(
              31, [&] { return ours.ground.show_editor(ours.path); },
              [&] { return theirs.ground.show_editor(theirs.path); }),
          1);
    for (Contender* contender : {&ours, &theirs}) {
        fill(contender->ground);
        contender->show();
    }
    measure_rest(ours, theirs);
    measure("pointer over the file list", ours, theirs,
            [](RealWindow& window, int i) { window.move(100 + i % 2, 136 + i * 16 % 400); });
    measure("listing 2000 cars or files", ours, theirs, [](RealWindow& window, int) {
        window.key("c", {"Control_L"});
        std::this_thread::sleep_for(std::chrono::milliseconds{25});
    });
    if (!go_to_parameters(ours) || !go_to_parameters(theirs)) return 1;
    measure("pointer over the curve", ours, theirs,
            [](RealWindow& window, int i) { window.move(70 + i * 6, 300 + i % 2); });
    return 0;
}
