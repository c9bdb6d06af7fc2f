#include "app/garage.h"

#include "base/config.h"
#include "support/environment.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using testing::HasSubstr;

namespace {

class Garage : public testing::Test {
protected:
    Garage() {
        std::filesystem::create_directory(directory / "samples");
        write_text(directory / "samples/pjobs.cfg", "1 2 3 4\n");
        write_text(directory / "samples/carabcd.res", "car");
        data.set(directory / "data");
        home.set(directory / "home");
    }

    EnvironmentVariable data{"XDG_DATA_HOME"}, home{"HOME"};
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};
};

} // namespace

TEST_F(Garage, LiesWhereThePersonsDataLie) {
    EXPECT_EQ(garage_directory(), directory / "data/karosmit/garage");
    data.set("relative");
    EXPECT_EQ(garage_directory(), directory / "home/.local/share/karosmit/garage");
    data.unset();
    EXPECT_EQ(garage_directory(), directory / "home/.local/share/karosmit/garage");
    home.unset();
    EXPECT_EQ(garage_directory(), "");
    EXPECT_THAT(enter_garage(directory / "samples"), HasSubstr("HOME"));
}

TEST_F(Garage, IsMadeOnceFromTheSamples) {
    EXPECT_EQ(enter_garage(directory / "samples"), "");
    EXPECT_EQ(current_directory(), directory / "data/karosmit/garage");
    EXPECT_EQ(read_text("carabcd.res"), "car");
    write_text("carabcd.res", "my car");
    std::filesystem::remove("pjobs.cfg");
    EXPECT_EQ(enter_garage(directory / "samples"), "");
    EXPECT_EQ(read_text("carabcd.res"), "my car");
    EXPECT_FALSE(std::filesystem::exists("pjobs.cfg"));
}

TEST_F(Garage, ThatCannotBeMadeLeavesNothingAndTheDirectory) {
    EXPECT_THAT(enter_garage(directory / "none"), HasSubstr("No such file"));
    EXPECT_EQ(current_directory(), directory.path());
    EXPECT_TRUE(std::filesystem::is_empty(directory / "data/karosmit"));
    write_text(directory / "home", "a file");
    data.unset();
    EXPECT_NE(enter_garage(directory / "samples"), "");
}
