// Texts as files.
#pragma once

#include "support/bytes.h"
#include "support/temporary_directory.h"

#include <string>

inline void write_text(const std::string& path, const std::string& text) { put_file(path, bytes_of(text)); }

inline std::string read_text(const std::string& path) {
    std::string text;
    for (const std::byte b : get_file(path))
        text += static_cast<char>(b);
    return text;
}
