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

bool in_order(const DirectoryEntry& a, const DirectoryEntry& b) {
    return std::tie(a.key, a.name) < std::tie(b.key, b.name);
}

// The first entries, as a heap whose front is the last of them, so that most of a long directory is left at a glance.
void keep_if_among_first(std::vector<DirectoryEntry>& first, std::size_t most, const DirectoryEntry& entry) {
    if (first.size() == most) {
        if (most == 0 || !in_order(entry, first.front())) return;
        std::ranges::pop_heap(first, in_order);
        first.pop_back();
    }
    first.push_back(entry);
    std::ranges::push_heap(first, in_order);
}

} // namespace

DirectoryContent read_directory(const std::function<bool(std::string_view key)>& is_wanted, std::size_t most) {
    const Directory directory(::opendir("."));
    if (!directory) return {.failure = in_words(errno)};
    DirectoryContent content;
    DirectoryEntry entry;
    for (;;) {
        errno = 0;
        const dirent* const found = ::readdir(directory.get());
        if (!found) break;
        if (is_dot_or_dots(found->d_name)) continue;
        entry.name = found->d_name;
        entry.key = lower_case(entry.name);
        const mode_t kind = kind_of(*found);
        entry.directory = S_ISDIR(kind);
        entry.regular = S_ISREG(kind);
        if (!entry.directory && !is_wanted(entry.key)) continue;
        ++content.found;
        keep_if_among_first(content.entries, most, entry);
    }
    if (errno != 0) return {.failure = in_words(errno)};
    std::ranges::sort_heap(content.entries, in_order);
    return content;
}
