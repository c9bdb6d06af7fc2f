#include "widgets/title_screen.h"

#include "widgets/screen_loop.h"
#include "widgets/widgets.h"

namespace {

struct TitleScreen : ScreenState {
    std::string title;
};

void redraw(TitleScreen& state) {
    if (!state.repaint) return;
    clear_work_area();
    draw_text(screen(), 16, 16, state.title, colour::title);
}

constexpr KeyBinding<TitleScreen> keys[] = {
    {{key::escape, key::close_window}, "ends the program", end_program<TitleScreen>},
};

constexpr Step order[] = {Step::redraw, Step::read, Step::key, Step::menu_bar};
constexpr Screen<TitleScreen> title_screen{
    .order = order,
    .redraw = redraw,
    .keys = keys,
};

} // namespace

void run_title_screen(const std::string& title) {
    TitleScreen state;
    state.title = title;
    run_screen(state, title_screen);
}

std::vector<KeyHelpTable> title_screen_keys() { return {key_help("", keys)}; }
