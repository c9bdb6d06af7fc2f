#include "files/file_list.h"

#include "base/byte_reader.h"
#include "base/config.h"
#include "base/file_io.h"
#include "base/text.h"
#include "formats/resource_archive.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

OneBased<LISTEDFILE, max_listed_files> LFILE;
std::int16_t LFILES = 0;

namespace {

namespace fs = std::filesystem;

constexpr std::size_t car_name_length = 40;
constexpr std::size_t project_head_length = 80;
// Names stand near the front of any sound file; the listing reads no more of one than this.
constexpr std::size_t listing_reads = std::size_t{1} << 20;

void add_entry(std::string name, std::string shown, std::uint8_t kind) {
    if (LFILES >= max_listed_files) return;
    ++LFILES;
    LFILE[LFILES] = {.name = std::move(name), .shown = std::move(shown), .kind = kind};
}

void add_links() {
    for (int i = 1; i <= CONFIGS; ++i) {
        const std::string_view value = CONFIG_VALUE[i];
        if (lower_case(CONFIG_ID[i]) != "dirlink" || value.empty()) continue;
        const std::size_t colon = value.find(':');
        const std::string_view path = colon == std::string_view::npos ? value : value.substr(colon + 1);
        add_entry(std::string(trimmed(path)), std::string(trimmed(value.substr(0, colon))), entry_kind::link);
    }
}

struct DirectoryEntry {
    std::string name;
    bool directory = false;
    bool regular = false;
};

bool is_listed_as_car(std::string_view name) { return name.ends_with(".res") || name.ends_with(".car"); }

bool is_wanted(const DirectoryEntry& entry, const std::string& mode) {
    if (entry.directory || mode.empty()) return true;
    return mode == cars_mode ? is_listed_as_car(lower_case(entry.name)) : passes_filter(entry.name, mode);
}

std::vector<DirectoryEntry> wanted_entries(const std::string& mode) {
    std::vector<DirectoryEntry> entries;
    std::error_code error;
    for (fs::directory_iterator at(".", error), end; !error && at != end; at.increment(error)) {
        std::error_code unknown; // a link that leads nowhere is a file that cannot be read
        DirectoryEntry entry{.name = at->path().filename().string(),
                             .directory = at->is_directory(unknown),
                             .regular = at->is_regular_file(unknown)};
        if (is_wanted(entry, mode)) entries.push_back(std::move(entry));
    }
    return entries;
}

// The first `room` entries in name order, without regard to case.
void keep_first_by_name(std::vector<DirectoryEntry>& entries, std::size_t room) {
    const auto by_name = [](const DirectoryEntry& a, const DirectoryEntry& b) {
        const int order = lower_case(a.name).compare(lower_case(b.name));
        return order != 0 ? order < 0 : a.name < b.name;
    };
    room = std::min(room, entries.size());
    std::ranges::partial_sort(entries, entries.begin() + static_cast<std::ptrdiff_t>(room), by_name);
    entries.resize(room);
}

Bytes head_of(const DirectoryEntry& entry) { return read_file(entry.name, listing_reads).value_or(Bytes{}); }

// The identifier in a parameter file's name: characters 4 to 7, as far as they exist.
std::string identifier_in(const std::string& file_name) {
    return file_name.size() > 3 ? file_name.substr(3, 4) : std::string();
}

void add_car(const DirectoryEntry& entry) {
    const std::string identifier = identifier_in(entry.name);
    const std::string shown =
        entry.regular ? listed_car_name(head_of(entry)) + " (" + upper_case(identifier) + ")" : entry.name;
    add_entry(lower_case(identifier), shown, entry_kind::file);
}

void add_project(const DirectoryEntry& entry) {
    const std::string shown = entry.regular ? listed_project_name(head_of(entry)) + " (c/p)" : entry.name;
    add_entry(entry.name, shown, entry_kind::file);
}

void add_directory_entry(const DirectoryEntry& entry, const std::string& mode) {
    if (entry.directory) {
        add_entry(entry.name, entry.name, entry_kind::directory);
    } else if (mode != cars_mode) {
        add_entry(entry.name, entry.name, entry_kind::file);
    } else if (lower_case(entry.name).ends_with(".res")) {
        add_car(entry);
    } else {
        add_project(entry);
    }
}

void sort_entries() {
    std::vector<std::pair<std::string, LISTEDFILE>> sorted;
    for (int i = 1; i <= LFILES; ++i)
        sorted.emplace_back(lower_case(LFILE[i].shown), std::move(LFILE[i]));
    std::ranges::stable_sort(sorted, [](const auto& a, const auto& b) {
        return a.second.kind != b.second.kind ? a.second.kind > b.second.kind : a.first < b.first;
    });
    for (int i = 1; i <= LFILES; ++i)
        LFILE[i] = std::move(sorted[static_cast<std::size_t>(i - 1)].second);
}

// Where `marker` first occurs in the next `length` bytes.
// ODDITY list-missing-marker (kept): a marker that is missing counts as found one byte before the run, so that the
// entry still shows whatever text stands there.
std::int64_t marker_position(ByteReader reader, std::string_view marker, std::size_t length) {
    const std::size_t found = reader.text(length).find(marker);
    return found == std::string::npos ? -1 : static_cast<std::int64_t>(found);
}

} // namespace

bool passes_filter(std::string_view file_name, std::string_view filter) {
    const std::string extension = extension_of(file_name);
    return !extension.empty() && lower_case(filter).find(extension + ".") != std::string::npos;
}

std::string listed_car_name(std::span<const std::byte> parameter_file) {
    std::uint16_t count = 0;
    ByteReader reader(parameter_file, archive_count_at);
    reader.u16(count);
    const std::uint64_t ids_length = archive_id_length * count;
    const std::int64_t found = marker_position(reader, "gnam", ids_length);

    std::uint32_t offset = 0;
    const std::uint64_t offsets_at = archive_ids_at + ids_length;
    reader.seek(static_cast<std::uint64_t>(static_cast<std::int64_t>(offsets_at) + found));
    reader.u32(offset);
    reader.seek(offsets_at + ids_length + offset);
    return reader.text_up_to_zero(car_name_length);
}

std::string listed_project_name(std::span<const std::byte> project_file) {
    ByteReader reader(project_file);
    const std::int64_t found = marker_position(reader, "Base", project_head_length);
    std::uint32_t offset = 0;
    reader.seek(static_cast<std::uint64_t>(found + 4));
    reader.u32(offset);
    std::uint16_t length = 0;
    reader.seek(offset);
    reader.u16(length);
    return reader.text(length);
}

void UPDATEFILELIST(const std::string& mode) {
    for (LISTEDFILE& entry : LFILE)
        entry = {};
    LFILES = 0;
    add_links();
    add_entry("..", "..", entry_kind::directory);
    auto entries = wanted_entries(mode);
    keep_first_by_name(entries, static_cast<std::size_t>(max_listed_files - LFILES));
    for (const DirectoryEntry& entry : entries)
        add_directory_entry(entry, mode);
    sort_entries();
}
