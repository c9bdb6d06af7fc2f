// Whole files in and out.
#pragma once

#include "formats/byte_writer.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

// No file of this program comes near this size; of a larger one only so much is read.
constexpr std::size_t largest_file = std::size_t{512} << 20;

// The bytes of a regular file (or what a link to one leads to), at most `limit` of them. Nothing when it does not
// exist, cannot be opened, or is a directory, a pipe or a device; those are never opened.
std::optional<Bytes> read_file(const std::string& path, std::size_t limit = largest_file);

// Whether read_file would find a regular file there.
bool file_exists(const std::string& path);

enum class SaveOutcome {
    saved,
    cannot_create, // nothing can be written under this name
    write_failed,  // it could be begun but not finished: full disk, I/O error
};

// Writes a file so that the name stands, at every moment, for the whole old content or the whole new one: the bytes go
// to an unnamed file in the same directory, are flushed, and take the name over in one step. The mode of an old file is
// kept, a symbolic link is followed and stays a link. Anything but `saved` leaves what was there untouched.
SaveOutcome save_file(const std::string& path, std::span<const std::byte> content);

// The same, reported in the file-status record: begins with the name, ends with success, "Invalid file name" or "Write
// error".
void save_and_report(const std::string& path, std::span<const std::byte> content);
// read_file, reported in the file-status record: begins with the name; "File not found" when there is nothing.
std::optional<Bytes> load_and_report(const std::string& path);
