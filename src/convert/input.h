// Source files as a conversion takes them: whole, or not at all.
#pragma once

#include "base/file_io.h"

#include <string>

// Throws a Refusal unless the file was read without loss.
void require(const FileOutcome& outcome);

// The bytes of a file that must be there and not larger than that.
Bytes required_content(const std::string& path, std::size_t limit = largest_file);
