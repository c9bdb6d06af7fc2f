#include "formats/project_model.h"

#include "model/shape_parts.h"

#include <algorithm>

namespace {
constexpr std::size_t vertex_size = 3 * sizeof(double);
constexpr std::size_t word_size = sizeof(std::uint16_t);
constexpr std::size_t culling_and_flags = 2 * sizeof(std::uint32_t) + 1; // what stands between type and materials

// Reads a count. Returns how many of them there is no room for.
std::size_t read_count(ByteReader& reader, std::uint16_t& kept) {
    std::uint16_t count = 0;
    if (!reader.u16(count)) return 0;
    kept = std::min<std::uint16_t>(count, shape_capacity);
    return count - kept;
}

void read_vertex(ByteReader& reader, SHAPEVERTEX& vertex) {
    const bool begun = reader.f64(vertex.x);
    reader.f64(vertex.y);
    reader.f64(vertex.z);
    if (begun) vertex.mark = 0;
}

// Returns whether the file holds materials for which the primitive has no room.
bool read_primitive(ByteReader& reader, std::size_t paint_jobs, SHAPEPRIM& primitive) {
    reader.u8(primitive.type);
    reader.u32(primitive.cull1);
    reader.u32(primitive.cull2);
    reader.u8(primitive.flags);
    const std::size_t kept = std::min(paint_jobs, primitive.material.size());
    for (std::size_t job = 0; job < kept; ++job)
        reader.u16(primitive.material[job]);
    const bool cut = paint_jobs > kept && reader.remaining() > 0;
    reader.skip((paint_jobs - kept) * word_size);
    const auto corners = static_cast<std::size_t>(primitive_vertex_count(primitive.type));
    for (std::size_t corner = 0; corner < corners; ++corner)
        reader.u16(primitive.vertex[corner]);
    return cut;
}

void skip_primitive(ByteReader& reader, std::size_t paint_jobs) {
    std::uint8_t type = 0;
    reader.u8(type);
    const auto corners = static_cast<std::size_t>(primitive_vertex_count(type));
    reader.skip(culling_and_flags + (paint_jobs + corners) * word_size);
}

void write_vertex(ByteWriter& writer, const SHAPEVERTEX& vertex) {
    writer.f64(vertex.x);
    writer.f64(vertex.y);
    writer.f64(vertex.z);
}

void write_primitive(ByteWriter& writer, std::size_t paint_jobs, const SHAPEPRIM& primitive) {
    writer.u8(primitive.type);
    writer.u32(primitive.cull1);
    writer.u32(primitive.cull2);
    writer.u8(primitive.flags);
    for (std::size_t job = 0; job < paint_jobs; ++job)
        writer.u16(primitive.material[job]);
    for (const std::uint16_t index : corners_of(primitive))
        writer.u16(index);
}
} // namespace

bool read_project_model(ByteReader& reader, std::size_t paint_jobs, SHAPEMODEL& model) {
    const std::size_t more_vertices = read_count(reader, model.nverts);
    for (SHAPEVERTEX& vertex : vertices_in_use(model))
        read_vertex(reader, vertex);
    bool cut = more_vertices > 0 && reader.remaining() > 0;
    reader.skip(more_vertices * vertex_size);

    const std::size_t more_primitives = read_count(reader, model.nprims);
    for (SHAPEPRIM& primitive : primitives_in_use(model))
        if (read_primitive(reader, paint_jobs, primitive)) cut = true;
    if (more_primitives > 0 && reader.remaining() > 0) cut = true;
    for (std::size_t i = 0; i < more_primitives && reader.remaining() > 0; ++i)
        skip_primitive(reader, paint_jobs);
    return cut;
}

void write_project_model(ByteWriter& writer, std::size_t paint_jobs, const SHAPEMODEL& model) {
    writer.u16(static_cast<std::uint16_t>(vertices_in_use(model).size()));
    for (const SHAPEVERTEX& vertex : vertices_in_use(model))
        write_vertex(writer, vertex);
    writer.u16(static_cast<std::uint16_t>(primitives_in_use(model).size()));
    for (const SHAPEPRIM& primitive : primitives_in_use(model))
        write_primitive(writer, paint_jobs, primitive);
}
