// Wavefront OBJ (".obj"): the polygons of one car slot, exchanged with modelling tools. Lengths are model units; the
// file's second coordinate is the height. Material numbers travel as material names.
#pragma once

#include "base/byte_writer.h"
#include "base/file_status.h"
#include "model/shape.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What an import took and what it could not take.
struct ObjImport {
    std::size_t vertices = 0, faces = 0;                   // taken
    std::size_t vertices_left_out = 0, faces_left_out = 0; // more than a model has room for
    std::size_t faces_cut = 0;                             // had more than ten corners
    std::size_t numbers_below_one = 0;                     // vertex numbers that count from the end, or are no number
    std::size_t faces_without_vertices = 0;                // name a vertex that the model does not have

    bool operator==(const ObjImport&) const = default;
};
// What of an import deserves a word ("512 vertices at most: 130 left out; 2 faces cut to 10 corners"); empty when all
// of it was taken as it is.
std::string remarks_on(const ObjImport& import);

// Replaces the body of a model by the polygons of a text. The first four primitives and 32 vertices stay, as standard
// wheels unless the four are wheels already; the bounding box is fitted anew. Every face is seen from both sides and
// has its material in the first `paint_jobs` paint jobs. A vertex number past 65504 counts as one that no model has.
ObjImport import_obj(std::string_view text, std::size_t paint_jobs, SHAPEMODEL& model);

struct ObjExport {
    Bytes file;
    std::size_t polygons = 0;
    std::size_t left_out = 0; // polygons with an index past the vertices
};
// The name under which a material's number goes out.
std::string obj_material_name(std::uint16_t material);
// The polygons of a model with their materials in a paint job, and the vertices that these polygons use. `library` is
// the name of the file that says what the materials look like.
ObjExport export_obj(const SHAPEMODEL& model, std::size_t paint_job, const std::string& library = "vortag.mtl");

// Replaces the body of CAR(slot). "File not found" and "Read error" change and import nothing; vertices or faces that
// were left out report "Too large, cut to fit".
struct BodyLoaded {
    FileOutcome outcome;
    std::optional<ObjImport> import{};
};
BodyLoaded LOADOBJ(const std::string& filename, int slot);
// Writes the polygons of CAR(slot) with the materials of the current paint job. Reports "Invalid file name" or "Write
// error".
struct BodySaved {
    FileOutcome outcome;
    std::size_t left_out = 0; // polygons that name a vertex which the model does not have
};
BodySaved SAVEOBJ(const std::string& filename, int slot);
