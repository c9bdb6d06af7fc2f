#include "formats/parameter_file.h"

#include "app/version.h"
#include "app/window.h"
#include "formats/byte_reader.h"
#include "formats/file_io.h"
#include "formats/resource_archive.h"
#include "params/parameter_table.h"

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

void decode_resource(std::string_view id, ByteReader reader, ParameterFile& car) {
    if (id == "simd") reader.bytes(car.par);
    if (id == "gnam") car.name = reader.text_up_to_zero(longest_name);
    if (id == "gsna") car.sign_name = reader.text_up_to_zero(longest_name);
    if (id == "edes") car.information = reader.text_up_to_zero(longest_information);
}

ParameterFile current_car() { return {PAR, CARNAME, CARSIGNNAME, CARINFO}; }

void keep(ParameterFile car) {
    PAR = car.par;
    CARNAME = std::move(car.name);
    CARSIGNNAME = std::move(car.sign_name);
    CARINFO = std::move(car.information);
}

std::string title_for(const std::string& car_name) {
    const std::string title(program_title);
    return car_name.empty() ? title : title + " - " + car_name;
}
} // namespace

void decode_parameter_file(std::span<const std::byte> file, ParameterFile& car) {
    for (const ArchiveEntry& entry : read_archive_directory(file).entries)
        decode_resource(entry.id, ByteReader(file, entry.position), car);
}

Bytes encode_parameter_file(const ParameterFile& car) {
    return encode_archive({{"simd", bytes_of(car.par)},
                           {"gnam", zero_ended(car.name)},
                           {"gsna", zero_ended(car.sign_name)},
                           {"edes", zero_ended(car.information)}});
}

void LOADRES(const std::string& filename) {
    const auto file = load_and_report(filename);
    if (!file) return;
    ParameterFile car = current_car();
    decode_parameter_file(*file, car);
    keep(std::move(car));
    UPDATEPG(false);
    set_window_title(title_for(CARNAME));
}

void SAVERES(const std::string& filename) { save_and_report(filename, encode_parameter_file(current_car())); }
