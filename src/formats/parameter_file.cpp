#include "formats/parameter_file.h"
#include "model/document.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "formats/resource_archive.h"
#include "model/power_gear.h"

#include <utility>

namespace {
constexpr std::size_t longest_name = 255;
constexpr std::size_t longest_information = 1023;

Bytes bytes_of(std::span<const std::byte> run) { return Bytes(run.begin(), run.end()); }

Bytes zero_ended(const std::string& text) {
    ByteWriter writer;
    writer.text(text);
    writer.u8(0);
    return writer.take();
}

// Reads a text of at most `longest` bytes up to its zero. False when there was no room for all of it: neither one of
// those bytes nor the one behind them is the zero that ends a text.
bool decode_text(ByteReader& reader, std::size_t longest, std::string& text) {
    text = reader.text_up_to_zero(longest);
    std::uint8_t behind = 0;
    return text.size() < longest || !reader.u8(behind) || behind == 0;
}

// False when a text was cut.
bool decode_resource(std::string_view id, ByteReader reader, ParameterFile& car) {
    if (id == "simd") reader.bytes(car.par);
    if (id == "gnam") return decode_text(reader, longest_name, car.name);
    if (id == "gsna") return decode_text(reader, longest_name, car.sign_name);
    if (id == "edes") return decode_text(reader, longest_information, car.information);
    return true;
}

ParameterFile current_car() { return {PAR, CARNAME, CARSIGNNAME, CARINFO}; }

void keep(ParameterFile car) {
    PAR = car.par;
    CARNAME = std::move(car.name);
    CARSIGNNAME = std::move(car.sign_name);
    CARINFO = std::move(car.information);
}
} // namespace

bool decode_parameter_file(std::span<const std::byte> file, ParameterFile& car) {
    bool whole = true;
    for (const ArchiveEntry& entry : read_archive_directory(file).entries)
        if (!decode_resource(entry.id, ByteReader(file, entry.position), car)) whole = false;
    return whole;
}

Bytes encode_parameter_file(const ParameterFile& car) {
    return encode_archive({{"simd", bytes_of(car.par)},
                           {"gnam", zero_ended(car.name)},
                           {"gsna", zero_ended(car.sign_name)},
                           {"edes", zero_ended(car.information)}});
}

FileOutcome LOADRES(const std::string& filename) {
    auto [outcome, file] = load_and_report(filename);
    if (!file) return outcome;
    ParameterFile car = current_car();
    if (!decode_parameter_file(*file, car)) outcome.code = file_status::cut_to_fit;
    keep(std::move(car));
    UPDATEPG(false);
    TITLENAME = CARNAME;
    return report_file(outcome);
}

FileOutcome SAVERES(const std::string& filename) {
    return save_and_report(filename, encode_parameter_file(current_car()));
}
