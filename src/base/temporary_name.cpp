#include "base/temporary_name.h"

#include "base/descriptor.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::string_view name_start = ".karosmit-save-";
constexpr int most_names = 1000;

struct Closer {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

// The process that a temporary name tells of.
std::optional<pid_t> maker_of(std::string_view name) {
    if (!name.starts_with(name_start)) return std::nullopt;
    name.remove_prefix(name_start.size());
    pid_t process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool whole = error == std::errc() && end != name.data() + name.size() && *end == '-' && process > 0;
    return whole ? std::optional(process) : std::nullopt;
}

// A process of this number that left a file behind was an earlier one: the lock tells.
bool is_gone(pid_t process) { return process == ::getpid() || (::kill(process, 0) != 0 && errno == ESRCH); }

bool is_left(const std::string& path) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat status {};
    return file.open() && ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode) &&
           ::flock(file.number(), LOCK_EX | LOCK_NB) == 0;
}

std::vector<std::string> names_of_gone(const std::string& directory) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, Closer> entries(::opendir(directory.c_str()));
    while (const dirent* const entry = entries ? ::readdir(entries.get()) : nullptr)
        if (const auto maker = maker_of(entry->d_name); maker && is_gone(*maker)) names.emplace_back(entry->d_name);
    return names;
}

} // namespace

std::string take_temporary_name(const std::string& directory, const std::function<bool(const std::string&)>& take) {
    static std::atomic<unsigned> calls = 0;
    const std::string start = directory + "/" + std::string(name_start) + std::to_string(::getpid()) + "-";
    for (int attempt = 0; attempt < most_names; ++attempt) {
        std::string name = start + std::to_string(++calls);
        if (take(name)) return name;
        if (errno != EEXIST) break;
    }
    return {};
}

void lock_temporary(int descriptor) { ::flock(descriptor, LOCK_EX | LOCK_NB); }

void remove_left_temporaries(const std::string& directory) {
    for (const std::string& name : names_of_gone(directory))
        if (const std::string path = directory + "/" + name; is_left(path)) ::unlink(path.c_str());
}
