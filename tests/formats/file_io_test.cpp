#include "formats/file_io.h"

#include "model/file_status.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

namespace fs = std::filesystem;

namespace {
using Names = std::vector<std::string>;

class FileIo : public testing::Test {
protected:
    FileIo() { reset_file_status(); }

    const Bytes old_content = bytes_of("the old content");
    const Bytes new_content = bytes_of("new");
    TemporaryDirectory directory;
};
} // namespace

TEST_F(FileIo, ReadsAWholeFile) {
    put_file(directory / "file", old_content);
    EXPECT_EQ(read_file(directory / "file"), old_content);
    EXPECT_TRUE(file_exists(directory / "file"));
}

TEST_F(FileIo, ReadsNoMoreThanTheLimit) {
    put_file(directory / "file", old_content);
    EXPECT_EQ(read_file(directory / "file", 3), bytes_of("the"));
}

TEST_F(FileIo, ReadsAnEmptyFileAsNoBytes) {
    put_file(directory / "file", {});
    ASSERT_TRUE(read_file(directory / "file"));
    EXPECT_TRUE(read_file(directory / "file")->empty());
}

TEST_F(FileIo, ReadsThroughLinksAndUnderAnyName) {
    const std::string name = "it's \"a\" name $(x); \xE9\xFF";
    put_file(directory / name, old_content);
    fs::create_symlink(name, directory / "link");
    EXPECT_EQ(read_file(directory / name), old_content);
    EXPECT_EQ(read_file(directory / "link"), old_content);
}

TEST_F(FileIo, FindsNothingWhereNoRegularFileIs) {
    fs::create_directory(directory / "folder");
    fs::create_symlink("nowhere", directory / "dangling");
    fs::create_symlink("loop", directory / "loop");
    for (const std::string& path : {directory / "missing", directory / "folder", directory / "dangling",
                                    directory / "loop", std::string("/dev/zero"), std::string()}) {
        EXPECT_FALSE(read_file(path)) << path;
        EXPECT_FALSE(file_exists(path)) << path;
    }
}

TEST_F(FileIo, NeverWaitsForAPipe) {
    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(read_file(directory / "pipe"));
}

TEST_F(FileIo, UnreadableFileIsNothing) {
    put_file(directory / "file", old_content);
    fs::permissions(directory / "file", fs::perms::none);
    fs::permissions(directory.path(), fs::perms::all);
    EXPECT_EQ(run_as_ordinary_user([&] { return read_file(directory / "file") ? 1 : 0; }), 0);
}

TEST_F(FileIo, SavesANewFileWithTheUsualMode) {
    const mode_t before = ::umask(027);
    EXPECT_EQ(save_file(directory / "file", new_content), SaveOutcome::saved);
    ::umask(before);
    EXPECT_EQ(get_file(directory / "file"), new_content);
    EXPECT_EQ(mode_of(directory / "file"), 0640U);
    EXPECT_EQ(directory.names(), Names{"file"});
}

TEST_F(FileIo, SavesUnderANameInTheCurrentDirectory) {
    const CurrentDirectory inside(directory.path());
    EXPECT_EQ(save_file("file", new_content), SaveOutcome::saved);
    EXPECT_EQ(get_file(directory / "file"), new_content);
}

TEST_F(FileIo, SavingReplacesTheContentAndKeepsTheMode) {
    for (const unsigned mode : {0600U, 0644U, 0755U, 0666U}) {
        put_file(directory / "file", old_content);
        fs::permissions(directory / "file", static_cast<fs::perms>(mode));
        EXPECT_EQ(save_file(directory / "file", new_content), SaveOutcome::saved);
        EXPECT_EQ(get_file(directory / "file"), new_content);
        EXPECT_EQ(mode_of(directory / "file"), mode);
    }
    EXPECT_EQ(directory.names(), Names{"file"});
}

TEST_F(FileIo, SavingFollowsALinkAndLeavesItALink) {
    fs::create_directory(directory / "folder");
    put_file(directory / "folder/file", old_content);
    fs::create_symlink("folder/file", directory / "first");
    fs::create_symlink("first", directory / "second");
    EXPECT_EQ(save_file(directory / "second", new_content), SaveOutcome::saved);
    EXPECT_EQ(get_file(directory / "folder/file"), new_content);
    EXPECT_TRUE(fs::is_symlink(directory / "first") && fs::is_symlink(directory / "second"));
    EXPECT_EQ(directory.names(), (Names{"first", "folder", "second"}));
}

TEST_F(FileIo, SavingThroughADanglingLinkMakesItsTarget) {
    fs::create_symlink("target", directory / "link");
    EXPECT_EQ(save_file(directory / "link", new_content), SaveOutcome::saved);
    EXPECT_EQ(get_file(directory / "target"), new_content);
    EXPECT_TRUE(fs::is_symlink(directory / "link"));
}

TEST_F(FileIo, CannotCreateWhereNoFileCanBe) {
    fs::create_directory(directory / "folder");
    fs::create_symlink("loop", directory / "loop");
    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    const Names before = directory.names();
    for (const std::string& path :
         {directory / "folder", directory / "folder/", directory / "new/", directory / "missing/file",
          directory / "loop", directory / "pipe", std::string(), std::string("/"), directory / std::string(300, 'x')})
        EXPECT_EQ(save_file(path, new_content), SaveOutcome::cannot_create) << path;
    EXPECT_EQ(directory.names(), before);
}

TEST_F(FileIo, CannotCreateInADirectoryThatMayNotBeWritten) {
    put_file(directory / "file", old_content);
    fs::permissions(directory / "file", fs::perms::all);
    fs::permissions(directory.path(), static_cast<fs::perms>(0555));
    EXPECT_EQ(run_as_ordinary_user([&] {
                  const bool refused = save_file(directory / "new", new_content) == SaveOutcome::cannot_create &&
                                       save_file(directory / "file", new_content) == SaveOutcome::cannot_create;
                  return refused ? 0 : 1;
              }),
              0);
    EXPECT_EQ(get_file(directory / "file"), old_content);
}

TEST_F(FileIo, CannotReplaceAFileThatMayNotBeWritten) {
    put_file(directory / "file", old_content);
    fs::permissions(directory / "file", static_cast<fs::perms>(0444));
    fs::permissions(directory.path(), fs::perms::all);
    const auto save = [&] { return save_file(directory / "file", new_content) == SaveOutcome::cannot_create ? 0 : 1; };
    EXPECT_EQ(run_as_ordinary_user(save), 0);
    EXPECT_EQ(get_file(directory / "file"), old_content);
}

TEST_F(FileIo, SaveThatCannotBeFinishedLeavesTheOldFile) {
    put_file(directory / "file", old_content);
    const auto save = [&] { return save_file(directory / "file", Bytes(5000)) == SaveOutcome::write_failed ? 0 : 1; };
    EXPECT_EQ(run_with_file_size_limit(4096, save), 0);
    EXPECT_EQ(get_file(directory / "file"), old_content);
    EXPECT_EQ(directory.names(), Names{"file"});
}

namespace {
enum FullDiskResult { disk_as_expected, disk_wrong, no_private_disk };

// In a mount namespace of its own: a disk of 64 KiB, a small file on it, and a save that needs more than there is.
int save_on_a_full_disk(const std::string& mount_point, const Bytes& old_content) {
    const int spaces = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    if (::unshare(spaces) != 0) return no_private_disk;
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return no_private_disk;
    if (::mount("none", mount_point.c_str(), "tmpfs", 0, "size=64k") != 0) return no_private_disk;
    const std::string path = mount_point + "/file";
    if (save_file(path, old_content) != SaveOutcome::saved) return disk_wrong;
    save_and_report(path, Bytes(1 << 20));
    const auto names = std::distance(fs::directory_iterator(mount_point), fs::directory_iterator());
    const bool right = FILE_ERNUM == file_status::write_error && FILE_ERROR == "Write error" &&
                       read_file(path) == old_content && names == 1;
    return right ? disk_as_expected : disk_wrong;
}
} // namespace

TEST_F(FileIo, FullDiskIsAWriteErrorAndLeavesTheOldFile) {
    const int result = run_in_child([&] { return save_on_a_full_disk(directory.path(), old_content); });
    if (result == no_private_disk) GTEST_SKIP() << "this machine gives tests no file system of their own";
    EXPECT_EQ(result, disk_as_expected);
}

TEST_F(FileIo, ReportsASuccessAndKeepsTheLastErrorText) {
    FILE_ERROR = "an earlier failure";
    save_and_report(directory / "file", new_content);
    EXPECT_EQ(FILE_FILE, directory / "file");
    EXPECT_EQ(FILE_ERNUM, file_status::success);
    EXPECT_EQ(FILE_ERROR, "an earlier failure");

    EXPECT_EQ(load_and_report(directory / "file"), new_content);
    EXPECT_EQ(FILE_ERNUM, file_status::success);
    EXPECT_EQ(FILE_ERROR, "an earlier failure");
}

TEST_F(FileIo, ReportsFailuresUnderTheNameThatWasAsked) {
    EXPECT_FALSE(load_and_report(directory / "missing"));
    EXPECT_EQ(FILE_FILE, directory / "missing");
    EXPECT_EQ(FILE_ERNUM, file_status::not_found);
    EXPECT_EQ(FILE_ERROR, "File not found");

    save_and_report(directory / "no/file", new_content);
    EXPECT_EQ(FILE_FILE, directory / "no/file");
    EXPECT_EQ(FILE_ERNUM, file_status::invalid_name);
    EXPECT_EQ(FILE_ERROR, "Invalid file name");
}
