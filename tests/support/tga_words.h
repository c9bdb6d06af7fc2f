// TGA files built by hand.
#pragma once

#include "base/byte_writer.h"
#include "image/image.h"
#include "support/bytes.h"

struct TargaFields {
    int id_length = 0, map_type = 0, image_type = 2, map_first = 0, map_length = 0, map_entry_bits = 0;
    int width = 1, height = 1, depth = 24, descriptor = 0x20; // top to bottom unless said otherwise
};

inline Bytes targa_header(const TargaFields& fields) {
    ByteWriter writer;
    writer.u8(static_cast<std::uint8_t>(fields.id_length));
    writer.u8(static_cast<std::uint8_t>(fields.map_type));
    writer.u8(static_cast<std::uint8_t>(fields.image_type));
    writer.u16(static_cast<std::uint16_t>(fields.map_first));
    writer.u16(static_cast<std::uint16_t>(fields.map_length));
    writer.u8(static_cast<std::uint8_t>(fields.map_entry_bits));
    writer.zeros(4);
    writer.u16(static_cast<std::uint16_t>(fields.width));
    writer.u16(static_cast<std::uint16_t>(fields.height));
    writer.u8(static_cast<std::uint8_t>(fields.depth));
    writer.u8(static_cast<std::uint8_t>(fields.descriptor));
    return writer.take();
}

inline Bytes targa_footer() { return joined({Bytes(8), bytes_of("TRUEVISION-XFILE."), Bytes(1)}); }

// The packets between header and footer of a written file without a colour map.
inline Bytes packets_of(const Bytes& file) { return bytes_between(file, 18, file.size() - 18 - 26); }

// A row as a picture of height 1.
inline ImageHandle row_of(std::initializer_list<std::uint32_t> pixels, int depth = 32) {
    auto image = create_image(static_cast<int>(pixels.size()), 1, 0, depth);
    int x = 0;
    for (const std::uint32_t pixel : pixels)
        image->set_pixel(x++, 0, pixel);
    return image;
}
