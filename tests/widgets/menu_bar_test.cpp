#include "widgets/menu_bar.h"

#include "support/play.h"
#include "widgets/widgets.h"

namespace {

class MenuBar : public ScriptedTest {
protected:
    int maintain_after(const ScriptStep& step) {
        window.play({step});
        for (int pass = 0; pass < 10 && !window.finished(); ++pass)
            read_input();
        read_input();
        return MAINTAINMENU(false);
    }

    static Pixel cell(int number) { return drawn(number * 48 + 1, 601); }
};

constexpr Pixel current{0xFF280A14}, hovered{0xFF3C1E28}, normal{0xFF32141E};

} // namespace

TEST_F(MenuBar, ForcedItIsDrawnWhereverTheMouseIs) {
    EXPECT_EQ(MAINTAINMENU(true), 0);
    EXPECT_EQ(cell(0), current);
    EXPECT_EQ(cell(1), normal);
    EXPECT_EQ(drawn(191, 647), normal);
    EXPECT_EQ(drawn(192, 647), Pixel{0xFF000000});
    EXPECT_EQ(drawn(0, 599), Pixel{0xFF000000});
}

TEST_F(MenuBar, WithTheMouseAboveTheBarNowAndBeforeNothingIsDrawn) {
    EXPECT_EQ(maintain_after(mouse_at(10, 599)), 0);
    EXPECT_EQ(drawn(1, 601), Pixel{0xFF000000});
}

TEST_F(MenuBar, TheCellUnderTheMouseIsHighlightedUntilTheMouseLeavesTheBar) {
    EXPECT_EQ(maintain_after(mouse_at(48, 600)), 0);
    EXPECT_EQ(cell(1), hovered);
    EXPECT_EQ(maintain_after(mouse_at(48, 300)), 0);
    EXPECT_EQ(cell(1), normal);
}

TEST_F(MenuBar, AClickOnAnotherCellPicksItsScreen) {
    for (int number : {3, 1, 2, 0}) {
        EXPECT_EQ(maintain_after(press(number * 48 + 20, 640)), -1);
        EXPECT_EQ(CURMENU, number);
        maintain_after(release(number * 48 + 20, 640));
    }
}

TEST_F(MenuBar, AClickOnTheCurrentCellChangesNothingAndReturnsTheMousePosition) {
    EXPECT_EQ(maintain_after(press(17, 620)), 17);
    EXPECT_EQ(CURMENU, screen_number::files);
}

TEST_F(MenuBar, AClickRightOfTheCellsReturnsTheMousePosition) {
    EXPECT_EQ(maintain_after(press(900, 620)), 900);
    EXPECT_EQ(CURMENU, screen_number::files);
}

TEST_F(MenuBar, BothButtonsDownNeverChangeTheScreen) {
    for (const int first_y : {300, 620}) {
        window.play({press(500, first_y, 2), press(60, 620, 1)});
        for (int pass = 0; pass < 30; ++pass) {
            read_input();
            EXPECT_NE(MAINTAINMENU(false), -1);
            if ((mouse().buttons | bar_mouse().buttons) == 3) break;
        }
        EXPECT_EQ(mouse().buttons | bar_mouse().buttons, 3);
        EXPECT_EQ(CURMENU, screen_number::files);
        EXPECT_EQ(cell(1), hovered);
        maintain_after(release(60, 620, 1));
        maintain_after(release(60, 620, 2));
    }
}

TEST_F(MenuBar, AStrokeThatOvershootsIntoItOnlyPointsAtACell) {
    EXPECT_EQ(maintain_after(press(60, 599)), 0);
    EXPECT_EQ(maintain_after(mouse_at(60, 620)), 0);
    EXPECT_EQ(cell(1), hovered);
    EXPECT_EQ(maintain_after(release(60, 620)), 0);
    EXPECT_EQ(CURMENU, screen_number::files);
    EXPECT_EQ(maintain_after(press(60, 620)), -1);
    EXPECT_EQ(CURMENU, screen_number::editor_3d);
}

TEST_F(MenuBar, APressOnItReachesFromCellToCell) {
    EXPECT_EQ(maintain_after(press(900, 620)), 900);
    EXPECT_EQ(maintain_after(mouse_at(60, 620)), -1);
    EXPECT_EQ(CURMENU, screen_number::editor_3d);
}

TEST_F(MenuBar, TheSameMouseAgainIsIgnored) {
    maintain_after(press(17, 620));
    EXPECT_EQ(MAINTAINMENU(false), 0);
}

// ODDITY menu-two-dark-cells
TEST_F(MenuBar, AClickToTheRightLeavesBothCellsDarkAndOneToTheLeftDoesNot) {
    maintain_after(press(2 * 48 + 5, 620));
    EXPECT_EQ(cell(0), current);
    EXPECT_EQ(cell(2), current);
    maintain_after(release(2 * 48 + 5, 620));
    EXPECT_EQ(cell(0), normal);
    maintain_after(press(5, 620));
    EXPECT_EQ(cell(0), current);
    EXPECT_EQ(cell(2), normal);
}

TEST_F(MenuBar, TheIconsAreBlendedOverTheCells) {
    MENUIMG = create_image(192, 48, 0x00000000);
    MENUIMG->set_pixel(50, 1, 0xFFFFFFFF);
    MENUIMG->set_pixel(51, 1, 0x80FFFFFF);
    MAINTAINMENU(true);
    EXPECT_EQ(drawn(50, 601), Pixel{0xFFFFFFFF});
    EXPECT_EQ(drawn(52, 601), normal);
    const std::uint32_t red = drawn(51, 601).value >> 16 & 0xFF;
    EXPECT_EQ(red, (0xFFu * 0x80 + 0x32u * 0x7F + 127) / 255);
}

TEST_F(MenuBar, AForcedCallTakesNoNoteOfTheMouse) {
    maintain_after(mouse_at(60, 620));
    window.play({mouse_at(60, 300)});
    while (mouse().y != 300)
        read_input();
    MAINTAINMENU(true);
    fill_box(screen(), 0, 600, 191, 647, 0xFF123456);
    MAINTAINMENU(false);
    EXPECT_EQ(cell(1), normal) << "the bar was left since the last call that counts";
}
