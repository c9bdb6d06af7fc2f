#include "widgets/edit_loop.h"

#include "support/play.h"

namespace {

class EditLoop : public ScriptedTest {
protected:
    int draws = 0;
    std::vector<std::string> keys;
    EditEnd end = EditEnd::closed;

    // Runs an edit in which only "n" changes nothing. The script must end it.
    void edit(std::vector<ScriptStep> steps) {
        play(std::move(steps), [this] {
            end = run_edit([this] { ++draws; },
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
            read_mouse();
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
    EXPECT_FALSE(close_requested());
    EXPECT_EQ(read_key(), "");
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
    EXPECT_TRUE(close_requested());
    EXPECT_EQ(read_key(), key::close_window);
}

TEST_F(EditLoop, WhatWasTypedBeforeTheCloseRequestCounts) {
    edit({at_once({typed("a"), key_press(Key::enter), close_window()})});
    EXPECT_EQ(end, EditEnd::stored);
    EXPECT_TRUE(close_requested());
}

TEST_F(EditLoop, TheWaitForTheReleaseDropsKeysTypedBeforeIt) {
    hold_left_button();
    bool released = false;
    play({at_once({typed("a"), key_press(Key::escape), mouse_at(20, 20), release(20, 20), typed("b")})},
         [&] { released = wait_for_release(); });
    EXPECT_TRUE(released);
    EXPECT_EQ(mouse(), (MouseState{20, 20, 0, 0}));
    read_mouse();
    EXPECT_EQ(read_key(), "b");
}

TEST_F(EditLoop, TheCloseRequestEndsTheWaitForTheReleaseAndStaysUnread) {
    hold_left_button();
    bool released = true;
    play({at_once({typed("a"), close_window(), release(10, 10)})}, [&] { released = wait_for_release(); });
    EXPECT_FALSE(released);
    EXPECT_EQ(mouse().buttons, 1);
    EXPECT_EQ(read_key(), key::close_window);
}

TEST_F(EditLoop, WithNoButtonDownNothingIsWaitedFor) {
    window.play({typed("a")});
    EXPECT_TRUE(wait_for_release());
    EXPECT_FALSE(window.finished());
}
