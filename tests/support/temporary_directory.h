// A directory of a test's own, removed with all that is in it.
#pragma once

#include "base/byte_writer.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <vector>

class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "karosmit-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
        path_ = pattern;
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    // Names of all entries, sorted.
    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            result.push_back(entry.path().filename().string());
        std::ranges::sort(result);
        return result;
    }

private:
    std::string path_;
};

inline void put_file(const std::string& path, const Bytes& content) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

inline Bytes get_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    Bytes content(static_cast<std::size_t>(std::filesystem::file_size(path)));
    file.read(reinterpret_cast<char*>(content.data()), static_cast<std::streamsize>(content.size()));
    return content;
}

inline unsigned mode_of(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) throw std::runtime_error("no file " + path);
    return status.st_mode & 07777;
}

// Enters a directory for as long as it lives.
class CurrentDirectory {
public:
    explicit CurrentDirectory(const std::string& path) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    ~CurrentDirectory() {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
    }
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

private:
    std::filesystem::path before_;
};
