#include "formats/parameter_file.h"
#include "model/document.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "formats/resource_archive.h"
#include "model/power_gear.h"

#include <utility>

namespace {
Bytes bytes_of(std::span<const std::byte> run) { return Bytes(run.begin(), run.end()); }

Bytes zero_ended(const std::string& text) {
    ByteWriter writer;
    writer.text(text);
    writer.u8(0);
    return writer.take();
}

// How reading a resource, or all of them, went.
struct Reading {
    bool known = false;      // it belongs to a car
    bool cut = false;        // a text had no room
    bool ends_early = false; // the file ends inside it
};

// Reads a text of at most `longest` bytes up to its zero. It is cut when neither one of those bytes nor the one behind
// them is the zero that ends a text.
Reading decode_text(ByteReader& reader, std::size_t longest, std::string& text) {
    const std::size_t there = reader.remaining();
    text = reader.text_up_to_zero(longest);
    if (text.size() < longest) return {.known = true, .ends_early = text.size() == there};
    std::uint8_t behind = 0;
    return {.known = true, .cut = reader.u8(behind) && behind != 0};
}

Reading decode_resource(std::string_view id, ByteReader reader, ParameterFile& car) {
    if (id == "simd") return {.known = true, .ends_early = reader.bytes(car.par) < car.par.size()};
    if (id == "gnam") return decode_text(reader, longest_name, car.name);
    if (id == "gsna") return decode_text(reader, longest_name, car.sign_name);
    if (id == "edes") return decode_text(reader, longest_information, car.information);
    return {};
}

ParameterFile current_car() { return {PAR, CARNAME, CARSIGNNAME, CARINFO}; }

void keep(ParameterFile car) {
    PAR = car.par;
    CARNAME = std::move(car.name);
    CARSIGNNAME = std::move(car.sign_name);
    CARINFO = std::move(car.information);
}
} // namespace

ParametersDecoded decode_parameter_file(std::span<const std::byte> file, ParameterFile& car) {
    const ArchiveDirectory directory = read_archive_directory(file);
    Reading all{.ends_early = !directory.whole};
    for (const ArchiveEntry& entry : directory.entries) {
        const Reading one = decode_resource(entry.id, ByteReader(file, entry.position), car);
        all.known |= one.known;
        all.cut |= one.cut;
        all.ends_early |= one.ends_early;
    }
    return {all.cut, remark_on_content(all.known, all.ends_early)};
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
    const auto [cut, remark] = decode_parameter_file(*file, car);
    if (cut) outcome.code = file_status::cut_to_fit;
    outcome.remark = remark;
    keep(std::move(car));
    UPDATEPG(false);
    TITLENAME = CARNAME;
    return report_file(outcome);
}

EncodedFile parameter_file_of_car() { return {encode_parameter_file(current_car())}; }

FileOutcome SAVERES(const std::string& filename) { return save_and_report(filename, parameter_file_of_car()); }
