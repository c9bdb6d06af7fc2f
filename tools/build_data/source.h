// Reading the editable sources: text tables of blank-separated fields, and pictures.
#pragma once

#include "image/image.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// A source that cannot be built from; the message names the file and, in a text, the line.
struct SourceError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct SourceLine {
    std::filesystem::path file;
    int number = 0;
    std::string text;
    std::vector<std::string> fields;

    [[noreturn]] void fail(const std::string& reason) const;
    const std::string& field(std::size_t index) const;
    long integer(std::size_t index) const;
    // The same, refused outside least .. most.
    long integer_within(std::size_t index, long least, long most) const;
    double real(std::size_t index) const;
    unsigned long hexadecimal(std::size_t index) const;
};

// A whole number as a text, refused when anything else stands in it.
long whole_number(const SourceLine& line, const std::string& text);

// The lines of a text that are neither empty nor a comment ("#" as the first character), trimmed.
std::vector<SourceLine> read_source_lines(const std::filesystem::path& file);

// A PNG as a 32-bit image.
ImageHandle read_png(const std::filesystem::path& file);
