// Cars that no editor wrote: the screen draws them, edits them and keeps what was not edited.
#include "formats/parameter_file.h"
#include "model/document.h"
#include "model/power_gear.h"
#include "params/parameter_screen.h"
#include "params/parameter_test.h"
#include "support/temporary_directory.h"

#include <random>

namespace {

class ParameterBadInput : public ParameterTest {
protected:
    // A visit that touches everything and stores nothing.
    void visit() {
        const auto par = PAR;
        const std::string name = CARNAME, sign = CARSIGNNAME, information = CARINFO;
        CURMENU = screen_number::parameters;
        play({mouse_at(200, 300),
              mouse_at(400, 400),
              key_press(Key::z),
              key_press(Key::right),
              key_press(Key::z),
              click(300, 300, 2),
              click_row(34),
              key_press(Key::backspace),
              typed("x"),
              key_press(Key::escape),
              click_row(35),
              key_press(Key::delete_),
              key_press(Key::escape),
              click_row(1),
              typed("9"),
              key_press(Key::backspace),
              key_press(Key::escape),
              click_row(12),
              typed("9"),
              key_press(Key::escape),
              click(800, 400),
              key_press(Key::end),
              typed("x"),
              key_press(Key::down),
              key_press(Key::backspace),
              key_press(Key::escape),
              close_window()},
             EDITPARAMS);
        EXPECT_EQ(PAR, par);
        EXPECT_EQ(CARNAME, name);
        EXPECT_EQ(CARSIGNNAME, sign);
        EXPECT_EQ(CARINFO, information);
    }
    static std::string every_byte(std::size_t length) {
        std::string text;
        for (std::size_t i = 0; i < length; ++i)
            text += static_cast<char>(i % 255 + 1);
        return text;
    }
};

} // namespace

TEST_F(ParameterBadInput, WhatIsNotEditedIsSavedAsItWasLoaded) {
    std::mt19937 random(21);
    ParameterFile wild{{}, std::string(300, 'W'), every_byte(255), every_byte(1023)};
    for (std::byte& byte : wild.par)
        byte = static_cast<std::byte>(random() & 0xFF);
    ParameterFile all_255{{}, "", std::string(1000, '~'), std::string(1023, ']')};
    all_255.par.fill(std::byte{255});
    for (ParameterFile car : {ParameterFile{}, all_255, wild}) {
        const TemporaryDirectory folder;
        put_file(folder / "before.res", encode_parameter_file(car));
        LOADRES(folder / "before.res");
        visit();
        SAVERES(folder / "after.res");
        // Loading has cut what is too long for any car.
        car.name = car.name.substr(0, 255);
        car.sign_name = car.sign_name.substr(0, 255);
        EXPECT_EQ(get_file(folder / "after.res"), encode_parameter_file(car));
    }
}

TEST_F(ParameterBadInput, OfAWildCarOnlyTheEditedValueChangesInTheFile) {
    ParameterFile car{{}, std::string(255, 'W'), "\x1B\r", std::string(1023, 'x')};
    car.par.fill(std::byte{255});
    const TemporaryDirectory folder;
    put_file(folder / "before.res", encode_parameter_file(car));
    LOADRES(folder / "before.res");
    play({click_row(4), key_press(Key::backspace), key_press(Key::enter), close_window()}, EDITPARAMS);
    SAVERES(folder / "after.res");
    car.par[56] = static_cast<std::byte>(6553 & 0xFF);
    car.par[57] = static_cast<std::byte>(6553 >> 8);
    EXPECT_EQ(get_file(folder / "after.res"), encode_parameter_file(car));
}

TEST_F(ParameterBadInput, ParametersAll0) {
    fill_par(0);
    UPDATEPG(false);
    visit();
}

TEST_F(ParameterBadInput, ParametersAll255) {
    fill_par(255);
    UPDATEPG(false);
    visit();
}

TEST_F(ParameterBadInput, RandomParameters) {
    std::mt19937 random(20);
    for (int i = 0; i < 5; ++i) {
        for (std::byte& byte : PAR)
            byte = static_cast<std::byte>(random() & 0xFF);
        UPDATEPG(false);
        visit();
    }
}

TEST_F(ParameterBadInput, NamesLongerThanTheirRows) {
    CARNAME = std::string(255, 'W');
    CARSIGNNAME = std::string(1000, 'W');
    visit();
}

TEST_F(ParameterBadInput, EmptyTexts) {
    CARNAME.clear();
    CARSIGNNAME.clear();
    CARINFO.clear();
    visit();
}

TEST_F(ParameterBadInput, ControlCharactersAndBytesAbove127) {
    CARNAME = every_byte(255);
    CARSIGNNAME = std::string("\x1B\r\n\t", 4);
    CARINFO = every_byte(1023);
    visit();
    EXPECT_TRUE(screen_shows(121, 70, every_byte(21), colour::value));
}

TEST_F(ParameterBadInput, ADescriptionOf1023BytesWithoutABracket) {
    CARINFO = std::string(1023, 'x');
    visit();
    EXPECT_TRUE(screen_shows(750, 365, std::string(23, 'x'), colour::value));
    play({click(800, 400), key_press(Key::enter), close_window()}, [] {
        CURMENU = screen_number::parameters;
        EDITPARAMS();
    });
    EXPECT_EQ(CARINFO, std::string(23, 'x') + "]");
}

TEST_F(ParameterBadInput, ADescriptionOfNothingButBrackets) {
    CARINFO = std::string(1023, ']');
    visit();
}

TEST_F(ParameterBadInput, WildMousePlaces) {
    std::vector<ScriptStep> steps;
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i) {
        const int x = static_cast<int>(random() % 962) - 1, y = static_cast<int>(random() % 600) - 1;
        const int button = static_cast<int>(random() % 2) + 1;
        steps.push_back(at_once({press(x, y, button), mouse_at(x + 9, y), release(x + 9, y, button)}));
        if (i % 7 == 0) steps.push_back(key_press(Key::enter));
    }
    steps.push_back(close_window());
    const auto before = PAR;
    play(steps, EDITPARAMS);
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_NE(PAR, before); // curve, markers and mass
    for (std::size_t at = 0; at < PAR.size(); ++at) {
        const bool by_mouse = (at >= 2 && at <= 13) || (at >= 58 && at <= 161);
        EXPECT_TRUE(by_mouse || PAR[at] == before[at]) << at;
    }
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(CARSIGNNAME, "New!");
    EXPECT_EQ(CARINFO, "New car]");
}
