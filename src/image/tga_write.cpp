// Writing TGA images: run-length packets, rows bottom-up unless asked otherwise, the footer of TGA 2.0.
#include "base/file_io.h"
#include "image/tga.h"
#include "image/tga_layout.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

namespace {

using namespace targa_layout;

struct HeaderFields {
    std::uint8_t map_type = 0, image_type = run_length_true_colour;
    std::uint16_t map_length = 0;
    std::uint8_t map_entry_bits = 0, depth = 0, descriptor = 0;
};

void write_header(ByteWriter& writer, const HeaderFields& fields, const Image& image) {
    writer.u8(0); // no ID field
    writer.u8(fields.map_type);
    writer.u8(fields.image_type);
    writer.u16(0); // first entry of the colour map
    writer.u16(fields.map_length);
    writer.u8(fields.map_entry_bits);
    writer.u16(0); // origin
    writer.u16(0);
    writer.u16(static_cast<std::uint16_t>(image.width()));
    writer.u16(static_cast<std::uint16_t>(image.height()));
    writer.u8(fields.depth);
    writer.u8(fields.descriptor);
}

void write_footer(ByteWriter& writer) {
    writer.zeros(8); // no extension area, no developer area
    writer.text(footer_signature);
    writer.u8(0);
}

// One pixel of an image, and how it is written.
struct Argb32 {
    using Pixel = std::uint32_t;
    static constexpr std::size_t size = 4;
    static std::uint32_t encode(Pixel pixel) { return pixel; }
};
struct Rgb24 {
    using Pixel = std::uint32_t;
    static constexpr std::size_t size = 3;
    static std::uint32_t encode(Pixel pixel) { return pixel; }
};
// 5-6-5 to 1-5-5-5, the top bit set.
struct Rgb555 {
    using Pixel = std::uint16_t;
    static constexpr std::size_t size = 2;
    static std::uint32_t encode(Pixel pixel) {
        const unsigned value = pixel;
        return (value >> 6) << 5 | (value & 31) | 32768;
    }
};
struct Index8 {
    using Pixel = std::uint8_t;
    static constexpr std::size_t size = 1;
    static std::uint32_t encode(Pixel pixel) { return pixel; }
};

// The packets of one row.
template <typename Format>
class PacketRow {
public:
    using Pixel = typename Format::Pixel;

    explicit PacketRow(std::size_t width) : packets_(width * (1 + Format::size)) {}

    // `pixels` holds the row and one pixel more, the one that the look-ahead of the last column sees.
    std::span<const std::byte> encode(std::span<const Pixel> pixels) {
        used_ = 0;
        const std::size_t width = pixels.size() - 1;
        std::size_t x = 0;
        while (x < width) {
            const bool last_column = x == width - 1;
            const bool equal = !last_column && pixels[x + 1] == pixels[x];
            const std::size_t count = equal         ? run_length(pixels.subspan(x, width - x))
                                      : last_column ? 1
                                                    : raw_length(pixels.subspan(x));
            if (equal)
                run(pixels[x], count);
            else
                raw(pixels.subspan(x, count));
            x += count;
        }
        return std::span(packets_).first(used_);
    }

private:
    // Pixels equal to the first one, at most a packet full.
    static std::size_t run_length(std::span<const Pixel> pixels) {
        const std::size_t limit = std::min<std::size_t>(pixels.size(), longest_packet);
        std::size_t count = 1;
        while (count < limit && pixels[count] == pixels[0])
            ++count;
        return count;
    }

    // Pixels before the first one that equals its follower, at most a packet full. The last pixel is the follower of
    // the row's last column only.
    //
    // ODDITY targa-look-ahead (kept): in the last column the follower is the word behind the row, which is no pixel of
    // this row: the first one of the next row in memory, or padding. When it is equal by chance, the last pixel gets a
    // packet of its own. Readers do not care, the bytes of saved files depend on it. Behind the last row there is no
    // such word, and none is read: see follower_of_row.
    static std::size_t raw_length(std::span<const Pixel> pixels) {
        const std::size_t limit = std::min<std::size_t>(pixels.size() - 1, longest_packet);
        std::size_t count = 1;
        while (count < limit && pixels[count] != pixels[count + 1])
            ++count;
        return count;
    }

    void run(Pixel pixel, std::size_t count) {
        header(count + 127);
        put(pixel);
    }

    void raw(std::span<const Pixel> pixels) {
        header(pixels.size() - 1);
        for (const Pixel pixel : pixels)
            put(pixel);
    }

    void header(std::size_t value) { packets_[used_++] = static_cast<std::byte>(value); }

    void put(Pixel pixel) {
        const std::uint32_t value = Format::encode(pixel);
        std::memcpy(&packets_[used_], &value, Format::size);
        used_ += Format::size;
    }

    std::vector<std::byte> packets_;
    std::size_t used_ = 0;
};

// The word behind a row in the pixel area, for the look-ahead. Behind the last one there is nothing: then a word that
// differs from the row's last pixel.
template <typename Pixel>
Pixel follower_of_row(const Image& image, int y, Pixel last) {
    const auto area = image.bytes();
    const std::size_t at = static_cast<std::size_t>(y) * image.pitch() + image.row(y).size();
    if (area.size() - at < sizeof(Pixel)) return static_cast<Pixel>(~last);
    Pixel follower;
    std::memcpy(&follower, &area[at], sizeof follower);
    return follower;
}

template <typename Format>
void write_packets(ByteWriter& writer, const Image& image, TargaRows order = TargaRows::bottom_up) {
    using Pixel = typename Format::Pixel;
    const auto width = static_cast<std::size_t>(image.width());
    if (width == 0) return;
    std::vector<Pixel> pixels(width + 1);
    PacketRow<Format> packets(width);
    for (int row = 0; row < image.height(); ++row) {
        const int y = order == TargaRows::top_down ? row : image.height() - 1 - row;
        std::memcpy(pixels.data(), image.row(y).data(), image.row(y).size());
        pixels[width] = follower_of_row(image, y, pixels[width - 1]);
        writer.bytes(packets.encode(pixels));
    }
}

bool is_opaque(const Image& image) {
    for (int y = 0; y < image.height(); ++y) {
        const auto row = image.row(y);
        for (std::size_t alpha = 3; alpha < row.size(); alpha += 4)
            if (row[alpha] != 255) return false;
    }
    return true;
}

void write_colour_map(ByteWriter& writer, std::span<const std::uint8_t> palette) {
    if (!palette.empty()) return writer.bytes(palette);
    for (int i = 0; i < 256; ++i) {
        const std::uint32_t entry = palette_entry(i);
        for (int shift = 0; shift < 24; shift += 8)
            writer.u8(static_cast<std::uint8_t>(entry >> shift));
    }
}

// The common course of the writers: refuse, encode, save.
template <typename Encode>
void save_targa(const std::string& filename, const Image* image, int bytes_per_pixel, Encode encode) {
    set_targa_error(0);
    if (!image) return set_targa_error(targa_error::no_image);
    if (image->bytes_per_pixel() != bytes_per_pixel)
        return set_targa_error(targa_error::wrong_depth, bytes_per_pixel * 8);
    try {
        if (save_file(filename, encode(*image)) != SaveOutcome::saved) set_targa_error(targa_error::cannot_create);
    } catch (const std::bad_alloc&) {
        set_targa_error(targa_error::cannot_create);
    }
}

} // namespace

Bytes encode_targa_32(const Image& image, TargaRows rows) {
    const bool opaque = is_opaque(image);
    ByteWriter writer;
    HeaderFields fields;
    fields.depth = opaque ? 24 : 32;
    fields.descriptor = opaque ? 0 : 8;
    if (rows == TargaRows::top_down) fields.descriptor |= top_to_bottom;
    write_header(writer, fields, image);
    if (opaque)
        write_packets<Rgb24>(writer, image, rows);
    else
        write_packets<Argb32>(writer, image, rows);
    write_footer(writer);
    return writer.take();
}

Bytes encode_targa_16(const Image& image) {
    ByteWriter writer;
    HeaderFields fields;
    fields.depth = 16;
    write_header(writer, fields, image);
    write_packets<Rgb555>(writer, image);
    write_footer(writer);
    return writer.take();
}

Bytes encode_targa_8(const Image& image, std::span<const std::uint8_t> palette) {
    ByteWriter writer;
    HeaderFields fields;
    fields.map_type = 1;
    fields.image_type = run_length_mapped;
    fields.map_length =
        static_cast<std::uint16_t>(palette.empty() ? 256 : std::min<std::size_t>(palette.size() / 3, 65535));
    fields.map_entry_bits = 24;
    fields.depth = 8;
    write_header(writer, fields, image);
    write_colour_map(writer, palette);
    write_packets<Index8>(writer, image);
    write_footer(writer);
    return writer.take();
}

void TARGASAVE(const std::string& filename, const Image* image) { TARGASAVE32(filename, image); }

void TARGASAVE32(const std::string& filename, const Image* image) {
    save_targa(filename, image, 4, [](const Image& picture) { return encode_targa_32(picture); });
}

void TARGASAVE16(const std::string& filename, const Image* image) { save_targa(filename, image, 2, encode_targa_16); }

void TARGASAVE8(const std::string& filename, const Image* image, std::span<const std::uint8_t> palette) {
    save_targa(filename, image, 1, [&](const Image& picture) { return encode_targa_8(picture, palette); });
}

void save_targa_from_the_top(const std::string& filename, const Image* image) {
    save_targa(filename, image, 4, [](const Image& picture) { return encode_targa_32(picture, TargaRows::top_down); });
}
