#include "widgets/edit_loop.h"

#include "window/input.h"
#include "window/window.h"

namespace {

void draw_locked(const std::function<void()>& draw) {
    const ScreenLock lock;
    draw();
}

// Whether a button went down since the last call.
bool pressed_further(int& held) {
    const int before = held;
    held = read_mouse().buttons;
    return (held & ~before) != 0;
}

// A close request is left to the loop of the screen.
bool is_close_request(const std::string& typed) {
    if (typed != key::close_window) return false;
    put_key_back(typed);
    return true;
}

} // namespace

EditEnd run_edit(const std::function<void()>& draw, const std::function<bool(const std::string&)>& on_key) {
    int held = mouse().buttons;
    draw_locked(draw);
    while (!pressed_further(held)) {
        const std::string typed = read_key();
        if (typed == key::enter) return EditEnd::stored;
        if (typed == key::escape) return EditEnd::escaped;
        if (is_close_request(typed)) return EditEnd::closed;
        if (!typed.empty() && on_key(typed)) draw_locked(draw);
    }
    return EditEnd::pressed;
}

bool wait_for_release() {
    while (mouse().buttons != 0) {
        if (is_close_request(read_key())) return false;
        read_mouse();
    }
    return true;
}
