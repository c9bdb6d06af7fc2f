#include "widgets/nested_loop.h"

#include "widgets/screen_loop.h"
#include "window/window.h"

namespace {

int running = 0;

class Running {
public:
    Running() { ++running; }
    ~Running() { --running; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
};

void draw_locked(const std::function<void()>& draw) {
    const ScreenLock one_frame;
    draw();
}

} // namespace

bool nested_loop_runs() { return running > 0; }

bool run_nested(const std::function<void()>& draw, const std::function<Answer(const Input&)>& answer,
                const KeyScope::Tables& keys) {
    const Running counted;
    const InputScope scope(InputScope::Start::here);
    const KeyScope known(keys);
    draw_locked(draw);
    for (Input input;;) {
        about_to_read(input);
        input = read_input();
        if (input.key == key::close_window || input.key == key::dropped) {
            unread_input();
            return false;
        }
        if (keys && taken_everywhere(input)) {
            if (screen_is_left()) return false;
            continue;
        }
        switch (answer(input)) {
        case Answer::nothing: break;
        case Answer::changed: draw_locked(draw); break;
        case Answer::hand_back: unread_input(); return true;
        case Answer::done: return true;
        }
    }
}
