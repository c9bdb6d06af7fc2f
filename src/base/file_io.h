// Whole files in and out.
#pragma once

#include "base/byte_writer.h"
#include "base/file_attributes.h"
#include "base/file_status.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

// The most that is read of any file but a picture. The largest are archives: 100 bitmaps of a whole canvas are 6.4
// million bytes, the tables of 65,535 entries half a million.
constexpr std::size_t largest_file = std::size_t{16} << 20;
// The most that is read of a text: the configuration, the colour schemes.
constexpr std::size_t largest_text = std::size_t{2} << 20;

// What reading a file gave: its bytes, or nothing. Nothing with an error is a file that is there but could not be read
// to its end; nothing without one is a name under which no regular file is.
struct FileContent : std::optional<Bytes> {
    using std::optional<Bytes>::optional;

    int error = 0; // the system's

    bool failed() const { return error != 0; }
    std::string reason() const; // the error in words, empty when there is none
};

// The bytes of a regular file (or what a link to one leads to), at most `limit` of them; all of those or none. A
// directory, a pipe or a device is no file and never opened. As much memory is taken as the file is long, also when
// most of it is a hole: the limit is what bounds it. No room in memory is a failure like any other.
FileContent read_file(const std::string& path, std::size_t limit = largest_file);
// The same, but throws std::bad_alloc when there is no room in memory.
FileContent read_file_or_throw(const std::string& path, std::size_t limit);

// The same for a name that was just seen to be a regular file's, which saves asking again; what has become something
// else since is opened, but nothing is read of it.
FileContent read_regular_file(const std::string& path, std::size_t limit);

// 0 when a regular file is there, otherwise the system's error: one of those that mean absence, also for a directory, a
// pipe or a device, or another one when the system could not tell.
int look_for_file(const std::string& path);
// Whether an error says that nothing is under a name.
bool means_absence(int error);
// Whether a regular file is there.
bool file_exists(const std::string& path);

enum class SaveOutcome {
    saved,
    not_writable,  // this user may not write the file, or not in its folder
    cannot_create, // nothing can be written under this name
    write_failed,  // it could be begun but not finished: full disk, I/O error
};

// Writes a file so that the name stands, at every moment, for the whole old content or the whole new one: the bytes go
// to an unnamed file in the same directory, are flushed, and take the name over in one step. Mode, owner and extended
// attributes of an old file are kept where the system allows, a symbolic link is followed and stays a link. Anything
// but `saved` leaves what was there untouched, and `reason` then says why, in the system's words. A file that may be
// written in a folder that may not is refused: written in place, it could be lost. A program that is killed in between
// may leave a file with a temporary name behind (temporary_name.h); the next save into that folder removes it.
SaveOutcome save_file(const std::string& path, std::span<const std::byte> content, std::string* reason = nullptr);

struct FileToSave {
    std::string path;
    std::span<const std::byte> content;
    Readers readers = Readers::as_the_mask_says; // of a file that is new
};
struct SaveResult {
    SaveOutcome outcome = SaveOutcome::saved;
    std::string reason{};
};
// Saves files that belong together, with a result for each: all are written and flushed beside their targets before the
// first takes its name. One that cannot be created does not stop the others; one that cannot be written to its end
// leaves all as they were.
std::vector<SaveResult> save_files(std::span<const FileToSave> files);
// The same where the files are of use only together: whether all were saved, and otherwise why the first was not.
bool save_all(std::span<const FileToSave> files, std::string& reason);

// The bytes of a file, and whether they say less than what they were made of.
struct EncodedFile {
    Bytes bytes;
    bool cut = false;
};
// How a save ended, in the file-status record: begins with the name, ends with success, "Invalid file name" (also
// where the user may not write, which the outcome remarks) or "Write error" with the reason, or "Too large, cut to
// fit".
FileOutcome report_save(const std::string& path, const SaveResult& result, bool cut);
// Saves the one file, and reports it.
FileOutcome save_and_report(const std::string& path, const EncodedFile& file);
// read_file, reported in the file-status record: begins with the name; "File not found" when there is nothing, "Read
// error" with the reason when it cannot be read, "Too large, cut to fit" when it is longer than the limit; what it has
// within the limit is given all the same.
struct LoadedFile {
    FileOutcome outcome;
    FileContent content;
};
LoadedFile load_and_report(const std::string& path, std::size_t limit = largest_file);
// read_file for readers that report no status: one that cannot be read is noted (file_status.h).
FileContent load_and_note(const std::string& path, std::size_t limit);
