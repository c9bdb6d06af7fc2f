#include "expect.h"

#include "formats/shape_file.h"

namespace {
const ShapeFile nothing;
ShapeFile shapes, again;

void check(std::span<const std::byte> file, std::uint32_t mask) {
    shapes = nothing;
    again = nothing;
    decode_shape_file(file, mask, shapes);
    for (const SHAPEMODEL& model : shapes.models)
        expect(model.nverts <= shape_capacity && model.nprims <= shape_capacity, "counts are within the tables");
    expect(shapes_fit_file(shapes), "what a file says fits a file");

    const Bytes written = encode_shape_file(shapes);
    decode_shape_file(written, all_shapes, again);
    expect(encode_shape_file(again) == written, "what was read is written and read as the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check(input_bytes(data, size), all_shapes);
    if (size > 0) check(input_bytes(data, size), data[size - 1]);
    return 0;
}
