// The four files that make a car: their names, and what each holds of the car.
#pragma once

#include "base/file_io.h"

#include <array>
#include <string>
#include <string_view>

struct CarFile {
    std::string_view prefix, extension; // the car's identifier stands between them
    FileOutcome (*load)(const std::string& filename);
    EncodedFile (*content)(); // of the car as it is
};
// In the order in which a car is loaded and saved: parameters, shapes, dashboard, dots and digits.
extern const std::array<CarFile, 4> car_files;

constexpr std::size_t identifier_length = 4;
std::string car_file_name(const CarFile& file, std::string_view identifier);
