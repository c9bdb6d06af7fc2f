#include "window/input.h"

#include "support/play.h"

#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class InputTest : public ScriptedTest {
protected:
    // What a loop sees that reads once in each pass, until it is asked to close.
    std::vector<MouseState> states;
    std::vector<std::string> keys;

    void run_loop() {
        MouseState previous;
        for (;;) {
            const Input now = read_input();
            EXPECT_EQ(now.before, previous);
            EXPECT_TRUE(now.key.empty() || !now.mouse_changed()) << "one thing a pass";
            if (now.mouse_changed()) states.push_back(now.mouse);
            previous = now.mouse;
            if (now.key == key::close_window) return;
            if (!now.key.empty()) keys.push_back(now.key);
        }
    }
    void play_loop(std::vector<ScriptStep> steps) {
        play_to_the_end(std::move(steps), [this] { run_loop(); });
    }
    // Events that are there when the program reads next.
    void have(const std::vector<ScriptStep>& steps) {
        window.play({at_once(steps)});
        window.wait(0);
    }
    static MouseState next_mouse() { return read_input().mouse; }
    static void read_until_pressed() {
        while (mouse().buttons == 0)
            read_input();
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

TEST_F(InputTest, StartsWithTheMouseOutsideAndNothingHeld) {
    EXPECT_EQ(mouse(), state(-1, -1, 0));
    EXPECT_EQ(bar_mouse(), state(-1, -1, 0));
    EXPECT_FALSE(key_held(scancode::control));
}

TEST_F(InputTest, ReadingAKeyWhenNoneWasPressedYieldsTheEmptyStringAtOnce) {
    use_backend(nullptr);
    EXPECT_EQ(next_key(), "");
}

TEST_F(InputTest, IsInertWithoutABackend) {
    use_backend(nullptr);
    for (int i = 0; i < 100; ++i) {
        const Input none = read_input();
        EXPECT_EQ(none.mouse, state(-1, -1, 0));
        EXPECT_EQ(none.before, none.mouse);
        EXPECT_EQ(none.key, "");
    }
    EXPECT_TRUE(wait_for_release()) << "no button is down";
    EXPECT_EQ(timer(), 0);
}

TEST_F(InputTest, AWaitForTheReleaseEndsWhenTheBackendIsGone) {
    have({press(5, 5)});
    ASSERT_EQ(next_mouse().buttons, 1);
    use_backend(nullptr);
    EXPECT_FALSE(wait_for_release());
    EXPECT_EQ(mouse().buttons, 1);
}

TEST_F(InputTest, AClickThatArrivesAtOnceIsSeenAsPressAndRelease) {
    play_loop({click(10, 20)});
    EXPECT_THAT(states, ElementsAre(state(10, 20, 0), state(10, 20, 1), state(10, 20, 0)));
}

TEST_F(InputTest, ADoubleClickIsSeenAsTwo) {
    play_loop({at_once({click(10, 20), click(10, 20)})});
    EXPECT_THAT(states,
                ElementsAre(state(10, 20, 0), state(10, 20, 1), state(10, 20, 0), state(10, 20, 1), state(10, 20, 0)));
}

TEST_F(InputTest, BothButtonsAddUp) {
    play_loop({at_once({mouse_at(1, 1), press(1, 1, 1), press(1, 1, 2), release(1, 1, 1), release(1, 1, 2)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 0), state(1, 1, 1), state(1, 1, 3), state(1, 1, 2), state(1, 1, 0)));
}

TEST_F(InputTest, OtherButtonsAreNone) {
    play_loop({at_once({mouse_at(1, 1), press(1, 1, 3), press(1, 1, 0), release(1, 1, 3)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 0)));
}

TEST_F(InputTest, OfMovesWithoutAButtonOnlyTheLastCounts) {
    play_loop({at_once({mouse_at(1, 1), mouse_at(2, 2), mouse_at(3, 3)})});
    EXPECT_THAT(states, ElementsAre(state(3, 3, 0)));
}

TEST_F(InputTest, EveryPositionOfAStrokeIsHandedOutInOrder) {
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

TEST_F(InputTest, AMoveAfterTheReleaseDoesNotMoveTheRelease) {
    play_loop({at_once({press(5, 5), release(6, 6), mouse_at(50, 50), mouse_at(60, 60)})});
    EXPECT_THAT(states, ElementsAre(state(5, 5, 1), state(6, 6, 0), state(60, 60, 0)));
}

TEST_F(InputTest, AMoveBeforeThePressIsNotMovedByIt) {
    play_loop({at_once({mouse_at(1, 1), press(5, 5), release(5, 5)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 0), state(5, 5, 1), state(5, 5, 0)));
}

TEST_F(InputTest, WheelNotchesAddUp) {
    play_loop({at_once({wheel(4, 4, 1), wheel(4, 4, 1), wheel(4, 4, 1)}), wheel(4, 4, -1)});
    EXPECT_THAT(states, ElementsAre(state(4, 4, 0, 3), state(4, 4, 0, 2)));
}

TEST_F(InputTest, TheWheelTurnsWhereItWasTurned) {
    play_loop({at_once({mouse_at(1, 1), wheel(4, 4, 2), mouse_at(90, 90), mouse_at(91, 91)})});
    EXPECT_THAT(states, ElementsAre(state(4, 4, 0, 2), state(91, 91, 0, 2)));
}

TEST_F(InputTest, TheWheelWithAButtonDownIsAStateOfItsOwn) {
    play_loop({at_once({press(4, 4), wheel(4, 4, 1), release(4, 4)})});
    EXPECT_THAT(states, ElementsAre(state(4, 4, 1), state(4, 4, 1, 1), state(4, 4, 0, 1)));
}

TEST_F(InputTest, KeysKeepTheirOrderAndNoneIsLost) {
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += static_cast<char>(' ' + i % 95);
    play_loop({at_once({typed(text), key_press(Key::enter)})});
    ASSERT_EQ(keys.size(), 2001u);
    for (std::size_t i = 0; i < 2000; ++i)
        ASSERT_EQ(keys[i], std::string(1, text[i]));
    EXPECT_EQ(keys[2000], key::enter);
}

TEST_F(InputTest, NoKeyOvertakesAClickAndNoClickAKey) {
    have({mouse_at(1, 1), typed("a"), press(2, 2), typed("b"), release(3, 3), mouse_at(4, 4), typed("c")});
    std::vector<std::string> order;
    for (int pass = 0; pass < 8; ++pass) {
        const Input input = read_input();
        if (!input.key.empty()) order.push_back(input.key);
        if (input.mouse_changed()) order.push_back(std::to_string(input.mouse.x));
    }
    EXPECT_THAT(order, ElementsAre("1", "a", "2", "b", "3", "4", "c"));
}

TEST_F(InputTest, AMoveDoesNotMergeAcrossAKey) {
    have({mouse_at(1, 1), typed("a"), mouse_at(2, 2), mouse_at(3, 3)});
    EXPECT_EQ(next_mouse(), state(1, 1, 0));
    EXPECT_EQ(next_key(), "a");
    EXPECT_EQ(next_mouse(), state(3, 3, 0));
}

TEST_F(InputTest, WidgetsSeeTheStateThatTheLastStepLedTo) {
    have({press(1, 1), release(2, 2)});
    EXPECT_EQ(next_mouse(), state(1, 1, 1));
    EXPECT_EQ(mouse(), state(1, 1, 1));
    EXPECT_EQ(mouse(), state(1, 1, 1));
    EXPECT_EQ(next_mouse(), state(2, 2, 0));
    EXPECT_EQ(mouse(), state(2, 2, 0));
}

TEST_F(InputTest, APositionReportedTwiceIsOneState) {
    play_loop({at_once({press(1, 1), mouse_at(1, 1), mouse_at(1, 1), release(1, 1)})});
    EXPECT_THAT(states, ElementsAre(state(1, 1, 1), state(1, 1, 0)));
}

TEST_F(InputTest, WaitingForTheReleaseLeavesTheKeys) {
    play({press(5, 5), typed("x"), mouse_at(7, 7), typed("y"), at_once({release(8, 8), close_window()})}, [] {
        read_until_pressed();
        EXPECT_TRUE(wait_for_release());
        EXPECT_EQ(mouse(), state(8, 8, 0));
        EXPECT_EQ(read_input().before, state(5, 5, 1)) << "the release is still to be seen";
        EXPECT_EQ(next_key(), "x");
        EXPECT_EQ(next_key(), "y");
        EXPECT_EQ(next_key(), key::close_window);
    });
}

TEST_F(InputTest, WaitingForTheReleaseReturnsAtOnceWithoutAButton) {
    have({typed("x")});
    EXPECT_TRUE(wait_for_release());
    EXPECT_EQ(mouse(), state(-1, -1, 0));
    EXPECT_FALSE(window.finished()) << "it has not even looked";
}

TEST_F(InputTest, WaitingForTheReleaseWaitsForBothButtons) {
    play({at_once({press(5, 5, 1), press(5, 5, 2)}), release(5, 5, 1), mouse_at(6, 6), release(6, 6, 2)}, [] {
        read_until_pressed();
        EXPECT_TRUE(wait_for_release());
        EXPECT_EQ(mouse(), state(6, 6, 0));
    });
}

TEST_F(InputTest, WaitingForTheReleaseEndsOnTheCloseRequestWhichStaysUnread) {
    play({press(5, 5), typed("x"), at_once({close_window(), release(5, 5)})}, [] {
        read_until_pressed();
        EXPECT_FALSE(wait_for_release());
        EXPECT_EQ(mouse().buttons, 0) << "the press does nothing any more";
        EXPECT_EQ(next_mouse(), state(5, 5, 0));
        EXPECT_EQ(next_key(), "x") << "what was done first is done first";
        EXPECT_EQ(next_key(), key::close_window);
    });
}

TEST_F(InputTest, ACloseRequestBehindTheReleaseDoesNotEndTheWait) {
    play({at_once({press(5, 5), typed("x"), release(5, 5), typed("y"), close_window()})}, [] {
        read_until_pressed();
        EXPECT_TRUE(wait_for_release());
        EXPECT_EQ(next_mouse(), state(5, 5, 0));
        EXPECT_EQ(next_key(), "x");
        EXPECT_EQ(next_key(), "y");
        EXPECT_EQ(next_key(), key::close_window);
    });
}

TEST_F(InputTest, AnUnreadCloseRequestIsNotRepeated) {
    have({close_window(), close_window(), close_window()});
    EXPECT_EQ(next_key(), key::close_window);
    EXPECT_EQ(next_key(), "");
}

TEST_F(InputTest, AnUnreadKeyIsTheNextToBeReadWithItsQualifiers) {
    have({key_press(Key::tab, {.control = true}), typed("b")});
    EXPECT_EQ(next_key(), key::tab);
    unread_input();
    unread_input(); // once is all
    const Input again = read_input();
    EXPECT_EQ(again.key, key::tab);
    EXPECT_TRUE(again.qualifiers.control);
    EXPECT_EQ(next_key(), "b");
}

TEST_F(InputTest, AnUnreadPressIsReadAgainAsThePressItWas) {
    have({mouse_at(3, 3), press(5, 5), release(6, 6)});
    EXPECT_EQ(next_mouse(), state(3, 3, 0));
    EXPECT_TRUE(read_input().left_pressed());
    unread_input();
    EXPECT_EQ(mouse(), state(3, 3, 0));
    const Input again = read_input();
    EXPECT_TRUE(again.left_pressed());
    EXPECT_EQ(again.before, state(3, 3, 0));
    EXPECT_EQ(again.mouse, state(5, 5, 1));
    EXPECT_EQ(again.pressed_at, (Point{5, 5}));
    EXPECT_EQ(next_mouse(), state(6, 6, 0));
}

TEST_F(InputTest, NothingReadIsNothingToUnread) {
    have({typed("a")});
    unread_input();
    EXPECT_EQ(next_key(), "a");
    EXPECT_EQ(next_key(), "");
    unread_input();
    EXPECT_EQ(next_key(), "");
}

TEST_F(InputTest, ALoopInsideAnotherLeavesItWhatChangedMeanwhile) {
    have({mouse_at(1, 1), mouse_at(2, 2), typed("a"), mouse_at(3, 3), typed("b")});
    EXPECT_EQ(next_mouse(), state(2, 2, 0));
    {
        const InputScope inside(InputScope::Start::here);
        EXPECT_EQ(next_key(), "a");
        EXPECT_EQ(next_mouse(), state(3, 3, 0));
    }
    const Input change = read_input();
    EXPECT_EQ(change.before, state(2, 2, 0));
    EXPECT_EQ(change.mouse, state(3, 3, 0));
    EXPECT_EQ(change.key, "") << "the key comes after it";
    EXPECT_EQ(next_key(), "b");
}

TEST_F(InputTest, ALoopThatBeginsAnewReadsTheMouseFirst) {
    have({wheel(4, 4, 3), press(4, 4), typed("a")});
    EXPECT_EQ(next_mouse(), state(4, 4, 0, 3));
    EXPECT_EQ(next_mouse(), state(4, 4, 1, 3));
    const InputScope inside(InputScope::Start::anew);
    const Input first = read_input();
    EXPECT_EQ(first.mouse, state(4, 4, 1, 3));
    EXPECT_EQ(first.before, state(-1, -1, 1, 3)) << "neither turned nor pressed";
    EXPECT_EQ(next_key(), "a");
}

// --- what a button does belongs to where it went down ----------------------------------------------------------------

TEST_F(InputTest, APressInTheWorkAreaIsNoneOfTheMenuBars) {
    have({press(5, menu_top - 1), mouse_at(5, menu_top), release(5, menu_top), press(5, menu_top)});
    EXPECT_EQ(next_mouse(), state(5, 599, 1));
    EXPECT_EQ(bar_mouse(), state(5, 599, 0));
    EXPECT_EQ(next_mouse(), state(5, 600, 1)) << "the stroke goes on";
    EXPECT_EQ(bar_mouse(), state(5, 600, 0));
    EXPECT_EQ(next_mouse(), state(5, 600, 0));
    read_input();
    EXPECT_EQ(bar_mouse(), state(5, 600, 1)) << "this one began there";
}

TEST_F(InputTest, APressOnTheMenuBarIsNoneOfTheWorkAreas) {
    have({press(5, menu_top), mouse_at(5, 300), press(5, 300, 2), release(5, 300, 1), release(5, 300, 2),
          press(5, 300)});
    EXPECT_EQ(next_mouse(), state(5, 600, 0));
    EXPECT_EQ(bar_mouse(), state(5, 600, 1));
    EXPECT_EQ(next_mouse(), state(5, 300, 0));
    EXPECT_EQ(bar_mouse(), state(5, 300, 1));
    EXPECT_EQ(next_mouse(), state(5, 300, 0)) << "nor is a further button, until none is down";
    EXPECT_EQ(bar_mouse(), state(5, 300, 3));
    EXPECT_EQ(next_mouse(), state(5, 300, 0));
    EXPECT_EQ(next_mouse(), state(5, 300, 0));
    EXPECT_EQ(next_mouse(), state(5, 300, 1));
}

TEST_F(InputTest, ASpentPressDoesNothingUntilNoButtonIsDown) {
    have({press(5, 5), mouse_at(6, 6), press(6, 6, 2), mouse_at(6, menu_top), release(6, menu_top, 1), release(7, 7, 2),
          press(8, 8)});
    EXPECT_EQ(next_mouse(), state(5, 5, 1));
    spend_press();
    const Input spent = read_input();
    EXPECT_EQ(spent.before, state(5, 5, 1));
    EXPECT_EQ(spent.mouse, state(5, 5, 0)) << "as if it were released";
    for (const MouseState& expected :
         {state(6, 6, 0), state(6, 6, 0), state(6, 600, 0), state(6, 600, 0), state(7, 7, 0)}) {
        EXPECT_EQ(next_mouse(), expected);
        EXPECT_EQ(bar_mouse(), expected);
    }
    EXPECT_EQ(next_mouse(), state(8, 8, 1));
}

TEST_F(InputTest, SpendingNoPressSpendsNoLaterOne) {
    spend_press();
    have({press(8, 8)});
    EXPECT_EQ(next_mouse(), state(8, 8, 1));
}

TEST_F(InputTest, TellsWhereTheLeftButtonWentDown) {
    have({press(1, 1, 2), press(2, 2, 1), mouse_at(3, 3), release(4, 4, 2), release(5, 5, 1)});
    for (const Point& expected : {Point{-1, -1}, Point{2, 2}, Point{2, 2}, Point{2, 2}, Point{-1, -1}})
        EXPECT_EQ(read_input().pressed_at, expected);
}

// --- keys that are held ----------------------------------------------------------------------------------------------

TEST_F(InputTest, HeldKeysAreThoseThatAreDown) {
    have({key_down(Key::left), key_down(Key::shift_right), key_down(Key::control_right)});
    EXPECT_EQ(next_key(), key::left);
    EXPECT_EQ(next_key(), "");
    EXPECT_TRUE(key_held(75));
    EXPECT_FALSE(key_held(77));
    EXPECT_TRUE(key_held(54));
    EXPECT_FALSE(key_held(42));
    EXPECT_TRUE(key_held(29));
    have({key_up(Key::left), key_up(Key::shift_right), key_up(Key::control_right), key_down(Key::right),
          key_down(Key::shift_left)});
    (void)read_input();
    (void)read_input();
    EXPECT_FALSE(key_held(75));
    EXPECT_TRUE(key_held(77));
    EXPECT_FALSE(key_held(54));
    EXPECT_TRUE(key_held(42));
    EXPECT_FALSE(key_held(29));
}

TEST_F(InputTest, ATapThatIsOverWhenItIsReadIsSeenInThatPassAlone) {
    have({key_press(Key::left), mouse_at(5, 5), key_press(Key::right), key_press(Key::keypad_4), typed("a")});
    const auto steers = [] { return std::pair(key_held(75), key_held(77)); };
    read_input();
    EXPECT_EQ(steers(), std::pair(true, false));
    read_input(); // the mouse
    EXPECT_EQ(steers(), std::pair(false, false));
    read_input();
    EXPECT_EQ(steers(), std::pair(false, true));
    read_input();
    EXPECT_EQ(steers(), std::pair(true, false));
    EXPECT_EQ(next_key(), "a");
    EXPECT_EQ(steers(), std::pair(false, false));
}

TEST_F(InputTest, ATapIsSeenOnceWhenReadingHadToWaitForIt) {
    play({key_press(Key::right), typed("q")}, [] {
        int seen = 0;
        while (next_key() != "q")
            seen += key_held(77) ? 1 : 0;
        EXPECT_EQ(seen, 1);
    });
}

TEST_F(InputTest, OtherScancodesAreNeverHeld) {
    have({key_down(Key::a), key_down(Key::other)});
    (void)read_input();
    for (const int code : {-1, 0, 1, 30, 76, 1000})
        EXPECT_FALSE(key_held(code)) << code;
}

TEST_F(InputTest, TheKeypadSteersToo) {
    have({key_down(Key::keypad_4), key_down(Key::keypad_6)});
    (void)read_input();
    EXPECT_TRUE(key_held(75));
    EXPECT_TRUE(key_held(77));
}

TEST_F(InputTest, ControlIsHeldUntilBothOfItsKeysAreUp) {
    have({key_down(Key::control_left), key_down(Key::control_right), key_up(Key::control_left)});
    (void)read_input();
    EXPECT_TRUE(key_held(29));
    have({key_up(Key::control_right)});
    (void)read_input();
    EXPECT_FALSE(key_held(29));
}

TEST_F(InputTest, ARepeatedKeyDownIsUpAfterOneKeyUp) {
    have({key_down(Key::right), key_down(Key::right), key_down(Key::right), key_up(Key::right)});
    EXPECT_EQ(next_key(), key::right);
    EXPECT_EQ(next_key(), key::right);
    EXPECT_EQ(next_key(), key::right);
    EXPECT_EQ(next_key(), "");
    EXPECT_FALSE(key_held(77));
}

TEST_F(InputTest, ACombinationTypedWhileBusyStaysOne) {
    have({key_press(Key::tab, {.control = true}), key_press(Key::tab), key_press(Key::a, {.shift = true})});
    const Input control_tab = read_input();
    EXPECT_EQ(control_tab.key, key::tab);
    EXPECT_EQ(control_tab.qualifiers, (Qualifiers{.control = true}));
    EXPECT_TRUE(key_held(29));
    EXPECT_EQ(read_input().qualifiers, Qualifiers{});
    EXPECT_FALSE(key_held(29));
    const Input capital = read_input();
    EXPECT_EQ(capital.key, "A");
    EXPECT_EQ(capital.qualifiers, (Qualifiers{.shift_left = true}));
    EXPECT_TRUE(capital.qualifiers.shift());
    EXPECT_TRUE(key_held(42));
    EXPECT_EQ(next_key(), "");
    EXPECT_FALSE(key_held(42)) << "nothing is down any more";
}

ScriptStep focus_lost() {
    ScriptStep step;
    step.events.emplace_back().kind = InputEvent::Kind::focus_lost;
    return step;
}

TEST_F(InputTest, NothingStaysHeldWhenTheWindowLosesTheFocus) {
    have({press(5, 5), key_down(Key::left), key_down(Key::control_left), focus_lost(), release(6, 6)});
    EXPECT_EQ(next_mouse(), state(5, 5, 1));
    EXPECT_FALSE(key_held(75));
    EXPECT_FALSE(key_held(29));
    EXPECT_EQ(next_key(), key::left);
    EXPECT_EQ(next_mouse(), state(5, 5, 0));
    EXPECT_EQ(next_mouse(), state(6, 6, 0)) << "the late release is a mere move";
}

TEST_F(InputTest, ThePointerOutsideReadsMinusOne) {
    play_loop({mouse_at(5, 5), mouse_at(-1, -1)});
    EXPECT_THAT(states, ElementsAre(state(5, 5, 0), state(-1, -1, 0)));
}

TEST_F(InputTest, TheClockIsTheBackends) {
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
        EXPECT_EQ(milliseconds, -1); // without a limit
        if (waits++ == 0) frames_at_first_wait = frames();
        ScriptedBackend::wait(milliseconds);
    }
};

TEST_F(InputTest, ReadingWaitsOnlyAfterAFewFruitlessPasses) {
    PatientBackend patient;
    use_backend(&patient);
    for (int pass = 0; pass < 3; ++pass)
        (void)read_input();
    EXPECT_EQ(patient.waits, 0);
    patient.play({mouse_at(3, 3)});
    EXPECT_EQ(next_mouse(), state(3, 3, 0)) << "the wait is over as soon as something arrives";
    EXPECT_EQ(patient.waits, 1);
    for (int pass = 0; pass < 3; ++pass)
        (void)read_input();
    EXPECT_EQ(patient.waits, 1) << "patience begins anew";
}

TEST_F(InputTest, WhatWasDrawnIsVisibleBeforeReadingWaits) {
    PatientBackend patient;
    use_backend(&patient);
    screen().add_damage({0, 0, 9, 9});
    for (int pass = 0; pass < 4; ++pass)
        (void)read_input();
    EXPECT_EQ(patient.waits, 1);
    EXPECT_EQ(patient.frames_at_first_wait, 1);
}

} // namespace

TEST_F(InputTest, ADroppedFileIsReadInItsTurnWithItsPath) {
    window.play({at_once({typed("a"), drop("/x/a b.car"), drop("/y"), typed("b")})});
    std::vector<std::string> read;
    while (read.size() < 4) {
        const Input input = read_input();
        if (!input.key.empty()) read.push_back(input.key == key::dropped ? input.dropped : input.key);
        EXPECT_EQ(input.dropped.empty(), input.key != key::dropped);
        if (read.size() != 2 || input.dropped.empty()) continue;
        unread_input();
        EXPECT_EQ(read_input().dropped, "/x/a b.car") << "unread, it is read again";
    }
    EXPECT_THAT(read, ElementsAre("a", "/x/a b.car", "/y", "b"));
}

TEST_F(InputTest, WhatTheProgramDoesForThePersonIsReadBehindWhatIsUnread) {
    do_next(typed("ax").events);
    do_next(click(30, 40).events);
    EXPECT_EQ(read_input().key, "a");
    EXPECT_EQ(read_input().key, "x");
    EXPECT_EQ(read_input().mouse, (MouseState{30, 40, 0, 0}));
    EXPECT_EQ(read_input().mouse, (MouseState{30, 40, 0, 1}));
    EXPECT_EQ(read_input().mouse, (MouseState{30, 40, 0, 0}));
}
