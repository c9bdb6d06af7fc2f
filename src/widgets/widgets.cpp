#include "widgets/widgets.h"

#include "base/reset.h"
#include "window/input.h"
#include "window/window.h"

OneBased<BLISSBUTTON, max_buttons> BUTTON;
std::uint8_t BUTTONS = 0;

namespace {

constexpr int button_height = 32;
constexpr int button_gap_beside = 16;
constexpr int button_gap_below = 8;

int caption_width(const std::string& caption) { return glyph_width * static_cast<int>(caption.size()); }

std::int16_t button_width(const std::string& caption) { return static_cast<std::int16_t>(caption_width(caption) + 32); }

bool under_mouse(const BLISSBUTTON& button) {
    const MouseState& at = mouse();
    return at.x >= button.x && at.x < button.x + button.width && at.y >= button.y && at.y < button.y + button.height;
}

void draw_button(const BLISSBUTTON& button) {
    const int left = button.x, top = button.y;
    const int right = left + button.width - 1, bottom = top + button.height - 1;
    const std::uint32_t ink = button.state == button_state::inactive ? button.inactive_colour : button.main_colour;
    const bool hovered = button.state == button_state::hover;

    if (hovered) {
        fill_box(screen(), left, top, right, bottom, button.main_colour);
    } else {
        draw_box(screen(), left, top, right, bottom, ink);
        draw_box(screen(), left + 1, top + 1, right - 1, bottom - 1, ink);
        fill_box(screen(), left + 2, top + 2, right - 2, bottom - 2, button.back_colour);
    }
    draw_text(screen(), left + button.width / 2 - caption_width(button.caption) / 2, top + button.height / 2 - 8,
              button.caption, hovered ? button.back_colour : ink);
}

// The state that follows when a button is looked at; the same state means that nothing is redrawn.
std::uint8_t next_state(std::uint8_t state, bool hovered) {
    switch (state) {
    case button_state::fresh:
    case button_state::normal:
    case button_state::hover: return hovered ? button_state::hover : button_state::normal;
    case button_state::make_inactive: return button_state::inactive;
    default: return state;
    }
}

void update_state(BLISSBUTTON& button, bool hovered) {
    const std::uint8_t state = next_state(button.state, hovered);
    if (state == button.state) return;
    button.state = state;
    draw_button(button);
}

// The mouse state that MAINTAINBUTTONS compares with.
// ODDITY buttons-never-remember-mouse (kept): it is never stored into, so that every call looks at all buttons unless
// the mouse rests at (0,0) with no button down.
constexpr MouseState remembered_mouse{.x = 0, .y = 0, .wheel = 0, .buttons = 0};

bool same_place(const MouseState& a, const MouseState& b) { return a.x == b.x && a.y == b.y && a.buttons == b.buttons; }

} // namespace

void clear_work_area(Canvas& canvas) { fill_box(canvas, 0, 0, screen_width - 1, work_area_bottom, colour::background); }

void clear_work_area() { clear_work_area(screen()); }

void draw_section(Canvas& canvas, const Rectangle& frame, const std::string& title, bool highlighted) {
    const auto [x1, y1, x2, y2] = frame;
    draw_box(canvas, x1, y1, x2, y2, colour::section_light);
    draw_box(canvas, x1 - 1, y1 - 1, x2 - 1, y2 - 1, colour::section_dark);
    if (title.empty()) return;
    fill_box(canvas, x1 + 16, y1 - 2, x1 + 32 + caption_width(title), y1 + 2, colour::background);
    draw_text(canvas, x1 + 24, y1 - 8, title, highlighted ? colour::title : colour::section_title);
}

void DRAWSECTION(int x1, int y1, int x2, int y2, const std::string& title, bool highlighted) {
    draw_section(screen(), {x1, y1, x2, y2}, title, highlighted);
}

void CREATESIMPLEBUTTON(int x, int y, const std::string& caption, int id) {
    if (BUTTONS >= max_buttons) return;
    ++BUTTONS;
    BUTTON[BUTTONS] = BLISSBUTTON{.x = static_cast<std::int16_t>(x),
                                  .y = static_cast<std::int16_t>(y),
                                  .width = button_width(caption),
                                  .height = button_height,
                                  .caption = caption,
                                  .main_colour = colour::label,
                                  .back_colour = colour::background,
                                  .inactive_colour = colour::hover,
                                  .id = static_cast<std::int16_t>(id),
                                  .state = button_state::fresh};
}

void APPENDBUTTON(const std::string& caption, int id, bool below) {
    if (BUTTONS == 0 || BUTTONS >= max_buttons) return;
    const BLISSBUTTON& previous = BUTTON[BUTTONS];
    BLISSBUTTON appended = previous;
    if (below) {
        appended.y = static_cast<std::int16_t>(previous.y + previous.height + button_gap_below);
    } else {
        appended.x = static_cast<std::int16_t>(previous.x + previous.width + button_gap_beside);
        appended.width = button_width(caption);
    }
    appended.caption = caption;
    appended.height = button_height;
    appended.id = static_cast<std::int16_t>(id);
    appended.state = button_state::fresh;
    ++BUTTONS;
    BUTTON[BUTTONS] = appended;
}

int MAINTAINBUTTONS() {
    if (same_place(mouse(), remembered_mouse)) return 0;
    const ScreenLock lock;
    int clicked = 0;
    for (int i = 1; i <= BUTTONS; ++i) {
        const bool hovered = under_mouse(BUTTON[i]);
        update_state(BUTTON[i], hovered);
        // ODDITY inactive-button-clicks (kept): the click test does not look at the state.
        if (hovered && mouse().buttons == 1) clicked = BUTTON[i].id;
    }
    return clicked;
}

void forget_drawn_buttons() {
    for (BLISSBUTTON& button : BUTTON)
        button.state = button.state == button_state::inactive ? button_state::make_inactive : button_state::fresh;
}

void reset_widgets() {
    for (BLISSBUTTON& button : BUTTON)
        button = {};
    BUTTONS = 0;
}

namespace {
const ResetWithProgram registered(reset_widgets);
}
