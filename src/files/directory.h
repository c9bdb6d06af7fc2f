// What stands in the current directory.
#pragma once

#include <cstddef>
#include <functional>
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
    std::vector<DirectoryEntry> entries; // in no order, without "." and ".."
    std::string failure{};               // in the system's words; no entry is kept of a directory that cannot be read
};

// All directories, and the files whose name, given in small letters, is wanted.
DirectoryContent read_directory(const std::function<bool(std::string_view key)>& is_wanted);

// Keeps the first `count` entries in the order of their keys, of equal ones in that of their names.
void keep_first_by_name(std::vector<DirectoryEntry>& entries, std::size_t count);
