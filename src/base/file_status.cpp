#include "base/file_status.h"

#include "base/reset.h"

#include <utility>

std::string FILE_FILE;
std::string FILE_ERROR;
std::uint8_t FILE_ERNUM = 0;
std::string FILE_REASON;

namespace {
std::vector<std::string> unreadable_files;
}

void begin_file(const std::string& name) {
    FILE_FILE = name;
    FILE_ERNUM = file_status::success;
    FILE_REASON.clear();
}

void report_file(std::uint8_t code, const std::string& reason) {
    FILE_ERNUM = code;
    FILE_REASON = reason;
    switch (code) {
    case file_status::not_found: FILE_ERROR = "File not found"; break;
    case file_status::invalid_name: FILE_ERROR = "Invalid file name"; break;
    case file_status::write_error: FILE_ERROR = "Write error"; break;
    case file_status::cut_to_fit: FILE_ERROR = "Too large, cut to fit"; break;
    case file_status::read_error: FILE_ERROR = "Read error"; break;
    case file_status::not_unpacked: FILE_ERROR = "Not unpacked"; break;
    case file_status::unknown_format: FILE_ERROR = "Unknown format"; break;
    default: break;
    }
}

void note_unreadable_file(const std::string& path, const std::string& reason) {
    unreadable_files.push_back(path + ": " + reason);
}

std::vector<std::string> take_unreadable_files() { return std::exchange(unreadable_files, {}); }

void reset_file_status() {
    FILE_FILE.clear();
    FILE_ERROR.clear();
    FILE_ERNUM = file_status::success;
    FILE_REASON.clear();
    unreadable_files.clear();
}

namespace {
const ResetWithProgram registered(reset_file_status);
}
