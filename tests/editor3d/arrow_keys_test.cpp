// The cursor keys in every view and mode.
#include "editor3d/editor_test.h"

#include "model/body.h"
#include "model/wheels.h"

#include <functional>

namespace {

enum class Box { width = 200, height = 202, length = 204 };

// What a key does in a view, as the table of the keys says it, for a snap of 0.1.
struct Expected {
    Key key;
    int view;
    std::array<double, 3> car, wheels, size;
    Box word;
    int step;
};

constexpr double s = 0.1, q = s / 4;
constexpr Expected table[] = {
    {Key::right, top_view, {s, 0, 0}, {s, 0, 0}, {q, 0, 0}, Box::width, 1},
    {Key::right, front_view, {s, 0, 0}, {s, 0, 0}, {q, 0, 0}, Box::width, 1},
    {Key::right, side_view, {0, s, 0}, {0, q, 0}, {0, 0, q}, Box::length, 1}, // ODDITY wheel-right-quarter
    {Key::left, top_view, {-s, 0, 0}, {-s, 0, 0}, {-q, 0, 0}, Box::width, -1},
    {Key::left, front_view, {-s, 0, 0}, {-s, 0, 0}, {-q, 0, 0}, Box::width, -1},
    {Key::left, side_view, {0, -s, 0}, {0, -s, 0}, {0, 0, -q}, Box::length, -1},
    {Key::up, top_view, {0, s, 0}, {0, s, 0}, {0, q, q}, Box::length, 1},
    {Key::up, front_view, {0, 0, s}, {0, 0, s}, {0, q, 0}, Box::height, 1},
    {Key::up, side_view, {0, 0, s}, {0, 0, s}, {0, q, 0}, Box::height, 1},
    {Key::down, top_view, {0, -s, 0}, {0, -s, 0}, {0, -q, -q}, Box::length, -1},
    {Key::down, front_view, {0, 0, -s}, {0, 0, -s}, {0, -q, 0}, Box::height, -1},
    {Key::down, side_view, {0, 0, -s}, {0, 0, -s}, {0, -q, 0}, Box::height, -1},
};

int bound(Box word, int step) {
    if (step < 0) return 1;
    return word == Box::width ? 50 : word == Box::height ? 40 : 80;
}

class ArrowKeys : public EditorTest {
protected:
    // Plays the key over the view, in this mode and slot 1, and gives the car as it was before.
    CarDocument press_arrow(const Expected& row, int mode) {
        const CarDocument before = DOCUMENT;
        std::vector<ScriptStep> steps{over(row.view), typed("2")};
        for (int i = 0; i < mode; ++i)
            steps.push_back(key_press(Key::tab));
        steps.push_back(key_press(row.key));
        play_editor(std::move(steps));
        return before;
    }
    void expect_model(const Expected& row, int mode, void (*change)(SHAPEMODEL&, double, double, double),
                      const std::array<double, 3>& by) {
        CarDocument expected = press_arrow(row, mode);
        change(expected.models[1].edit(), by[0], by[1], by[2]);
        EXPECT_TRUE(DOCUMENT == expected) << "view " << row.view << " key " << static_cast<int>(row.key);
    }
    int pressed_from(const Expected& row, int value) {
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
    for (const Expected& row : table)
        expect_model(row, 0, move_body, row.car);
}

TEST_F(ArrowKeys, MoveTheWheels) {
    for (const Expected& row : table)
        expect_model(row, 1, move_wheels, row.wheels);
}

TEST_F(ArrowKeys, ResizeTheWheels) {
    for (const Expected& row : table)
        expect_model(row, 2, resize_wheels, row.size);
}

TEST_F(ArrowKeys, ChangeTheCollisionBoxUpToItsBounds) {
    for (const Expected& row : table) {
        const int last = bound(row.word, row.step);
        EXPECT_EQ(pressed_from(row, 20), 20 + row.step);
        EXPECT_EQ(pressed_from(row, last - row.step), last);
        EXPECT_EQ(pressed_from(row, last), last);
    }
}

TEST_F(ArrowKeys, CollisionWordsBeyondTheBoundsStay) {
    for (const Expected& row : table) {
        const int beyond = row.step < 0 ? 0 : bound(row.word, 1) + 9;
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
    for (const Expected& row : table)
        for (int mode = 0; mode < 4; ++mode) {
            std::vector<ScriptStep> before{over(row.view)};
            for (int i = 0; i < mode; ++i)
                before.push_back(key_press(Key::tab));
            EXPECT_EQ(redrawn_by(before, key_press(row.key)), (std::set<int>{1, 2, 3, 4}));
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
