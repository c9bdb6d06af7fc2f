#include "window/window.h"

#include "base/reset.h"
#include "window/backend.h"

#include <cstring>
#include <vector>

namespace {

constexpr std::uint32_t black = 0xFF000000;
constexpr Rectangle whole_screen{0, 0, screen_width - 1, screen_height - 1};

void blacken(Image& picture) {
    const std::vector<std::uint32_t> row(screen_width, black);
    for (int y = 0; y < picture.height(); ++y)
        std::memcpy(picture.row(y).data(), row.data(), picture.row(y).size());
}

struct Screen {
    Image picture{screen_width, screen_height, 4, screen_width * 4}; // zeros, which are shown as black
    Canvas canvas{picture};
    std::string title;
    int locks = 0;
};

Screen& window() {
    static Screen only;
    return only;
}

} // namespace

bool open_screen(std::string& error) {
    if (!backend()) {
        error = "no window system in use";
        return false;
    }
    if (!backend()->open(screen_width, screen_height, error)) return false;
    if (!window().title.empty()) backend()->set_title(window().title);
    window().canvas.add_damage(whole_screen);
    return true;
}

void set_text_grid(int columns, int /*rows: text never scrolls*/) { set_text_grid_width(columns); }

void set_window_title(const std::string& title) {
    window().title = title;
    if (backend()) backend()->set_title(title);
}

const std::string& window_title() { return window().title; }

Canvas& screen() { return window().canvas; }

void lock_screen() { ++window().locks; }

void unlock_screen_unshown() {
    if (window().locks > 0) --window().locks;
}

void unlock_screen() {
    if (window().locks == 0) return;
    --window().locks;
    show_screen();
}

void show_screen() {
    if (window().locks > 0 || !backend() || !window().canvas.damaged()) return;
    const DamageList changed = window().canvas.take_damage();
    backend()->present(window().picture, changed.rectangles());
}

void reset_screen() {
    Screen& reset = window();
    blacken(reset.picture);
    reset.canvas = Canvas{reset.picture};
    reset.title.clear();
    reset.locks = 0;
}

namespace {
const ResetWithProgram registered(reset_screen);
}
