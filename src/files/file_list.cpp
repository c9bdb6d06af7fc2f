#include "files/file_list.h"

#include "base/byte_reader.h"
#include "base/code_page.h"
#include "base/config.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "base/reset.h"
#include "base/text.h"
#include "base/utf8.h"
#include "files/directory.h"
#include "files/kept_work.h"
#include "formats/resource_archive.h"

#include <algorithm>
#include <functional>
#include <vector>

OneBased<LISTEDFILE, max_listed_files> LFILE;
std::int16_t LFILES = 0;

namespace {

int listable = 0;

constexpr std::size_t car_name_length = 40;
constexpr std::size_t project_head_length = 80;
// Names stand near the front of nearly every file; where one does not, the listing reads no more than the limit.
constexpr std::size_t head_length = 4096;
constexpr std::size_t listing_limit = std::size_t{1} << 20;

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
        add_entry(std::string(trimmed(path)), code_page_from_utf8(trimmed(value.substr(0, colon))), entry_kind::link);
    }
}

bool is_listed_as_car(std::string_view key) { return key.ends_with(".res") || key.ends_with(".car"); }

// Whether a name in small letters passes a filter in small letters.
bool passes(std::string_view key, std::string_view filter) {
    const std::size_t dot = key.rfind('.');
    if (dot == std::string_view::npos) return false;
    const std::string_view extension = key.substr(dot);
    std::size_t at = filter.find(extension);
    while (at != std::string_view::npos && !filter.substr(at + extension.size()).starts_with('.'))
        at = filter.find(extension, at + 1);
    return at != std::string_view::npos;
}

std::function<bool(std::string_view)> wanted_in(const std::string& mode) {
    if (mode.empty()) return [](std::string_view) { return true; };
    if (mode == cars_mode) return is_listed_as_car;
    return [filter = lower_case(mode)](std::string_view key) { return passes(key, filter); };
}

// The identifier in a parameter file's name: characters 4 to 7, as far as they exist.
std::string identifier_in(const std::string& file_name) { return std::string(utf8_characters(file_name, 3, 4)); }

// Where `marker` first occurs in the next `length` bytes.
// ODDITY list-missing-marker (kept): a marker that is missing counts as found one byte before the run, so that the
// entry still shows whatever text stands there.
std::int64_t marker_position(ByteReader reader, std::string_view marker, std::size_t length) {
    const std::size_t found = reader.text(length).find(marker);
    return found == std::string::npos ? -1 : static_cast<std::int64_t>(found);
}

// A name, and whether all that it stands for was among the bytes.
struct ListedName {
    std::string text;
    bool whole = true;
};

ListedName car_name(std::span<const std::byte> file) {
    std::uint16_t count = 0;
    ByteReader reader(file, archive_count_at);
    reader.u16(count);
    const std::uint64_t ids_length = archive_id_length * count;
    const std::int64_t found = marker_position(reader, "gnam", ids_length);

    std::uint32_t offset = 0;
    const std::uint64_t offsets_at = archive_ids_at + ids_length;
    reader.seek(static_cast<std::uint64_t>(static_cast<std::int64_t>(offsets_at) + found));
    reader.u32(offset);
    const std::uint64_t name_at = offsets_at + ids_length + offset;
    reader.seek(name_at);
    return {reader.text_up_to_zero(car_name_length), name_at + car_name_length <= file.size()};
}

ListedName project_name(std::span<const std::byte> file) {
    ByteReader reader(file);
    const std::int64_t found = marker_position(reader, "Base", project_head_length);
    std::uint32_t offset = 0;
    reader.seek(static_cast<std::uint64_t>(found + 4));
    reader.u32(offset);
    std::uint16_t length = 0;
    reader.seek(offset);
    reader.u16(length);
    std::string text = reader.text(length);
    const bool whole = !reader.ran_out() && text.size() == length;
    return {std::move(text), whole};
}

// What stands for the entry in the list where it is shown by its name.
std::string shown_name(const DirectoryEntry& entry) { return code_page_from_utf8(entry.name); }

// What the file says of itself, followed by the mark; one that cannot be read is shown by its own name.
std::string shown_by(ListedName (*name_in)(std::span<const std::byte>), const DirectoryEntry& entry,
                     const std::string& mark) {
    if (!entry.regular) return shown_name(entry);
    for (const std::size_t limit : {head_length, listing_limit}) {
        const FileContent head = read_regular_file(entry.name, limit);
        if (!head) return shown_name(entry);
        ListedName name = name_in(*head);
        if (name.whole || head->size() < limit || limit == listing_limit) return name.text + mark;
    }
    return shown_name(entry);
}

void add_car(const DirectoryEntry& entry) {
    const std::string identifier = identifier_in(entry.name);
    const std::string mark = " (" + code_page_from_utf8(upper_case(identifier)) + ")";
    add_entry(lower_case(identifier), shown_by(car_name, entry, mark), entry_kind::file);
}

void add_project(const DirectoryEntry& entry) {
    add_entry(entry.name, shown_by(project_name, entry, " (c/p)"), entry_kind::file);
}

void add_directory_entry(const DirectoryEntry& entry, const std::string& mode) {
    if (entry.directory) {
        add_entry(entry.name, shown_name(entry), entry_kind::directory);
    } else if (mode != cars_mode) {
        add_entry(entry.name, shown_name(entry), entry_kind::file);
    } else if (entry.key.ends_with(".res")) {
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

} // namespace

bool passes_filter(std::string_view file_name, std::string_view filter) {
    return passes(lower_case(file_name), lower_case(filter));
}

int listable_entries() { return listable; }

std::string listed_car_name(std::span<const std::byte> parameter_file) { return car_name(parameter_file).text; }

std::string listed_project_name(std::span<const std::byte> project_file) { return project_name(project_file).text; }

void UPDATEFILELIST(const std::string& mode) {
    for (LISTEDFILE& entry : LFILE)
        entry = {};
    LFILES = 0;
    add_links();
    add_entry("..", "..", entry_kind::directory);
    const auto room = static_cast<std::size_t>(max_listed_files - LFILES);
    const DirectoryContent content = read_directory(wanted_in(mode), room);
    if (!content.failure.empty()) note_unreadable_file(current_directory(), content.failure);
    listable = LFILES + static_cast<int>(content.found);
    for (const DirectoryEntry& entry : content.entries)
        add_directory_entry(entry, mode);
    sort_entries();
}

void list_kept_work() {
    std::vector<LISTEDFILE> rows;
    for (const KeptWork& work : offered_works())
        rows.push_back({work.stem, shown_work(work), entry_kind::kept_work});
    listable += static_cast<int>(rows.size());
    for (int i = 1; i <= LFILES; ++i)
        rows.push_back(std::move(LFILE[i]));
    LFILES = static_cast<std::int16_t>(std::min<std::size_t>(rows.size(), max_listed_files));
    for (int i = 1; i <= LFILES; ++i)
        LFILE[i] = std::move(rows[static_cast<std::size_t>(i - 1)]);
}

namespace {
const ResetWithProgram registered([] {
    LFILE = {};
    LFILES = 0;
    listable = 0;
});
}
