// A parameter file (".res") as a text that a person reads and edits: a row for each value, all 776 bytes and the three
// texts.
#pragma once

#include "formats/parameter_file.h"

#include <string>
#include <string_view>

std::string parameter_text(const ParameterFile& car);

// The rows of a text over `car`, in any order; what has no row stays as it is. Refuses unknown and malformed rows, a
// value that is given twice, and texts too long for the file, each with the number of its line.
void read_parameter_text(std::string_view text, ParameterFile& car);
