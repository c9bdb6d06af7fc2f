#include "window/window.h"

#include "support/play.h"

namespace {

constexpr std::uint32_t red = 0xFFFF0000;

class Window : public ScriptedTest {
protected:
    // The first frame shows everything.
    void SetUp() override {
        ScriptedTest::SetUp();
        show_screen();
        frames_before = window.frames();
    }
    int frames_before = 0;
    int new_frames() const { return window.frames() - frames_before; }
};

TEST_F(Window, TheFirstFrameIsTheWholeBlackPicture) {
    EXPECT_EQ(frames_before, 1);
    EXPECT_EQ(window.last_changed(), (Rectangle{0, 0, 959, 647}));
    EXPECT_EQ(shown(0, 0), Pixel{0xFF000000});
    EXPECT_EQ(shown(959, 647), Pixel{0xFF000000});
}

TEST_F(Window, ADrawingBecomesVisibleAtUnlock) {
    lock_screen();
    fill_box(screen(), 10, 20, 30, 40, red);
    EXPECT_EQ(shown(10, 20), Pixel{0xFF000000});
    unlock_screen();
    EXPECT_EQ(new_frames(), 1);
    EXPECT_EQ(shown(10, 20), Pixel{red});
    EXPECT_EQ(shown(30, 40), Pixel{red});
    EXPECT_EQ(shown(31, 40), Pixel{0xFF000000});
}

TEST_F(Window, OnlyWhatChangedIsShownAnew) {
    {
        const ScreenLock lock;
        fill_box(screen(), 10, 20, 30, 40, red);
        draw_pixel(screen(), 100, 5, red);
    }
    EXPECT_EQ(window.last_changed(), (Rectangle{10, 5, 100, 40}));
}

TEST_F(Window, LocksNest) {
    lock_screen();
    lock_screen();
    draw_pixel(screen(), 1, 1, red);
    unlock_screen();
    EXPECT_EQ(new_frames(), 0);
    unlock_screen();
    EXPECT_EQ(new_frames(), 1);
    unlock_screen();
    lock_screen();
    draw_pixel(screen(), 2, 2, red);
    EXPECT_EQ(new_frames(), 1) << "an unlock too many does not unlock the next lock";
    unlock_screen();
    EXPECT_EQ(new_frames(), 2);
}

TEST_F(Window, ALockEndedUnshownLeavesItsDrawingToTheNextFrame) {
    const int frames = window.frames();
    lock_screen();
    draw_pixel(screen(), 1, 1, red);
    unlock_screen_unshown();
    EXPECT_EQ(window.frames(), frames);
    lock_screen();
    draw_pixel(screen(), 2, 2, red);
    unlock_screen();
    EXPECT_EQ(window.frames(), frames + 1);
    EXPECT_EQ(shown(1, 1), Pixel{red});
    EXPECT_EQ(shown(2, 2), Pixel{red});
    unlock_screen_unshown();
    draw_pixel(screen(), 3, 3, red);
    show_screen();
    EXPECT_EQ(shown(3, 3), Pixel{red}) << "one unlock too many does no harm";
}

TEST_F(Window, NothingDrawnIsNoFrame) {
    lock_screen();
    unlock_screen();
    show_screen();
    EXPECT_EQ(new_frames(), 0);
}

TEST_F(Window, WhatWasDrawnWithoutALockIsShownOnDemandButNotWhileLocked) {
    draw_pixel(screen(), 1, 1, red);
    lock_screen();
    show_screen();
    EXPECT_EQ(new_frames(), 0);
    unlock_screen();
    EXPECT_EQ(shown(1, 1), Pixel{red});
}

TEST_F(Window, WhatIsDrawnWithoutABackendIsShownOnceThereIsOne) {
    use_backend(nullptr);
    {
        const ScreenLock lock;
        draw_pixel(screen(), 1, 1, red);
    }
    use_backend(&window);
    show_screen();
    EXPECT_EQ(shown(1, 1), Pixel{red});
}

TEST_F(Window, TheTitleIsKeptAndHandedOn) {
    set_window_title("Karosmit 1.0.4");
    EXPECT_EQ(window_title(), "Karosmit 1.0.4");
    EXPECT_EQ(window.title(), "Karosmit 1.0.4");
}

TEST_F(Window, ATitleSetBeforeTheWindowOpensIsItsTitle) {
    use_backend(nullptr);
    set_window_title("early");
    ScriptedBackend later;
    use_backend(&later);
    std::string error;
    ASSERT_TRUE(open_screen(error));
    EXPECT_EQ(later.title(), "early");
}

TEST_F(Window, AWindowThatCannotOpenSaysWhyInOneLine) {
    window.refuse_to_open = true;
    std::string error;
    EXPECT_FALSE(open_screen(error));
    EXPECT_NE(error, "");
    EXPECT_EQ(error.find('\n'), std::string::npos);
    draw_pixel(screen(), 3, 3, red);
    EXPECT_EQ(drawn(3, 3), Pixel{red});
}

TEST_F(Window, WithoutAWindowSystemItDoesNotOpen) {
    use_backend(nullptr);
    std::string error;
    EXPECT_FALSE(open_screen(error));
    EXPECT_NE(error, "");
}

TEST_F(Window, AResetLeavesNothing) {
    set_window_title("x");
    lock_screen();
    screen().set_clip(1, 1, 2, 2);
    screen().foreground = 1;
    fill_box(screen(), 0, 0, 9, 9, red);
    reset_screen();
    EXPECT_EQ(window_title(), "");
    EXPECT_EQ(drawn(1, 1), Pixel{0xFF000000});
    EXPECT_EQ(screen().clip(), (Rectangle{0, 0, 959, 647}));
    EXPECT_EQ(screen().foreground, 0xFFFFFFFF);
    draw_pixel(screen(), 5, 5, red);
    show_screen();
    EXPECT_EQ(shown(5, 5), Pixel{red}) << "no lock is left";
}

TEST_F(Window, TheTextGridFixesWherePrintingWraps) {
    set_text_grid(10, 40);
    screen().text_column = 9;
    print_text(screen(), "ab");
    EXPECT_EQ(screen().text_row, 1);
    EXPECT_EQ(screen().text_column, 1);
    set_text_grid(120, 40);
}

} // namespace
