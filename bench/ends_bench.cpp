// Whether the program ends as it should, many times over: ends_bench [ENDS [PROGRAM]]. Before each end the pointer
// moves at various times; then comes Escape, the window's close button or a signal.

#include "program/real_window.h"
#include "two_programs.h"

#include <csignal>
#include <random>
#include <thread>

namespace {

constexpr int usual_ends = 100;

void pause_up_to(int microseconds, std::mt19937& random) {
    if (random() % 2 == 0) return;
    std::this_thread::sleep_for(std::chrono::microseconds{random() % static_cast<unsigned>(microseconds)});
}

// Moves the pointer across the window, with pauses short and long against what the program needs for one move. The last
// one meets a program that waits.
void move_about(RealWindow& window, std::mt19937& random) {
    for (int i = static_cast<int>(random() % 8); i >= 0; --i) {
        if (i == 0) std::this_thread::sleep_for(Milliseconds{5});
        window.move(static_cast<int>(random() % 960), static_cast<int>(random() % 648));
        pause_up_to(i == 0 ? 1000 : 3000, random);
    }
}

void ask_to_end(int how, RealWindow& window, const StartedProgram& program) {
    switch (how % 3) {
    case 0: return window.key("Escape");
    case 1: return window.ask_to_close();
    default: return program.send_signal(SIGTERM);
    }
}

// The program and then the server stand still for a moment: what the program sends over its connections until its end
// reaches the server all at once, in whatever order the server likes.
void end_at_once(const Ground& ground, RealWindow& window, const StartedProgram& program) {
    std::this_thread::sleep_for(Milliseconds{50});
    program.send_signal(SIGSTOP);
    window.move(800, 400);
    window.key("Escape");
    ground.display().stop();
    program.send_signal(SIGCONT);
    std::this_thread::sleep_for(Milliseconds{100});
    ground.display().go_on();
}

// Whether it ended with status 0 and without a word.
bool ends_well(const Ground& ground, const std::string& path, int number, std::mt19937& random) {
    const auto shown = ground.show(path, "karosmit", shows_background);
    if (number % 10 == 9) {
        end_at_once(ground, shown->window(), shown->process());
    } else {
        move_about(shown->window(), random);
        ask_to_end(number, shown->window(), shown->process());
    }
    const std::optional<int> status = shown->process().wait_for_end();
    const std::string words = shown->process().error_output();
    if (status == 0 && words.empty()) return true;
    std::printf("end %d: status %d, \"%s\"\n", number, status.value_or(-1), words.c_str());
    return false;
}

} // namespace

int main(int argument_count, char** arguments) {
    const int ends = argument_count > 1 ? std::atoi(arguments[1]) : usual_ends;
    const std::string path = argument_count > 2 ? arguments[2] : KAROSMIT_PROGRAM;
    const Ground ground;
    std::mt19937 random(static_cast<unsigned>(ends));
    int bad = 0;
    for (int number = 0; number < ends; ++number)
        bad += ends_well(ground, path, number, random) ? 0 : 1;
    std::printf("%d of %d ends with anything but status 0 and silence\n", bad, ends);
    return bad == 0 ? 0 : 1;
}
