// The cursor keys in every view and mode.
#include "editor3d/editor_test.h"

#include "model/body.h"
#include "model/wheels.h"
#include "support/arrow_table.h"

namespace {

constexpr double snap = 0.1;

ScriptStep press_of(Arrow arrow) {
    switch (arrow) {
    case Arrow::right: return key_press(Key::right);
    case Arrow::left: return key_press(Key::left);
    case Arrow::up: return key_press(Key::up);
    case Arrow::down: break;
    }
    return key_press(Key::down);
}

class ArrowKeys : public EditorTest {
protected:
    // Plays the key over the view, in this mode and slot 1, and gives the car as it was before.
    CarDocument press_arrow(const ArrowEffect& row, int mode) {
        CarDocument before = DOCUMENT;
        std::vector<ScriptStep> steps{over(row.view), typed("2")};
        for (int i = 0; i < mode; ++i)
            steps.push_back(key_press(Key::tab));
        steps.push_back(press_of(row.key));
        play_editor(std::move(steps));
        return before;
    }
    void expect_model(const ArrowEffect& row, int mode, void (*change)(SHAPEMODEL&, double, double, double),
                      const std::array<double, 3>& by) {
        CarDocument expected = press_arrow(row, mode);
        change(expected.models[1].edit(), by[0] * snap, by[1] * snap, by[2] * snap);
        EXPECT_TRUE(DOCUMENT == expected) << "view " << row.view << " key " << static_cast<int>(row.key);
    }
    int pressed_from(const ArrowEffect& row, int value) {
        set_par_word(static_cast<int>(row.word), static_cast<std::uint16_t>(value));
        CarDocument expected = press_arrow(row, 3);
        const int after = par_word(static_cast<int>(row.word));
        set_word(expected.par, static_cast<int>(row.word), static_cast<std::uint16_t>(after));
        EXPECT_TRUE(DOCUMENT == expected) << "something else changed";
        return after;
    }
};

} // namespace

TEST_F(ArrowKeys, MoveTheCar) {
    for (const ArrowEffect& row : arrow_table)
        expect_model(row, 0, move_body, row.car);
}

TEST_F(ArrowKeys, MoveTheWheels) {
    for (const ArrowEffect& row : arrow_table)
        expect_model(row, 1, move_wheels, row.wheels);
}

TEST_F(ArrowKeys, ResizeTheWheels) {
    for (const ArrowEffect& row : arrow_table)
        expect_model(row, 2, resize_wheels, row.size);
}

TEST_F(ArrowKeys, ChangeTheCollisionBoxUpToItsBounds) {
    for (const ArrowEffect& row : arrow_table) {
        const int last = arrow_bound(row.word, row.step);
        EXPECT_EQ(pressed_from(row, 20), 20 + row.step);
        EXPECT_EQ(pressed_from(row, last - row.step), last);
        EXPECT_EQ(pressed_from(row, last), last);
    }
}

TEST_F(ArrowKeys, CollisionWordsBeyondTheBoundsStay) {
    for (const ArrowEffect& row : arrow_table) {
        const int beyond = row.step < 0 ? 0 : arrow_bound(row.word, 1) + 9;
        EXPECT_EQ(pressed_from(row, beyond), beyond);
        EXPECT_EQ(pressed_from(row, row.step < 0 ? 60000 : 0), row.step < 0 ? 59999 : 1);
    }
}

// ODDITY wheel-right-quarter
TEST_F(ArrowKeys, RightInTheSideViewMovesTheWheelsByAQuarterOfWhatLeftTakesBack) {
    const double before = model(0).verts[8].y;
    play_editor({over(side_view), key_press(Key::tab), key_press(Key::right), key_press(Key::left)});
    EXPECT_NEAR(model(0).verts[8].y - before, -(0.025 - 0.1), 1e-12); // a wheel at negative y
}

TEST_F(ArrowKeys, FollowTheSnap) {
    const SHAPEMODEL before = model(0);
    play_editor({over(top_view), typed("**"), key_press(Key::right)});
    EXPECT_DOUBLE_EQ(model(0).verts[32].x, before.verts[32].x + 0.4);
}

TEST_F(ArrowKeys, RedrawAllViews) {
    for (const ArrowEffect& row : arrow_table)
        for (int mode = 0; mode < 4; ++mode) {
            std::vector<ScriptStep> before{over(row.view)};
            for (int i = 0; i < mode; ++i)
                before.push_back(key_press(Key::tab));
            EXPECT_EQ(redrawn_by(before, press_of(row.key)), (std::set<int>{1, 2, 3, 4}));
        }
}

TEST_F(ArrowKeys, TurnTheModelOverThe3dViewAndOverNone) {
    const CarDocument before = DOCUMENT;
    for (const int view : {0, 4})
        for (int mode = 0; mode < 4; ++mode) {
            CURYAW = 1;
            CURPITCH = 2;
            std::vector<ScriptStep> steps{over(view)};
            for (int i = 0; i < mode; ++i)
                steps.push_back(key_press(Key::tab));
            const auto expect = [&](Key key, double yaw, double pitch) {
                steps.push_back(key_press(key));
                steps.push_back(look([=] {
                    EXPECT_DOUBLE_EQ(CURYAW, yaw);
                    EXPECT_DOUBLE_EQ(CURPITCH, pitch);
                }));
            };
            expect(Key::right, 1 + 0.196349375, 2);
            expect(Key::left, 1, 2);
            expect(Key::left, 1 - 0.196349375, 2);
            expect(Key::up, 1 - 0.196349375, 2 + 0.0981746875);
            expect(Key::down, 1 - 0.196349375, 2);
            play_editor(std::move(steps));
            for (const Key key : {Key::left, Key::right, Key::up, Key::down})
                EXPECT_EQ(redrawn_by({over(view)}, key_press(key)), std::set<int>{4});
        }
    EXPECT_TRUE(DOCUMENT == before);
}

TEST_F(ArrowKeys, OfEveryViewAndModeAreInTheRows) {
    EXPECT_EQ(arrow_rows().size(), 8U);
    for (const char* key : {key::left, key::right, key::up, key::down})
        for (int view = 0; view <= views; ++view)
            EXPECT_EQ(arrow_row(key, view) != nullptr, view >= 1 && view <= 3) << view;
    EXPECT_EQ(arrow_row(key::home, 1), nullptr);
}
