#include "convert/parameter_text.h"
#include "convert/refusal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

using testing::HasSubstr;
using testing::ThrowsMessage;

namespace {

ParameterFile read_back(const std::string& text) {
    ParameterFile car;
    read_parameter_text(text, car);
    return car;
}

std::string random_text(std::mt19937& random, std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i)
        text += static_cast<char>(1 + random() % 255);
    return text;
}

ParameterFile random_car(std::mt19937& random) {
    ParameterFile car;
    for (std::byte& byte : car.par)
        byte = static_cast<std::byte>(random() & 0xFF);
    car.name = random_text(random, random() % 256);
    car.sign_name = random_text(random, random() % 256);
    car.information = random_text(random, random() % 1024);
    return car;
}

int byte_of(const ParameterFile& car, std::size_t at) { return std::to_integer<int>(car.par[at]); }

} // namespace

TEST(ParameterText, EveryCarComesBack) {
    std::mt19937 random(12);
    for (int i = 0; i < 100; ++i) {
        const ParameterFile car = random_car(random);
        ASSERT_EQ(read_back(parameter_text(car)), car);
    }
    for (const int filler : {0, 255}) {
        ParameterFile car;
        car.par.fill(static_cast<std::byte>(filler));
        EXPECT_EQ(read_back(parameter_text(car)), car);
    }
}

TEST(ParameterText, NamesItsValues) {
    ParameterFile car;
    car.par[0] = std::byte{5};
    car.name = "Ard \"X\"";
    car.information = "One]Two]rest";
    const std::string text = parameter_text(car);
    EXPECT_THAT(text, HasSubstr("\ngears 5\n"));
    EXPECT_THAT(text, HasSubstr("\nname \"Ard \\\"X\\\"\"\n"));
    EXPECT_THAT(text, HasSubstr("\ndescription \"One]\"\ndescription \"Two]\"\ndescription \"rest\"\n"));
    EXPECT_THAT(text, HasSubstr("\nknob 0,0 "));
    EXPECT_THAT(text, HasSubstr("\ntorque 8 "));
}

TEST(ParameterText, ValuesLieWhereTheirNamesSay) {
    const ParameterFile car = read_back("knob -1,2\nmass 65535\ntorque 100 1 2 3 255\ntachometer_tip 127 8,9\n"
                                        "speedometer_points 258\nunknown 4 3 2 1\n");
    EXPECT_EQ(byte_of(car, 3), 255);
    EXPECT_EQ(byte_of(car, 28), 255);
    EXPECT_EQ(byte_of(car, 29), 255);
    EXPECT_EQ(byte_of(car, 30), 2);
    EXPECT_EQ(byte_of(car, 58 + 103), 255);
    EXPECT_EQ(byte_of(car, 300), 2);
    EXPECT_EQ(byte_of(car, 301), 1);
    EXPECT_EQ(byte_of(car, 770), 8);
    EXPECT_EQ(byte_of(car, 771), 9);
    EXPECT_EQ(byte_of(car, 772), 4);
    EXPECT_EQ(byte_of(car, 775), 1);
}

TEST(ParameterText, WhatHasNoRowStays) {
    ParameterFile car;
    car.par.fill(std::byte{7});
    car.name = "kept";
    car.information = "replaced]";
    read_parameter_text("mass 1\ndescription \"a]\"\ndescription \"b]\"", car);
    EXPECT_EQ(byte_of(car, 2), 1);
    EXPECT_EQ(byte_of(car, 4), 7);
    EXPECT_EQ(car.name, "kept");
    EXPECT_EQ(car.information, "a]b]");
}

TEST(ParameterText, RefusesWhatItCannotKeepWithItsLine) {
    const std::vector<std::string> bad_rows = {
        "mess 1", "mass", "mass x", "mass 65536", "mass -1", "mass 1 2", "mass 1,2", "gears 256", "knob 1", "knob 1,",
        "knob 32768,0", "torque", "torque 0", "torque 104 1", "torque 103 1 2", "torque -1 1", "name", "name x",
        "name \"a\" 1", "name \"\\x00\"", "\"mass\" 1", "sign \"" + std::string(256, 'a') + "\"",
        "description \"" + std::string(1024, 'b') + "\"",
        // a second time
        "yellow 2", "red 1", "steering_marker 1 1,1", "sign \"b\""};
    for (const std::string& bad : bad_rows)
        EXPECT_THAT([&] { read_back("yellow 1\nred 1 2\nsteering_marker 0 1,1 2,2\nsign \"a\"\n" + bad); },
                    ThrowsMessage<Refusal>(HasSubstr("line 5: ")))
            << bad.substr(0, 40);
    EXPECT_THROW(read_back("# nothing\n"), Refusal);
}

TEST(ParameterText, TextsMayBeAsLongAsTheFileHasRoomFor) {
    const ParameterFile car = read_back("name \"" + std::string(255, 'a') + "\"\ndescription \"" +
                                        std::string(1000, 'b') + "\"\ndescription \"" + std::string(23, 'c') + "\"");
    EXPECT_EQ(car.name.size(), 255u);
    EXPECT_EQ(car.information.size(), 1023u);
}
