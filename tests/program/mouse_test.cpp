#include "program/program_test.h"

#include <vector>

namespace {

using Mouse = ProgramTest;

constexpr std::uint32_t menu_cell_under_mouse = 0xFF3C1E28, black = 0xFF000000;

const std::string titles[] = {"= FILES =", "= 3D EDITOR =", "= DASH MANAGER =", "= PHYSICAL PARAMETERS ="};

TEST_F(Mouse, EveryMenuCellSwitchesToItsScreen) {
    start();
    for (const int cell : {1, 2, 3, 0, 3, 2, 1, 0}) {
        window->click(cell * 48 + 24, 620);
        EXPECT_TRUE(screen_becomes(titles[cell])) << cell;
    }
}

TEST_F(Mouse, TheCellUnderThePointerIsLit) {
    start();
    window->move(2 * 48 + 24, 640);
    EXPECT_TRUE(window->wait_for_pixel(2 * 48 + 1, 601, menu_cell_under_mouse));
    window->move(500, 620);
    EXPECT_TRUE(window->wait_for_pixel(2 * 48 + 1, 601, colour::background));
}

TEST_F(Mouse, TheRightButtonDoesNotSwitch) {
    start();
    window->click(1 * 48 + 24, 620, 3);
    window->click(2 * 48 + 24, 620);
    EXPECT_TRUE(screen_becomes(titles[2]));
    window->click(1 * 48 + 24, 620, 3);
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);
}

TEST_F(Mouse, AFastClickOnABusyProgramIsNotLost) {
    start();
    {
        const Busy busy(*program);
        window->click(3 * 48 + 24, 620);
        window->move(500, 300);
    }
    EXPECT_TRUE(screen_becomes(titles[3]));
    {
        const Busy busy(*program);
        window->click(2 * 48 + 24, 620);
        window->click(1 * 48 + 24, 620);
    }
    EXPECT_TRUE(screen_becomes(titles[1])) << "the second click came last";
}

TEST_F(Mouse, AKeyBeforeAClickReachesTheScreenThatItWasMeantFor) {
    start();
    {
        const Busy busy(*program);
        window->type("abc");
        window->click(3 * 48 + 24, 620);
        window->key("Escape");
    }
    EXPECT_EQ(program->wait_for_end(), 0);
}

TEST_F(Mouse, TheWheelScrollsTheList) {
    for (int i = 0; i < 60; ++i)
        make_file("f" + std::to_string(10 + i) + ".obj", "");
    start();
    window->click(700, 125); // the toggle shows files instead of cars
    const auto row_shows = [&](int row, const std::string& text) {
        return window->wait_for_text(50, 130 + 16 * row, text, colour::label);
    };
    ASSERT_TRUE(row_shows(1, "f10.obj"));
    window->wheel(300, 560, -3);
    EXPECT_TRUE(row_shows(0, "f12.obj"));
    window->wheel(300, 560, 1);
    EXPECT_TRUE(row_shows(0, "f11.obj"));
}

struct Sized {
    int width, height;   // of the window
    int left, top, size; // of the picture in it; size in 960ths of its width
};
class MouseInWindowOf : public Mouse, public testing::WithParamInterface<Sized> {
protected:
    static int across(int x) { return GetParam().left + x * GetParam().size / 960; }
    static int down(int y) { return GetParam().top + y * GetParam().size / 960; }
};

TEST_P(MouseInWindowOf, ThePointerIsMappedBack) {
    start();
    window->resize(GetParam().width, GetParam().height);
    // Centres of large areas of one colour: the menu cell that the pointer lights, without its icon's pixels.
    const auto lit = [&](int cell) {
        return window->wait_for_pixel(across(cell * 48 + 2), down(603), menu_cell_under_mouse);
    };
    window->move(across(2 * 48 + 24), down(630));
    EXPECT_TRUE(lit(2));
    window->move(across(3 * 48 + 24), down(644));
    EXPECT_TRUE(lit(3));
    window->click(across(1 * 48 + 24), down(620));
    // Back at its own size the text can be read.
    window->resize(960, 648);
    EXPECT_TRUE(screen_becomes(titles[1]));
}

TEST_P(MouseInWindowOf, TheBordersAreBlackAndOutside) {
    start();
    window->resize(GetParam().width, GetParam().height);
    if (GetParam().top == 0) return;
    EXPECT_TRUE(window->wait_for_pixel(GetParam().width / 2, GetParam().top / 2, black));
    window->move(across(2 * 48 + 24), down(630));
    ASSERT_TRUE(window->wait_for_pixel(across(2 * 48 + 2), down(603), menu_cell_under_mouse));
    window->click(across(1 * 48 + 24), GetParam().height - 2);
    EXPECT_TRUE(window->wait_for_pixel(across(2 * 48 + 2), down(603), colour::background)) << "the pointer has left";
    window->resize(960, 648);
    EXPECT_TRUE(screen_becomes(titles[0]));
}

INSTANTIATE_TEST_SUITE_P(AnySize, MouseInWindowOf,
                         testing::Values(Sized{960, 648, 0, 0, 960}, Sized{1920, 1296, 0, 0, 1920},
                                         Sized{1000, 900, 20, 126, 960}, Sized{500, 400, 0, 31, 500},
                                         Sized{1440, 1200, 0, 114, 1440}),
                         [](const testing::TestParamInfo<Sized>& tested) {
                             return std::to_string(tested.param.width) + "x" + std::to_string(tested.param.height);
                         });

TEST_F(Mouse, AWindowOfTwiceTheSizeShowsEveryPixelTwice) {
    start();
    std::vector<std::uint32_t> before;
    for (int x = 16; x < 90; ++x)
        before.push_back(window->pixel(x, 23));
    window->resize(1920, 1296);
    ASSERT_TRUE(window->wait_for_pixel(1919, 1295, colour::background));
    for (int x = 16; x < 90; ++x) {
        const std::uint32_t expected = before[static_cast<std::size_t>(x - 16)];
        EXPECT_EQ(window->pixel(2 * x, 46), expected);
        EXPECT_EQ(window->pixel(2 * x + 1, 47), expected);
    }
}

TEST_F(Mouse, ThePointerThatLeavesTheWindowIsOutside) {
    start();
    window->move(2 * 48 + 24, 640);
    ASSERT_TRUE(window->wait_for_pixel(2 * 48 + 1, 601, menu_cell_under_mouse));
    window->move(1500, 1000);
    EXPECT_TRUE(window->wait_for_pixel(2 * 48 + 1, 601, colour::background));
    window->move(2 * 48 + 24, 640);
    EXPECT_TRUE(window->wait_for_pixel(2 * 48 + 1, 601, menu_cell_under_mouse)) << "back where it left";
}

} // namespace
