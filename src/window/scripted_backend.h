// A backend without a window, for playing screens by script: events are handed over one step a poll, the clock moves by
// itself, what is shown is kept.
#pragma once

#include "window/backend.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

// One step of a script: events that arrive together, or something to do (look at the picture, change a table) at that
// moment.
struct ScriptStep {
    std::vector<InputEvent> events = {};
    std::function<void()> action = {};
};

class ScriptedBackend : public Backend {
public:
    // The steps are handed over one a poll, each only when the program has taken note of the one before and asks to
    // wait for more. After the last one a close request follows, again and again, so that no script can hang.
    void play(std::vector<ScriptStep> steps);
    // How many close requests were handed over after the script's end. A test that expects the script to end the
    // program by itself expects 0. After 1000 the process is aborted: the program does not read.
    int overrun() const { return overrun_; }
    bool finished() const { return steps_.empty(); }

    const std::string& title() const { return title_; }
    // The frames shown so far, and the picture of the last one.
    int frames() const { return frames_; }
    // What that frame brought: the rectangles, and the one around them.
    const std::vector<Rectangle>& last_rectangles() const { return last_rectangles_; }
    const Rectangle& last_changed() const { return last_changed_; }
    std::uint32_t shown_pixel(int x, int y) const;

    double clock = 0; // moved on by `tick` at every reading
    double tick = 0.001;
    bool refuse_to_open = false;

    bool open(int width, int height, std::string& error) override;
    void set_title(const std::string& title) override;
    void present(const Image& picture, std::span<const Rectangle> changed) override;
    void poll(std::vector<InputEvent>& events) override;
    void wait(int milliseconds) override;
    double seconds() override;

private:
    void overrun(std::vector<InputEvent>& events);
    void keep(const Image& picture, const Rectangle& changed);
    std::size_t index_of(int x, int y) const; // of a pixel; past the end outside the picture

    std::deque<ScriptStep> steps_;
    bool hungry_ = false; // the program waits: the next poll hands over a step
    int settling_ = 0;    // waits that pass before the program counts as waiting
    int overrun_ = 0;
    std::string title_;
    int frames_ = 0;
    std::vector<Rectangle> last_rectangles_;
    Rectangle last_changed_;
    std::vector<std::uint32_t> shown_;
    int shown_width_ = 0, shown_height_ = 0;
};

// Words for scripts.
ScriptStep mouse_at(int x, int y);
ScriptStep press(int x, int y, int button = 1);
ScriptStep release(int x, int y, int button = 1);
ScriptStep click(int x, int y, int button = 1); // press and release, arriving together
ScriptStep wheel(int x, int y, int notches);
ScriptStep typed(const std::string& text); // printable characters, as text events
// Down and up, with the Control and Shift keys around it, and the text that a keyboard sends with it where it does: of
// letters and of the keypad.
ScriptStep key_press(Key key, Modifiers modifiers = {});
ScriptStep key_down(Key key, Modifiers modifiers = {});
ScriptStep key_up(Key key);
ScriptStep drop(const std::string& path);
ScriptStep close_window();
ScriptStep look(std::function<void()> action);
