// Files that belong together are saved as one, and what killed programs leave is removed.
#include "base/file_io.h"
#include "base/saves.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>

namespace {

const Bytes old_content = bytes_of("old"), new_content = bytes_of("new");

class SaveTogether : public BothWays {
protected:
    TemporaryDirectory directory;

    std::vector<FileToSave> four(const Bytes& third) const {
        return {{directory / "a", new_content},
                {directory / "b", new_content},
                {directory / "c", third},
                {directory / "d", new_content}};
    }
    void put_old_files() const {
        for (const char* name : {"a", "b", "c", "d"})
            put_file(directory / name, old_content);
    }
    static bool outcomes_are(const std::vector<SaveResult>& results, const std::vector<SaveOutcome>& wanted) {
        return std::ranges::equal(results, wanted, {}, &SaveResult::outcome);
    }
    // In a process of its own, on the file system at hand.
    int saves(const std::function<bool()>& work) const {
        return run_in_child([&] { return !prepare(GetParam()) ? not_allowed_here : work() ? 0 : 1; });
    }
};
INSTANTIATE_TEST_SUITE_P(Save, SaveTogether, testing::Values(FileSystem::ordinary, FileSystem::without_unnamed_files),
                         way_name);

constexpr auto saved = SaveOutcome::saved, no_name = SaveOutcome::cannot_create, failed = SaveOutcome::write_failed;

} // namespace

TEST_P(SaveTogether, AllTakeTheirNames) {
    put_old_files();
    const int result = saves([&] { return outcomes_are(save_files(four(new_content)), {saved, saved, saved, saved}); });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, 0);
    for (const char* name : {"a", "b", "c", "d"})
        EXPECT_EQ(get_file(directory / name), new_content) << name;
    EXPECT_EQ(directory.names().size(), 4u);
}

TEST_P(SaveTogether, AFileThatCannotBeCreatedDoesNotStopTheOthers) {
    put_old_files();
    std::filesystem::remove(directory / "b");
    std::filesystem::create_directory(directory / "b");
    const int result = saves([&] {
        return outcomes_are(save_files(four(new_content)), {saved, no_name, saved, saved});
    });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, 0);
    for (const char* name : {"a", "c", "d"})
        EXPECT_EQ(get_file(directory / name), new_content) << name;
    EXPECT_EQ(directory.names().size(), 4u);
}

TEST_P(SaveTogether, AFileThatCannotBeWrittenLeavesAllAsTheyWere) {
    put_old_files();
    const Bytes too_much(5000);
    const int result = run_with_file_size_limit(1000, [&] {
        if (!prepare(GetParam())) return not_allowed_here;
        const std::vector<SaveResult> results = save_files(four(too_much));
        const bool told = outcomes_are(results, {failed, failed, failed, failed});
        return told && results[0].reason == results[2].reason && !results[0].reason.empty() ? 0 : 1;
    });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, 0);
    for (const char* name : {"a", "b", "c", "d"})
        EXPECT_EQ(get_file(directory / name), old_content) << name;
    EXPECT_EQ(directory.names().size(), 4u) << "a temporary file stays";
}

TEST_P(SaveTogether, WhatAKilledProgramLeftGoesWithTheNextSave) {
    const pid_t gone = start_child([] { return 0; });
    wait_for(gone);
    const std::string start = ".karosmit-save-", left = start + std::to_string(gone) + "-1";
    const std::vector<std::string> others = {start + "1-1", start + "x-1", start, start + std::to_string(gone),
                                             left + "-folder"};
    put_file(directory / left, new_content);
    for (const std::string& name : others)
        name.ends_with("folder") ? static_cast<void>(std::filesystem::create_directory(directory / name))
                                 : put_file(directory / name, new_content);
    const int result = saves([&] { return save_file(directory / "file", new_content) == saved; });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, 0);
    EXPECT_FALSE(std::filesystem::exists(directory / left));
    for (const std::string& name : others)
        EXPECT_TRUE(std::filesystem::exists(directory / name)) << name;
}

TEST_P(SaveTogether, WhatALivingMakerHoldsStays) {
    const pid_t gone = start_child([] { return 0; });
    wait_for(gone);
    const std::string held = ".karosmit-save-" + std::to_string(gone) + "-1";
    put_file(directory / held, new_content);
    const int file = ::open((directory / held).c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(file, LOCK_EX), 0);
    const auto save = [&] { return save_file(directory / "file", new_content) == saved; };
    const int first = saves(save);
    EXPECT_TRUE(std::filesystem::exists(directory / held));
    ::close(file);
    const int second = saves(save);
    SKIP_WHERE_NOT_ALLOWED(std::max(first, second));
    EXPECT_EQ(first + second, 0);
    EXPECT_FALSE(std::filesystem::exists(directory / held));
}

// A process may have the number of the one that was killed.
TEST_P(SaveTogether, WhatAnEarlierProcessOfThisNumberLeftGoesToo) {
    const int result = saves([&] {
        put_file(directory / ".karosmit-save-" + std::to_string(::getpid()) + "-1", new_content);
        return save_file(directory / "file", new_content) == saved;
    });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(directory.names(), std::vector<std::string>{"file"});
}

TEST(SavePrivately, ANewFileIsTheOwnersAlone) {
    const TemporaryDirectory directory;
    const FileToSave file{directory / "file", new_content, Readers::owner};
    EXPECT_EQ(save_files({&file, 1}).front().outcome, saved);
    EXPECT_EQ(mode_of(directory / "file"), 0600u);
}
