#include "widgets/nested_loop.h"

#include "widgets/strip.h"
#include "window/window.h"

namespace {

void draw_locked(const std::function<void()>& draw) {
    const ScreenLock one_frame;
    draw();
}

} // namespace

bool run_nested(const std::function<void()>& draw, const std::function<Answer(const Input&)>& answer) {
    const InputScope scope(InputScope::Start::here);
    draw_locked(draw);
    for (;;) {
        keep_strip();
        const Input input = read_input();
        if (input.key == key::close_window) {
            unread_input();
            return false;
        }
        switch (answer(input)) {
        case Answer::nothing: break;
        case Answer::changed: draw_locked(draw); break;
        case Answer::hand_back: unread_input(); return true;
        case Answer::done: return true;
        }
    }
}
