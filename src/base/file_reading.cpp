// Reading whole files.
#include "base/descriptor.h"
#include "base/file_io.h"
#include "base/file_status.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <system_error>

namespace {

FileContent failure(int error) {
    FileContent content;
    content.error = error;
    return content;
}

FileContent absent_or_failed(int error) { return means_absence(error) ? FileContent() : failure(error); }

// Fills the content to its last byte. A file that another program cuts meanwhile is no longer the one that was begun.
FileContent read_to_the_end(const Descriptor& file, Bytes content) {
    std::size_t filled = 0;
    while (filled < content.size()) {
        const ssize_t count = ::read(file.number(), content.data() + filled, content.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return failure(errno);
        if (count == 0) return failure(EIO);
        filled += static_cast<std::size_t>(count);
    }
    return content;
}

// Memory is set aside only for data that is there.
FileContent open_and_read(const std::string& path, std::size_t limit) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.open()) return absent_or_failed(errno);
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) return failure(errno);
    if (!S_ISREG(status.st_mode)) return {};
    return read_to_the_end(file, Bytes(std::min(static_cast<std::size_t>(status.st_size), limit)));
}

FileContent or_out_of_memory(auto&& read) {
    try {
        return read();
    } catch (const std::bad_alloc&) {
        return failure(ENOMEM);
    }
}

} // namespace

std::string FileContent::reason() const { return failed() ? std::generic_category().message(error) : std::string(); }

bool means_absence(int error) { return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG; }

int look_for_file(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return errno;
    return S_ISREG(status.st_mode) ? 0 : ENOENT;
}

bool file_exists(const std::string& path) { return look_for_file(path) == 0; }

FileContent read_file_or_throw(const std::string& path, std::size_t limit) {
    const int error = look_for_file(path);
    return error == 0 ? open_and_read(path, limit) : absent_or_failed(error);
}

FileContent read_file(const std::string& path, std::size_t limit) {
    return or_out_of_memory([&] { return read_file_or_throw(path, limit); });
}

FileContent read_regular_file(const std::string& path, std::size_t limit) {
    return or_out_of_memory([&] { return open_and_read(path, limit); });
}

LoadedFile load_and_report(const std::string& path, std::size_t limit) {
    begin_file(path);
    FileContent content = read_file(path, limit + 1);
    FileOutcome outcome{path};
    if (!content) {
        outcome = {path, content.failed() ? file_status::read_error : file_status::not_found, content.reason()};
    } else if (content->size() > limit) {
        content->resize(limit);
        outcome.code = file_status::cut_to_fit;
    }
    return {report_file(std::move(outcome)), std::move(content)};
}

FileContent load_and_note(const std::string& path, std::size_t limit) {
    FileContent content = read_file(path, limit);
    if (content.failed()) note_unreadable_file(path, content.reason());
    return content;
}
