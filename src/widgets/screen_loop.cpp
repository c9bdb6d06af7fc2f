#include "widgets/screen_loop.h"

#include "base/reset.h"
#include "widgets/strip.h"
#include "widgets/title.h"
#include "widgets/widgets.h"

#include <utility>

namespace {

LoopHooks hooks;
RunningScreen* innermost = nullptr;

} // namespace

void set_loop_hooks(LoopHooks wanted) { hooks = std::move(wanted); }

void repaint_screens() {
    for (RunningScreen* running = innermost; running; running = running->around_)
        running->state_.repaint = true;
}

void about_to_read(const Input& last) {
    set_alarm(std::nullopt);
    if (hooks.waiting) hooks.waiting(last);
    keep_strip(); // also with what the hook had to say
}

bool taken_everywhere(const Input& input) { return !input.key.empty() && hooks.everywhere && hooks.everywhere(input); }

void leave_screens() {
    for (RunningScreen* running = innermost; running; running = running->around_)
        running->state_.leave = true;
}

bool screen_is_left() { return innermost && innermost->left(); }

RunningScreen::RunningScreen(ScreenState& state, KeyScope::Tables keys)
    : state_(state), keys_(std::move(keys)), around_(std::exchange(innermost, this)), number_(CURMENU) {
    lock_screen();
}

RunningScreen::~RunningScreen() {
    if (entering_) unlock_screen_unshown();
    handled();
    set_screen_fact("");
    innermost = around_;
    if (around_) around_->state_.repaint = true;
}

bool RunningScreen::left() const { return state_.leave || CURMENU != number_; }

void RunningScreen::clear() const {
    lock_screen();
    clear_work_area();
    unlock_screen_unshown();
}

void RunningScreen::handled() {
    if (!std::exchange(acted_on_, true) && hooks.after) hooks.after(state_.input);
}

void RunningScreen::read() {
    handled();
    show_title();
    about_to_read(state_.input);
    if (std::exchange(entering_, false)) unlock_screen();
    state_.input = read_input();
    acted_on_ = false;
    const bool before = !state_.input.key.empty() && hooks.before && hooks.before(state_.input);
    if (before || taken_everywhere(state_.input)) state_.input.key.clear();
}

void RunningScreen::hand_on_drop() {
    if (hooks.dropped) hooks.dropped(state_.input);
}

void RunningScreen::keep_menu_bar() {
    if (MAINTAINMENU(false) < 0) state_.leave = true;
}

namespace {
const ResetWithProgram registered([] { set_loop_hooks({}); });
}
