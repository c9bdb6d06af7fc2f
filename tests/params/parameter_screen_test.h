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
        state.last = state.now;
        state.now = {x, y, 0, buttons};
        on_mouse(state);
    }
    void press_key(const std::string& typed) { on_key(state, typed); }
};
