#include "base/file_status.h"

std::string FILE_FILE;
std::string FILE_ERROR;
std::uint8_t FILE_ERNUM = 0;

void begin_file(const std::string& name) {
    FILE_FILE = name;
    FILE_ERNUM = file_status::success;
}

void report_file(std::uint8_t code) {
    FILE_ERNUM = code;
    switch (code) {
    case file_status::not_found: FILE_ERROR = "File not found"; break;
    case file_status::invalid_name: FILE_ERROR = "Invalid file name"; break;
    case file_status::write_error: FILE_ERROR = "Write error"; break;
    case file_status::cut_to_fit: FILE_ERROR = "Too large, cut to fit"; break;
    case file_status::unknown_format: FILE_ERROR = "Unknown format"; break;
    default: break;
    }
}

void reset_file_status() {
    FILE_FILE.clear();
    FILE_ERROR.clear();
    FILE_ERNUM = file_status::success;
}
