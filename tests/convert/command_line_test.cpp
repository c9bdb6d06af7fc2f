#include "convert/command_line.h"

#include "support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

CommandLine read(const std::vector<const char*>& arguments) { return read_command_line(arguments); }

std::string usage_error(const std::vector<const char*>& arguments) {
    try {
        read(arguments);
        return {};
    } catch (const UsageError& error) {
        return error.text;
    }
}

std::vector<std::string> targets(const std::vector<const char*>& arguments) {
    std::vector<std::string> result;
    for (const PlannedConversion& conversion : plan(read(arguments)))
        result.push_back(conversion.refusal.empty() ? conversion.target : "! " + conversion.refusal);
    return result;
}

class Plans : public testing::Test {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};
};

} // namespace

TEST(CommandLines, TakeNamesAndOptionsInAnyOrder) {
    const CommandLine line = read(
        {"a.car", "--model=3", "--to", "OBJ", "--force", "--paint-job", "2", "--jobs", "7", "--", "--b.car", "out"});
    EXPECT_THAT(line.sources, ElementsAre("a.car", "--b.car"));
    EXPECT_EQ(line.target, "out");
    EXPECT_EQ(line.to, FileKind::body);
    EXPECT_EQ(line.options.model, 3);
    EXPECT_EQ(line.options.paint_job, 2);
    EXPECT_TRUE(line.options.force);
    EXPECT_EQ(line.jobs, 7);
    EXPECT_THAT(read({"--check", "a.car", "b.car"}).sources, ElementsAre("a.car", "b.car"));
    EXPECT_EQ(read({"--help"}).action, CommandLine::Action::help);
    EXPECT_EQ(read({"--version"}).action, CommandLine::Action::version);
}

TEST(CommandLines, SayWhatIsWrong) {
    EXPECT_THAT(usage_error({}), HasSubstr("no source"));
    EXPECT_THAT(usage_error({"--check"}), HasSubstr("no source"));
    EXPECT_THAT(usage_error({"a.car"}), HasSubstr("no target"));
    EXPECT_THAT(usage_error({"--colour", "a", "b"}), HasSubstr("--colour"));
    EXPECT_THAT(usage_error({"--model", "5", "a", "b"}), HasSubstr("0 to 4"));
    EXPECT_THAT(usage_error({"--paint-job", "0", "a", "b"}), HasSubstr("1 to 17"));
    EXPECT_THAT(usage_error({"--jobs", "x", "a", "b"}), HasSubstr("--jobs"));
    EXPECT_THAT(usage_error({"--to", "doc", "a", "b"}), HasSubstr("files car vsh folder"));
    EXPECT_THAT(usage_error({"a", "b", "--to"}), HasSubstr("needs a value"));
    EXPECT_THAT(usage_error({"--force=yes", "a", "b"}), HasSubstr("takes no value"));
}

TEST_F(Plans, OneSourceHasTheTargetItself) {
    EXPECT_THAT(targets({"a.vsh", "b/"}), ElementsAre("b/"));
    EXPECT_THAT(targets({"a.car", "cars/abcd"}), ElementsAre("cars/abcd"));
    EXPECT_THAT(targets({"a.res", "b.txt"}), ElementsAre("b.txt"));
}

TEST_F(Plans, OneSourceGoesIntoAFolderThatItCannotBecome) {
    std::filesystem::create_directory("there");
    EXPECT_THAT(targets({"x/a.res", "there"}), ElementsAre("there/a.txt"));
    EXPECT_THAT(targets({"a.res", "new/"}), ElementsAre("new/a.txt"));
    EXPECT_THAT(targets({"--to", "folder", "a.vsh", "there"}), ElementsAre("there/a/"));
}

TEST_F(Plans, ManySourcesTakeTheirCounterpartsIntoTheFolder) {
    EXPECT_THAT(
        targets({"c/brux", "c/tarn.car", "a.vsh", "p/x/", "a.3sh", "a.res", "b.txt", "a.tga", "d.png", "c.bmp", "out"}),
        ElementsAre("out/brux.car", "out/tarn", "out/a/", "out/x.vsh", "out/a.obj", "out/a.txt", "out/b.res",
                    "out/a.png", "out/d.tga", "out/c.png"));
    EXPECT_THAT(targets({"--to", "bmp", "A.TGA", "b.png", "out/"}), ElementsAre("out/A.bmp", "out/b.bmp"));
}

TEST_F(Plans, WhatHasNoTargetSaysSo) {
    EXPECT_THAT(
        targets({"long.car", "longer.car", "a.obj", "a.doc", "out"}),
        ElementsAre("out/long", HasSubstr("four characters, not \"longer\""), HasSubstr("--to"), HasSubstr("--to")));
    EXPECT_THAT(targets({"x/a.res", "y/a.res", "out"}), ElementsAre("out/a.txt", "! has the target of x/a.res"));
}

TEST(Usage, NamesEveryKindAndOption) {
    EXPECT_THAT(std::string(usage_text), HasSubstr(kind_names()));
    for (const std::string option :
         {"--to", "--model", "--paint-job", "--force", "--check", "--jobs", "--help", "--version"})
        EXPECT_THAT(std::string(usage_text), HasSubstr("\n  " + option)) << option;
}
