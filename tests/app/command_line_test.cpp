#include "app/command_line.h"

#include <gmock/gmock.h>

namespace {

CommandLine read(const std::vector<std::string>& arguments) { return read_command_line(arguments); }

} // namespace

TEST(CommandLine, WithoutArgumentsNothingIsAsked) {
    const CommandLine line = read({});
    EXPECT_EQ(line.path, "");
    EXPECT_FALSE(line.answer || line.error || line.garage);
}

TEST(CommandLine, TheGarageIsEnteredWhenAsked) {
    EXPECT_TRUE(read({"--garage"}).garage);
    EXPECT_EQ(read({"--garage", "a.car"}).path, "a.car");
    EXPECT_FALSE(read({"--", "--garage"}).garage);
}

TEST(CommandLine, OneFileOrDirectoryIsTaken) {
    EXPECT_EQ(read({"cars/a.car"}).path, "cars/a.car");
    EXPECT_EQ(read({"--", "--version"}).path, "--version");
    EXPECT_EQ(read({"-"}).path, "-");
    EXPECT_THAT(*read({"a", "b"}).error, testing::HasSubstr("b is the second"));
    EXPECT_TRUE(read({"", "b"}).error);
}

TEST(CommandLine, HelpAndVersionAreAnswered) {
    EXPECT_THAT(*read({"--help"}).answer, testing::HasSubstr("Usage: karosmit [--garage] [FILE | DIRECTORY]"));
    EXPECT_EQ(*read({"--version"}).answer, "Karosmit 1.0.4\n");
    EXPECT_TRUE(read({"a", "--help"}).answer);
}

TEST(CommandLine, UnknownOptionsAreToldInOneLine) {
    for (const char* option : {"-x", "--verbose", "-h", "--help=all"}) {
        const CommandLine line = read({option});
        ASSERT_TRUE(line.error) << option;
        EXPECT_THAT(*line.error, testing::HasSubstr(option));
        EXPECT_EQ(line.error->find('\n'), std::string::npos);
    }
}
