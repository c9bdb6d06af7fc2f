#include "widgets/widgets.h"

#include "support/play.h"

namespace {

// Every test looks at mouse states that it sets by itself.
class Widgets : public ScriptedTest {
protected:
    void SetUp() override {
        ScriptedTest::SetUp();
        fill_box(screen(), 0, 0, screen_width - 1, screen_height - 1, 0xFF123456);
    }

    // What a screen does once a pass after this step of the person's.
    int maintain_after(const ScriptStep& step) {
        window.play({step});
        wait_for(step);
        return MAINTAINBUTTONS();
    }

private:
    void wait_for(const ScriptStep&) {
        for (int pass = 0; pass < 10 && !window.finished(); ++pass)
            read_input();
        read_input();
    }
};

} // namespace

TEST_F(Widgets, ASectionIsTwoRectanglesAndATitleInAGap) {
    DRAWSECTION(100, 50, 300, 150, "Input", false);
    EXPECT_EQ(drawn(100, 100), Pixel{0xFF64283C});
    EXPECT_EQ(drawn(300, 150), Pixel{0xFF64283C});
    EXPECT_EQ(drawn(99, 49), Pixel{0xFF190A0F});
    EXPECT_EQ(drawn(99, 149), Pixel{0xFF190A0F});
    EXPECT_EQ(drawn(299, 148), Pixel{0xFF190A0F});
    EXPECT_EQ(drawn(115, 50), Pixel{0xFF64283C}); // left of the gap
    EXPECT_EQ(drawn(116, 48), Pixel{0xFF32141E});
    EXPECT_EQ(drawn(100 + 32 + 8 * 5, 52), Pixel{0xFF32141E});
    EXPECT_EQ(drawn(101 + 32 + 8 * 5, 50), Pixel{0xFF64283C});
    EXPECT_TRUE(screen_shows(124, 42, "Input", 0xFFDC7896));
}

TEST_F(Widgets, AHighlightedSectionHasABrightTitleAndAnUntitledOneNoGap) {
    DRAWSECTION(100, 50, 300, 150, "View", true);
    EXPECT_TRUE(screen_shows(124, 42, "View", 0xFFFAFAFA));
    DRAWSECTION(100, 250, 300, 350, "", false);
    for (int x = 100; x <= 298; ++x)
        EXPECT_EQ(drawn(x, 250), Pixel{0xFF64283C});
}

TEST_F(Widgets, ButtonsThatWereDrawnOverAreDrawnAgain) {
    CREATESIMPLEBUTTON(100, 100, "Go", 7);
    APPENDBUTTON("On", 8, true);
    maintain_after(mouse_at(50, 50));
    BUTTON[2].state = button_state::make_inactive;
    maintain_after(mouse_at(51, 50));
    fill_box(screen(), 0, 0, 959, 599, 0xFF123456);
    maintain_after(mouse_at(52, 50));
    EXPECT_EQ(drawn(100, 100), Pixel{0xFF123456});
    forget_drawn_buttons();
    maintain_after(mouse_at(53, 50));
    EXPECT_EQ(drawn(100, 100), Pixel{0xFFB4B4B4});
    EXPECT_EQ(drawn(100, 140), Pixel{0xFF3C1E28}) << "still inactive";
}

TEST_F(Widgets, ASectionIsDrawnOnAnyCanvas) {
    const auto image = create_image(200, 100, 0xFF123456);
    Canvas canvas(*image);
    draw_section(canvas, {10, 20, 150, 80}, "View", true);
    EXPECT_EQ(image->pixel(150, 80), 0xFF64283Cu);
    EXPECT_EQ(image->pixel(9, 19), 0xFF190A0Fu);
    EXPECT_TRUE(shows_text(*image, 34, 12, "View", 0xFFFAFAFA));
}

TEST_F(Widgets, ASimpleButtonIsAsWideAsItsCaptionAsks) {
    CREATESIMPLEBUTTON(650, 70, " Load File ", 1);
    EXPECT_EQ(BUTTONS, 1);
    EXPECT_EQ(BUTTON[1].width, 8 * 11 + 32);
    EXPECT_EQ(BUTTON[1].height, 32);
    EXPECT_EQ(BUTTON[1].main_colour, 0xFFB4B4B4u);
    EXPECT_EQ(BUTTON[1].back_colour, 0xFF32141Eu);
    EXPECT_EQ(BUTTON[1].inactive_colour, 0xFF3C1E28u);
    EXPECT_EQ(BUTTON[1].state, button_state::fresh);
}

TEST_F(Widgets, AnAppendedButtonBelowIsEightPixelsUnderThePreviousOneAndAsWide) {
    CREATESIMPLEBUTTON(10, 20, "wide caption", 1);
    APPENDBUTTON("x", 2, true);
    EXPECT_EQ(BUTTON[2].x, 10);
    EXPECT_EQ(BUTTON[2].y, 20 + 32 + 8);
    EXPECT_EQ(BUTTON[2].width, BUTTON[1].width);
    EXPECT_EQ(BUTTON[2].id, 2);
}

TEST_F(Widgets, AnAppendedButtonBesideFollowsSixteenPixelsRight) {
    CREATESIMPLEBUTTON(10, 20, "ab", 1);
    BUTTON[1].main_colour = 0xFF00FF00;
    APPENDBUTTON("abc", 2, false);
    EXPECT_EQ(BUTTON[2].x, 10 + 48 + 16);
    EXPECT_EQ(BUTTON[2].y, 20);
    EXPECT_EQ(BUTTON[2].width, 8 * 3 + 32);
    EXPECT_EQ(BUTTON[2].main_colour, 0xFF00FF00u);
}

TEST_F(Widgets, NoButtonIsAppendedToNothingOrPastTheTable) {
    APPENDBUTTON("x", 1, true);
    EXPECT_EQ(BUTTONS, 0);
    for (int i = 0; i < 25; ++i)
        CREATESIMPLEBUTTON(0, 0, "x", i);
    EXPECT_EQ(BUTTONS, 20);
    APPENDBUTTON("x", 1, true);
    EXPECT_EQ(BUTTONS, 20);
}

TEST_F(Widgets, ButtonsAreDrawnNormalHoveredAndInactive) {
    CREATESIMPLEBUTTON(100, 100, "Go", 7);
    EXPECT_EQ(maintain_after(mouse_at(50, 50)), 0);
    EXPECT_EQ(drawn(100, 100), Pixel{0xFFB4B4B4});
    EXPECT_EQ(drawn(101, 101), Pixel{0xFFB4B4B4});
    EXPECT_EQ(drawn(102, 102), Pixel{0xFF32141E});
    EXPECT_EQ(drawn(147, 131), Pixel{0xFFB4B4B4});
    EXPECT_TRUE(screen_shows(100 + 24 - 8, 100 + 16 - 8, "Go", 0xFFB4B4B4));

    EXPECT_EQ(maintain_after(mouse_at(110, 110)), 0);
    EXPECT_EQ(BUTTON[1].state, button_state::hover);
    EXPECT_EQ(drawn(102, 102), Pixel{0xFFB4B4B4});
    EXPECT_TRUE(screen_shows(116, 108, "Go", 0xFF32141E));

    BUTTON[1].state = button_state::make_inactive;
    maintain_after(mouse_at(111, 110));
    EXPECT_EQ(BUTTON[1].state, button_state::inactive);
    EXPECT_EQ(drawn(100, 100), Pixel{0xFF3C1E28});
    EXPECT_TRUE(screen_shows(116, 108, "Go", 0xFF3C1E28));
}

TEST_F(Widgets, AButtonAnswersToTheLeftButtonAloneInsideItsEdges) {
    CREATESIMPLEBUTTON(100, 100, "Go", 7);
    EXPECT_EQ(maintain_after(press(147, 131)), 7);
    EXPECT_EQ(maintain_after(press(147, 131, 2)), 0); // both are down now
    EXPECT_EQ(maintain_after(release(147, 131, 1)), 0);
    EXPECT_EQ(maintain_after(release(147, 131, 2)), 0);
    EXPECT_EQ(maintain_after(press(148, 131)), 0);
}

TEST_F(Widgets, OfTwoButtonsUnderTheMouseTheLaterOneAnswers) {
    CREATESIMPLEBUTTON(100, 100, "Go", 7);
    CREATESIMPLEBUTTON(110, 100, "On", 8);
    EXPECT_EQ(maintain_after(press(120, 110)), 8);
}

// ODDITY inactive-button-clicks
TEST_F(Widgets, AnInactiveButtonIsRedrawnOnceAndStillAnswersToClicks) {
    CREATESIMPLEBUTTON(100, 100, "Go", 7);
    BUTTON[1].state = button_state::make_inactive;
    maintain_after(mouse_at(50, 50));
    fill_box(screen(), 100, 100, 147, 131, 0xFF123456);
    EXPECT_EQ(maintain_after(press(110, 110)), 7);
    EXPECT_EQ(drawn(110, 101), Pixel{0xFF123456}) << "an inactive button is not redrawn";
}

// ODDITY buttons-never-remember-mouse
TEST_F(Widgets, EveryCallLooksAtAllButtonsUnlessTheMouseRestsInTheCorner) {
    CREATESIMPLEBUTTON(0, 0, "Go", 7);
    EXPECT_EQ(maintain_after(mouse_at(0, 0)), 0);
    EXPECT_EQ(BUTTON[1].state, button_state::fresh) << "at (0,0) with no button nothing is looked at";
    EXPECT_EQ(maintain_after(press(5, 5)), 7);
    EXPECT_EQ(MAINTAINBUTTONS(), 7) << "the same click is reported again";
}

TEST_F(Widgets, OfTheTwoRectanglesOfASectionTheDarkOneIsDrawnLast) {
    DRAWSECTION(100, 50, 300, 150, "", false);
    EXPECT_EQ(drawn(100, 149), Pixel{0xFF190A0F});
    EXPECT_EQ(drawn(299, 50), Pixel{0xFF190A0F});
}

TEST_F(Widgets, AButtonThatIsMadeUnderTheMouseIsDrawnHoveredAtOnce) {
    maintain_after(mouse_at(110, 110));
    CREATESIMPLEBUTTON(100, 100, "Go", 7);
    CREATESIMPLEBUTTON(300, 100, "On", 8);
    MAINTAINBUTTONS();
    EXPECT_EQ(BUTTON[1].state, button_state::hover);
    EXPECT_EQ(drawn(103, 103), Pixel{0xFFB4B4B4});
    EXPECT_EQ(BUTTON[2].state, button_state::normal);
    EXPECT_EQ(drawn(303, 103), Pixel{0xFF32141E});
}
