#include "widgets/strip.h"

#include "base/file_status.h"
#include "support/play.h"
#include "widgets/widgets.h"

namespace {

class StripTest : public ScriptedTest {
protected:
    void SetUp() override {
        ScriptedTest::SetUp();
        reset_strip();
        clear();
    }
    void TearDown() override {
        reset_strip();
        ScriptedTest::TearDown();
    }

    static void clear() {
        fill_box(screen(), 0, 0, screen_width - 1, screen_height - 1, colour::background);
        show_screen();
    }
    static bool plain() {
        for (int y = strip_top; y <= strip_bottom; ++y)
            for (int x = strip_left; x <= strip_right; ++x)
                if (drawn(x, y).value != colour::background) return false;
        return true;
    }
};

TEST_F(StripTest, IsPlainAndCostsNoFrameWhileThereIsNothingToSay) {
    const int frames = window.frames();
    keep_strip();
    say("");
    keep_strip();
    EXPECT_EQ(window.frames(), frames);
    EXPECT_TRUE(plain());
}

TEST_F(StripTest, ShowsAMessageAtItsLeftInOneFrameOfItsOwn) {
    say("Nothing to save");
    const int frames = window.frames();
    keep_strip();
    keep_strip();
    EXPECT_EQ(window.frames(), frames + 1);
    EXPECT_GE(window.last_changed().y1, strip_top);
    EXPECT_GE(window.last_changed().x1, strip_left);
    EXPECT_TRUE(screen_shows(208, 616, "Nothing to save", colour::title));
}

TEST_F(StripTest, SaysWhatCouldNotBeRead) {
    note_unreadable_file("vortag.col", "Input/output error");
    keep_strip();
    EXPECT_EQ(said(), "Cannot read vortag.col: Input/output error");
    note_unreadable_file("a", "b");
    note_unreadable_file("c", "d");
    keep_strip();
    EXPECT_EQ(said(), "Cannot read a: b (and 1 more)");
}

TEST_F(StripTest, AMessageThatIsTakenBackGoesUnlessAnotherStandsThere) {
    say("waiting");
    unsay("waiting");
    EXPECT_EQ(said(), "");
    say("done");
    unsay("waiting");
    EXPECT_EQ(said(), "done");
}

TEST_F(StripTest, TheNextMessageTakesThePlaceOfTheLast) {
    say("a first message");
    keep_strip();
    say("second");
    keep_strip();
    EXPECT_TRUE(screen_shows(208, 616, "second         ", colour::title));
}

TEST_F(StripTest, AMessageGoesAfterTenSecondsAndNotBefore) {
    window.tick = 0;
    window.clock = 100;
    say("soon gone");
    keep_strip();
    EXPECT_EQ(strip_changes_at(), 110);
    window.clock = 109.9;
    keep_strip();
    EXPECT_FALSE(plain());
    window.clock = 110;
    keep_strip();
    EXPECT_TRUE(plain());
    EXPECT_EQ(strip_changes_at(), std::nullopt);
    EXPECT_EQ(said(), "");
}

TEST_F(StripTest, FactsStandAtItsRightAndStay) {
    window.tick = 0;
    set_screen_fact("200 of 401 entries");
    say("soon gone");
    keep_strip();
    window.clock = 1000;
    keep_strip();
    EXPECT_TRUE(screen_shows(960 - 8 - 8 * 18, 616, "200 of 401 entries", colour::label));
    set_car_fact("brux, unsaved");
    keep_strip();
    EXPECT_TRUE(screen_shows(960 - 8 - 8 * 13, 608, "brux, unsaved", colour::label));
    EXPECT_TRUE(screen_shows(960 - 8 - 8 * 18, 624, "200 of 401 entries", colour::label));
    set_screen_fact("");
    set_car_fact("");
    keep_strip();
    EXPECT_TRUE(plain());
}

TEST_F(StripTest, ALongMessageTakesTwoLinesAndLeavesTheFactsAlone) {
    set_screen_fact("200 of 401 entries");
    say("Not writable: /home/someone/a/folder/with/a/long/name/and/another/one/behind/it/carbrux.res");
    keep_strip();
    EXPECT_TRUE(screen_shows(208, 608, "Not writable: /home/someone/a/folder/with/a/long/name/and/another/one/",
                             colour::title));
    EXPECT_TRUE(screen_shows(208, 624, "behind/it/carbrux.res", colour::title));
    EXPECT_TRUE(screen_shows(960 - 8 - 8 * 18, 616, "200 of 401 entries", colour::label));
}

TEST_F(StripTest, LeavesTheMenuBarAndTheWorkAreaAlone) {
    fill_box(screen(), 0, 0, screen_width - 1, screen_height - 1, 0xFF123456);
    say(std::string(1000, 'x'));
    set_car_fact(std::string(1000, 'y'));
    keep_strip();
    for (int x = 0; x < screen_width; ++x)
        EXPECT_EQ(drawn(x, strip_top - 1), (Pixel{0xFF123456})) << x;
    for (int y = strip_top; y <= strip_bottom; ++y)
        EXPECT_EQ(drawn(strip_left - 1, y), (Pixel{0xFF123456})) << y;
}

} // namespace
