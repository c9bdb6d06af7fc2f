#include "formats/shape_file.h"
#include "model/document.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "base/rounding.h"
#include "formats/resource_archive.h"
#include "model/shape_parts.h"

#include <algorithm>
#include <cmath>

// A shape resource (V vertices, P primitives, J paint jobs):
//
//   0            u8 V, u8 P, u8 J, one reserved byte
//   4            V x three i16: x, z, y (the height is the second)
//   4 + 6V       P x u32 cull1
//   4 + 6V + 4P  P x u32 cull2
//   4 + 6V + 8P  P x type, flags, J materials, as many vertex indices as the type uses; one byte each

namespace {
constexpr int car_models = 3;
constexpr std::size_t entries_seen = 16;
constexpr std::size_t padding_after_model = 3;
constexpr int largest_byte = 255;

constexpr std::uint8_t low_byte(unsigned value) { return static_cast<std::uint8_t>(value & 0xFF); }

bool read_coordinate(ByteReader& reader, double scale, double& coordinate) {
    std::int16_t units = 0;
    if (!reader.i16(units)) return false;
    coordinate = units * scale;
    return true;
}

void read_byte_into_word(ByteReader& reader, std::uint16_t& word) {
    std::uint8_t value = 0;
    if (reader.u8(value)) word = value;
}

void read_vertex(ByteReader& reader, double scale, SHAPEVERTEX& vertex) {
    read_coordinate(reader, scale, vertex.x);
    read_coordinate(reader, scale, vertex.z);
    read_coordinate(reader, scale, vertex.y);
}

// Returns whether the file holds materials for which the primitive has no room.
bool read_primitive(ByteReader& reader, std::size_t paint_jobs, SHAPEPRIM& primitive) {
    reader.u8(primitive.type);
    reader.u8(primitive.flags);
    const std::size_t kept = std::min(paint_jobs, primitive.material.size());
    for (std::size_t job = 0; job < kept; ++job)
        read_byte_into_word(reader, primitive.material[job]);
    const bool cut = paint_jobs > kept && reader.remaining() > 0;
    reader.skip(paint_jobs - kept);
    const auto corners = static_cast<std::size_t>(primitive_vertex_count(primitive.type));
    for (std::size_t corner = 0; corner < corners; ++corner)
        read_byte_into_word(reader, primitive.vertex[corner]);
    return cut;
}

// Returns whether materials were cut.
bool read_model(ByteReader& reader, double scale, SHAPEMODEL& model, std::uint8_t& paint_jobs) {
    std::uint8_t reserved = 0;
    read_byte_into_word(reader, model.nverts);
    read_byte_into_word(reader, model.nprims);
    reader.u8(paint_jobs);
    reader.u8(reserved);

    const auto vertices = std::span(model.verts).first(model.nverts);
    const auto primitives = std::span(model.prims).first(model.nprims);
    for (SHAPEVERTEX& vertex : vertices)
        read_vertex(reader, scale, vertex);
    for (SHAPEPRIM& primitive : primitives)
        reader.u32(primitive.cull1);
    for (SHAPEPRIM& primitive : primitives)
        reader.u32(primitive.cull2);
    bool cut = false;
    for (SHAPEPRIM& primitive : primitives)
        if (read_primitive(reader, paint_jobs, primitive)) cut = true;
    return cut;
}

void write_vertex(ByteWriter& writer, double scale, const SHAPEVERTEX& vertex) {
    writer.u16(file_coordinate(vertex.x, scale));
    writer.u16(file_coordinate(vertex.z, scale));
    writer.u16(file_coordinate(vertex.y, scale));
}

void write_primitive(ByteWriter& writer, std::size_t paint_jobs, const SHAPEPRIM& primitive) {
    writer.u8(primitive.type);
    writer.u8(primitive.flags);
    for (std::size_t job = 0; job < paint_jobs; ++job)
        writer.u8(low_byte(primitive.material[job]));
    const auto corners = static_cast<std::size_t>(primitive_vertex_count(primitive.type));
    for (std::size_t corner = 0; corner < corners; ++corner)
        writer.u8(low_byte(primitive.vertex[corner]));
}

// ODDITY shape-count-byte (kept): both counts are one byte, their low 8 bits, while every vertex and primitive is
// written. A model of more than 255 is therefore no sound shape in the game; SAVE3SH says so after the save.
Bytes encode_model(const SHAPEMODEL& model, double scale, std::size_t paint_jobs) {
    const auto vertices = vertices_in_use(model);
    const auto primitives = primitives_in_use(model);
    ByteWriter writer;
    writer.u8(low_byte(static_cast<unsigned>(vertices.size())));
    writer.u8(low_byte(static_cast<unsigned>(primitives.size())));
    writer.u8(low_byte(static_cast<unsigned>(paint_jobs)));
    writer.u8(0);
    for (const SHAPEVERTEX& vertex : vertices)
        write_vertex(writer, scale, vertex);
    for (const SHAPEPRIM& primitive : primitives)
        writer.u32(primitive.cull1);
    for (const SHAPEPRIM& primitive : primitives)
        writer.u32(primitive.cull2);
    for (const SHAPEPRIM& primitive : primitives)
        write_primitive(writer, paint_jobs, primitive);
    writer.zeros(padding_after_model);
    return writer.take();
}

// Whole file units of a model coordinate, the halves to the even ones.
double file_units(double coordinate, double scale) { return std::nearbyint(coordinate / scale); }

bool coordinate_fits(double coordinate, double scale) {
    const double units = file_units(coordinate, scale);
    return units >= INT16_MIN && units <= INT16_MAX;
}

bool vertex_fits(const SHAPEVERTEX& vertex, double scale) {
    return coordinate_fits(vertex.x, scale) && coordinate_fits(vertex.y, scale) && coordinate_fits(vertex.z, scale);
}

bool primitive_fits(const SHAPEPRIM& primitive, std::size_t paint_jobs) {
    const auto is_byte = [](std::uint16_t value) { return value <= largest_byte; };
    const auto corners = static_cast<std::size_t>(primitive_vertex_count(primitive.type));
    return std::ranges::all_of(std::span(primitive.material).first(paint_jobs), is_byte) &&
           std::ranges::all_of(std::span(primitive.vertex).first(corners), is_byte);
}

bool model_fits(const SHAPEMODEL& model, double scale, std::size_t paint_jobs) {
    if (model.nverts > largest_byte || model.nprims > largest_byte) return false;
    return std::ranges::all_of(vertices_in_use(model),
                               [&](const SHAPEVERTEX& vertex) { return vertex_fits(vertex, scale); }) &&
           std::ranges::all_of(primitives_in_use(model),
                               [&](const SHAPEPRIM& primitive) { return primitive_fits(primitive, paint_jobs); });
}

std::size_t materials_written(const ShapeFile& shapes) {
    return std::min<std::size_t>(shapes.paint_jobs, max_paint_jobs);
}

// The table's record of the k-th model of the file.
Shared<SHAPEMODEL>& table_model(int model) {
    const auto k = static_cast<std::size_t>(model);
    return model < car_models ? CAR[k] : CEXP[k - car_models];
}
} // namespace

double shape_scale(int model) {
    constexpr std::size_t explosion_scale = 1;
    return CARSCALE[model < car_models ? static_cast<std::size_t>(model) : explosion_scale];
}

std::string shape_id(int model) {
    return model < car_models ? "car" + std::to_string(model) : "exp" + std::to_string(model - car_models);
}

std::uint16_t file_coordinate(double coordinate, double scale) { return rounded_word(coordinate / scale); }

FileRemark decode_shape_file(std::span<const std::byte> file, std::uint32_t mask, ShapeFile& shapes) {
    const ArchiveDirectory directory = read_archive_directory(file, entries_seen);
    ByteReader reader(file, directory.tables_end);
    bool holds_shapes = false;
    for (int k = 0; k < shape_file_models; ++k) {
        // ODDITY missing-shape (kept): without an entry of its own a model is read from where the reading before it
        // ended.
        if (const auto position = directory.find(shape_id(k))) {
            reader.seek(*position);
            holds_shapes = true;
        }
        if ((mask >> k & 1U) == 0) continue;
        SHAPEMODEL& model = shapes.models[static_cast<std::size_t>(k)];
        if (read_model(reader, shape_scale(k), model, shapes.paint_jobs)) shapes.materials_cut = true;
    }
    return remark_on_content(holds_shapes, !directory.whole || reader.ran_out());
}

Bytes encode_shape_file(const ShapeFile& shapes) {
    std::vector<ArchiveResource> resources;
    for (int k = 0; k < shape_file_models; ++k)
        resources.push_back({shape_id(k), encode_model(shapes.models[static_cast<std::size_t>(k)], shape_scale(k),
                                                       materials_written(shapes))});
    return encode_archive(resources);
}

bool shapes_fit_file(const ShapeFile& shapes) {
    for (int k = 0; k < shape_file_models; ++k)
        if (!model_fits(shapes.models[static_cast<std::size_t>(k)], shape_scale(k), materials_written(shapes)))
            return false;
    return true;
}

std::unique_ptr<ShapeFile> shapes_of_tables() {
    auto shapes = std::make_unique<ShapeFile>();
    for (int k = 0; k < shape_file_models; ++k)
        shapes->models[static_cast<std::size_t>(k)] = *table_model(k);
    shapes->paint_jobs = PAINTJOBS;
    return shapes;
}

void keep_shapes(const ShapeFile& shapes) {
    for (int k = 0; k < shape_file_models; ++k)
        table_model(k).set(shapes.models[static_cast<std::size_t>(k)]);
    // ODDITY last-paint-job-count (kept): the count of the last model read holds for all of them.
    PAINTJOBS = shapes.paint_jobs;
    settle_paint_jobs();
}

FileOutcome LOAD3SH(const std::string& filename, std::uint32_t mask) {
    auto [outcome, file] = load_and_report(filename);
    if (!file) return outcome;
    const auto shapes = shapes_of_tables();
    outcome.remark = decode_shape_file(*file, mask, *shapes);
    keep_shapes(*shapes);
    if (shapes->materials_cut) outcome.code = file_status::cut_to_fit;
    return report_file(outcome);
}

EncodedFile shape_file_of_car() {
    const auto shapes = shapes_of_tables();
    return {encode_shape_file(*shapes), !shapes_fit_file(*shapes)};
}

FileOutcome SAVE3SH(const std::string& filename) { return save_and_report(filename, shape_file_of_car()); }
