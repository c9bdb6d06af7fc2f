#include "app/edit_loop.h"

#include "app/input.h"
#include "app/window.h"

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

} // namespace

bool run_edit(const std::function<void()>& draw, const std::function<bool(const std::string&)>& on_key) {
    int held = mouse().buttons;
    draw_locked(draw);
    while (!pressed_further(held)) {
        const std::string typed = read_key();
        if (typed == key::enter) return true;
        if (typed == key::escape) return false;
        if (typed == key::close_window) {
            put_key_back(typed);
            return false;
        }
        if (!typed.empty() && on_key(typed)) draw_locked(draw);
    }
    return false;
}
