#include "app/program.h"

#include "app/editing.h"
#include "app/everywhere.h"
#include "app/screens.h"
#include "base/config.h"
#include "base/random.h"
#include "base/shell.h"
#include "base/version.h"
#include "editor3d/views.h"
#include "formats/data_files.h"
#include "image/tga.h"
#include "model/document.h"
#include "model/items.h"
#include "model/preview.h"
#include "params/parameter_table.h"
#include "widgets/busy_window.h"
#include "widgets/screen_loop.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int text_columns = 120, text_rows = 40;

// Not shown yet: the first frame that a person sees is the first screen, whole, with the menu bar.
void draw_menu_bar() {
    lock_screen();
    MAINTAINMENU(true);
    unlock_screen_unshown();
}

} // namespace

void fill_tables() {
    INITPARAMTARGETS();
    INIT3DWINDOWS();
    INITDASHITEMS();
}

void read_data_files(const std::string& invocation_path) {
    load_data_files(invocation_path);
    seed_random(timer());
    MENUIMG = TARGALOAD(PROGDIR + "images.tga");
}

bool open_window(std::string& error) {
    if (!open_screen(error)) return false;
    set_text_grid(text_columns, text_rows);
    set_window_title(std::string(program_title));
    use_program_runner(run_beside_window);
    fill_box(screen(), 0, 0, screen_width - 1, screen_height - 1, colour::background);
    return true;
}

// The window comes first: the window system makes it while the files are read, and where there is none, nothing is
// read. The menu bar comes last, because its icons are one of the files.
bool start_up(const std::string& invocation_path, std::string& error) {
    if (!open_window(error)) return false;
    fill_tables();
    read_data_files(invocation_path);
    LoopHooks hooks = begin_editing();
    hooks.everywhere = act_everywhere;
    hooks.dropped = load_dropped;
    set_loop_hooks(std::move(hooks));
    draw_menu_bar();
    return true;
}

namespace {

// A number that no screen has: only the menu bar is kept, until one of its cells is clicked or the window is closed.
constexpr KeyBinding<ScreenState> idle_keys[] = {
    {{key::close_window}, "ends the program", end_program<ScreenState>},
};
constexpr Step idle_order[] = {Step::read, Step::key, Step::menu_bar};
constexpr Screen<ScreenState> idle_screen{.order = idle_order, .keys = idle_keys};

void run_idle() {
    ScreenState state;
    run_screen(state, idle_screen);
}

} // namespace

void start_with(const std::string& path) {
    if (path.empty()) return;
    InputEvent dropped;
    dropped.kind = InputEvent::Kind::file_dropped;
    dropped.text = path;
    do_next({&dropped, 1});
}

void run_screens() {
    while (CURMENU != screen_number::quit) {
        const auto row = std::ranges::find(screens(), CURMENU, &ScreenRow::number);
        row != screens().end() ? row->run() : run_idle();
    }
}

void shut_down() {
    end_editing();
    MENUIMG.reset();
    for (int i = 1; i <= BITMAPS; ++i)
        BITMAP[i].pixels = {};
    forget_previews();
}
