// Any bytes as a shape file: read as a second, literal reader reads them, and what was read is written and read as the
// same.
#include "expect.h"
#include "literal_reader.h"

#include "formats/shape_file.h"

#include <algorithm>

namespace {
const ShapeFile nothing;
ShapeFile shapes, literal, again;

constexpr std::array<const char*, 7> ids = {"car0", "car1", "car2", "exp0", "exp1", "exp2", "exp3"};
constexpr std::array<double, 7> scales = {0.002, 0.04, 0.05, 0.04, 0.04, 0.04, 0.04};

void read_coordinate(LiteralReader& reader, double scale, double& coordinate) {
    std::int16_t units = 0;
    if (reader.number(2, units)) coordinate = units * scale;
}

void read_primitive(LiteralReader& reader, SHAPEPRIM& primitive) {
    reader.number(1, primitive.type);
    reader.number(1, primitive.flags);
    for (std::size_t job = 0; job < std::min<std::size_t>(literal.paint_jobs, 17); ++job)
        reader.number(1, primitive.material[job]);
    if (literal.paint_jobs > 17) {
        literal.materials_cut |= !reader.at_end();
        reader.pass(literal.paint_jobs - 17U);
    }
    const int type = primitive.type;
    const int corners = type <= 10 ? type : type == 11 ? 2 : type == 12 ? 6 : 0;
    for (int corner = 0; corner < corners; ++corner)
        reader.number(1, primitive.vertex[static_cast<std::size_t>(corner)]);
}

void read_model(LiteralReader& reader, double scale, SHAPEMODEL& model) {
    reader.number(1, model.nverts);
    reader.number(1, model.nprims);
    reader.number(1, literal.paint_jobs);
    int reserved = 0;
    reader.number(1, reserved);
    for (int i = 0; i < model.nverts; ++i) {
        SHAPEVERTEX& vertex = model.verts[static_cast<std::size_t>(i)];
        read_coordinate(reader, scale, vertex.x);
        read_coordinate(reader, scale, vertex.z);
        read_coordinate(reader, scale, vertex.y);
    }
    const std::span primitives(model.prims.data(), model.nprims);
    for (SHAPEPRIM& primitive : primitives)
        reader.number(4, primitive.cull1);
    for (SHAPEPRIM& primitive : primitives)
        reader.number(4, primitive.cull2);
    for (SHAPEPRIM& primitive : primitives)
        read_primitive(reader, primitive);
}

// Fills `literal`. A model without an entry of its own goes on where the one before it ended.
FileRemark read_literally(std::span<const std::byte> file, std::uint32_t mask) {
    const LiteralArchive archive = read_archive_literally(file, 16);
    LiteralReader reader(file, archive.tables_end);
    bool any = false;
    for (std::size_t k = 0; k < ids.size(); ++k) {
        const auto entry = std::ranges::find(archive.entries, ids[k], [](const auto& e) { return e.first; });
        if (entry != archive.entries.end()) {
            any = true;
            reader.go_to(entry->second);
        }
        if ((mask >> k) % 2 == 1) read_model(reader, scales[k], literal.models[k]);
    }
    if (!any) return FileRemark::no_car_data;
    return archive.whole && !reader.ran_out() ? FileRemark::none : FileRemark::ends_early;
}

void check(std::span<const std::byte> file, std::uint32_t mask) {
    shapes = nothing;
    literal = nothing;
    again = nothing;
    const FileRemark remark = decode_shape_file(file, mask, shapes);
    expect(remark == read_literally(file, mask), "the same remark");
    expect(shapes == literal, "the same shapes");
    expect(!input_is_good || (remark == FileRemark::none && !shapes.materials_cut), "a good file is read to its end");
    expect(shapes_fit_file(shapes), "what a file says fits a file");

    const Bytes written = encode_shape_file(shapes);
    expect(decode_shape_file(written, all_shapes, again) == FileRemark::none, "what was written is whole");
    expect(encode_shape_file(again) == written, "what was read is written and read as the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check(input_bytes(data, size), all_shapes);
    if (size > 0) check(input_bytes(data, size), data[size - 1]);
    return 0;
}
