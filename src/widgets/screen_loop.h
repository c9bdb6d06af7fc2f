// The loop that every screen runs in: redraw what is flagged, take one input, hand it on, keep the menu bar and the
// title, leave. A screen is a state record that begins with ScreenState, short functions over it, and one constant
// Screen<State> that says what is called, in which order, and which keys there are. The loop decides nothing else.
//
//     struct TitleScreen : ScreenState { bool redraw = true; };
//     constexpr KeyBinding<TitleScreen> keys[] = {{{key::escape, key::close_window}, "ends the program",
//     end_program<TitleScreen>}}; constexpr Step order[] = {Step::redraw, Step::read, Step::key, Step::menu_bar};
//     constexpr Screen<TitleScreen> screen{.order = order, .redraw = draw_flagged, .keys = keys};
//     TitleScreen state;
//     run_screen(state, screen);
#pragma once

#include "widgets/key_scope.h"
#include "widgets/key_table.h"
#include "widgets/menu_bar.h"
#include "window/input.h"
#include "window/window.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <span>
#include <string>
#include <vector>

struct ScreenState {
    Input input;         // what this pass acts on
    bool leave = false;  // the loop ends with the step that runs
    bool repaint = true; // everything is to be drawn: at the start, and whenever repaint_screens() asks for it
};

// The steps of a pass. A screen lists those that it has in its own order.
enum class Step : std::uint8_t {
    redraw,   // calls redraw; what it draws is one frame
    read,     // takes the next input, and waits for it when there is nothing to do
    mouse,    // calls on_mouse if the mouse has changed
    widgets,  // calls widgets, in every pass: buttons, rows, keys that are held
    key,      // calls the action of the key that was typed
    menu_bar, // leaves if another screen is picked
    after     // calls after, in every pass
};

template <class State>
struct Screen {
    std::span<const Step> order{};
    // Draws what is flagged, all of it when repaint is set, and takes the flags back.
    void (*redraw)(State&) = nullptr;
    void (*on_mouse)(State&) = nullptr;
    void (*widgets)(State&) = nullptr;
    // The keys that it always has, and those of the mode that it is in, which come first.
    std::span<const KeyBinding<State>> keys{};
    std::span<const KeyBinding<State>> (*mode_keys)(const State&) = nullptr;
    const char* (*mode_heading)(const State&) = nullptr; // over these in a list for a person
    // Further tables for a person, of keys that an action tells apart by itself.
    std::vector<KeyHelpTable> (*further_keys)(const State&) = nullptr;
    void (*after)(State&) = nullptr;
    // Takes a file that was dropped on the window (state.input.dropped); false: it is not for this screen.
    bool (*on_drop)(State&) = nullptr;
    bool stays_at_end = false; // the work area is not cleared when the program ends
};

// An action for tables: the program ends.
template <class State>
void end_program(State& state) {
    CURMENU = screen_number::quit;
    state.leave = true;
}

// What goes with every screen without a screen knowing of it: history, recovery, help.
struct LoopHooks {
    // Before the screen acts on an input that holds a key. True takes the key away: the screen does not see it.
    std::function<bool(const Input&)> before{};
    // When the screen has acted on an input and is about to read the next, or has left its loop.
    std::function<void(const Input&)> after{};
    // Before any loop acts on an input that holds a key, also one inside a screen's step that lets a person look at its
    // keys (nested_loop.h). True takes the key away.
    std::function<bool(const Input&)> everywhere{};
    // A file was dropped that the screen did not take. It is the input that was read last.
    std::function<void(const Input&)> dropped{};
    // Before any loop reads, those inside a screen's step included; with what that loop read last.
    std::function<void(const Input&)> waiting{};
};
void set_loop_hooks(LoopHooks hooks);
// Asks that hook.
bool taken_everywhere(const Input& input);
// Every screen that runs draws everything anew before it reads again.
void repaint_screens();
// Every screen that runs is left, and what runs inside its steps ends as by the close request. CURMENU says which one
// is next; it may be the same.
void leave_screens();
// Whether the screen that runs is being left.
bool screen_is_left();
// What every loop calls before it reads, with what it read last: keeps the strip, and calls the hook.
void about_to_read(const Input& last);

// What the loop keeps for one screen that runs. A screen may run inside another one's step; when that changes CURMENU,
// both are left.
class RunningScreen {
public:
    explicit RunningScreen(ScreenState& state, KeyScope::Tables keys = {});
    ~RunningScreen();
    RunningScreen(const RunningScreen&) = delete;
    RunningScreen& operator=(const RunningScreen&) = delete;

    void read();
    void hand_on_drop(); // to the hook
    void handled();      // calls the hook for the input that was acted on, once
    void keep_menu_bar();
    bool left() const;  // the loop ends here
    void clear() const; // the work area; the next screen's first frame shows it

private:
    ScreenState& state_;
    InputScope scope_{InputScope::Start::anew};
    KeyScope keys_;
    RunningScreen* const around_;
    const std::uint8_t number_; // CURMENU at the start
    bool acted_on_ = true;      // nothing was read yet
    bool entering_ = true;      // the same; what is drawn until then is one frame

    friend void repaint_screens();
    friend void leave_screens();
    friend bool screen_is_left();
};

// The keys of a screen as it is now.
template <class State>
std::vector<KeyHelpTable> keys_now(const State& state, const Screen<State>& screen) {
    std::vector<KeyHelpTable> tables;
    const std::string heading = screen.mode_heading ? screen.mode_heading(state) : "";
    if (screen.mode_keys) tables.push_back(key_help_now(heading, screen.mode_keys(state), state));
    tables.push_back(key_help_now("", screen.keys, state));
    if (screen.further_keys) std::ranges::move(screen.further_keys(state), std::back_inserter(tables));
    return tables;
}

// Calls what the key of the input is bound to, if it is bound to anything.
template <class State>
void type_key(State& state, const Screen<State>& screen) {
    if (state.input.key.empty()) return;
    const KeyBinding<State>* row = screen.mode_keys ? row_of(screen.mode_keys(state), state.input.key) : nullptr;
    if (!row) row = row_of(screen.keys, state.input.key);
    if (!row) return say_where_keys_are();
    if (row->action) row->action(state);
}

// Reads; what was dropped goes its own way.
template <class State>
void read_step(State& state, const Screen<State>& screen, RunningScreen& running) {
    running.read();
    if (state.input.key != key::dropped) return;
    state.input.key.clear();
    if (!screen.on_drop || !screen.on_drop(state)) running.hand_on_drop();
}

template <class State>
void redraw_screen(State& state, const Screen<State>& screen) {
    const ScreenLock one_frame;
    screen.redraw(state);
    state.repaint = false;
}

template <class State>
void run_step(Step step, State& state, const Screen<State>& screen, RunningScreen& running) {
    switch (step) {
    case Step::redraw: return redraw_screen(state, screen);
    case Step::read: return read_step(state, screen, running);
    case Step::mouse:
        if (state.input.mouse_changed()) screen.on_mouse(state);
        return;
    case Step::widgets: return screen.widgets(state);
    case Step::key: return type_key(state, screen);
    case Step::menu_bar: return running.keep_menu_bar();
    case Step::after: return screen.after(state);
    }
}

// One pass; it ends with the step that leaves.
template <class State>
void run_pass(State& state, const Screen<State>& screen, RunningScreen& running) {
    for (const Step step : screen.order) {
        run_step(step, state, screen, running);
        if (running.left()) return;
    }
}

// Runs the screen until one of its steps leaves: another screen was picked (CURMENU has changed), or the program ends
// (CURMENU is 255), or the screen set `leave` itself. Then the work area is cleared.
template <class State>
void run_screen(State& state, const Screen<State>& screen) {
    RunningScreen running(state, [&] { return keys_now(state, screen); });
    while (!running.left())
        run_pass(state, screen, running);
    if (CURMENU != screen_number::quit || !screen.stays_at_end) running.clear();
}
