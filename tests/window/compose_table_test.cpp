// The small compose table: when it is used, and that it has all that the X library's own has of what can be typed.
#include "window/compose_table.h"

#include "support/environment.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>

namespace {

const char* library_table = "/usr/share/X11/locale/en_US.UTF-8/Compose";

// What the sequences of dead keys and of the Compose key make, of one character " " to "~" only.
std::map<std::string, char> typable_sequences(std::istream&& table) {
    const std::regex row(R"re(^((?:<\w+>\s*)+):\s*"(?:\\(.)|([^"\\]))")re");
    std::map<std::string, char> sequences;
    for (std::string line; std::getline(table, line);) {
        std::smatch parts;
        if (!std::regex_search(line, parts, row)) continue;
        const char made = (parts[2].matched ? parts[2] : parts[3]).str()[0];
        if (made >= ' ' && made <= '~') sequences[std::regex_replace(parts[1].str(), std::regex("\\s+"), "")] = made;
    }
    return sequences;
}

class ComposeTable : public testing::Test {
protected:
    TemporaryDirectory directory;
    EnvironmentVariable home{"HOME"}, variable{"XCOMPOSEFILE"};

    void SetUp() override {
        home.set(directory.path());
        variable.unset();
    }
};

TEST_F(ComposeTable, HasAllThatTheLibrarysOwnHasOfWhatCanBeTyped) {
    std::ifstream file(library_table);
    if (!file) GTEST_SKIP() << "the library's table is not there";
    const auto theirs = typable_sequences(std::move(file));
    auto ours = typable_sequences(std::istringstream(std::string(small_compose_table())));
    EXPECT_GT(theirs.size(), 30U);
    for (const auto& [sequence, character] : theirs) {
        ASSERT_TRUE(ours.contains(sequence)) << sequence;
        EXPECT_EQ(ours[sequence], character) << sequence;
    }
}

TEST_F(ComposeTable, IsNamedWhileItLivesAndCanBeRead) {
    {
        const SmallComposeTable table;
        const char* name = std::getenv("XCOMPOSEFILE");
        ASSERT_NE(name, nullptr);
        for (int i = 0; i < 2; ++i) {
            std::ifstream file(name);
            EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), small_compose_table());
        }
    }
    EXPECT_EQ(std::getenv("XCOMPOSEFILE"), nullptr);
}

TEST_F(ComposeTable, WhatTheUserHasNamedStays) {
    variable.set("/a/table");
    {
        const SmallComposeTable table;
        EXPECT_STREQ(std::getenv("XCOMPOSEFILE"), "/a/table");
    }
    EXPECT_STREQ(std::getenv("XCOMPOSEFILE"), "/a/table");
}

TEST_F(ComposeTable, WhatTheUserHasAtHomeIsLeftToTheLibrary) {
    std::ofstream(directory / ".XCompose") << "include \"%L\"\n";
    const SmallComposeTable table;
    EXPECT_EQ(std::getenv("XCOMPOSEFILE"), nullptr);
}

} // namespace
