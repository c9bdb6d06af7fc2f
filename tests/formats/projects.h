// Project files and their parts, built by hand and from numbers.
#pragma once

#include "base/byte_reader.h"
#include "formats/project_file.h"
#include "formats/shapes.h"
#include "support/bytes.h"

#include <limits>
#include <memory>
#include <string>
#include <vector>

// Little-endian values, one after the other.
inline Bytes words(std::initializer_list<int> values) {
    ByteWriter writer;
    for (const int value : values)
        writer.u16(static_cast<std::uint16_t>(value));
    return writer.take();
}

inline Bytes repeated(const Bytes& part, std::size_t times) {
    Bytes all;
    for (std::size_t i = 0; i < times; ++i)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

struct ChunkBytes {
    std::string id;
    Bytes content;
};

// A file with these chunks, in this order in the table and in the file.
inline Bytes project_of(const std::vector<ChunkBytes>& chunks) {
    ByteWriter writer;
    writer.text("*car");
    writer.bytes(std::span<const std::byte>(byte_list({13, 10, 26, 0, 1, 0, 0, static_cast<int>(chunks.size())})));
    std::size_t offset = 12 + 8 * chunks.size();
    for (const ChunkBytes& chunk : chunks) {
        writer.text(chunk.id);
        writer.u32(static_cast<std::uint32_t>(offset));
        offset += chunk.content.size();
    }
    for (const ChunkBytes& chunk : chunks)
        writer.bytes(std::span<const std::byte>(chunk.content));
    return writer.take();
}

inline Bytes texts_chunk(const std::string& name, const std::string& sign_name = {}, const std::string& text = {}) {
    Bytes all;
    for (const std::string& part : {name, sign_name, text})
        all = joined({all, words({static_cast<int>(part.size())}), bytes_of(part)});
    return joined({all, byte_list({0})});
}

inline Bytes bytes_of_vertex(double x, double y, double z) {
    ByteWriter writer;
    for (const double coordinate : {x, y, z})
        writer.f64(coordinate);
    return writer.take();
}

// Of this type, with these materials and vertex indices; culling masks and flags are set.
inline Bytes bytes_of_primitive(int type, std::initializer_list<int> materials, std::initializer_list<int> vertices) {
    return joined({byte_list({type, 1, 2, 3, 4, 5, 6, 7, 8, 9}), words(materials), words(vertices)});
}

inline Bytes empty_model() { return words({0, 0}); }

// The models given, then empty ones.
inline Bytes models_chunk(int paint_jobs, const std::vector<Bytes>& models = {}) {
    Bytes all = byte_list({paint_jobs});
    for (const Bytes& model : models)
        all = joined({all, model});
    return joined({all, repeated(empty_model(), project_models - models.size())});
}

inline Bytes bytes_of_bitmap(const std::string& name, int width, int height, std::size_t pixels, int is_mask = 0,
                             int has_mask = 0, const std::string& mask_name = "    ") {
    return joined({bytes_of(name), words({width, height, 0x0303, 0x0404, 5, -6, 7, -8}),
                   byte_list({0xF1, 0xF2, 0xF3, 0xF4, is_mask, has_mask}), bytes_of(mask_name),
                   counting_bytes(pixels)});
}

inline Bytes bitmaps_chunk(int count, const std::vector<Bytes>& bitmaps) {
    Bytes all = byte_list({count});
    for (const Bytes& bitmap : bitmaps)
        all = joined({all, bitmap});
    return all;
}
inline Bytes bitmaps_chunk(const std::vector<Bytes>& bitmaps) {
    return bitmaps_chunk(static_cast<int>(bitmaps.size()), bitmaps);
}

// A whole file whose one interesting chunk is this; the others hold nothing.
inline Bytes project_with(const ChunkBytes& chunk) {
    std::vector<ChunkBytes> chunks = {{"Base", texts_chunk("")},
                                      {"Pars", Bytes(parameter_bytes)},
                                      {"Shps", models_chunk(7)},
                                      {"Dash", bitmaps_chunk({})}};
    for (ChunkBytes& each : chunks)
        if (each.id == chunk.id) each = chunk;
    return project_of(chunks);
}

inline ProjectFile decoded_project(const Bytes& file, ProjectFile before = {}) {
    decode_project_file(file, before);
    return before;
}

inline BitmapRecord numbered_bitmap(const std::string& name, int width, int height, int seed = 0) {
    BitmapRecord bitmap;
    bitmap.name = name;
    bitmap.width = static_cast<std::uint16_t>(width);
    bitmap.height = static_cast<std::uint16_t>(height);
    bitmap.header_word_3 = 0xFFFF;
    bitmap.header_word_4 = static_cast<std::uint16_t>(seed);
    bitmap.relative_x = std::numeric_limits<std::int16_t>::min();
    bitmap.relative_y = -1;
    bitmap.absolute_x = std::numeric_limits<std::int16_t>::max();
    bitmap.absolute_y = static_cast<std::int16_t>(seed);
    bitmap.flags = {1, 2, 3, 255};
    Pixels pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<std::uint8_t>(i * 7 + static_cast<std::size_t>(seed));
    bitmap.pixels = std::move(pixels);
    bitmap.mask_name = "    ";
    return bitmap;
}

// Every coordinate, index and material of its own; materials and indices beyond a byte, coordinates beyond any grid.
inline SHAPEMODEL odd_model(int vertices, int primitives, int jobs, int seed) {
    SHAPEMODEL model;
    model.nverts = static_cast<std::uint16_t>(vertices);
    model.nprims = static_cast<std::uint16_t>(primitives);
    for (std::size_t i = 0; i < model.nverts; ++i) {
        const auto number = static_cast<double>(i);
        model.verts[i] = {number / 3 + seed, -number * 1e-300, number * 1e300};
    }
    for (std::size_t i = 0; i < model.nprims; ++i) {
        SHAPEPRIM& primitive = model.prims[i];
        primitive.type = static_cast<std::uint8_t>(i + static_cast<std::size_t>(seed));
        primitive.flags = static_cast<std::uint8_t>(255 - i);
        primitive.cull1 = 0x80000000U + static_cast<std::uint32_t>(i);
        primitive.cull2 = 0xFFFFFFFFU - static_cast<std::uint32_t>(i);
        for (std::size_t job = 0; job < static_cast<std::size_t>(jobs); ++job)
            primitive.material[job] = static_cast<std::uint16_t>(65535 - i * 3 - job);
        const auto corners = static_cast<std::size_t>(primitive_vertex_count(primitive.type));
        for (std::size_t corner = 0; corner < corners; ++corner)
            primitive.vertex[corner] = static_cast<std::uint16_t>(i * 131 + corner);
    }
    return model;
}

inline ProjectFile odd_project(int vertices, int primitives, int jobs) {
    ProjectFile project;
    project.name = std::string("Name\0of a car", 13);
    project.sign_name = "SIGN";
    project.information = std::string(2000, 'x') + "]";
    for (std::size_t i = 0; i < project.par.size(); ++i)
        project.par[i] = static_cast<std::byte>(i * 13 & 0xFF);
    project.paint_jobs = static_cast<std::uint8_t>(jobs);
    for (std::size_t k = 0; k < project_models; ++k)
        project.models[k] = odd_model(vertices, primitives, jobs, static_cast<int>(k));
    project.bitmaps = {numbered_bitmap("dast", 5, 3, 1), numbered_bitmap("dasm", 5, 3, 2),
                       numbered_bitmap("none", 0, 7, 3)};
    project.bitmaps[0].has_mask = 255;
    project.bitmaps[0].mask_name = "dasm";
    project.bitmaps[1].is_mask = 255;
    return project;
}
