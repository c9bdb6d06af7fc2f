#include "base/file_io.h"

#include "base/file_status.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/xattr.h>

namespace fs = std::filesystem;

namespace {
using Names = std::vector<std::string>;

class FileIo : public testing::Test {
protected:
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
    put_file(directory / "file", old_content);
    for (const std::string& path :
         {directory / "missing", directory / "folder", directory / "dangling", directory / "loop", directory / "file/x",
          directory / std::string(300, 'x'), std::string("/dev/zero"), std::string()}) {
        EXPECT_FALSE(read_file(path)) << path;
        EXPECT_FALSE(read_file(path).failed()) << path;
        EXPECT_FALSE(file_exists(path)) << path;
    }
}

TEST_F(FileIo, NeverWaitsForAPipe) {
    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(read_file(directory / "pipe"));
}

TEST_F(FileIo, UnreadableFileIsNothingForAReason) {
    put_file(directory / "file", old_content);
    fs::permissions(directory / "file", fs::perms::none);
    fs::permissions(directory.path(), fs::perms::all);
    EXPECT_EQ(run_as_ordinary_user([&] {
                  const FileContent content = read_file(directory / "file");
                  return !content && content.reason() == "Permission denied" ? 0 : 1;
              }),
              0);
}

TEST_F(FileIo, WhatLiesInAFolderThatMayNotBeSearchedIsNothingForAReason) {
    fs::create_directory(directory / "closed");
    fs::permissions(directory / "closed", fs::perms::none);
    fs::permissions(directory.path(), fs::perms::all);
    EXPECT_EQ(run_as_ordinary_user([&] { return read_file(directory / "closed/file").failed() ? 0 : 1; }), 0);
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

TEST_F(FileIo, SavingKeepsTheOwnerAndTheGroup) {
    if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: only the superuser may give a file another owner";
    put_file(directory / "file", old_content);
    ASSERT_EQ(::chown((directory / "file").c_str(), 1234, 5678), 0);
    ASSERT_EQ(::chmod((directory / "file").c_str(), 06750), 0);
    EXPECT_EQ(save_file(directory / "file", new_content), SaveOutcome::saved);
    struct stat status {};
    ASSERT_EQ(::stat((directory / "file").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234u);
    EXPECT_EQ(status.st_gid, 5678u);
    EXPECT_EQ(status.st_mode & 07777, 06750u);
}

TEST_F(FileIo, WhoMayNotGiveTheFileItsOwnerDoesNotActAsThatOwner) {
    if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: only the superuser can make a file of another owner";
    put_file(directory / "file", old_content);
    ASSERT_EQ(::chown((directory / "file").c_str(), 1234, 5678), 0);
    ASSERT_EQ(::chmod((directory / "file").c_str(), 06777), 0);
    fs::permissions(directory.path(), fs::perms::all);
    const auto save = [&] { return save_file(directory / "file", new_content) == SaveOutcome::saved ? 0 : 1; };
    EXPECT_EQ(run_as_ordinary_user(save), 0);
    EXPECT_EQ(get_file(directory / "file"), new_content);
    EXPECT_EQ(mode_of(directory / "file"), 0777u);
}

TEST_F(FileIo, SavingKeepsTheExtendedAttributes) {
    put_file(directory / "file", old_content);
    const std::string path = directory / "file";
    if (::setxattr(path.c_str(), "user.first", "one", 3, 0) != 0)
        GTEST_SKIP() << "NOT TESTED: the file system knows no extended attributes";
    ASSERT_EQ(::setxattr(path.c_str(), "user.empty", "", 0, 0), 0);
    ASSERT_EQ(::setxattr(path.c_str(), "user.last", "a\0b", 3, 0), 0);
    EXPECT_EQ(save_file(path, new_content), SaveOutcome::saved);
    char value[10] = {};
    EXPECT_EQ(::getxattr(path.c_str(), "user.first", value, sizeof value), 3);
    EXPECT_EQ(std::string(value, 3), "one");
    EXPECT_EQ(::getxattr(path.c_str(), "user.empty", value, sizeof value), 0);
    EXPECT_EQ(::getxattr(path.c_str(), "user.last", value, sizeof value), 3);
    EXPECT_EQ(std::string(value, 3), std::string("a\0b", 3));
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

TEST_F(FileIo, SavesUnderNamesThatAShellWouldMind) {
    for (const std::string name : {"it's \"a\" name", "$(x); `y`", "\xE9\xFF\x80", "-n", "a\nb", " "}) {
        const TemporaryDirectory empty;
        EXPECT_EQ(save_file(empty / name, new_content), SaveOutcome::saved) << name;
        EXPECT_EQ(get_file(empty / name), new_content);
        EXPECT_EQ(empty.names(), Names{name});
    }
}

TEST_F(FileIo, CannotCreateWhereNoFileCanBe) {
    fs::create_directory(directory / "folder");
    fs::create_symlink("loop", directory / "loop");
    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    const Names before = directory.names();
    const std::pair<std::string, std::string> refusals[] = {
        {directory / "folder", "Is a directory"},
        {directory / "folder/", "Is a directory"},
        {directory / "new/", "Is a directory"},
        {directory / "missing/file", "Folder " + directory / "missing" + ": No such file or directory"},
        {directory / "loop", "Too many levels of symbolic links"},
        {directory / "pipe", "Invalid argument"},
        {"", "No such file or directory"},
        {"/", "Is a directory"},
        {directory / std::string(300, 'x'), "File name too long"},
    };
    for (const auto& [path, why] : refusals) {
        std::string reason;
        EXPECT_EQ(save_file(path, new_content, &reason), SaveOutcome::cannot_create) << path;
        EXPECT_EQ(reason, why) << path;
    }
    EXPECT_EQ(directory.names(), before);
}

// The file could be written in place, but not so that nothing can be lost.
TEST_F(FileIo, CannotCreateInADirectoryThatMayNotBeWritten) {
    put_file(directory / "file", old_content);
    fs::permissions(directory / "file", fs::perms::all);
    fs::permissions(directory.path(), static_cast<fs::perms>(0555));
    EXPECT_EQ(run_as_ordinary_user([&] {
                  for (const char* name : {"new", "file"}) {
                      std::string reason;
                      const SaveOutcome outcome = save_file(directory / name, new_content, &reason);
                      if (outcome != SaveOutcome::not_writable) return 1;
                      if (reason != "Folder " + directory.path() + ": Permission denied") return 2;
                  }
                  return 0;
              }),
              0);
    EXPECT_EQ(get_file(directory / "file"), old_content);
}

TEST_F(FileIo, CannotReplaceAFileThatMayNotBeWritten) {
    put_file(directory / "file", old_content);
    fs::permissions(directory / "file", static_cast<fs::perms>(0444));
    fs::permissions(directory.path(), fs::perms::all);
    const auto save = [&] { return save_file(directory / "file", new_content) == SaveOutcome::not_writable ? 0 : 1; };
    EXPECT_EQ(run_as_ordinary_user(save), 0);
    EXPECT_EQ(get_file(directory / "file"), old_content);
}

TEST_F(FileIo, ReportsASuccessAndKeepsTheLastErrorText) {
    FILE_ERROR = "an earlier failure";
    save_and_report(directory / "file", {new_content});
    EXPECT_EQ(FILE_FILE, directory / "file");
    EXPECT_EQ(FILE_ERNUM, file_status::success);
    EXPECT_EQ(FILE_ERROR, "an earlier failure");

    EXPECT_EQ(load_and_report(directory / "file").content, new_content);
    EXPECT_EQ(FILE_ERNUM, file_status::success);
    EXPECT_EQ(FILE_ERROR, "an earlier failure");
}

TEST_F(FileIo, ReportsFailuresUnderTheNameThatWasAsked) {
    EXPECT_FALSE(load_and_report(directory / "missing").content);
    EXPECT_EQ(FILE_FILE, directory / "missing");
    EXPECT_EQ(FILE_ERNUM, file_status::not_found);
    EXPECT_EQ(FILE_ERROR, "File not found");

    save_and_report(directory / "no/file", {new_content});
    EXPECT_EQ(FILE_FILE, directory / "no/file");
    EXPECT_EQ(FILE_REASON, "Folder " + directory / "no" + ": No such file or directory");
    EXPECT_EQ(FILE_ERNUM, file_status::invalid_name);
    EXPECT_EQ(FILE_ERROR, "Invalid file name");
}

TEST_F(FileIo, ReportsWhereTheUserMayNotWrite) {
    const CurrentDirectory inside(directory.path());
    put_file("file", old_content);
    put_file("locked", old_content);
    fs::permissions("file", fs::perms::all);
    fs::permissions("locked", static_cast<fs::perms>(0444));
    fs::permissions(directory.path(), static_cast<fs::perms>(0555));
    EXPECT_EQ(run_as_ordinary_user([&] {
                  const std::pair<const char*, const char*> refusals[] = {{"file", "its folder: Permission denied"},
                                                                          {"locked", "Permission denied"}};
                  for (const auto& [name, reason] : refusals) {
                      const FileOutcome expected{name, file_status::invalid_name, reason, FileRemark::not_writable};
                      if (save_and_report(name, {new_content}) != expected) return 1;
                  }
                  return save_and_report("/dev", {new_content}).remark == FileRemark::none ? 0 : 2;
              }),
              0);
    EXPECT_EQ(get_file("file"), old_content);
    EXPECT_EQ(get_file("locked"), old_content);
}

TEST_F(FileIo, ReadsOnlySoMuchOfAHugeFileAndReportsThat) {
    put_file(directory / "file", old_content);
    fs::resize_file(directory / "file", largest_file);
    EXPECT_EQ(load_and_report(directory / "file").content->size(), largest_file);
    EXPECT_EQ(FILE_ERNUM, file_status::success);

    fs::resize_file(directory / "file", std::uintmax_t{1} << 40);
    const auto content = load_and_report(directory / "file").content;
    EXPECT_EQ(content->size(), largest_file);
    EXPECT_EQ(first_bytes(*content, old_content.size()), old_content);
    EXPECT_EQ(FILE_ERNUM, file_status::cut_to_fit);
    EXPECT_EQ(FILE_ERROR, "Too large, cut to fit");
}
