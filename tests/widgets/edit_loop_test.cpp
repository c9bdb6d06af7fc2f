#include "widgets/edit_loop.h"

#include "support/play.h"

namespace {

class EditLoop : public ScriptedTest {
protected:
    const Rectangle field{0, 0, 49, 49};
    int draws = 0;
    std::vector<std::string> keys;
    EditEnd end = EditEnd::closed;

    // Runs an edit in which only "n" changes nothing. The script must end it.
    void edit(std::vector<ScriptStep> steps) {
        play(std::move(steps), [this] {
            end = run_edit(
                field, [this] { ++draws; },
                [this](const std::string& key) {
                    keys.push_back(key);
                    return key != "n";
                });
        });
    }
    // A button is down when the edit begins, as after the click that opened it.
    void hold_left_button() {
        window.play({press(10, 10)});
        while (mouse().buttons == 0)
            read_input();
    }
};

} // namespace

TEST_F(EditLoop, EnterStores) {
    edit({typed("ab"), key_press(Key::enter)});
    EXPECT_EQ(end, EditEnd::stored);
    EXPECT_EQ(keys, (std::vector<std::string>{"a", "b"}));
}

TEST_F(EditLoop, DrawsAtTheStartAndAfterEveryChange) {
    edit({typed("anb"), key_press(Key::enter)});
    EXPECT_EQ(draws, 3);
}

TEST_F(EditLoop, EscapeLeaves) {
    edit({typed("a"), key_press(Key::escape)});
    EXPECT_EQ(end, EditEnd::escaped);
    EXPECT_EQ(next_key(), "");
}

TEST_F(EditLoop, APressedButtonLeaves) {
    for (int button : {1, 2}) {
        edit({mouse_at(5, 5), typed("a"), press(5, 5, button)});
        EXPECT_EQ(end, EditEnd::pressed);
        edit({release(5, 5, button), key_press(Key::enter)});
        EXPECT_EQ(end, EditEnd::stored);
    }
}

TEST_F(EditLoop, TheButtonThatOpenedItCountsOnlyAfterItsRelease) {
    hold_left_button();
    edit({mouse_at(20, 20), mouse_at(30, 30), release(30, 30), typed("a"), press(30, 30)});
    EXPECT_EQ(end, EditEnd::pressed);
    EXPECT_EQ(keys, std::vector<std::string>{"a"});
}

TEST_F(EditLoop, AFurtherButtonLeavesWhileTheFirstIsHeld) {
    hold_left_button();
    edit({typed("a"), press(10, 10, 2)});
    EXPECT_EQ(end, EditEnd::pressed);
}

TEST_F(EditLoop, TheCloseRequestLeavesAndStaysUnread) {
    edit({typed("a"), close_window()});
    EXPECT_EQ(end, EditEnd::closed);
    EXPECT_EQ(next_key(), key::close_window);
}

TEST_F(EditLoop, WhatWasTypedBeforeTheCloseRequestCounts) {
    edit({at_once({typed("a"), key_press(Key::enter), close_window()})});
    EXPECT_EQ(end, EditEnd::stored);
    EXPECT_EQ(next_key(), key::close_window);
}

TEST_F(EditLoop, ThePressThatEndsItElsewhereIsReadNext) {
    edit({mouse_at(60, 60), press(60, 60)});
    EXPECT_EQ(end, EditEnd::pressed);
    EXPECT_EQ(read_input().mouse, (MouseState{60, 60, 0, 0}));
    EXPECT_TRUE(read_input().left_pressed());
}

TEST_F(EditLoop, ThePressThatEndsItInTheFieldIsSpent) {
    edit({mouse_at(49, 49), press(49, 49)});
    EXPECT_EQ(end, EditEnd::pressed);
    EXPECT_EQ(mouse(), (MouseState{49, 49, 0, 0}));
    window.play({mouse_at(60, 60), release(60, 60), press(60, 60)});
    for (int pass = 0; pass < 30 && mouse().x != 60; ++pass)
        EXPECT_EQ(read_input().mouse.buttons, 0);
    while (!window.finished() || mouse().buttons == 0)
        read_input();
    EXPECT_EQ(mouse(), (MouseState{60, 60, 0, 1}));
}

TEST_F(EditLoop, AButtonStillDownAtItsEndIsSpent) {
    for (const Key last : {Key::enter, Key::escape}) {
        hold_left_button();
        edit({key_press(last)});
        EXPECT_EQ(mouse(), (MouseState{10, 10, 0, 0}));
        edit({mouse_at(60, 60), release(60, 60), key_press(Key::enter)});
    }
}
