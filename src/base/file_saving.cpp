// Saving whole files.
#include "base/descriptor.h"
#include "base/file_io.h"
#include "base/file_status.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr int most_links = 40;

struct SaveResult {
    SaveOutcome outcome = SaveOutcome::saved;
    std::string reason{};
};

std::string in_words(int error) { return std::generic_category().message(error); }

// What a refusal before the first byte means: no place or a defect of the disk is a write error, a missing right is
// told as such, anything else is an unusable name.
SaveResult refused(int error, std::string reason) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EIO: return {SaveOutcome::write_failed, std::move(reason)};
    case EACCES:
    case EPERM:
    case EROFS: return {SaveOutcome::not_writable, std::move(reason)};
    default: return {SaveOutcome::cannot_create, std::move(reason)};
    }
}

SaveResult write_failed(int error) { return {SaveOutcome::write_failed, in_words(error)}; }

// The name behind any symbolic links, whether or not it exists yet, or the error that hid it.
struct Target {
    std::string path{};
    int error = 0;
};

Target behind_links(std::string path) {
    for (int step = 0; step < most_links; ++step) {
        std::string target(PATH_MAX, '\0');
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) return errno == EINVAL || errno == ENOENT ? Target{path} : Target{{}, errno}; // no link
        if (length == PATH_MAX) return {{}, ENAMETOOLONG};
        target.resize(static_cast<std::size_t>(length));
        const std::size_t slash = path.rfind('/');
        path = target.starts_with('/') || slash == std::string::npos ? target : path.substr(0, slash + 1) + target;
    }
    return {{}, ELOOP};
}

std::string directory_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string folder_in_words(const std::string& directory) {
    return directory == "." ? "its folder" : "Folder " + directory;
}

bool write_all(int descriptor, std::span<const std::byte> content) {
    while (!content.empty()) {
        const ssize_t count = ::write(descriptor, content.data(), content.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        content = content.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

// What keeps this user from replacing `target`, which must be absent with a name of its own, or a regular file that may
// be changed; 0 for nothing.
int obstacle_at(const std::string& target) {
    if (target.empty()) return ENOENT;
    if (target.ends_with('/')) return EISDIR;
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return EINVAL;
    return ::access(target.c_str(), W_OK) == 0 ? 0 : errno;
}

constexpr int most_temporary_names = 1000;

// Takes a temporary name in the target's directory by `take`, which creates something under a name that must be free
// and otherwise fails with EEXIST. No two calls of one process use the same name, and no two processes; what a killed
// process of the same number left behind is passed over, never removed. Empty when none could be had, errno says why.
std::string take_temporary_name(const std::string& directory, const std::function<bool(const std::string&)>& take) {
    static std::atomic<unsigned> calls = 0;
    const std::string start = directory + "/.karosmit-save-" + std::to_string(::getpid()) + "-";
    for (int attempt = 0; attempt < most_temporary_names; ++attempt) {
        std::string name = start + std::to_string(++calls);
        if (take(name)) return name;
        if (errno != EEXIST) break;
    }
    return {};
}

// The temporary file becomes the target. A temporary file that cannot is removed; errno says why it cannot.
bool replace(const std::string& temporary, const std::string& target) {
    if (::rename(temporary.c_str(), target.c_str()) == 0) return true;
    const int error = errno;
    ::unlink(temporary.c_str());
    errno = error;
    return false;
}

// Gives the unnamed file its name, by way of a temporary name beside it: a name cannot be given over an old one
// directly.
bool take_name(int unnamed, const std::string& directory, const std::string& target) {
    const std::string self = "/proc/self/fd/" + std::to_string(unnamed);
    const std::string temporary = take_temporary_name(directory, [&](const std::string& name) {
        return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    });
    return !temporary.empty() && replace(temporary, target);
}

void flush_directory(const std::string& directory) {
    const Descriptor handle(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.open()) ::fsync(handle.number());
}

// What the user's mask leaves of the usual mode.
mode_t mode_of_new_files() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// Whether the file got this owner; where only the superuser may give that, it has the group at least.
bool give_owner(int descriptor, const struct stat& old) {
    if (::fchown(descriptor, old.st_uid, old.st_gid) == 0) return true;
    [[maybe_unused]] const int group_given = ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid);
    struct stat now {};
    return ::fstat(descriptor, &now) == 0 && now.st_uid == old.st_uid;
}

void copy_extended_attribute(const std::string& from, int to, const char* name) {
    const ssize_t length = ::getxattr(from.c_str(), name, nullptr, 0);
    if (length < 0) return;
    std::vector<char> value(static_cast<std::size_t>(length));
    if (::getxattr(from.c_str(), name, value.data(), value.size()) != length) return;
    [[maybe_unused]] const int set = ::fsetxattr(to, name, value.data(), value.size(), 0);
}

void copy_extended_attributes(const std::string& from, int to) {
    const ssize_t length = ::listxattr(from.c_str(), nullptr, 0);
    if (length <= 0) return;
    std::vector<char> names(static_cast<std::size_t>(length) + 1); // each ends with a zero, and so does the last
    const ssize_t listed = ::listxattr(from.c_str(), names.data(), names.size() - 1);
    for (ssize_t at = 0; at < listed; at += static_cast<ssize_t>(std::strlen(&names[static_cast<std::size_t>(at)])) + 1)
        copy_extended_attribute(from, to, &names[static_cast<std::size_t>(at)]);
}

// Mode, owner and extended attributes of the file that is replaced, as far as the system allows: one that refuses them
// still holds the bytes. The right to act as the owner does not pass to another one.
void keep_attributes(int descriptor, const std::string& target) {
    struct stat old {};
    if (::stat(target.c_str(), &old) != 0) {
        ::fchmod(descriptor, mode_of_new_files());
        return;
    }
    const bool same_owner = give_owner(descriptor, old);
    copy_extended_attributes(target, descriptor);
    ::fchmod(descriptor, old.st_mode & (same_owner ? 07777 : 01777));
}

SaveResult finish(int descriptor, const std::string& target, std::span<const std::byte> content) {
    if (!write_all(descriptor, content)) return write_failed(errno);
    keep_attributes(descriptor, target);
    return ::fsync(descriptor) == 0 ? SaveResult() : write_failed(errno);
}

// For file systems without unnamed files: a named one beside the target, removed when it cannot be finished.
SaveResult save_by_named_file(const std::string& directory, const std::string& target,
                              std::span<const std::byte> content) {
    int number = -1;
    const std::string temporary = take_temporary_name(directory, [&](const std::string& name) {
        number = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        return number >= 0;
    });
    if (temporary.empty()) return refused(errno, folder_in_words(directory) + ": " + in_words(errno));

    const Descriptor file(number);
    SaveResult result = finish(file.number(), target, content);
    if (result.outcome != SaveOutcome::saved) {
        ::unlink(temporary.c_str());
        return result;
    }
    return replace(temporary, target) ? SaveResult() : write_failed(errno);
}

// Whether the file system could make an unnamed file in the directory; `result` is then that of the saving. One that
// cannot name it afterwards (no /proc) counts as one that could not make it.
bool save_by_unnamed_file(const std::string& directory, const std::string& target, std::span<const std::byte> content,
                          SaveResult& result) {
    const Descriptor file(::open(directory.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600));
    if (!file.open()) return false;
    result = finish(file.number(), target, content);
    return result.outcome != SaveOutcome::saved || take_name(file.number(), directory, target);
}

SaveResult save(const std::string& path, std::span<const std::byte> content) {
    const Target target = behind_links(path);
    if (target.error != 0) return refused(target.error, in_words(target.error));
    if (const int error = obstacle_at(target.path); error != 0) return refused(error, in_words(error));

    const std::string directory = directory_of(target.path);
    SaveResult result;
    if (!save_by_unnamed_file(directory, target.path, content, result))
        result = save_by_named_file(directory, target.path, content);
    if (result.outcome == SaveOutcome::saved) flush_directory(directory);
    return result;
}

} // namespace

SaveOutcome save_file(const std::string& path, std::span<const std::byte> content, std::string* reason) {
    SaveResult result = save(path, content);
    if (reason) *reason = std::move(result.reason);
    return result.outcome;
}

FileOutcome save_and_report(const std::string& path, std::span<const std::byte> content) {
    begin_file(path);
    FileOutcome outcome{path};
    switch (save_file(path, content, &outcome.reason)) {
    case SaveOutcome::saved: break;
    case SaveOutcome::not_writable:
        outcome.code = file_status::invalid_name;
        outcome.remark = FileRemark::not_writable;
        break;
    case SaveOutcome::cannot_create: outcome.code = file_status::invalid_name; break;
    case SaveOutcome::write_failed: outcome.code = file_status::write_error; break;
    }
    return report_file(std::move(outcome));
}
