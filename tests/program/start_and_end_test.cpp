#include "program/program_test.h"

#include <chrono>
#include <thread>

#include <algorithm>
#include <csignal>

namespace {

using StartAndEnd = ProgramTest;

constexpr std::uint32_t menu_cell_of_this_screen = 0xFF280A14, menu_cell_of_another = 0xFF32141E;

// In a cell's top left corner, beside the icon.
constexpr int cell_pixel_y = 601;
constexpr int cell_pixel_x(int cell) { return cell * 48 + 1; }

TEST_F(StartAndEnd, AFreshStartShowsTheFilesScreenWithTheMenuBar) {
    start();
    EXPECT_TRUE(window->wait_for_pixel(cell_pixel_x(0), cell_pixel_y, menu_cell_of_this_screen));
    for (int cell = 1; cell < 4; ++cell)
        EXPECT_EQ(window->pixel(cell_pixel_x(cell), cell_pixel_y), menu_cell_of_another);
    EXPECT_EQ(window->pixel(959, 647), colour::background);
    EXPECT_EQ(window->size(), (std::pair{960, 648}));
}

TEST_F(StartAndEnd, TheIconsAreDrawnInTheMenuBar) {
    start();
    ASSERT_TRUE(window->wait_for_pixel(cell_pixel_x(0), cell_pixel_y, menu_cell_of_this_screen));
    for (int cell = 0; cell < 4; ++cell) {
        int drawn = 0;
        for (int y = 604; y < 644; y += 4)
            for (int x = 4; x < 44; x += 4) {
                const std::uint32_t colour = window->pixel(cell * 48 + x, y);
                drawn += colour != menu_cell_of_this_screen && colour != menu_cell_of_another ? 1 : 0;
            }
        EXPECT_GT(drawn, 5) << cell;
    }
}

TEST_F(StartAndEnd, TheWindowBearsTheProgramsNameClassAndIcon) {
    start();
    EXPECT_THAT(window->title(), testing::StartsWith("Karosmit 1.0.4"));
    EXPECT_EQ(window->window_class(), (std::pair<std::string, std::string>{"karosmit", "karosmit"}));
    EXPECT_TRUE(wait_until([&] { return window->has_icon(); }));
}

TEST_F(StartAndEnd, EscapeEndsTheProgramNormallyFromEveryScreen) {
    const std::string titles[] = {"= FILES =", "= 3D EDITOR =", "= DASH MANAGER =", "= PHYSICAL PARAMETERS ="};
    for (int cell = 0; cell < 4; ++cell) {
        start();
        window->click(cell * 48 + 24, 620);
        ASSERT_TRUE(screen_becomes(titles[cell]));
        window->key("Escape");
        EXPECT_EQ(program->wait_for_end(), 0) << cell;
        EXPECT_EQ(program->error_output(), "");
    }
}

TEST_F(StartAndEnd, TheCloseButtonEndsTheProgramNormallyFromEveryScreen) {
    const std::string titles[] = {"= FILES =", "= 3D EDITOR =", "= DASH MANAGER =", "= PHYSICAL PARAMETERS ="};
    for (int cell = 0; cell < 4; ++cell) {
        start();
        window->click(cell * 48 + 24, 620);
        ASSERT_TRUE(screen_becomes(titles[cell]));
        window->ask_to_close();
        EXPECT_EQ(program->wait_for_end(), 0) << cell;
    }
}

TEST_F(StartAndEnd, TheCloseButtonEndsTheProgramWhileAMouseButtonIsHeld) {
    start();
    window->move(700, 120); // on the button that waits for the release
    window->press();
    std::this_thread::sleep_for(Milliseconds{300});
    window->ask_to_close();
    EXPECT_EQ(program->wait_for_end(), 0);
    window->release();
}

TEST_F(StartAndEnd, SignalsEndTheProgramNormally) {
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        start();
        program->send_signal(signal);
        EXPECT_EQ(program->wait_for_end(), 0) << signal;
        EXPECT_EQ(program->error_output(), "");
    }
}

// As under nohup: what a program finds ignored it leaves ignored.
TEST_F(StartAndEnd, ASignalThatWasIgnoredAtTheStartStaysIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    start();
    std::signal(SIGHUP, SIG_DFL);
    program->send_signal(SIGHUP);
    program->send_signal(SIGHUP);
    EXPECT_EQ(program->wait_for_end(Milliseconds{300}), std::nullopt);
    program->send_signal(SIGTERM);
    EXPECT_EQ(program->wait_for_end(), 0);
}

TEST_F(StartAndEnd, AnUntouchedProgramDoesNotWakeUpOnAnyScreen) {
    start();
    const std::string titles[] = {"= FILES =", "= 3D EDITOR =", "= DASH MANAGER =", "= PHYSICAL PARAMETERS ="};
    for (int cell = 0; cell < 4; ++cell) {
        window->click(cell * 48 + 24, 620);
        ASSERT_TRUE(screen_becomes(titles[cell]));
        std::this_thread::sleep_for(Milliseconds{1000});
        const long sleeps = program->sleeps();
        const double used = program->processor_time();
        std::this_thread::sleep_for(Milliseconds{1000});
        EXPECT_EQ(program->sleeps(), sleeps) << titles[cell];
        EXPECT_EQ(program->processor_time(), used) << titles[cell];
    }
}

void expect_one_line(const std::string& text) {
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    EXPECT_EQ(text.back(), '\n');
}

TEST_F(StartAndEnd, WithoutADisplayItSaysSoInOneLine) {
    start_with({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", ""}, {"XDG_RUNTIME_DIR", ""}});
    EXPECT_EQ(program->wait_for_end(), 1);
    expect_one_line(program->error_output());
}

TEST_F(StartAndEnd, WithADisplayThatIsNotThereItSaysSoInOneLine) {
    start_with({{"DISPLAY", ":7654"}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", ""}});
    EXPECT_EQ(program->wait_for_end(), 1);
    expect_one_line(program->error_output());
}

TEST_F(StartAndEnd, ADriverThatAPersonAskedForIsTaken) {
    start_with({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", "dummy"}});
    EXPECT_EQ(program->wait_for_end(Milliseconds{1500}), std::nullopt) << program->error_output();
    program->send_signal(SIGTERM);
    EXPECT_EQ(program->wait_for_end(), 0);
}

} // namespace
