// The files again, value by value over plain bytes: the second opinion of the fuzz targets. Nothing here may use the
// readers of the program.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// What does not wholly lie before the end is absent, and whoever reads it is at the end then.
class LiteralReader {
public:
    explicit LiteralReader(std::span<const std::byte> bytes, std::size_t at = 0) : bytes_(bytes), at_(at) {}

    template <typename Value>
    bool number(std::size_t width, Value& value) {
        if (at_ + width > bytes_.size()) {
            at_ = std::max(at_, bytes_.size());
            ran_out_ = true;
            return false;
        }
        std::uint64_t bits = 0;
        std::memcpy(&bits, bytes_.data() + at_, width);
        at_ += width;
        if constexpr (std::is_same_v<Value, double>)
            std::memcpy(&value, &bits, sizeof value);
        else
            value = static_cast<Value>(bits);
        return true;
    }

    std::string text(std::size_t length) {
        std::string result;
        for (; length > 0 && at_ < bytes_.size(); --length)
            result += static_cast<char>(bytes_[at_++]);
        if (length > 0) ran_out_ = true;
        return result;
    }

    void go_to(std::size_t at) { at_ = at; }
    void pass(std::size_t count) { at_ += count; }
    std::size_t left() const { return at_ < bytes_.size() ? bytes_.size() - at_ : 0; }
    bool at_end() const { return left() == 0; }
    bool ran_out() const { return ran_out_; }

private:
    std::span<const std::byte> bytes_;
    std::size_t at_;
    bool ran_out_ = false;
};

// The tables of an archive: the ids with where their data lie, as far as the file holds both.
struct LiteralArchive {
    std::size_t count = 0;
    std::vector<std::pair<std::string, std::size_t>> entries;
    bool whole = false;
    std::size_t tables_end = 6;
};

inline LiteralArchive read_archive_literally(std::span<const std::byte> file, std::size_t most = 65535) {
    LiteralArchive archive;
    const bool counted = LiteralReader(file, 4).number(2, archive.count);
    const std::size_t seen = std::min(archive.count, most);
    for (std::size_t i = 0; i < seen; ++i) {
        const std::string id = LiteralReader(file, 6 + 4 * i).text(4);
        std::size_t offset = 0;
        const bool placed = LiteralReader(file, 6 + 4 * archive.count + 4 * i).number(4, offset);
        if (id.size() < 4 || !placed) break;
        archive.entries.emplace_back(id, 6 + 8 * archive.count + offset);
    }
    archive.whole = counted && archive.entries.size() == seen;
    if (seen > 0) archive.tables_end = 6 + 4 * archive.count + 4 * seen;
    return archive;
}

inline std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// Without the blanks around it.
inline std::string bare(std::string text) {
    while (!text.empty() && text.front() == ' ')
        text.erase(0, 1);
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

// The number that a word begins with, in 32 bits.
inline long integer_in(const std::string& word) {
    if (word.empty() || std::isspace(static_cast<unsigned char>(word[0])) != 0) return 0;
    return std::clamp<long>(std::strtol(word.c_str(), nullptr, 10), INT32_MIN, INT32_MAX);
}
