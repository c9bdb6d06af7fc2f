// Reading the current directory: what is kept of it, and in which order.
#include "files/directory.h"

#include "support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

using testing::ElementsAre;

class ReadDirectory : public testing::Test {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        for (const char* name : {"d", "B", "a", "c", "b", "E.txt"})
            std::ofstream(name).put('x');
        std::filesystem::create_directory("Cars");
    }

    static std::vector<std::string> names(const DirectoryContent& content) {
        std::vector<std::string> result;
        for (const DirectoryEntry& entry : content.entries)
            result.push_back(entry.name);
        return result;
    }
};

bool all(std::string_view /*key*/) { return true; }

TEST_F(ReadDirectory, EntriesComeInTheOrderOfTheirNamesWithoutRegardToCase) {
    const DirectoryContent content = read_directory(all);
    EXPECT_THAT(names(content), ElementsAre("a", "B", "b", "c", "Cars", "d", "E.txt"));
    EXPECT_EQ(content.found, 7U);
    EXPECT_TRUE(content.entries[4].directory);
    EXPECT_FALSE(content.entries[4].regular);
    EXPECT_TRUE(content.entries[0].regular);
}

TEST_F(ReadDirectory, OfMoreThanThereIsRoomForTheFirstAreKeptAndAllAreCounted) {
    for (std::size_t most = 0; most <= 8; ++most) {
        const DirectoryContent content = read_directory(all, most);
        const std::vector<std::string> sorted = {"a", "B", "b", "c", "Cars", "d", "E.txt"};
        const std::size_t kept = std::min(most, sorted.size());
        EXPECT_EQ(names(content), std::vector(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(kept)));
        EXPECT_EQ(content.found, sorted.size());
    }
}

TEST_F(ReadDirectory, WhatIsNotWantedIsNotCountedButDirectoriesAlwaysAre) {
    const DirectoryContent content = read_directory([](std::string_view key) { return key.ends_with(".txt"); });
    EXPECT_THAT(names(content), ElementsAre("Cars", "E.txt"));
    EXPECT_EQ(content.found, 2U);
    EXPECT_EQ(content.failure, "");
}

} // namespace
