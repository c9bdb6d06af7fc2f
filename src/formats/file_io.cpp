#include "formats/file_io.h"

#include "model/file_status.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool open() const { return number_ >= 0; }
    int number() const { return number_; }

private:
    int number_;
};

bool is_regular_file(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// How many bytes a reading may bring at most, for memory to be set aside only for data that is there.
std::size_t expected_size(int descriptor, std::size_t limit) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || status.st_size < 0) return 0;
    return std::min(static_cast<std::size_t>(status.st_size), limit);
}

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

// Gives the unnamed file its name, by way of a helper name beside it: a name cannot be given over an old one directly.
bool take_name(int unnamed, const std::string& beside, const std::string& target) {
    const std::string self = "/proc/self/fd/" + std::to_string(unnamed);
    ::unlink(beside.c_str());
    if (::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, beside.c_str(), AT_SYMLINK_FOLLOW) != 0) return false;
    if (::rename(beside.c_str(), target.c_str()) == 0) return true;
    ::unlink(beside.c_str());
    return false;
}

void flush_directory(const std::string& directory) {
    const Descriptor handle(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.open()) ::fsync(handle.number());
}

SaveOutcome finish(int descriptor, const std::string& target, std::span<const std::byte> content) {
    const bool written =
        write_all(descriptor, content) && ::fchmod(descriptor, mode_for(target)) == 0 && ::fsync(descriptor) == 0;
    return written ? SaveOutcome::saved : SaveOutcome::write_failed;
}

// For file systems without unnamed files: a named one beside the target, removed when it cannot be finished.
SaveOutcome save_by_named_file(const std::string& beside, const std::string& target,
                               std::span<const std::byte> content) {
    ::unlink(beside.c_str());
    const Descriptor file(::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.open()) return errno == ENOSPC ? SaveOutcome::write_failed : SaveOutcome::cannot_create;
    SaveOutcome outcome = finish(file.number(), target, content);
    if (outcome == SaveOutcome::saved && ::rename(beside.c_str(), target.c_str()) != 0)
        outcome = SaveOutcome::write_failed;
    if (outcome != SaveOutcome::saved) ::unlink(beside.c_str());
    return outcome;
}

} // namespace

bool file_exists(const std::string& path) { return is_regular_file(path); }

std::optional<Bytes> read_file(const std::string& path, std::size_t limit) {
    if (!is_regular_file(path)) return std::nullopt;
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.open()) return std::nullopt;

    Bytes content(expected_size(file.number(), limit));
    std::size_t filled = 0;
    while (filled < content.size()) {
        const ssize_t count = ::read(file.number(), content.data() + filled, content.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        filled += static_cast<std::size_t>(count);
    }
    content.resize(filled);
    return content;
}

SaveOutcome save_file(const std::string& path, std::span<const std::byte> content) {
    const std::string target = behind_links(path);
    if (!may_replace(target)) return SaveOutcome::cannot_create;

    const std::string directory = directory_of(target);
    const std::string beside = directory + "/.karosmit-save";
    const Descriptor file(::open(directory.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600));
    if (!file.open()) return save_by_named_file(beside, target, content);

    const SaveOutcome outcome = finish(file.number(), target, content);
    if (outcome != SaveOutcome::saved) return outcome;
    if (!take_name(file.number(), beside, target)) return save_by_named_file(beside, target, content);
    flush_directory(directory);
    return SaveOutcome::saved;
}

void save_and_report(const std::string& path, std::span<const std::byte> content) {
    begin_file(path);
    switch (save_file(path, content)) {
    case SaveOutcome::saved: break;
    case SaveOutcome::cannot_create: report_file(file_status::invalid_name); break;
    case SaveOutcome::write_failed: report_file(file_status::write_error); break;
    }
}

std::optional<Bytes> load_and_report(const std::string& path) {
    begin_file(path);
    auto content = read_file(path);
    if (!content) report_file(file_status::not_found);
    return content;
}
