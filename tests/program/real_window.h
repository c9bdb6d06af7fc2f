// The built program in a real window, driven by key and mouse events of the X server, as by a person.
#pragma once

#include "drawing/canvas.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

// Xlib's own name; its header's macros collide with those of the test library.
struct _XDisplay; // NOLINT(bugprone-reserved-identifier)

using Milliseconds = std::chrono::milliseconds;

// Asks again and again until the answer is yes. False when the time is over.
bool wait_until(const std::function<bool()>& condition, Milliseconds at_most = Milliseconds{10000});

// A program that was started, with its standard error in a file. The environment variable KAROSMIT_RUN_BY may name
// another program that runs it.
class StartedProgram {
public:
    // `environment` is added to this process's; an empty value takes the variable away.
    StartedProgram(const std::string& program, const std::string& folder,
                   const std::map<std::string, std::string>& environment,
                   const std::vector<std::string>& arguments = {});
    ~StartedProgram(); // kills it when it still runs
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    pid_t id() const { return id_; }
    void send_signal(int signal) const;
    // The exit status; none when the program still runs after that time, or was killed.
    std::optional<int> wait_for_end(Milliseconds at_most = Milliseconds{10000});
    std::string error_output() const;
    std::string output() const;
    // Processor time that its threads have used so far, in seconds.
    double processor_time() const;
    // How often its threads have gone to sleep so far, which is how often they woke up.
    long sleeps() const;

private:
    bool has_ended();
    std::vector<std::filesystem::path> threads() const;

    pid_t id_ = -1;
    std::string output_file_, error_file_;
    std::optional<int> status_; // as waitpid gives it
};

// The window of a program on a display, the pointer, the keyboard.
class RealWindow {
public:
    explicit RealWindow(const std::string& display);
    ~RealWindow();
    RealWindow(const RealWindow&) = delete;
    RealWindow& operator=(const RealWindow&) = delete;

    // Waits for a window of this class and gives it the keyboard. False when none appears.
    bool find(const std::string& window_class);

    std::string title() const;
    std::pair<std::string, std::string> window_class() const; // name and class
    std::pair<int, int> size() const;
    bool has_icon() const;
    void resize(int width, int height);
    // What the close button of a window manager does.
    void ask_to_close();

    // 0xFFRRGGBB; 0 outside the window.
    std::uint32_t pixel(int x, int y) const;
    bool wait_for_pixel(int x, int y, std::uint32_t colour) const;
    // Whether the text stands there in this colour, glyph pixel by glyph pixel, and nothing else of its colour.
    bool shows_text(int x, int y, const std::string& text, std::uint32_t colour) const;
    bool wait_for_text(int x, int y, const std::string& text, std::uint32_t colour) const;
    // Whether a part of the window looks as it does in a picture of the whole; alpha takes no part.
    bool shows_picture(const Image& picture, const Rectangle& part) const;
    // Writes the window's picture as a PPM file, to look at.
    void save_picture(const std::string& filename) const;

    // Positions are those of the window's pixels. Everything is sent without a pause in between.
    void move(int x, int y);
    void press(unsigned button = 1);
    void release(unsigned button = 1);
    void click(int x, int y, unsigned button = 1);
    void wheel(int x, int y, int notches); // positive away from the person
    void drag(const std::vector<std::pair<int, int>>& path);

    // Lets a file or directory go over the window, as a file manager does (the XDND protocol). False when the window
    // does not take it.
    bool drop(const std::string& path);

    // A key by its X name: "Escape", "Tab", "a". The held ones go down before and up after it: "Control_L".
    void key(const std::string& name, const std::vector<std::string>& held = {});
    void key_down(const std::string& name);
    void key_up(const std::string& name);
    // A key by its place on the keyboard, whatever the layout.
    void key_at(unsigned code, const std::vector<std::string>& held = {});
    void type(const std::string& text);
    // Waits until the server has handled everything that was sent.
    void flush() const;

private:
    void send_key(unsigned code, bool down);
    unsigned code_of(const std::string& name, bool* shifted = nullptr) const;

    _XDisplay* display_ = nullptr;
    unsigned long window_ = 0;
};
