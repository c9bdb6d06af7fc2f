#include "window/scripted_backend.h"

#include "support/play.h"

namespace {

using testing::ElementsAre;

class Scripts : public ScriptedTest {
protected:
    std::vector<InputEvent> poll() {
        std::vector<InputEvent> events;
        window.poll(events);
        return events;
    }
    std::vector<InputEvent> wait_and_poll() {
        window.wait(250);
        return poll();
    }
};

TEST_F(Scripts, AStepIsHandedOverOnlyToAProgramThatWaits) {
    window.play({mouse_at(1, 1), mouse_at(2, 2)});
    EXPECT_TRUE(poll().empty());
    EXPECT_EQ(wait_and_poll().size(), 1u);
    EXPECT_TRUE(poll().empty());
    EXPECT_FALSE(window.finished());
    EXPECT_EQ(wait_and_poll().size(), 1u);
    EXPECT_TRUE(window.finished());
    EXPECT_EQ(window.overrun(), 0);
}

TEST_F(Scripts, CloseRequestsFollowTheLastStep) {
    for (int i = 1; i <= 3; ++i) {
        const std::vector<InputEvent> events = wait_and_poll();
        ASSERT_EQ(events.size(), 1u);
        EXPECT_EQ(events[0].kind, InputEvent::Kind::close_request);
        EXPECT_EQ(window.overrun(), i);
    }
}

TEST_F(Scripts, AProgramThatNeverEndsIsAborted) {
    EXPECT_DEATH(
        {
            for (;;)
                (void)wait_and_poll();
        },
        "does not end");
}

TEST_F(Scripts, EachStepIsSettledBeforeTheNext) {
    std::vector<int> seen;
    int passes = 0;
    const auto note = [&] { seen.push_back(passes); };
    play({look(note), typed("a"), look(note), look(note), close_window()}, [&] {
        std::string key;
        while (key != key::close_window) {
            ++passes;
            key = read_input().key;
        }
    });
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_GE(seen[1] - seen[0], 4) << "passes after an action, and after a key";
    EXPECT_GE(seen[2] - seen[1], 3);
}

TEST_F(Scripts, AKeyPressBringsItsQualifiersAndItsText) {
    const ScriptStep shifted = key_press(Key::b, {.shift = true});
    std::vector<InputEvent::Kind> kinds;
    for (const InputEvent& event : shifted.events)
        kinds.push_back(event.kind);
    using Kind = InputEvent::Kind;
    EXPECT_THAT(kinds, ElementsAre(Kind::key_down, Kind::key_down, Kind::text, Kind::key_up, Kind::key_up));
    EXPECT_EQ(shifted.events[0].key, Key::shift_left);
    EXPECT_EQ(shifted.events[2].text, "B");
}

} // namespace
