// Shapes and shape resources for the tests of the shape file.
#pragma once

#include "formats/resource_archive.h"
#include "formats/shape_file.h"
#include "support/bytes.h"

#include <memory>

// A resource with `vertices` points at (1, 2, 3), (4, 5, 6) ... in file order x, z, y and one empty primitive a number
// of `primitives`, `jobs` materials each.
inline Bytes shape_resource(int vertices, int primitives, int jobs, int first_number = 1) {
    ByteWriter writer;
    writer.bytes(std::span<const std::byte>(byte_list({vertices, primitives, jobs, 0})));
    for (int i = 0; i < 3 * vertices; ++i)
        writer.u16(static_cast<std::uint16_t>(first_number + i));
    for (int i = 0; i < 2 * primitives; ++i)
        writer.u32(static_cast<std::uint32_t>(0x01010101 * (i + 1)));
    for (int i = 0; i < primitives; ++i) {
        writer.u16(0);
        for (int job = 0; job < jobs; ++job)
            writer.u8(static_cast<std::uint8_t>(100 + job));
    }
    return writer.take();
}

// Fills a model with numbers that differ everywhere, `seed` apart from other models; coordinates are whole file
// numbers.
inline SHAPEMODEL numbered_model(int vertices, int primitives, double scale, int seed = 0) {
    SHAPEMODEL model;
    model.nverts = static_cast<std::uint16_t>(vertices);
    model.nprims = static_cast<std::uint16_t>(primitives);
    for (int i = 0; i < vertices; ++i) {
        SHAPEVERTEX& vertex = model.verts[static_cast<std::size_t>(i)];
        vertex.x = (seed + i) * scale;
        vertex.y = (32767 - i) * scale;
        vertex.z = (-32768 + i) * scale;
    }
    for (int i = 0; i < primitives; ++i) {
        SHAPEPRIM& primitive = model.prims[static_cast<std::size_t>(i)];
        primitive.type = static_cast<std::uint8_t>(seed + i);
        primitive.flags = static_cast<std::uint8_t>(255 - i);
        primitive.cull1 = 0x80000000U + static_cast<std::uint32_t>(i);
        primitive.cull2 = 0xFFFFFFFFU - static_cast<std::uint32_t>(i);
    }
    return model;
}

// Gives the materials and vertex indices that a file holds for the primitive's type numbers of their own.
inline void number_contents(SHAPEMODEL& model, int jobs) {
    for (int i = 0; i < model.nprims; ++i) {
        SHAPEPRIM& primitive = model.prims[static_cast<std::size_t>(i)];
        for (int job = 0; job < jobs; ++job)
            primitive.material[static_cast<std::size_t>(job)] = static_cast<std::uint16_t>((i * 3 + job) & 0xFF);
        for (int corner = 0; corner < primitive_vertex_count(primitive.type); ++corner)
            primitive.vertex[static_cast<std::size_t>(corner)] = static_cast<std::uint16_t>((250 + i + corner) & 0xFF);
    }
}

inline std::unique_ptr<ShapeFile> numbered_shapes(int vertices, int primitives, int jobs) {
    auto shapes = std::make_unique<ShapeFile>();
    shapes->paint_jobs = static_cast<std::uint8_t>(jobs);
    for (int k = 0; k < shape_file_models; ++k) {
        SHAPEMODEL& model = shapes->models[static_cast<std::size_t>(k)];
        model = numbered_model(vertices, primitives, shape_scale(k), k);
        number_contents(model, jobs);
    }
    return shapes;
}

inline std::unique_ptr<ShapeFile> decoded_shapes(const Bytes& file, std::uint32_t mask = all_shapes) {
    auto shapes = std::make_unique<ShapeFile>();
    decode_shape_file(file, mask, *shapes);
    return shapes;
}

// An archive of the seven models, each with one vertex whose x is its place in the file, except those named in
// `without`.
inline Bytes archive_of_shapes_without(const std::string& without) {
    std::vector<ArchiveResource> resources;
    for (int k = 0; k < shape_file_models; ++k)
        if (without.find(shape_id(k)) == std::string::npos)
            resources.push_back({shape_id(k), shape_resource(1, 0, 7, 10 * k)});
    return encode_archive(resources);
}

// x of the first vertex as the file's number.
inline int first_number(const ShapeFile& shapes, int model) {
    return file_coordinate(shapes.models[static_cast<std::size_t>(model)].verts[0].x, shape_scale(model));
}
