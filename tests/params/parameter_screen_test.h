// The parameter screen, played as a whole or handler by handler.
#pragma once

#include "params/parameter_screen.h"
#include "params/parameter_test.h"

// A place over the curve: a point, and a torque at zoom 2.
inline int curve_x(int point) { return 65 + 6 * point + 2; }
inline int curve_y(int torque_at_zoom_2) { return 500 - 2 * torque_at_zoom_2; }

class ParameterScreenTest : public ParameterTest {
protected:
    ParameterScreen state;

    // The screen's loop, left by the close request.
    void play_screen(std::vector<ScriptStep> steps) {
        steps.push_back(close_window());
        play(std::move(steps), EDITPARAMS);
        EXPECT_EQ(CURMENU, screen_number::quit);
    }
    // The handlers with the mouse from one state to the next.
    void move(int x, int y, int buttons = 0) {
        Input& input = state.input;
        input.before = input.mouse;
        input.mouse = {x, y, 0, buttons};
        if (input.left_pressed()) input.pressed_at = {x, y};
        if ((buttons & 1) == 0) input.pressed_at = {-1, -1};
        parameter_screen.on_mouse(state);
    }
    void press_key(const std::string& typed) {
        state.input.key = typed;
        type_key(state, parameter_screen);
    }
    static void draw(ParameterScreen& drawn) { redraw_screen(drawn, parameter_screen); }
};
