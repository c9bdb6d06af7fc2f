// The Dash manager on a scripted window, played as a whole or handler by handler, with a cockpit of plain colours.
#pragma once

#include "dash/dash_screen.h"
#include "model/bitmap_table.h"
#include "model/colours.h"
#include "model/items.h"
#include "model/preview.h"
#include "support/cockpit.h"
#include "support/picture_words.h"
#include "support/play.h"
#include "widgets/widgets.h"

#include <string>
#include <string_view>
#include <vector>

// Index of a plain colour in the palette; 0 is nothing.
namespace ink {
constexpr std::uint8_t none = 0, red = 1, green = 2, blue = 3, white = 4, grey = 5, brown = 6;
}

inline std::uint32_t colour_of(std::uint8_t ink) {
    constexpr std::uint32_t colours[] = {0xFF000000, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF,
                                         0xFFFFFFFF, 0xFF808080, 0xFF804000};
    return colours[ink];
}

class DashTest : public ScriptedTest {
protected:
    DashScreen state;

    void SetUp() override {
        ScriptedTest::SetUp();
        INITDASHITEMS();
        CURMENU = screen_number::dash_manager;
        fill_box(screen(), 0, 0, screen_width - 1, screen_height - 1, colour::background);
        for (std::uint8_t i = 0; i <= ink::brown; ++i)
            PAL[i] = colour_of(i);
    }

    static void add(const std::string& id, int width, int height, int x, int y, std::uint8_t ink) {
        BitmapRecord& bitmap = BITMAP[++BITMAPS];
        bitmap = {};
        bitmap.name = id;
        bitmap.width = static_cast<std::uint16_t>(width);
        bitmap.height = static_cast<std::uint16_t>(height);
        bitmap.relative_x = static_cast<std::int16_t>(x);
        bitmap.relative_y = static_cast<std::int16_t>(y);
        bitmap.pixels = Pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), ink);
        link_mask(bitmap);
        resolve_positions();
        UPDATEDASHITEMS();
    }
    static BitmapRecord& bitmap(std::string_view id) { return BITMAP[RBM(id)]; }

    // The screen as it is on entry, in a mode.
    void enter(std::uint8_t mode) {
        OPMODE = mode;
        state = DashScreen();
    }
    // The handlers.
    void key(const std::string& typed, bool control = false) {
        state.input.key = typed;
        state.input.qualifiers.control = control;
        type_key(state, dash_screen);
        state.input.key.clear();
    }
    void keys(const std::string& typed, int times) {
        for (int i = 0; i < times; ++i)
            key(typed);
    }
    void mouse_to(int x, int y, int buttons = 0) {
        Input& input = state.input;
        input.before = input.mouse;
        input.mouse = {x, y, 0, buttons};
        dash_screen.on_mouse(state);
    }
    // A press of the left button, and its release.
    void click_on(int x, int y) {
        mouse_to(x, y, 1);
        mouse_to(x, y, 0);
    }
    void draw() {
        state.redraw = true;
        redraw_screen(state, dash_screen);
    }
    void draw_at(int zoom) {
        state.zoom = zoom;
        draw();
    }

    // A row of a panel.
    static bool shows_row(int x, int y, const std::string& label, int value_x, const std::string& value) {
        return screen_shows(x, y, label, colour::label) && screen_shows(value_x, y, value, colour::value) &&
               screen_shows(value_x + glyph_width * static_cast<int>(value.size()), y, "  ", colour::value);
    }
    static bool shows_edit_row(int y, const std::string& label, const std::string& value) {
        return shows_row(730, y, label, 815, value);
    }
    static bool shows_section(int x1, int y1, int x2, int y2, const std::string& title) {
        return screen_shows(x1 + 24, y1 - 8, title, colour::section_title) &&
               drawn(x2, y1) == Pixel{colour::section_light} && drawn(x1, y2) == Pixel{colour::section_light} &&
               drawn(x2, y2) == Pixel{colour::section_light} && drawn(x1 - 1, y1 - 1) == Pixel{colour::section_dark};
    }
    // The smallest rectangle around all that has a colour.
    static Rectangle found(std::uint32_t colour) { return around(screen().image(), colour); }

    // The screen's loop, left by the close request.
    void play_screen(std::vector<ScriptStep> steps) {
        steps.push_back(close_window());
        play(std::move(steps), DASHMANAGER);
        EXPECT_EQ(CURMENU, screen_number::quit);
    }
};

inline void PrintTo(const Rectangle& r, std::ostream* out) {
    *out << '(' << r.x1 << ", " << r.y1 << ")-(" << r.x2 << ", " << r.y2 << ')';
}
