// A program that is killed while it saves must leave the whole old file or the whole new one.
#include "formats/file_io.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace {
constexpr int kills = 200;
constexpr int longest_run_in_microseconds = 20'000;

[[noreturn]] void save_for_ever(const std::string& path, const Bytes& one, const Bytes& other) {
    for (;;) {
        if (save_file(path, one) != SaveOutcome::saved || save_file(path, other) != SaveOutcome::saved) ::_exit(1);
    }
}

// Lets a saving process run for a moment and kills it.
void kill_while_saving(const std::string& path, const Bytes& one, const Bytes& other, int microseconds) {
    const pid_t child = start_child([&]() -> int { save_for_ever(path, one, other); });
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    ::kill(child, SIGKILL);
    ASSERT_EQ(wait_for(child), -1) << "the saving process ended by itself";
}
} // namespace

TEST(KilledSave, LeavesTheWholeOldOrTheWholeNewFile) {
    const TemporaryDirectory directory;
    const std::string path = directory / "stdatest.vsh";
    const Bytes one(300'000, std::byte{1}), other(170'000, std::byte{2});
    put_file(path, one);

    std::mt19937 random(20240229);
    std::uniform_int_distribution<int> moment(0, longest_run_in_microseconds);
    int ended_with_one = 0, ended_with_other = 0;
    for (int i = 0; i < kills; ++i) {
        kill_while_saving(path, one, other, moment(random));
        const Bytes found = get_file(path);
        ASSERT_TRUE(found == one || found == other) << "kill " << i << " left " << found.size() << " bytes";
        found == one ? ++ended_with_one : ++ended_with_other;
        for (const std::string& name : directory.names()) {
            if (name == "stdatest.vsh") continue;
            ASSERT_EQ(name, ".karosmit-save");
            const Bytes helper = get_file(directory / name);
            ASSERT_TRUE(helper == one || helper == other) << "kill " << i;
        }
    }
    EXPECT_GT(ended_with_one, 0);
    EXPECT_GT(ended_with_other, 0) << "no process ever came to its second save";
}

TEST(KilledSave, WhatItLeftBehindDoesNotHinderTheNextSave) {
    const TemporaryDirectory directory;
    put_file(directory / ".karosmit-save", bytes_of("left over"));
    EXPECT_EQ(save_file(directory / "file", bytes_of("new")), SaveOutcome::saved);
    EXPECT_EQ(get_file(directory / "file"), bytes_of("new"));
    EXPECT_EQ(directory.names(), std::vector<std::string>{"file"});
}
