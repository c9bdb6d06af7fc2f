#include "base/config.h"

#include "support/child_process.h"
#include "support/environment.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

// Places of a test's own for everything that the configuration is looked for in; the current directory is one of them.
class Config : public testing::Test {
protected:
    TemporaryDirectory directory;
    std::string home = directory / "home", appdata = directory / "appdata", current = directory / "current",
                program = directory / "program";
    std::string earlier_directory = current_directory();
    EnvironmentVariable home_variable{"HOME"}, appdata_variable{"APPDATA"};

    void SetUp() override {
        for (const std::string& path : {home, appdata, current, program})
            std::filesystem::create_directory(path);
        home_variable.set(home);
        appdata_variable.set(appdata);
        ASSERT_TRUE(change_directory(current));
    }
    void TearDown() override { change_directory(earlier_directory); }

    static void put_config(const std::string& path, const std::string& text) {
        std::filesystem::create_directories(path);
        write_text(path + "/karosmit.cfg", text);
    }
    void load() { LOADCONFIG(program + "/karosmit"); }
    void load_text(const std::string& text) {
        put_config(current, text);
        load();
    }
};

} // namespace

TEST_F(Config, ProgramDirectoryGoesUpToTheLastSlashOfTheInvocationPath) {
    LOADCONFIG("build/release/karosmit");
    EXPECT_EQ(PROGDIR, "build/release/");
    LOADCONFIG("karosmit");
    EXPECT_EQ(PROGDIR, "");
    LOADCONFIG("/karosmit");
    EXPECT_EQ(PROGDIR, "/");
}

TEST_F(Config, WithoutAFileTheWorkDirectoryIsTheCurrentOneAndThereAreNoEntries) {
    load();
    EXPECT_EQ(WORKDIR, current + "/");
    EXPECT_EQ(CONFIGS, 0);
    EXPECT_EQ(CONFIG("vorpack"), "");
}

TEST_F(Config, TheFirstPlaceThatHasTheFileWinsInOrderOfPreference) {
    put_config(program, "a=program");
    load();
    EXPECT_EQ(CONFIG("a"), "program");
    EXPECT_EQ(WORKDIR, program + "/");

    put_config(current, "a=current");
    load();
    EXPECT_EQ(CONFIG("a"), "current");

    put_config(home + "/.karosmit", "a=hidden");
    load();
    EXPECT_EQ(CONFIG("a"), "hidden");

    put_config(appdata + "/karosmit", "a=appdata");
    load();
    EXPECT_EQ(CONFIG("a"), "appdata");

    put_config(home + "/karosmit", "a=home");
    load();
    EXPECT_EQ(CONFIG("a"), "home");
    EXPECT_EQ(WORKDIR, home + "/karosmit/");
}

TEST_F(Config, AnUnsetVariableCountsAsTheEmptyText) {
    home_variable.unset();
    appdata_variable.unset();
    load_text("a=current");
    EXPECT_EQ(CONFIG("a"), "current");
}

TEST_F(Config, AWorkDirectoryBesideAProgramInvokedByARelativePathStaysTheSamePlace) {
    std::filesystem::create_directory(current + "/tools");
    put_config(current + "/tools", "a=b");
    LOADCONFIG("tools/karosmit");
    EXPECT_EQ(WORKDIR, current + "/tools/");
}

TEST_F(Config, KeysAreFoundWhateverTheirCaseAndBlanksAroundTheEqualsSignDoNotCount) {
    load_text("  Imagick = convert  \n");
    EXPECT_EQ(CONFIG("imagick"), "convert");
    EXPECT_EQ(CONFIG("IMAGICK"), "convert");
    EXPECT_EQ(CONFIG_ID[1], "Imagick");
}

TEST_F(Config, EverythingAfterTheFirstEqualsSignIsTheValue) {
    load_text("key=a=b ; no comment\n");
    EXPECT_EQ(CONFIG("key"), "a=b ; no comment");
}

TEST_F(Config, OfTwoLinesWithOneKeyTheFirstIsFoundAndBothAreEntries) {
    load_text("dirlink=one\nDIRLINK=two\n");
    EXPECT_EQ(CONFIG("dirlink"), "one");
    EXPECT_EQ(CONFIGS, 2);
    EXPECT_EQ(CONFIG_VALUE[2], "two");
}

TEST_F(Config, CommentsEmptyLinesAndLinesWithoutAnEqualsSignAreSkipped) {
    load_text("; a=1\n  # b=2\n\n   \nno equals sign\nc=3\r\n");
    EXPECT_EQ(CONFIGS, 1);
    EXPECT_EQ(CONFIG("c"), "3");
}

TEST_F(Config, TabsAreNotTrimmed) {
    load_text("\ta\t=\tb\t\n");
    EXPECT_EQ(CONFIG_ID[1], "\ta\t");
    EXPECT_EQ(CONFIG_VALUE[1], "\tb\t");
}

TEST_F(Config, ALineOfAnEqualsSignAndAValueHasAnEmptyKey) {
    load_text("=x\n");
    EXPECT_EQ(CONFIGS, 1);
    EXPECT_EQ(CONFIG(""), "x");
}

// ODDITY config-stops-at-101
TEST_F(Config, The101stEntryEndsTheReadingAndIsNeverLookedUp) {
    std::string text;
    for (int i = 1; i <= 101; ++i)
        text += "key" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    load_text(text + "key50=again\n");
    EXPECT_EQ(CONFIGS, 100);
    EXPECT_EQ(CONFIG("key100"), "100");
    EXPECT_EQ(CONFIG("key101"), "");
}

TEST_F(Config, ADirectoryOfTheFilesNameIsNoConfiguration) {
    std::filesystem::create_directories(home + "/karosmit/karosmit.cfg");
    load_text("a=current");
    EXPECT_EQ(CONFIG("a"), "current");
}

TEST_F(Config, AFileThatCannotBeOpenedGivesNoEntries) {
    put_config(current, "a=b");
    std::filesystem::permissions(directory.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(current + "/karosmit.cfg", std::filesystem::perms::none);
    EXPECT_EQ(run_as_ordinary_user([&] {
                  load();
                  return WORKDIR == current + "/" && CONFIGS == 0 ? 0 : 1;
              }),
              0);
}

TEST_F(Config, OfAFileThatIsMostlyAHoleOnlySoMuchIsRead) {
    put_config(current, "a=b\n");
    std::filesystem::resize_file(current + "/karosmit.cfg", std::uintmax_t{1} << 40);
    load();
    EXPECT_EQ(CONFIG("a"), "b");
}

TEST_F(Config, AMegabyteOfTextOrOfZerosIsRead) {
    load_text(std::string(1 << 20, 'x') + "\na=b\n");
    EXPECT_EQ(CONFIG("a"), "b");
    load_text(std::string(1 << 20, '\0'));
    EXPECT_EQ(CONFIGS, 0);
}

TEST_F(Config, EveryLoadStartsAnew) {
    load_text("a=1\nb=2\n");
    load_text("c=3\n");
    EXPECT_EQ(CONFIGS, 1);
    EXPECT_EQ(CONFIG("a"), "");
}

TEST_F(Config, ADirectoryThatCannotBeEnteredLeavesTheCurrentOne) {
    std::string reason;
    EXPECT_FALSE(change_directory("nowhere", &reason));
    EXPECT_EQ(reason, "No such file or directory");
    EXPECT_EQ(current_directory(), current);
    EXPECT_TRUE(change_directory(".", &reason));
    EXPECT_EQ(reason, "");
}

TEST_F(Config, ATildeAtTheFrontIsTheHomeDirectory) {
    const EnvironmentVariable variable("HOME");
    variable.set("/home/me");
    EXPECT_EQ(with_home("~/cars"), "/home/me/cars");
    EXPECT_EQ(with_home("~/"), "/home/me/");
    EXPECT_EQ(with_home("~"), "/home/me");
    for (const std::string path : {"~you/cars", "a/~/b", "/~/", "", " ~/"})
        EXPECT_EQ(with_home(path), path);
    variable.unset();
    EXPECT_EQ(with_home("~/cars"), "~/cars");
}
