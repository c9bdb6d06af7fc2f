// The editor and a minimal SDL program, started on one virtual display and compared.
#pragma once

#include "alternate.h"
#include "program/real_window.h"
#include "program/virtual_display.h"
#include "widgets/widgets.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// A program whose first whole frame is on the screen.
class ShownProgram {
public:
    ShownProgram(const std::string& path, const std::string& window_class, const VirtualDisplay& display,
                 const std::filesystem::path& folder, bool (*frame_is_shown)(const RealWindow&))
        : program_(path, folder.string(),
                   {{"DISPLAY", display.name()},
                    {"WAYLAND_DISPLAY", ""},
                    {"SDL_VIDEODRIVER", ""},
                    {"XDG_STATE_HOME", (folder / "state").string()}}),
          window_(display.name()) {
        if (!window_.find(window_class)) throw std::runtime_error("no window of " + path);
        if (!wait_until([&] { return frame_is_shown(window_); })) throw std::runtime_error("no frame of " + path);
    }
    const StartedProgram& process() const { return program_; }
    StartedProgram& process() { return program_; }
    RealWindow& window() { return window_; }

private:
    StartedProgram program_;
    RealWindow window_;
};

inline bool shows_files_screen(const RealWindow& window) {
    constexpr std::uint32_t directory = 0xFF00FA00;
    return window.shows_text(50, 130, "[..]", directory);
}
inline bool shows_background(const RealWindow& window) { return window.pixel(959, 647) == colour::background; }

// The place where both are compared: a display and an empty folder.
class Ground {
public:
    Ground() {
        std::string pattern = (std::filesystem::temp_directory_path() / "karosmit-bench-XXXXXX").string();
        if (display_.name().empty() || !mkdtemp(pattern.data())) throw std::runtime_error("no display or no folder");
        folder_ = pattern;
    }
    ~Ground() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    Ground(const Ground&) = delete;
    Ground& operator=(const Ground&) = delete;

    const VirtualDisplay& display() const { return display_; }
    const std::filesystem::path& folder() const { return folder_; } // where programs are started
    std::unique_ptr<ShownProgram> show(const std::string& path, const std::string& window_class,
                                       bool (*frame_is_shown)(const RealWindow&)) const {
        return std::make_unique<ShownProgram>(path, window_class, display_, folder_, frame_is_shown);
    }
    std::unique_ptr<ShownProgram> show_editor(const std::string& path = KAROSMIT_PROGRAM) const {
        return show(path, "karosmit", shows_files_screen);
    }
    std::unique_ptr<ShownProgram> show_minimal_program() const {
        return show(MINIMAL_PROGRAM, "minimal_sdl_program", shows_background);
    }

private:
    VirtualDisplay display_;
    std::filesystem::path folder_;
};

// By the clock on the wall.
inline double waiting_milliseconds(auto&& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// Starts both in turn, one only when the other has ended; who begins changes from round to round. What is measured is a
// person's wait.
inline Comparison compare_starts(int rounds, auto&& ours, auto&& theirs) {
    const auto start = [](auto&& show) {
        std::unique_ptr<ShownProgram> shown;
        const double waited = waiting_milliseconds([&] { shown = show(); });
        shown->window().ask_to_close();
        shown->process().wait_for_end();
        return waited;
    };
    // Both begin equally with what the system keeps of them from an earlier start.
    start(ours);
    start(theirs);
    std::vector<double> our_times, their_times;
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0) our_times.push_back(start(ours));
        their_times.push_back(start(theirs));
        if (round % 2 != 0) our_times.push_back(start(ours));
    }
    return comparison_of(our_times, their_times);
}
