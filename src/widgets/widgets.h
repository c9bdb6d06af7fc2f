// The framed section with a title, and the push buttons.
#pragma once

#include "base/table.h"
#include "drawing/drawing.h"

#include <cstdint>
#include <string>

namespace colour {
constexpr std::uint32_t background = 0xFF32141E; // also a button's back colour and a menu cell
constexpr std::uint32_t title = 0xFFFAFAFA;
constexpr std::uint32_t label = 0xFFB4B4B4; // also a button's main colour
constexpr std::uint32_t value = 0xFF00B464;
constexpr std::uint32_t success = 0xFF00DC64;
constexpr std::uint32_t error = 0xFFDC5000;
constexpr std::uint32_t pressed = 0xFF280A14; // menu cell of the current screen, ground of an edited field
constexpr std::uint32_t hover = 0xFF3C1E28;   // menu cell under the mouse, inactive button
constexpr std::uint32_t section_light = 0xFF64283C;
constexpr std::uint32_t section_dark = 0xFF190A0F;
constexpr std::uint32_t section_title = 0xFFDC7896;
} // namespace colour

// The part of the window above the menu bar: (0,0)-(959,599).
constexpr int work_area_bottom = 599;
// Fills the work area with the background.
void clear_work_area(Canvas& canvas);
void clear_work_area(); // of the screen

// A section frame, engraved, with the title in a gap of its top line.
void draw_section(Canvas& canvas, const Rectangle& frame, const std::string& title, bool highlighted);
void DRAWSECTION(int x1, int y1, int x2, int y2, const std::string& title, bool highlighted); // on the screen

namespace button_state {
constexpr std::uint8_t fresh = 0, normal = 1, hover = 2, inactive = 3, make_inactive = 253;
}

struct BLISSBUTTON {
    std::int16_t x = 0, y = 0, width = 0, height = 0;
    std::string caption;
    std::uint32_t main_colour = 0, back_colour = 0, inactive_colour = 0;
    std::int16_t id = 0;
    std::uint8_t state = button_state::fresh;
};

constexpr int max_buttons = 20;
extern OneBased<BLISSBUTTON, max_buttons> BUTTON;
extern std::uint8_t BUTTONS;

// Appends a button at (x, y), 32 high and as wide as its caption asks. Past the 20th nothing is appended.
void CREATESIMPLEBUTTON(int x, int y, const std::string& caption, int id);
// Appends a button beside the last one, or below it and as wide. Nothing without a last one.
void APPENDBUTTON(const std::string& caption, int id, bool below);
// Redraws the buttons whose state changed with the mouse. Returns the id of the one under the mouse while the left
// button alone is down, else 0. The caller has read the mouse in this pass.
int MAINTAINBUTTONS();

// The buttons were drawn over: the next call of MAINTAINBUTTONS draws them all.
void forget_drawn_buttons();

void reset_widgets();
