// Saving whole files.
#include "base/descriptor.h"
#include "base/file_attributes.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "base/temporary_name.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <set>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr int most_links = 40;

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

void flush_directory(const std::string& directory) {
    const Descriptor handle(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.open()) ::fsync(handle.number());
}

// One file that lies ready beside its target, under a temporary name. It goes with this, unless it took its target's.
class ReadyFile {
public:
    explicit ReadyFile(const FileToSave& file);
    ~ReadyFile() { remove(); }
    ReadyFile(ReadyFile&& other) noexcept
        : target_(std::move(other.target_)), directory_(std::move(other.directory_)), file_(std::move(other.file_)),
          earlier_(std::move(other.earlier_)), temporary_(std::exchange(other.temporary_, {})),
          result_(std::move(other.result_)) {}
    ReadyFile& operator=(ReadyFile&&) = delete;

    const SaveResult& result() const { return result_; }
    const std::string& directory() const { return directory_; }
    void take_its_name();
    void give_up(const std::string& reason);

private:
    bool make_unnamed(const FileToSave& file);
    void make_named(const FileToSave& file);
    bool finish(const FileToSave& file);
    void remove();

    std::string target_, directory_;
    Descriptor file_;    // locked: as long as it is open, its maker lives
    Descriptor earlier_; // what the target's name stands for
    std::string temporary_;
    SaveResult result_;
};

ReadyFile::ReadyFile(const FileToSave& file) {
    Target target = behind_links(file.path);
    const int error = target.error != 0 ? target.error : obstacle_at(target.path);
    if (error != 0) {
        result_ = refused(error, in_words(error));
        return;
    }
    target_ = std::move(target.path);
    directory_ = directory_of(target_);
    remove_left_temporaries(directory_);
    // Held, so that its blocks are freed after all names were taken: that takes fifty times as long as taking them.
    earlier_ = Descriptor(::open(target_.c_str(), O_PATH | O_CLOEXEC));
    if (!make_unnamed(file)) make_named(file);
}

bool ReadyFile::finish(const FileToSave& file) {
    const bool written = write_all(file_.number(), file.content);
    if (written) take_attributes_of(target_, file_.number(), file.readers);
    if (written && ::fsync(file_.number()) == 0) return true;
    result_ = write_failed(errno);
    return false;
}

// Whether the file system could make an unnamed file in the directory. One that cannot name it afterwards (no /proc)
// counts as one that could not make it. A name cannot be given over an old one directly: that takes a temporary one.
bool ReadyFile::make_unnamed(const FileToSave& file) {
    file_ = Descriptor(::open(directory_.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600));
    if (!file_.open()) return false;
    if (!finish(file)) return true;
    lock_temporary(file_.number());
    const std::string self = "/proc/self/fd/" + std::to_string(file_.number());
    temporary_ = take_temporary_name(directory_, [&](const std::string& name) {
        return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    });
    return !temporary_.empty();
}

// For file systems without unnamed files.
void ReadyFile::make_named(const FileToSave& file) {
    temporary_ = take_temporary_name(directory_, [&](const std::string& name) {
        file_ = Descriptor(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        return file_.open();
    });
    if (temporary_.empty()) {
        result_ = refused(errno, folder_in_words(directory_) + ": " + in_words(errno));
        return;
    }
    lock_temporary(file_.number());
    if (!finish(file)) remove();
}

void ReadyFile::take_its_name() {
    if (::rename(temporary_.c_str(), target_.c_str()) == 0)
        temporary_.clear();
    else
        give_up(in_words(errno));
}

void ReadyFile::give_up(const std::string& reason) {
    result_ = {SaveOutcome::write_failed, reason};
    remove();
}

void ReadyFile::remove() {
    if (!temporary_.empty()) ::unlink(std::exchange(temporary_, {}).c_str());
}

bool could(const ReadyFile& file) { return file.result().outcome == SaveOutcome::saved; }
bool failed_to_write(const ReadyFile& file) { return file.result().outcome == SaveOutcome::write_failed; }

void take_names(std::vector<ReadyFile>& ready) {
    for (ReadyFile& file : ready)
        if (could(file)) file.take_its_name();
    std::set<std::string> directories;
    for (const ReadyFile& file : ready)
        if (could(file)) directories.insert(file.directory());
    for (const std::string& directory : directories)
        flush_directory(directory);
}

void give_up_all(std::vector<ReadyFile>& ready, const std::string& reason) {
    for (ReadyFile& file : ready)
        if (could(file)) file.give_up(reason);
}

} // namespace

std::vector<SaveResult> save_files(std::span<const FileToSave> files) {
    std::vector<ReadyFile> ready;
    ready.reserve(files.size());
    for (const FileToSave& file : files)
        ready.emplace_back(file);
    const auto failed = std::ranges::find_if(ready, failed_to_write);
    if (failed == ready.end())
        take_names(ready);
    else
        give_up_all(ready, failed->result().reason);
    std::vector<SaveResult> results;
    for (const ReadyFile& file : ready)
        results.push_back(file.result());
    return results;
}

bool save_all(std::span<const FileToSave> files, std::string& reason) {
    const std::vector<SaveResult> results = save_files(files);
    const auto failed =
        std::ranges::find_if(results, [](const SaveResult& result) { return result.outcome != SaveOutcome::saved; });
    if (failed == results.end()) return true;
    reason = failed->reason;
    return false;
}

SaveOutcome save_file(const std::string& path, std::span<const std::byte> content, std::string* reason) {
    const FileToSave file{path, content};
    SaveResult result = std::move(save_files({&file, 1}).front());
    if (reason) *reason = std::move(result.reason);
    return result.outcome;
}

FileOutcome report_save(const std::string& path, const SaveResult& result, bool cut) {
    begin_file(path);
    FileOutcome outcome{path};
    outcome.reason = result.reason;
    switch (result.outcome) {
    case SaveOutcome::saved: outcome.code = cut ? file_status::cut_to_fit : file_status::success; break;
    case SaveOutcome::not_writable:
        outcome.code = file_status::invalid_name;
        outcome.remark = FileRemark::not_writable;
        break;
    case SaveOutcome::cannot_create: outcome.code = file_status::invalid_name; break;
    case SaveOutcome::write_failed: outcome.code = file_status::write_error; break;
    }
    return report_file(std::move(outcome));
}

FileOutcome save_and_report(const std::string& path, const EncodedFile& file) {
    const FileToSave one{path, file.bytes};
    return report_save(path, save_files({&one, 1}).front(), file.cut);
}
