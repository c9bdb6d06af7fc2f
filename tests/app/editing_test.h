// Visits of the whole program by script, with the sample cars at hand.
#pragma once

#include "app/program.h"
#include "model/car.h"
#include "model/document.h"
#include "model/parameters.h"
#include "support/environment.h"
#include "support/play.h"
#include "support/temporary_directory.h"
#include "widgets/menu_bar.h"
#include "widgets/strip.h"

#include <filesystem>
#include <string>
#include <vector>

class EditingTest : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};
    EnvironmentVariable home{"HOME"}, appdata{"APPDATA"};

    void SetUp() override {
        ScriptedTest::SetUp();
        home.set(directory / "home");
        appdata.unset();
        for (const auto& entry : std::filesystem::directory_iterator(KAROSMIT_DATA_DIR "garage"))
            std::filesystem::copy_file(entry.path(), entry.path().filename());
        start();
    }

    // After reset_program(): a screen as at the beginning of a test.
    static void SetUpWindow() {
        std::string error;
        ASSERT_TRUE(open_screen(error)) << error;
    }
    static void start() {
        reset_menu_bar();
        std::string error;
        ASSERT_TRUE(start_up(KAROSMIT_DATA_DIR "karosmit", error)) << error;
    }
    // Plays the steps; the next visit goes on with the screen that they end on.
    void visit(const std::vector<ScriptStep>& steps) {
        std::uint8_t last = CURMENU;
        play(steps + std::vector<ScriptStep>{look([&] { last = CURMENU; }), close_window()}, run_screens);
        CURMENU = last;
    }
};

inline ScriptStep control(Key pressed) { return key_press(pressed, {.control = true}); }
inline const ScriptStep undo_step = control(Key::z), redo_step = control(Key::y);
inline ScriptStep to_screen(int number) { return click(number * menu_cell + 10, 620); }
// What loads or saves a car on the Files screen, whatever stood in the field.
inline std::vector<ScriptStep> in_file_field(const std::string& name) {
    std::vector<ScriptStep> steps{key_press(Key::end)};
    for (int k = 0; k < 12; ++k)
        steps.push_back(key_press(Key::backspace));
    steps.push_back(typed(name));
    return steps;
}
inline std::vector<ScriptStep> load(const std::string& name) {
    return in_file_field(name) + std::vector<ScriptStep>{control(Key::l)};
}
inline std::vector<ScriptStep> save(const std::string& name) {
    return in_file_field(name) + std::vector<ScriptStep>{control(Key::s)};
}
// On the parameter screen: the brakes.
inline std::vector<ScriptStep> type_brakes(const std::string& digits) {
    std::vector<ScriptStep> steps{click(200, 134)};
    for (int k = 0; k < 5; ++k)
        steps.push_back(key_press(Key::backspace));
    return steps + std::vector<ScriptStep>{typed(digits), key_press(Key::enter)};
}
constexpr int brakes_offset = 4;
