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

std::string_view error_text(std::uint8_t code) {
    switch (code) {
    case file_status::not_found: return "File not found";
    case file_status::invalid_name: return "Invalid file name";
    case file_status::write_error: return "Write error";
    case file_status::cut_to_fit: return "Too large, cut to fit";
    case file_status::read_error: return "Read error";
    case file_status::not_unpacked: return "Not unpacked";
    case file_status::unknown_format: return "Unknown format";
    default: return {};
    }
}

FileOutcome report_file(FileOutcome outcome) {
    FILE_ERNUM = outcome.code;
    FILE_REASON = outcome.reason;
    if (const std::string_view text = error_text(outcome.code); !text.empty()) FILE_ERROR = text;
    return outcome;
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
