// A new car on a black screen with a scripted window, and words about the parameter screen.
#pragma once

#include "model/document.h"
#include "model/parameters.h"
#include "params/parameter_table.h"
#include "params/target_edit.h"
#include "params/torque_graph.h"
#include "support/play.h"
#include "widgets/menu_bar.h"
#include "widgets/widgets.h"

class ParameterTest : public ScriptedTest {
protected:
    void SetUp() override {
        ScriptedTest::SetUp();
        CURMENU = screen_number::parameters;
        INITPARAMTARGETS();
    }

    // A place in the hover area of a row of the parameter table.
    static int row_x(int row) { return PTARGET[row].label_x + 10; }
    static int row_y(int row) { return PTARGET[row].label_y + 8; }
    static ScriptStep click_row(int row) { return click(row_x(row), row_y(row)); }
    static ScriptStep point_at_row(int row) { return mouse_at(row_x(row), row_y(row)); }

    // The mouse is there, with these buttons down, in the pass that runs.
    void put_mouse(int x, int y, int buttons = 0) {
        std::vector<ScriptStep> steps{mouse_at(x, y)};
        for (const int button : {1, 2})
            steps.push_back((buttons & button) != 0 ? press(x, y, button) : release(x, y, button));
        window.play(std::move(steps));
        while (!window.finished())
            read_input();
        for (int i = 0; i < 4; ++i)
            read_input();
        ASSERT_EQ(mouse().x, x);
        ASSERT_EQ(mouse().y, y);
        ASSERT_EQ(mouse().buttons, buttons);
    }

    static void fill_par(int value) { PAR.fill(static_cast<std::byte>(value)); }
    static void set_curve(int value) {
        for (int point = 0; point < torque_points; ++point)
            set_torque(point, value);
    }
};

inline bool is_filled(int x1, int y1, int x2, int y2, std::uint32_t colour) {
    for (int y = y1; y <= y2; ++y)
        for (int x = x1; x <= x2; ++x)
            if (screen().image().pixel(x, y) != colour) return false;
    return true;
}

// The 3 x 3 box of a curve point: the outline in the colour. The centre is the curve's.
inline bool has_point_box(int point, int value, std::uint32_t colour) {
    const int x = 65 + 6 * point, y = 500 - value;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            if ((dx != 0 || dy != 0) && screen().image().pixel(x + dx, y + dy) != colour) return false;
    return true;
}
