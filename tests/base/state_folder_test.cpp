#include "base/state_folder.h"

#include "support/environment.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

namespace {

class StateFolder : public testing::Test {
protected:
    EnvironmentVariable state{"XDG_STATE_HOME"}, home{"HOME"};
    TemporaryDirectory directory;
};

} // namespace

TEST_F(StateFolder, LiesWhereTheEnvironmentSays) {
    home.set("/home/someone");
    state.set("/state");
    EXPECT_EQ(state_folder(), "/state/karosmit");
    for (const char* unset : {"", "relative/folder"}) {
        state.set(unset);
        EXPECT_EQ(state_folder(), "/home/someone/.local/state/karosmit") << unset;
    }
    state.unset();
    EXPECT_EQ(state_folder(), "/home/someone/.local/state/karosmit");
    for (const char* none : {"", "relative"}) {
        home.set(none);
        EXPECT_EQ(state_folder(), "") << none;
    }
    home.unset();
    EXPECT_EQ(state_folder(), "");
}

TEST_F(StateFolder, IsMadeForTheOwnerAlone) {
    std::string reason;
    const std::string folder = directory / "a/b/c";
    EXPECT_TRUE(make_private_folder(folder, reason));
    EXPECT_EQ(mode_of(folder), 0700u);
    EXPECT_EQ(mode_of(directory / "a"), 0700u);
    EXPECT_TRUE(make_private_folder(folder, reason)) << "it is there already";
    EXPECT_EQ(reason, "");
}

TEST_F(StateFolder, ThatCannotBeMadeSaysWhy) {
    std::string reason;
    EXPECT_FALSE(make_private_folder("", reason));
    EXPECT_EQ(reason, "no home folder");
    put_file(directory / "file", {});
    EXPECT_FALSE(make_private_folder(directory / "file/folder", reason));
    EXPECT_TRUE(reason.ends_with(": File exists") || reason.ends_with(": Not a directory")) << reason;
}

TEST_F(StateFolder, IsShownAsPeopleWriteIt) {
    home.set("/home/someone");
    EXPECT_EQ(path_for_people("/home/someone/.local/x"), "~/.local/x");
    EXPECT_EQ(path_for_people("/home/someoneelse/x"), "/home/someoneelse/x");
}
