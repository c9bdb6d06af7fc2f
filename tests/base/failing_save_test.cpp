// Saves that cannot be finished: full disks, errors of the disk, file systems that lack something. The earlier file
// must be whole after each, and nothing may lie beside it.
#include "base/file_io.h"
#include "base/file_status.h"
#include "base/saves.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <filesystem>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/xattr.h>

namespace fs = std::filesystem;

namespace {
using Names = std::vector<std::string>;

class FailingSave : public BothWays {
protected:
    // What a child process's save gives, as a number.
    int save_in_child(const std::function<bool()>& prepare_further, const Bytes& content) const {
        return run_in_child([&] {
            if (!prepare_further() || !prepare(GetParam())) return not_allowed_here;
            return static_cast<int>(save_file(directory / "file", content));
        });
    }

    void expect_the_old_file_alone() const {
        EXPECT_EQ(get_file(directory / "file"), old_content);
        EXPECT_EQ(directory.names(), Names{"file"});
    }

    const Bytes old_content = bytes_of("the old content");
    const Bytes new_content = bytes_of("new");
    TemporaryDirectory directory;
};

constexpr int saved = static_cast<int>(SaveOutcome::saved);
constexpr int not_writable = static_cast<int>(SaveOutcome::not_writable);
constexpr int write_failed = static_cast<int>(SaveOutcome::write_failed);
} // namespace

INSTANTIATE_TEST_SUITE_P(Save, FailingSave, testing::Values(FileSystem::ordinary, FileSystem::without_unnamed_files),
                         way_name);

TEST_P(FailingSave, NothingRefusedIsASuccess) {
    put_file(directory / "file", old_content);
    fs::permissions(directory / "file", static_cast<fs::perms>(0640));
    const int result = save_in_child([] { return true; }, new_content);
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, saved);
    EXPECT_EQ(get_file(directory / "file"), new_content);
    EXPECT_EQ(mode_of(directory / "file"), 0640U);
    EXPECT_EQ(directory.names(), Names{"file"});
}

TEST_P(FailingSave, PastTheSizeLimitLeavesTheOldFile) {
    put_file(directory / "file", old_content);
    const int result = run_with_file_size_limit(4096, [&] {
        if (!prepare(GetParam())) return not_allowed_here;
        return static_cast<int>(save_file(directory / "file", Bytes(5000)));
    });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, write_failed);
    expect_the_old_file_alone();
}

TEST_P(FailingSave, ContentThatDoesNotReachTheDiskLeavesTheOldFile) {
    put_file(directory / "file", old_content);
    const int result = save_in_child([] { return refuse_calls(SYS_fsync, EIO); }, new_content);
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, write_failed);
    expect_the_old_file_alone();
}

// File systems of other systems know no modes, owners and attributes.
TEST_P(FailingSave, ModeOwnerOrAttributesThatCannotBeSetDoNotMatter) {
    for (const int call : {SYS_fchmod, SYS_fchown, SYS_listxattr, SYS_getxattr, SYS_fsetxattr}) {
        put_file(directory / "file", old_content);
        ::setxattr((directory / "file").c_str(), "user.name", "value", 5, 0);
        const int result =
            save_in_child([call] { return refuse_calls(static_cast<unsigned>(call), EPERM); }, new_content);
        SKIP_WHERE_NOT_ALLOWED(result);
        EXPECT_EQ(result, saved) << call;
        EXPECT_EQ(get_file(directory / "file"), new_content);
        EXPECT_EQ(directory.names(), Names{"file"});
    }
}

// It may be one to a file elsewhere, whose name would be replaced by a file.
TEST_P(FailingSave, LinkThatCannotBeReadIsNotTakenForAFile) {
    fs::create_directory(directory / "far");
    put_file(directory / "far/file", old_content);
    fs::create_symlink("far/file", directory / "file");
    for (const int error : {EIO, EACCES}) {
        const int result = save_in_child([error] { return refuse_calls(SYS_readlink, error); }, new_content);
        SKIP_WHERE_NOT_ALLOWED(result);
        EXPECT_EQ(result, error == EIO ? write_failed : not_writable);
        EXPECT_TRUE(fs::is_symlink(directory / "file"));
        EXPECT_EQ(get_file(directory / "far/file"), old_content);
    }
}

TEST_P(FailingSave, CreationThatFailsForTheDisksSakeIsAWriteError) {
    put_file(directory / "file", old_content);
    for (const int error : {ENOSPC, EDQUOT, EIO, EACCES, EROFS}) {
        const bool disk = error == ENOSPC || error == EDQUOT || error == EIO;
        const auto refuse = [error] { return refuse_calls(SYS_openat, error, O_CREAT | (O_TMPFILE & ~O_DIRECTORY)); };
        const int result = save_in_child(refuse, new_content);
        SKIP_WHERE_NOT_ALLOWED(result);
        EXPECT_EQ(result, disk ? write_failed : not_writable) << "error " << error;
        expect_the_old_file_alone();
    }
}

namespace {
enum FullDiskResult { disk_as_expected, disk_wrong };

void write_line(const char* path, const std::string& line) { std::ofstream(path) << line; }

// Becomes the superuser of a user namespace of its own, where an ordinary user may mount.
bool enter_user_namespace() {
    const std::string user = std::to_string(::geteuid()), group = std::to_string(::getegid());
    if (::unshare(CLONE_NEWUSER) != 0) return false;
    write_line("/proc/self/setgroups", "deny");
    write_line("/proc/self/uid_map", "0 " + user + " 1");
    write_line("/proc/self/gid_map", "0 " + group + " 1");
    return ::geteuid() == 0;
}

// Enters a mount namespace of its own and mounts a disk there.
bool mount_disk(const std::string& mount_point, const char* options) {
    if (::geteuid() != 0 && !enter_user_namespace()) return false;
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", mount_point.c_str(), "tmpfs", 0, options) == 0;
}

// A small file on a new disk, then a save for which the disk has no room.
int save_on_a_full_disk(FileSystem kind, const std::string& mount_point, const char* disk, const Bytes& old_content,
                        const Bytes& too_much) {
    if (!mount_disk(mount_point, disk) || !prepare(kind)) return not_allowed_here;
    const std::string path = mount_point + "/file";
    if (save_file(path, old_content) != SaveOutcome::saved) return disk_wrong;
    save_and_report(path, {too_much});
    const auto names = std::distance(fs::directory_iterator(mount_point), fs::directory_iterator());
    const bool right = FILE_ERNUM == file_status::write_error && FILE_ERROR == "Write error" &&
                       read_file(path) == old_content && names == 1;
    return right ? disk_as_expected : disk_wrong;
}
} // namespace

TEST_P(FailingSave, FullDiskIsAWriteErrorAndLeavesTheOldFile) {
    const int result = run_in_child(
        [&] { return save_on_a_full_disk(GetParam(), directory.path(), "size=64k", old_content, Bytes(1 << 20)); });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, disk_as_expected);
}

// The directory and one file are all that this disk can hold.
TEST_P(FailingSave, DiskWithoutRoomForOneMoreFileIsAWriteErrorAndLeavesTheOldFile) {
    const int result = run_in_child([&] {
        return save_on_a_full_disk(GetParam(), directory.path(), "nr_inodes=2", old_content, bytes_of("small"));
    });
    SKIP_WHERE_NOT_ALLOWED(result);
    EXPECT_EQ(result, disk_as_expected);
}
