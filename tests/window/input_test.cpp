#include "window/input.h"

#include "support/play.h"

#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Input : public ScriptedTest {
protected:
    // What a loop sees that reads the mouse and a key in each pass, until it is asked to close.
    std::vector<MouseState> states;
    std::vector<std::string> keys;

    void run_loop() {
        MouseState previous;
        for (;;) {
            const MouseState now = read_mouse();
            if (now != previous) states.push_back(now);
            previous = now;
            const std::string key = read_key();
            if (key == key::close_window) return;
            if (!key.empty()) keys.push_back(key);
        }
    }
    void play_loop(std::vector<ScriptStep> steps) {
        play_to_the_end(std::move(steps), [this] { run_loop(); });
    }
    // Events that the program has taken note of, but not read.
    void have(const std::vector<ScriptStep>& steps) {
        window.play({at_once(steps)});
        window.wait(0);
        (void)close_requested();
        (void)read_mouse();
    }
};

MouseState state(int x, int y, int buttons, int wheel = 0) {
    MouseState result;
    result.x = x;
    result.y = y;
    result.buttons = buttons;
    result.wheel = wheel;
    return result;
}

TEST_F(Input, StartsWithTheMouseOutsideAndNothingHeld) {
    EXPECT_EQ(mouse(), state(-1, -1, 0));
    EXPECT_FALSE(key_held(scancode::control));
    EXPECT_FALSE(close_requested());
}

TEST_F(Input, ReadingAKeyWhenNoneWasPressedYieldsTheEmptyStringAtOnce) {
    use_backend(nullptr);
    EXPECT_EQ(read_key(), "");
}

TEST_F(Input, IsInertWithoutABackend) {
    use_backend(nullptr);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(read_mouse(), state(-1, -1, 0));
        EXPECT_EQ(read_key(), "");
    }
    wait_until_buttons_released();
    EXPECT_FALSE(close_requested());
    EXPECT_EQ(timer(), 0);
}

TEST_F(Input, AWaitForTheReleaseEndsWhenTheBackendIsGone) {
    have({press(5, 5)});
    ASSERT_EQ(mouse().buttons, 1);
    use_backend(nullptr);
    wait_until_buttons_released();
    EXPECT_EQ(mouse().buttons, 1);
}

TEST_F(Input, AClickThatArrivesAtOnceIsSeenAsPressAndRelease) {
    play_loop({click(10, 20)});
    EXPECT_THAT(states, ElementsAre(state(10, 20, 0), state(10, 20, 1), state(10, 20, 0)));
}

TEST_F(Input, ADoubleClickIsSeenAsTwo) {
    play_loop({at_once({click(10, 20), click(10, 20)})});
    EXPECT_THAT(states,
                ElementsAre(state(10, 20, 0), state(10, 20, 1), state(10, 20, 0), state(10, 20, 1), state(10, 20, 0)));
}

TEST_F(Input, BothButtonsAddUp) {
    play_loop({at_once({mouse_at(1, 1), press(1, 1, 1), press(1, 1, 2), release(1, 1, 1), release(1, 1, 2)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 0), state(1, 1, 1), state(1, 1, 3), state(1, 1, 2), state(1, 1, 0)));
}

TEST_F(Input, OtherButtonsAreNone) {
    play_loop({at_once({mouse_at(1, 1), press(1, 1, 3), press(1, 1, 0), release(1, 1, 3)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 0)));
}

TEST_F(Input, OfMovesWithoutAButtonOnlyTheLastCounts) {
    play_loop({at_once({mouse_at(1, 1), mouse_at(2, 2), mouse_at(3, 3)})});
    EXPECT_THAT(states, ElementsAre(state(3, 3, 0)));
}

TEST_F(Input, EveryPositionOfAStrokeIsHandedOutInOrder) {
    std::vector<ScriptStep> stroke{press(100, 100)};
    std::vector<MouseState> expected{state(100, 100, 1)};
    for (int x = 101; x < 400; ++x) {
        stroke.push_back(mouse_at(x, 500 - x));
        expected.push_back(state(x, 500 - x, 1));
    }
    stroke.push_back(release(399, 101));
    expected.push_back(state(399, 101, 0));
    play_loop({at_once(stroke)});
    EXPECT_EQ(states, expected);
}

TEST_F(Input, AMoveAfterTheReleaseDoesNotMoveTheRelease) {
    play_loop({at_once({press(5, 5), release(6, 6), mouse_at(50, 50), mouse_at(60, 60)})});
    EXPECT_THAT(states, ElementsAre(state(5, 5, 1), state(6, 6, 0), state(60, 60, 0)));
}

TEST_F(Input, AMoveBeforeThePressIsNotMovedByIt) {
    play_loop({at_once({mouse_at(1, 1), press(5, 5), release(5, 5)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 0), state(5, 5, 1), state(5, 5, 0)));
}

TEST_F(Input, WheelNotchesAddUp) {
    play_loop({at_once({wheel(4, 4, 1), wheel(4, 4, 1), wheel(4, 4, 1)}), wheel(4, 4, -1)});
    EXPECT_THAT(states, ElementsAre(state(4, 4, 0, 3), state(4, 4, 0, 2)));
}

TEST_F(Input, TheWheelTurnsWhereItWasTurned) {
    play_loop({at_once({mouse_at(1, 1), wheel(4, 4, 2), mouse_at(90, 90), mouse_at(91, 91)})});
    EXPECT_THAT(states, ElementsAre(state(4, 4, 0, 2), state(91, 91, 0, 2)));
}

TEST_F(Input, TheWheelWithAButtonDownIsAStateOfItsOwn) {
    play_loop({at_once({press(4, 4), wheel(4, 4, 1), release(4, 4)})});
    EXPECT_THAT(states, ElementsAre(state(4, 4, 1), state(4, 4, 1, 1), state(4, 4, 0, 1)));
}

TEST_F(Input, KeysKeepTheirOrderAndNoneIsLost) {
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += static_cast<char>(' ' + i % 95);
    play_loop({at_once({typed(text), key_press(Key::enter)})});
    ASSERT_EQ(keys.size(), 2001u);
    for (std::size_t i = 0; i < 2000; ++i)
        ASSERT_EQ(keys[i], std::string(1, text[i]));
    EXPECT_EQ(keys[2000], key::enter);
}

TEST_F(Input, NoKeyOvertakesAClickAndNoClickAKey) {
    have({mouse_at(1, 1), typed("a"), press(2, 2), typed("b"), release(3, 3), mouse_at(4, 4), typed("c")});
    EXPECT_EQ(mouse(), state(1, 1, 0));
    EXPECT_EQ(read_mouse(), state(1, 1, 0)) << "an unread key is older than the press";
    EXPECT_EQ(read_key(), "a");
    EXPECT_EQ(read_key(), "") << "the press is older than the next key";
    EXPECT_EQ(read_mouse(), state(2, 2, 1));
    EXPECT_EQ(read_key(), "") << "in one pass the screen acts on the press alone";
    EXPECT_EQ(read_mouse(), state(2, 2, 1));
    EXPECT_EQ(read_key(), "b");
    EXPECT_EQ(read_mouse(), state(3, 3, 0));
    EXPECT_EQ(read_mouse(), state(4, 4, 0));
    EXPECT_EQ(read_key(), "");
    EXPECT_EQ(read_key(), "c");
}

TEST_F(Input, AMoveDoesNotMergeAcrossAKey) {
    have({mouse_at(1, 1), typed("a"), mouse_at(2, 2), mouse_at(3, 3)});
    EXPECT_EQ(read_mouse(), state(1, 1, 0));
    EXPECT_EQ(read_key(), "a");
    EXPECT_EQ(read_mouse(), state(3, 3, 0));
}

TEST_F(Input, WidgetsSeeTheStateThatTheLastStepLedTo) {
    have({press(1, 1), release(2, 2)});
    EXPECT_EQ(mouse(), state(1, 1, 1));
    EXPECT_EQ(mouse(), state(1, 1, 1));
    (void)read_mouse();
    EXPECT_EQ(mouse(), state(2, 2, 0));
}

TEST_F(Input, APositionReportedTwiceIsOneState) {
    play_loop({at_once({press(1, 1), mouse_at(1, 1), mouse_at(1, 1), release(1, 1)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 1), state(1, 1, 0)));
}

TEST_F(Input, WaitingForTheReleaseLeavesTheKeys) {
    play({press(5, 5), typed("x"), mouse_at(7, 7), typed("y"), release(8, 8), close_window()}, [this] {
        while (read_mouse().buttons == 0)
            (void)read_key();
        wait_until_buttons_released();
        EXPECT_EQ(mouse(), state(8, 8, 0));
        EXPECT_EQ(read_key(), "x");
        EXPECT_EQ(read_key(), "y");
        run_loop();
    });
    EXPECT_THAT(keys, IsEmpty());
}

TEST_F(Input, WaitingForTheReleaseReturnsAtOnceWithoutAButton) {
    wait_until_buttons_released();
    EXPECT_EQ(mouse(), state(-1, -1, 0));
}

TEST_F(Input, WaitingForTheReleaseWaitsForBothButtons) {
    play(
        {at_once({press(5, 5, 1), press(5, 5, 2)}), release(5, 5, 1), mouse_at(6, 6), release(6, 6, 2), close_window()},
        [this] {
            while (read_mouse().buttons == 0)
                (void)read_key();
            wait_until_buttons_released();
            EXPECT_EQ(mouse(), state(6, 6, 0));
            run_loop();
        });
}

TEST_F(Input, WaitingForTheReleaseEndsOnTheCloseRequestWhichStaysUnread) {
    play({press(5, 5), typed("x"), close_window()}, [] {
        while (read_mouse().buttons == 0)
            (void)read_key();
        wait_until_buttons_released();
        EXPECT_EQ(mouse().buttons, 1);
        EXPECT_TRUE(close_requested());
        EXPECT_EQ(read_key(), "x");
        EXPECT_EQ(read_key(), key::close_window);
        EXPECT_FALSE(close_requested());
    });
}

TEST_F(Input, AnUnreadCloseRequestIsNotRepeated) {
    have({close_window(), close_window(), close_window()});
    EXPECT_EQ(read_key(), key::close_window);
    EXPECT_EQ(read_key(), "");
}

TEST_F(Input, AKeyPutBackIsTheNextToBeRead) {
    have({typed("ab")});
    const std::string first = read_key();
    put_key_back(first);
    put_key_back("");
    EXPECT_EQ(read_key(), "a");
    EXPECT_EQ(read_key(), "b");
}

TEST_F(Input, HeldKeysAreThoseThatAreDown) {
    have({key_down(Key::left), key_down(Key::shift_right), key_down(Key::control_right)});
    EXPECT_EQ(read_key(), key::left);
    EXPECT_EQ(read_key(), "");
    EXPECT_TRUE(key_held(75));
    EXPECT_FALSE(key_held(77));
    EXPECT_TRUE(key_held(54));
    EXPECT_FALSE(key_held(42));
    EXPECT_TRUE(key_held(29));
    have({key_up(Key::left), key_up(Key::shift_right), key_up(Key::control_right), key_down(Key::right),
          key_down(Key::shift_left)});
    (void)read_key();
    (void)read_key();
    EXPECT_FALSE(key_held(75));
    EXPECT_TRUE(key_held(77));
    EXPECT_FALSE(key_held(54));
    EXPECT_TRUE(key_held(42));
    EXPECT_FALSE(key_held(29));
}

TEST_F(Input, OtherScancodesAreNeverHeld) {
    have({key_down(Key::a), key_down(Key::other)});
    for (const int code : {-1, 0, 1, 30, 76, 1000})
        EXPECT_FALSE(key_held(code)) << code;
}

TEST_F(Input, TheKeypadSteersToo) {
    have({key_down(Key::keypad_4), key_down(Key::keypad_6)});
    EXPECT_TRUE(key_held(75));
    EXPECT_TRUE(key_held(77));
}

TEST_F(Input, ControlIsHeldUntilBothOfItsKeysAreUp) {
    have({key_down(Key::control_left), key_down(Key::control_right), key_up(Key::control_left)});
    EXPECT_TRUE(key_held(29));
    have({key_up(Key::control_right)});
    EXPECT_FALSE(key_held(29));
}

TEST_F(Input, ARepeatedKeyDownIsUpAfterOneKeyUp) {
    have({key_down(Key::right), key_down(Key::right), key_down(Key::right), key_up(Key::right)});
    EXPECT_FALSE(key_held(77));
    EXPECT_EQ(read_key(), key::right);
    EXPECT_EQ(read_key(), key::right);
    EXPECT_EQ(read_key(), key::right);
    EXPECT_EQ(read_key(), "");
}

TEST_F(Input, ACombinationTypedWhileBusyStaysOne) {
    have({key_press(Key::tab, {.control = true}), key_press(Key::tab), key_press(Key::a, {.shift = true})});
    EXPECT_FALSE(key_held(29)) << "nothing is down any more";
    EXPECT_EQ(read_key(), key::tab);
    EXPECT_TRUE(key_held(29));
    EXPECT_EQ(read_key(), key::tab);
    EXPECT_FALSE(key_held(29));
    EXPECT_EQ(read_key(), "A");
    EXPECT_TRUE(key_held(42));
    EXPECT_EQ(read_key(), "");
    EXPECT_FALSE(key_held(42));
}

ScriptStep focus_lost() {
    ScriptStep step;
    step.events.emplace_back().kind = InputEvent::Kind::focus_lost;
    return step;
}

TEST_F(Input, NothingStaysHeldWhenTheWindowLosesTheFocus) {
    have({press(5, 5), key_down(Key::left), key_down(Key::control_left), focus_lost(), release(6, 6)});
    EXPECT_FALSE(key_held(75));
    EXPECT_FALSE(key_held(29));
    EXPECT_EQ(read_mouse(), state(5, 5, 1));
    EXPECT_EQ(read_key(), key::left);
    EXPECT_EQ(read_mouse(), state(5, 5, 0));
    EXPECT_EQ(read_mouse(), state(6, 6, 0)) << "the late release is a mere move";
}

TEST_F(Input, ThePointerOutsideReadsMinusOne) {
    play_loop({mouse_at(5, 5), mouse_at(-1, -1)});
    EXPECT_THAT(states, ElementsAre(state(5, 5, 0), state(-1, -1, 0)));
}

TEST_F(Input, TheClockIsTheBackends) {
    window.clock = 100;
    window.tick = 0.5;
    EXPECT_EQ(timer(), 100.5);
    EXPECT_EQ(timer(), 101.0);
}

// Counts the waits.
class PatientBackend : public ScriptedBackend {
public:
    int waits = 0;
    int frames_at_first_wait = -1;
    void wait(int milliseconds) override {
        EXPECT_EQ(milliseconds, 250);
        if (waits++ == 0) frames_at_first_wait = frames();
        ScriptedBackend::wait(milliseconds);
    }
};

TEST_F(Input, ReadingWaitsOnlyAfterAFewFruitlessPasses) {
    PatientBackend patient;
    use_backend(&patient);
    for (int pass = 0; pass < 3; ++pass) {
        (void)read_mouse();
        (void)read_key();
    }
    EXPECT_EQ(patient.waits, 0);
    patient.play({mouse_at(3, 3)});
    EXPECT_EQ(read_mouse(), state(3, 3, 0)) << "the wait is over as soon as something arrives";
    EXPECT_EQ(patient.waits, 1);
    for (int reads = 0; reads < 6; ++reads)
        (void)read_key();
    EXPECT_EQ(patient.waits, 1) << "patience begins anew";
}

TEST_F(Input, WhatWasDrawnIsVisibleBeforeReadingWaits) {
    PatientBackend patient;
    use_backend(&patient);
    screen().add_damage({0, 0, 9, 9});
    for (int reads = 0; reads < 7; ++reads)
        (void)read_key();
    EXPECT_EQ(patient.waits, 1);
    EXPECT_EQ(patient.frames_at_first_wait, 1);
}

} // namespace
