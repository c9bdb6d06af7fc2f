// Saving whole files.
#include "base/descriptor.h"
#include "base/file_io.h"
#include "base/file_status.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int most_links = 40;

// The name behind any symbolic links, whether or not it exists yet; empty when the links lead nowhere.
std::string behind_links(std::string path) {
    for (int step = 0; step < most_links; ++step) {
        std::string target(4096, '\0');
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) return path;
        target.resize(static_cast<std::size_t>(length));
        const std::size_t slash = path.rfind('/');
        path = target.starts_with('/') || slash == std::string::npos ? target : path.substr(0, slash + 1) + target;
    }
    return {};
}

std::string directory_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
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

// Mode of the file that is replaced, or what the user's mask leaves of the usual one.
mode_t mode_for(const std::string& target) {
    struct stat status {};
    if (::stat(target.c_str(), &status) == 0) return status.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// Whether `target` may be written: absent with a name of its own, or a regular file that this user may change.
bool may_replace(const std::string& target) {
    if (target.empty() || target.ends_with('/')) return false;
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) return errno == ENOENT;
    return S_ISREG(status.st_mode) && ::access(target.c_str(), W_OK) == 0;
}

// What a failed creation means: no place or a defect of the disk is a write error, anything else an unusable name.
SaveOutcome refused_creation(int error) {
    const bool disk = error == ENOSPC || error == EDQUOT || error == EIO;
    return disk ? SaveOutcome::write_failed : SaveOutcome::cannot_create;
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

// The temporary file becomes the target. A temporary file that cannot is removed.
bool replace(const std::string& temporary, const std::string& target) {
    if (::rename(temporary.c_str(), target.c_str()) == 0) return true;
    ::unlink(temporary.c_str());
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

// The mode is kept as far as the file system knows modes: one that refuses to set them still holds the bytes.
SaveOutcome finish(int descriptor, const std::string& target, std::span<const std::byte> content) {
    if (!write_all(descriptor, content)) return SaveOutcome::write_failed;
    ::fchmod(descriptor, mode_for(target));
    return ::fsync(descriptor) == 0 ? SaveOutcome::saved : SaveOutcome::write_failed;
}

// For file systems without unnamed files: a named one beside the target, removed when it cannot be finished.
SaveOutcome save_by_named_file(const std::string& directory, const std::string& target,
                               std::span<const std::byte> content) {
    int number = -1;
    const std::string temporary = take_temporary_name(directory, [&](const std::string& name) {
        number = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        return number >= 0;
    });
    if (temporary.empty()) return refused_creation(errno);

    const Descriptor file(number);
    if (finish(file.number(), target, content) != SaveOutcome::saved) {
        ::unlink(temporary.c_str());
        return SaveOutcome::write_failed;
    }
    return replace(temporary, target) ? SaveOutcome::saved : SaveOutcome::write_failed;
}

// Whether the file system could make an unnamed file in the directory; `outcome` is then that of the saving. One that
// cannot name it afterwards (no /proc) counts as one that could not make it.
bool save_by_unnamed_file(const std::string& directory, const std::string& target, std::span<const std::byte> content,
                          SaveOutcome& outcome) {
    const Descriptor file(::open(directory.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600));
    if (!file.open()) return false;
    outcome = finish(file.number(), target, content);
    return outcome != SaveOutcome::saved || take_name(file.number(), directory, target);
}

} // namespace

SaveOutcome save_file(const std::string& path, std::span<const std::byte> content) {
    const std::string target = behind_links(path);
    if (!may_replace(target)) return SaveOutcome::cannot_create;

    const std::string directory = directory_of(target);
    SaveOutcome outcome = SaveOutcome::saved;
    if (!save_by_unnamed_file(directory, target, content, outcome))
        outcome = save_by_named_file(directory, target, content);
    if (outcome == SaveOutcome::saved) flush_directory(directory);
    return outcome;
}

void save_and_report(const std::string& path, std::span<const std::byte> content) {
    begin_file(path);
    switch (save_file(path, content)) {
    case SaveOutcome::saved: break;
    case SaveOutcome::cannot_create: report_file(file_status::invalid_name); break;
    case SaveOutcome::write_failed: report_file(file_status::write_error); break;
    }
}
