// The window while an external program runs.
#include "widgets/busy_window.h"

#include "support/play.h"
#include "support/text_file.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

#include <filesystem>

namespace {

class BusyWindow : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        ScriptedTest::SetUp();
        reset_strip();
    }
    void TearDown() override {
        reset_strip();
        ScriptedTest::TearDown();
    }

    // Runs a command that only its cancelling or the file "go" ends, while the steps are played.
    CommandOutcome run(std::vector<ScriptStep> steps) {
        window.play(std::move(steps));
        return run_beside_window("until [ -e go ]; do sleep 0.01; done", "the unpacker", {});
    }
    static ScriptStep let_it_end() {
        return look([] { write_text("go", ""); });
    }
    static std::string keys_left(int inputs) {
        std::string keys;
        for (int i = 0; i < inputs; ++i)
            keys += read_input().key;
        return keys;
    }
};

} // namespace

TEST_F(BusyWindow, WhatIsTypedMeanwhileIsKeptInOrder) {
    const CommandOutcome outcome = run({typed("ab"), mouse_at(7, 8), typed("c"), let_it_end()});
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_EQ(keys_left(2), "ab");
    EXPECT_EQ(read_input().mouse.at(), (Point{7, 8}));
    EXPECT_EQ(keys_left(1), "c");
}

TEST_F(BusyWindow, EscapeEndsTheProgramAndIsUsedUp) {
    const CommandOutcome outcome = run({typed("a"), at_once({typed("b"), key_press(Key::escape), typed("c")})});
    EXPECT_EQ(outcome.end, CommandEnd::cancelled);
    EXPECT_EQ(keys_left(3), "abc");
}

TEST_F(BusyWindow, TheCloseRequestEndsTheProgramAndStaysForTheLoopsAround) {
    const CommandOutcome outcome = run({typed("a"), close_window()});
    EXPECT_EQ(outcome.end, CommandEnd::cancelled);
    EXPECT_EQ(keys_left(2), "a" + std::string(key::close_window));
}

TEST_F(BusyWindow, WhatWasDoneBeforeItBeganDoesNotEndIt) {
    window.play({at_once({typed("a"), key_press(Key::escape), close_window()})});
    window.wait(0);
    BusyInput earlier;
    earlier.go_on(); // takes them over
    const CommandOutcome outcome = run({let_it_end()});
    EXPECT_TRUE(outcome.succeeded());
}

TEST_F(BusyWindow, ASecondCloseRequestEndsItThoughTheFirstIsStillUnread) {
    window.play({close_window()});
    BusyInput earlier;
    while (earlier.go_on()) {
    }
    const CommandOutcome outcome = run({close_window()});
    EXPECT_EQ(outcome.end, CommandEnd::cancelled);
    EXPECT_EQ(keys_left(2), std::string(key::close_window)) << "it is one request";
}

TEST_F(BusyWindow, WhatWasDrawnIsShownWhileItRuns) {
    const int frames = window.frames();
    draw_pixel(screen(), 3, 4, 0xFF123456);
    run({look([&] {
             EXPECT_GT(window.frames(), frames);
             EXPECT_EQ(shown(3, 4), Pixel{0xFF123456});
         }),
         let_it_end()});
}

TEST_F(BusyWindow, TheStripSaysWhatIsWaitedForWhenItTakesAWhileAndNoLonger) {
    const std::string waiting = "Waiting for the unpacker. Escape ends it.";
    std::vector<ScriptStep> steps(2, look([] { EXPECT_EQ(said(), ""); }));
    steps.push_back(look([&] { window.clock += 100; }));
    for (int i = 0; i < 4; ++i) // each takes some 160 ms
        steps.push_back(look([] {}));
    steps.push_back(look([&] {
        EXPECT_EQ(said(), waiting);
        EXPECT_TRUE(screen_shows(strip_left + 8, strip_top + 16, waiting, colour::title));
    }));
    steps.push_back(let_it_end());
    run(std::move(steps));
    EXPECT_EQ(said(), "");
    EXPECT_FALSE(screen_shows(strip_left + 8, strip_top + 16, waiting, colour::title));
}
