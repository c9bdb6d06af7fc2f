// Whether the program ends as it should, many times over: ends_bench [ENDS [PROGRAM]]. Before each end the pointer
// moves at various times; then comes Escape or the window's close button, in turn.

#include "program/real_window.h"
#include "two_programs.h"

#include <csignal>
#include <map>
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

void ask_to_end(bool by_key, RealWindow& window) {
    if (by_key)
        window.key("Escape");
    else
        window.ask_to_close();
}

// The program and then the server stand still for a moment: what the program sends over its connections until its end
// reaches the server all at once, in whatever order the server likes.
void end_at_once(bool by_key, const Ground& ground, ShownProgram& shown) {
    std::this_thread::sleep_for(Milliseconds{50});
    shown.process().send_signal(SIGSTOP);
    shown.window().move(800, 400);
    ask_to_end(by_key, shown.window());
    ground.display().stop();
    shown.process().send_signal(SIGCONT);
    std::this_thread::sleep_for(Milliseconds{100});
    ground.display().go_on();
}

constexpr int by_signal = -1; // or not at all

struct End {
    int status;
    std::string words;
    bool well() const { return status == 0 && words.empty(); }
};

End end_of(const Ground& ground, const std::string& path, int number, std::mt19937& random) {
    const auto shown = ground.show(path, "karosmit", shows_background);
    const bool by_key = number % 2 == 0;
    if (number % 10 >= 8) {
        end_at_once(by_key, ground, *shown);
    } else {
        move_about(shown->window(), random);
        ask_to_end(by_key, shown->window());
    }
    const std::optional<int> status = shown->process().wait_for_end();
    return {status.value_or(by_signal), shown->process().error_output()};
}

} // namespace

int main(int argument_count, char** arguments) {
    const int ends = argument_count > 1 ? std::atoi(arguments[1]) : usual_ends;
    const std::string path = argument_count > 2 ? arguments[2] : KAROSMIT_PROGRAM;
    const Ground ground;
    std::mt19937 random(static_cast<unsigned>(ends));
    std::map<int, int> ends_by_status;
    int bad = 0;
    for (int number = 0; number < ends; ++number) {
        const End end = end_of(ground, path, number, random);
        ++ends_by_status[end.status];
        if (end.well()) continue;
        ++bad;
        std::printf("end %d: status %d, \"%s\"\n", number, end.status, end.words.c_str());
    }
    for (const auto& [status, count] : ends_by_status)
        std::printf("status %d: %d of %d ends\n", status, count, ends);
    std::printf("%d of %d ends with anything but status 0 and silence\n", bad, ends);
    return bad == 0 ? 0 : 1;
}
