#include "expect.h"

#include "base/byte_reader.h"
#include "convert/bitmap_layout.h"
#include "convert/refusal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<LayoutRow> rows;
    try {
        rows = read_layout(ByteReader(input_bytes(data, size)).text_view());
    } catch (const Refusal&) {
        return 0;
    }
    for (const LayoutRow& row : rows) {
        const std::size_t pixels = std::size_t{row.bitmap.width} * row.bitmap.height;
        for (const PixelRun& run : row.kept)
            expect(run.at + run.count <= pixels, "kept pixels lie in their bitmap");
        expect(row.picture.find('/') == std::string::npos, "pictures stand in the folder");
    }
    expect(read_layout(layout_text(rows)) == rows, "what was read is written and read as the same");
    return 0;
}
