#include "formats/palette_file.h"

#include "base/byte_reader.h"
#include "base/config.h"
#include "base/file_io.h"
#include "model/colours.h"

namespace {
constexpr std::size_t palette_size = 256 * sizeof(std::uint32_t);
}

void decode_palette(std::span<const std::byte> file, std::array<std::uint32_t, 256>& palette) {
    ByteReader reader(file);
    for (std::uint32_t& colour : palette)
        reader.u32(colour);
}

Bytes encode_palette(const std::array<std::uint32_t, 256>& palette) {
    ByteWriter writer;
    for (const std::uint32_t colour : palette)
        writer.u32(colour);
    return writer.take();
}

void LOADPALETTE() {
    if (const auto file = load_and_note(PROGDIR + "vortag.col", palette_size)) decode_palette(*file, PAL);
}
