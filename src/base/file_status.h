// How reading or writing a file ended. Every reader and writer of a car's files returns it and mirrors it in the
// file-status record, which nobody reads to learn what the call that he just made did. Readers whose files may be
// missing without a word leave the record alone and note what they could not read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

extern std::string FILE_FILE;  // the file last handled, set before anything else is tried
extern std::string FILE_ERROR; // the last failure; a success leaves it as it was
extern std::uint8_t FILE_ERNUM;
extern std::string FILE_REASON; // why it failed, in the system's words; empty after a success and where there are none

namespace file_status {
constexpr std::uint8_t success = 0;
constexpr std::uint8_t not_found = 1;        // "File not found"
constexpr std::uint8_t invalid_name = 2;     // "Invalid file name"
constexpr std::uint8_t write_error = 3;      // "Write error": the file could be created but not finished
constexpr std::uint8_t cut_to_fit = 4;       // "Too large, cut to fit": loaded or saved, but not all of it had room
constexpr std::uint8_t read_error = 5;       // "Read error": it is there but could not be read, nothing of it is kept
constexpr std::uint8_t not_unpacked = 6;     // "Not unpacked": the unpacker was not run, or ended before it was done
constexpr std::uint8_t nothing_done = 156;   // set by the Files screen before it dispatches
constexpr std::uint8_t unknown_format = 255; // "Unknown format"
} // namespace file_status

// What a code does not tell apart.
enum class FileRemark : std::uint8_t {
    none,
    not_writable, // "Invalid file name", because this user may not write there
    ends_early,   // it ends before what it announces, and was loaded as far as it goes
    no_car_data,  // it holds nothing that belongs into a file of its kind
};
// Of what was read to the end that it has.
constexpr FileRemark remark_on_content(bool has_car_data, bool ends_early) {
    if (!has_car_data) return FileRemark::no_car_data;
    return ends_early ? FileRemark::ends_early : FileRemark::none;
}

// How one reading or writing ended.
struct FileOutcome {
    std::string file; // the name that it was asked for
    std::uint8_t code = file_status::success;
    std::string reason{}; // why it failed, in the system's words; empty after a success and where there are none
    FileRemark remark = FileRemark::none;

    bool succeeded() const { return code == file_status::success; }
    bool operator==(const FileOutcome&) const = default;
};

// The text that belongs to a code; empty where it has none.
std::string_view error_text(std::uint8_t code);

// A reader or writer starts: FILE_FILE becomes the name, FILE_ERNUM success, FILE_REASON empty.
void begin_file(const std::string& name);
// It ended: FILE_ERNUM and FILE_REASON become the outcome's, and after a failure FILE_ERROR the text that belongs to
// its code. FILE_FILE stays: it was set when the file was begun. Returns the outcome.
FileOutcome report_file(FileOutcome outcome);

// A file that was there but could not be read, of a reader that reports no status.
void note_unreadable_file(const std::string& path, const std::string& reason);
// All those noted since the last call, "path: reason" each.
std::vector<std::string> take_unreadable_files();

void reset_file_status();
