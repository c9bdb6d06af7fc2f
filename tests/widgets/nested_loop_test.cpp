#include "widgets/nested_loop.h"

#include "support/play.h"

namespace {

using testing::ElementsAre;

class NestedLoop : public ScriptedTest {
protected:
    int draws = 0;
    bool done = false;
    std::vector<std::string> seen;

    // "c" changes something, "d" is the end, a press of the right button is handed back.
    Answer answer(const Input& input) {
        if (input.mouse_changed()) seen.push_back(std::to_string(input.mouse.x));
        if (!input.key.empty()) seen.push_back(input.key);
        if (input.pressed() && input.mouse.buttons == 2) return Answer::hand_back;
        if (input.key == "d") return Answer::done;
        return input.key == "c" ? Answer::changed : Answer::nothing;
    }
    void run(std::vector<ScriptStep> steps) {
        play(std::move(steps),
             [this] { done = run_nested([this] { ++draws; }, [this](const Input& input) { return answer(input); }); });
    }
};

} // namespace

TEST_F(NestedLoop, SeesMouseAndKeysInOrderUntilItIsDone) {
    run({at_once({mouse_at(1, 1), typed("a"), press(2, 2), release(3, 3), typed("d")})});
    EXPECT_TRUE(done);
    EXPECT_THAT(seen, ElementsAre("1", "a", "2", "3", "d"));
}

TEST_F(NestedLoop, DrawsAtTheStartAndAfterEveryChangeEachInOneFrame) {
    int frames = 0;
    const auto draw = [&] {
        ++draws;
        draw_pixel(screen(), draws, 1, 0xFFFFFFFF);
        draw_pixel(screen(), 900, draws, 0xFFFFFFFF);
    };
    show_screen();
    frames = window.frames();
    play({typed("acac"), typed("d")}, [&] { run_nested(draw, [this](const Input& input) { return answer(input); }); });
    EXPECT_EQ(draws, 3);
    EXPECT_EQ(window.frames(), frames + 3);
}

TEST_F(NestedLoop, TheCloseRequestEndsItAndStaysUnread) {
    run({typed("a"), close_window()});
    EXPECT_FALSE(done);
    EXPECT_EQ(next_key(), key::close_window);
    EXPECT_EQ(next_key(), "");
}

TEST_F(NestedLoop, TheCloseRequestEndsALoopInsideALoopAndBothAround) {
    int ended = 0;
    play({typed("a"), close_window()}, [&] {
        run_nested([] {},
                   [&](const Input& input) {
                       if (input.key == "a") {
                           EXPECT_FALSE(run_nested([] {}, [](const Input&) { return Answer::nothing; }));
                           ++ended;
                       }
                       return Answer::nothing;
                   });
        ++ended;
    });
    EXPECT_EQ(ended, 2);
    EXPECT_EQ(next_key(), key::close_window);
}

TEST_F(NestedLoop, AnInputHandedBackIsTheNextOfTheLoopAround) {
    run({mouse_at(4, 4), press(5, 5, 2)});
    EXPECT_TRUE(done);
    EXPECT_EQ(read_input().mouse, (MouseState{4, 4, 0, 0}));
    const Input again = read_input();
    EXPECT_EQ(again.mouse, (MouseState{5, 5, 0, 2}));
    EXPECT_TRUE(again.pressed());
}

TEST_F(NestedLoop, TheMouseAsItIsIsNoInput) {
    window.play({mouse_at(4, 4)});
    while (mouse().x != 4)
        read_input();
    run({typed("d")});
    EXPECT_THAT(seen, ElementsAre("d"));
}
