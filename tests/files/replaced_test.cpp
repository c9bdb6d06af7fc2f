// A save over a car that this run knows nothing of keeps its files.
#include "files/replaced.h"

#include "base/state_folder.h"
#include "files/transfer.h"
#include "model/parameters.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/environment.h"
#include "support/temporary_directory.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class Replaced : public testing::Test {
protected:
    TemporaryDirectory directory, state;
    CurrentDirectory inside{directory.path()};
    EnvironmentVariable state_home{"XDG_STATE_HOME"};

    Replaced() { state_home.set(state.path()); }

    std::vector<fs::path> sets() const {
        std::vector<fs::path> found;
        std::error_code none;
        for (const auto& entry : fs::directory_iterator(state / "karosmit/replaced", none))
            found.push_back(entry.path());
        std::ranges::sort(found);
        return found;
    }
    static void put_car(const std::string& identifier, const std::string& content) {
        for (const std::string& name :
             {"car" + identifier + ".res", "st" + identifier + ".3sh", "stda" + identifier + ".vsh"})
            put_file(name, bytes_of(content + name));
    }
};

} // namespace

TEST_F(Replaced, TheFilesOfAnotherCarAreKept) {
    put_car("vela", "old ");
    const TransferReport report = transfer(Transfer::save, "vela");
    ASSERT_EQ(sets().size(), 1u);
    const fs::path set = sets().front();
    for (const char* name : {"carvela.res", "stvela.3sh", "stdavela.vsh"})
        EXPECT_EQ(get_file((set / name).string()), bytes_of(std::string("old ") + name));
    EXPECT_FALSE(fs::exists(set / "stdbvela.vsh"));
    EXPECT_EQ(report.note, "vela was replaced; the old files are kept in " + set.string());
    EXPECT_EQ(mode_of(set.string()), 0700u);
    EXPECT_EQ(mode_of((set / "carvela.res").string()), 0600u);
}

TEST_F(Replaced, WhatThisRunLoadedOrSavedIsReplacedWithoutAWord) {
    EXPECT_EQ(transfer(Transfer::save, "mine").note, "");
    EXPECT_EQ(transfer(Transfer::save, "mine").note, "");
    put_file("one.res", get_file("carmine.res"));
    transfer(Transfer::load, "one.res");
    EXPECT_EQ(transfer(Transfer::save, "one.res").note, "");
    EXPECT_TRUE(sets().empty());
}

TEST_F(Replaced, ASingleFileIsKeptToo) {
    put_file("other.car", bytes_of("old"));
    EXPECT_THAT(transfer(Transfer::save, "other.car").note, testing::StartsWith("other.car was replaced; "));
    ASSERT_EQ(sets().size(), 1u);
    EXPECT_EQ(get_file((sets().front() / "other.car").string()), bytes_of("old"));
}

TEST_F(Replaced, WhatWasNotReplacedIsNotKept) {
    fs::create_directory("cartest.res");
    put_file("sttest.3sh", bytes_of("old"));
    fs::create_directory("stdatest.vsh");
    EXPECT_THAT(
        transfer(Transfer::save, "test").note,
        testing::MatchesRegex("Cannot be written: cartest.res: .*; test was replaced; the old files are kept in .*"));
    EXPECT_EQ(sets().size(), 1u) << "one of them was";
    put_file("locked.res", bytes_of("old"));
    fs::permissions("locked.res", fs::perms::none);
    fs::permissions(directory.path(), fs::perms::all);
    fs::permissions(state.path(), fs::perms::all);
    run_as_ordinary_user([] { return transfer(Transfer::save, "locked.res").failed ? 0 : 1; });
    EXPECT_EQ(sets().size(), 1u);
}

TEST_F(Replaced, OnlyTheNewestStay) {
    for (int k = 0; k < most_replaced_sets + 5; ++k) {
        char name[] = "2000-01-01-000000-xxxx";
        std::snprintf(name, sizeof name, "2000-01-01-%06d-abcd", k);
        fs::create_directories(state / "karosmit/replaced/" + name);
    }
    put_car("vela", "old");
    transfer(Transfer::save, "vela");
    ASSERT_EQ(sets().size(), static_cast<std::size_t>(most_replaced_sets));
    EXPECT_EQ(sets().front().filename(), "2000-01-01-000006-abcd");
    EXPECT_TRUE(sets().back().string().ends_with("-vela"));
}

TEST_F(Replaced, WithoutAFolderForThemTheSaveGoesOnAndSaysSo) {
    put_file(state / "karosmit", bytes_of("in the way"));
    put_car("vela", "old");
    const TransferReport report = transfer(Transfer::save, "vela");
    EXPECT_FALSE(report.failed);
    EXPECT_THAT(report.note, testing::StartsWith("vela was replaced; the old files could not be kept: "));
}

TEST_F(Replaced, TheCopiesAreMadeBeforeTheSave) {
    put_car("vela", "old");
    for (int k = 0; k < 3; ++k) {
        set_par_word(4, static_cast<std::uint16_t>(k));
        transfer(Transfer::save, "vela");
    }
    EXPECT_EQ(sets().size(), 1u) << "the second save replaces what this run saved";
}
