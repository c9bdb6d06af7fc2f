#include "widgets/menu_bar.h"

#include "base/reset.h"
#include "widgets/widgets.h"
#include "window/input.h"
#include "window/window.h"

std::uint8_t CURMENU = screen_number::files;
ImageHandle MENUIMG;

namespace {

// Mouse of the last call that was neither forced nor ignored.
MouseState remembered_mouse{.x = 0, .y = 0, .wheel = 0, .buttons = 0};

// Whether this call has nothing to show; if it has, the mouse is remembered.
bool nothing_new(const MouseState& at) {
    if (at.x == remembered_mouse.x && at.y == remembered_mouse.y && at.buttons == remembered_mouse.buttons) return true;
    if (at.y < menu_top && remembered_mouse.y < menu_top) return true;
    remembered_mouse = at;
    return false;
}

bool on_cell(const MouseState& at, int cell) {
    return at.y >= menu_top && at.x >= cell * menu_cell && at.x < (cell + 1) * menu_cell;
}

// Draws one cell; true when the click on it picked another screen.
// ODDITY menu-two-dark-cells (kept): cells are drawn in order with CURMENU as it stands, so that a click to the right
// of the current cell leaves both dark until the new screen redraws the bar.
bool draw_cell(const MouseState& at, int cell) {
    bool picked = false;
    std::uint32_t ground = colour::background;
    if (cell == CURMENU) {
        ground = colour::pressed;
    } else if (on_cell(at, cell)) {
        picked = at.buttons == 1;
        ground = picked ? colour::pressed : colour::hover;
        if (picked) CURMENU = static_cast<std::uint8_t>(cell);
    }
    fill_box(screen(), cell * menu_cell, menu_top, cell * menu_cell + menu_cell - 1, screen_height - 1, ground);
    return picked;
}

} // namespace

int MAINTAINMENU(bool force) {
    const MouseState at = bar_mouse();
    if (!force && nothing_new(at)) return 0;

    bool changed = false;
    lock_screen();
    for (int cell = 0; cell < menu_cells; ++cell)
        changed |= draw_cell(at, cell);
    if (MENUIMG) draw_image(screen(), *MENUIMG, 0, menu_top, DrawMode::alpha);
    // When a screen was picked, its first frame shows the bar too.
    changed ? unlock_screen_unshown() : unlock_screen();
    if (changed) return -1;
    return at.buttons == 1 ? at.x : 0;
}

void reset_menu_bar() {
    CURMENU = screen_number::files;
    MENUIMG.reset();
    remembered_mouse = {.x = 0, .y = 0, .wheel = 0, .buttons = 0};
}

namespace {
const ResetWithProgram registered(reset_menu_bar);
}
