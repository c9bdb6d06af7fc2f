// A program that is killed while it saves, or that saves beside another one, must leave whole files.
#include "base/file_io.h"
#include "base/saves.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <random>
#include <sys/syscall.h>
#include <thread>

// A killed program loses nothing that it has written: only a power cut asks for flushing, which takes most of the time.
namespace {
bool flushes = true;
}
extern "C" int fsync(int descriptor) { return flushes ? static_cast<int>(::syscall(SYS_fsync, descriptor)) : 0; }

namespace {
using namespace std::chrono;

constexpr int kills = 200;
const std::string temporary_start = ".karosmit-save-";
const Bytes one(300'000, std::byte{1}), other(170'000, std::byte{2});

bool save_both(const std::string& path) {
    return save_file(path, one) == SaveOutcome::saved && save_file(path, other) == SaveOutcome::saved;
}

pid_t start_saving_for_ever(FileSystem kind, const std::string& path) {
    return start_child([=] {
        if (!prepare(kind)) return not_allowed_here;
        while (save_both(path)) {
        }
        return 1;
    });
}

// How long a process takes that starts, saves twice and ends; nothing where that is not allowed.
microseconds time_of_two_saves(FileSystem kind, const std::string& path) {
    const auto start = steady_clock::now();
    const int result = run_in_child([&] { return !prepare(kind) ? not_allowed_here : save_both(path) ? 0 : 1; });
    if (result == not_allowed_here) return {};
    EXPECT_EQ(result, 0);
    return duration_cast<microseconds>(steady_clock::now() - start);
}

// Lets a saving process run for a moment and kills it.
void kill_while_saving(FileSystem kind, const std::string& path, microseconds moment) {
    const pid_t child = start_saving_for_ever(kind, path);
    std::this_thread::sleep_for(moment);
    ::kill(child, SIGKILL);
    ASSERT_EQ(wait_for(child), -1) << "the saving process ended by itself";
}

// Byte by byte this takes longer than the rest of the test.
bool same(const Bytes& a, const Bytes& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

// Removes what a killed process may leave: files with a temporary name, and whole ones where the content came first.
void check_and_remove_temporary_files(FileSystem kind, const TemporaryDirectory& directory) {
    for (const std::string& name : directory.names()) {
        if (name == "stdatest.vsh") continue;
        ASSERT_TRUE(name.starts_with(temporary_start)) << name;
        const Bytes temporary = get_file(directory / name);
        ASSERT_TRUE(kind == FileSystem::without_unnamed_files || same(temporary, one) || same(temporary, other))
            << name;
        std::filesystem::remove(directory / name);
    }
}
} // namespace

class KilledSave : public BothWays {
protected:
    void SetUp() override { flushes = false; }
    void TearDown() override { flushes = true; }
};
INSTANTIATE_TEST_SUITE_P(Save, KilledSave, testing::Values(FileSystem::ordinary, FileSystem::without_unnamed_files),
                         way_name);

TEST_P(KilledSave, LeavesTheWholeOldOrTheWholeNewFile) {
    const TemporaryDirectory directory;
    const std::string path = directory / "stdatest.vsh";
    put_file(path, one);
    const microseconds two_saves = time_of_two_saves(GetParam(), path);
    SKIP_WHERE_NOT_ALLOWED(two_saves.count() == 0 ? not_allowed_here : 0);

    std::mt19937 random(20240229);
    std::uniform_int_distribution<microseconds::rep> moment(0, 3 * two_saves.count());
    int ended_with_one = 0, ended_with_other = 0;
    for (int i = 0; i < kills; ++i) {
        kill_while_saving(GetParam(), path, microseconds(moment(random)));
        const Bytes found = get_file(path);
        ASSERT_TRUE(same(found, one) || same(found, other)) << "kill " << i << " left " << found.size() << " bytes";
        same(found, one) ? ++ended_with_one : ++ended_with_other;
        check_and_remove_temporary_files(GetParam(), directory);
    }
    EXPECT_GT(ended_with_one, 0);
    EXPECT_GT(ended_with_other, 0) << "no process ever came to its second save";
}

TEST_P(KilledSave, TwoProcessesThatSaveIntoOneDirectoryKeepTheirContents) {
    const TemporaryDirectory directory;
    const auto save_often = [&](const std::string& name, std::byte content) {
        return start_child([=, kind = GetParam(), path = directory / name] {
            if (!prepare(kind)) return not_allowed_here;
            for (std::size_t round = 1; round <= 400; ++round) {
                const Bytes mine(round, content);
                if (save_file(path, mine) != SaveOutcome::saved || get_file(path) != mine) return 1;
            }
            return 0;
        });
    };
    const pid_t first = save_often("first", std::byte{1}), second = save_often("second", std::byte{2});
    const int results[] = {wait_for(first), wait_for(second)};
    SKIP_WHERE_NOT_ALLOWED(std::ranges::max(results));
    EXPECT_EQ(results[0], 0);
    EXPECT_EQ(results[1], 0);
    EXPECT_EQ(directory.names(), (std::vector<std::string>{"first", "second"}));
}

// What lies there may belong to anyone: it is neither used nor removed.
TEST_P(KilledSave, WhatLiesUnderATemporaryNameDoesNotHinderTheNextSaveAndStays) {
    constexpr int left_behind = 300;
    const TemporaryDirectory directory;
    const int result = run_in_child([&] {
        const std::string start = directory / temporary_start + std::to_string(::getpid()) + "-";
        for (int i = 1; i <= left_behind; ++i)
            std::filesystem::create_directory(start + std::to_string(i));
        if (!prepare(GetParam())) return not_allowed_here;
        return save_file(directory / "file", bytes_of("new")) == SaveOutcome::saved ? 0 : 1;
    });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(get_file(directory / "file"), bytes_of("new"));
    EXPECT_EQ(directory.names().size(), left_behind + 1U);
}
