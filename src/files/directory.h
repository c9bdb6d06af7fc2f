// What stands in the current directory.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

struct DirectoryEntry {
    std::string name;
    std::string key; // the name in small letters
    bool directory = false;
    bool regular = false; // a link counts as what it leads to, one that leads nowhere as neither
};

struct DirectoryContent {
    std::vector<DirectoryEntry> entries{}; // in the order of their keys, of equal ones in that of their names
    std::size_t found = 0;                 // how many there are, kept or not
    std::string failure{};                 // in the system's words; no entry is kept of a directory that cannot be read
};

// The directories, and the files whose name, given in small letters, is wanted, without "." and ".."; of more than
// `most` the first ones.
DirectoryContent read_directory(const std::function<bool(std::string_view key)>& is_wanted,
                                std::size_t most = std::numeric_limits<std::size_t>::max());
