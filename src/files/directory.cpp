#include "files/directory.h"

#include "base/text.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <tuple>

namespace {

struct Closer {
    void operator()(DIR* directory) const { ::closedir(directory); }
};
using Directory = std::unique_ptr<DIR, Closer>;

std::string in_words(int error) { return std::generic_category().message(error); }

// What kind of entry it is: mostly the directory knows it, and the entry itself need not be asked.
mode_t kind_of(const dirent& entry) {
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return DTTOIF(entry.d_type);
    struct stat status {};
    return ::stat(entry.d_name, &status) == 0 ? status.st_mode : 0;
}

bool is_dot_or_dots(std::string_view name) { return name == "." || name == ".."; }

} // namespace

DirectoryContent read_directory(const std::function<bool(std::string_view key)>& is_wanted) {
    const Directory directory(::opendir("."));
    if (!directory) return {{}, in_words(errno)};
    DirectoryContent content;
    for (;;) {
        errno = 0;
        const dirent* const found = ::readdir(directory.get());
        if (!found) break;
        if (is_dot_or_dots(found->d_name)) continue;
        DirectoryEntry entry{.name = found->d_name, .key = lower_case(found->d_name)};
        const mode_t kind = kind_of(*found);
        entry.directory = S_ISDIR(kind);
        entry.regular = S_ISREG(kind);
        if (entry.directory || is_wanted(entry.key)) content.entries.push_back(std::move(entry));
    }
    if (errno != 0) return {{}, in_words(errno)};
    return content;
}

void keep_first_by_name(std::vector<DirectoryEntry>& entries, std::size_t count) {
    count = std::min(count, entries.size());
    std::ranges::partial_sort(entries, entries.begin() + static_cast<std::ptrdiff_t>(count),
                              [](const DirectoryEntry& a, const DirectoryEntry& b) {
                                  return std::tie(a.key, a.name) < std::tie(b.key, b.name);
                              });
    entries.resize(count);
}
