// The car's shape file (".3sh"): an archive of three car models "car0" .. "car2" and four explosion models "exp0" ..
// "exp3".
#pragma once

#include "base/byte_writer.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "model/car.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

constexpr int shape_file_models = 7;
constexpr std::uint32_t all_shapes = 65535;

struct ShapeFile {
    std::array<SHAPEMODEL, shape_file_models> models{}; // car0, car1, car2, exp0 .. exp3
    std::uint8_t paint_jobs = 0;                        // 0 .. 255 as the file has it
    bool materials_cut = false;                         // a primitive read has more materials than there is room for

    bool operator==(const ShapeFile&) const = default;
};

// Scale of the k-th model of the file.
double shape_scale(int model);
// Resource id of the k-th model of the file.
std::string shape_id(int model);

// Fills the models whose bit of `mask` is set (bit 0 .. 2 car, 3 .. 6 explosion) from the bytes of a shape file;
// paint_jobs becomes that of the last model read. What the file does not hold keeps its value. Only the first 16
// entries of the archive are seen. A model whose id is missing is read on from where the reading before it ended, the
// first one from the end of the archive's tables. Materials past the 17th paint job are read over and remembered in
// materials_cut. Returns what there is to remark on the file.
FileRemark decode_shape_file(std::span<const std::byte> file, std::uint32_t mask, ShapeFile& shapes);
// All seven models. Counts, materials and vertex indices are written as their low 8 bits, coordinates as
// file_coordinate says; every vertex and primitive follows, also those that a cut count leaves out.
Bytes encode_shape_file(const ShapeFile& shapes);
// Whether the file says all of it: counts, materials and vertex indices within a byte, coordinates within 16 bits.
bool shapes_fit_file(const ShapeFile& shapes);

// The file's integer for a model coordinate: divided by the scale, rounded to the nearest whole number, ties to even,
// its low 16 bits kept. Not-a-number and infinities give 0.
std::uint16_t file_coordinate(double coordinate, double scale);

// The seven models of CAR and CEXP with PAINTJOBS, and back; PAINTJOBS is then held within 1 .. 17, and a CURPJ that is
// gone becomes 0.
std::unique_ptr<ShapeFile> shapes_of_tables();
void keep_shapes(const ShapeFile& shapes);

// Reads the models that `mask` selects into CAR(0) .. CAR(2) and CEXP, and PAINTJOBS, which is then held within 1 .. 17
// and a CURPJ that is gone becomes 0. "File not found" changes nothing; primitives with more than 17 materials report
// "Too large, cut to fit".
FileOutcome LOAD3SH(const std::string& filename, std::uint32_t mask);
// The file of the same tables; cut when shapes_fit_file does not hold.
EncodedFile shape_file_of_car();
// Writes all seven models with PAINTJOBS paint jobs each. Reports "Invalid file name" or "Write error"; "Too large, cut
// to fit" when the file is written but shapes_fit_file does not hold.
FileOutcome SAVE3SH(const std::string& filename);
