// The car's parameter file (".res"): an archive of "simd" (776 parameter bytes), "gnam", "gsna" and "edes" (texts ended
// by a zero byte).
#pragma once

#include "base/byte_writer.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "model/parameters.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>

constexpr std::size_t longest_name = 255;         // of both names, characters
constexpr std::size_t longest_information = 1023; // of the description

struct ParameterFile {
    std::array<std::byte, parameter_bytes> par{};
    std::string name, sign_name, information;

    bool operator==(const ParameterFile&) const = default;
};

// Fills `car` from the bytes of a parameter file. Resources may stand in any order, unknown ones are skipped, missing
// ones leave their field as it was; of two with one id both act, in order. The name texts are read up to 255 bytes, the
// description up to 1023, each cut before its first zero byte. Never fails: a damaged file gives what it holds. A text
// is cut when it went on past its limit, which is so when neither the limit's bytes nor the one behind them is zero:
// lengths are not stored, so that a full text without a zero counts as cut even if another resource follows it.
struct ParametersDecoded {
    bool cut = false;
    FileRemark remark = FileRemark::none;
};
ParametersDecoded decode_parameter_file(std::span<const std::byte> file, ParameterFile& car);
Bytes encode_parameter_file(const ParameterFile& car);

// Reads the file into PAR, CARNAME, CARSIGNNAME and CARINFO, classifies the mass and sets the window's title. A file
// that is missing or cannot be read reports "File not found" and changes nothing; a text that was cut reports "Too
// large, cut to fit".
FileOutcome LOADRES(const std::string& filename);
// The file of the same globals.
EncodedFile parameter_file_of_car();
// Writes the four resources from the same globals. Reports "Invalid file name" or "Write error"; what was on the disk
// then stays as it was.
FileOutcome SAVERES(const std::string& filename);
