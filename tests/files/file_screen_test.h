// The Files screen in a directory of its own, played by script.
#pragma once

#include "files/file_screen.h"
#include "model/document.h"

#include "base/config.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "files/file_list.h"
#include "formats/parameter_file.h"
#include "model/items.h"
#include "model/new_car.h"
#include "support/play.h"
#include "support/text_file.h"
#include "widgets/menu_bar.h"
#include "widgets/screen_loop.h"
#include "widgets/widgets.h"

#include <filesystem>

constexpr Modifiers ctrl{.control = true};
constexpr std::uint32_t text_green = 0xFF00B464, success_green = 0xFF00DC64, error_red = 0xFFDC5000;
constexpr std::uint32_t file_grey = 0xFFB4B4B4, file_white = 0xFFF0F0F0;
constexpr std::uint32_t directory_green = 0xFF00FA00, directory_pale = 0xFFC8FAC8;

class FileScreenTest : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        ScriptedTest::SetUp();
        new_car();
        INITDASHITEMS();
        WORKDIR = directory.path() + "/";
    }
    std::string result;
    // Plays the steps on the screen and closes the window.
    void visit(std::vector<ScriptStep> steps, std::uint8_t mode = file_screen_mode::cars) {
        steps.push_back(close_window());
        play(std::move(steps), [&] { result = FILEHANDLING(mode); });
    }

    static ScriptStep ctrl_key(Key pressed) { return key_press(pressed, ctrl); }
    static ScriptStep row_click(int row) { return click(100, 130 + 16 * row + 8); }
    static ScriptStep shows_file(const std::string& text) {
        return look([text] { EXPECT_TRUE(screen_shows(90, 76, text + "  ", text_green)) << text; });
    }
    static ScriptStep shows_status(const std::string& text, std::uint32_t colour) {
        return look([=] {
            const std::string line = text + std::string(36 - text.size(), ' ');
            EXPECT_TRUE(screen_shows(650, 150, line, colour)) << text;
        });
    }
    static ScriptStep shows_row(int row, const std::string& text, std::uint32_t colour) {
        return look([=] { EXPECT_TRUE(screen_shows(50, 130 + 16 * row, text + " ", colour)) << text; });
    }
    static ScriptStep shows_nothing_in_status() {
        return look([] {
            for (int y = 150; y < 198; ++y)
                for (int x = 650; x < 938; ++x)
                    ASSERT_EQ(drawn(x, y), Pixel{0xFF32141E}) << x << "," << y;
        });
    }

    static void put_car(const std::string& file, const std::string& name) {
        ParameterFile car;
        car.name = name;
        put_file(file, encode_parameter_file(car));
    }
    static void put_numbered_files(int count) {
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(100 + i);
            write_text("f" + number + ".res", "");
        }
    }
};
