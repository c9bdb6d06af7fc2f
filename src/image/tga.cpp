// Reading TGA images. Decoding trusts nothing: every byte comes through the reader, every pixel goes through a sink
// that ends with the image.
#include "image/tga.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "base/reset.h"
#include "image/tga_layout.h"
#include "image/tga_pixels.h"

#include <algorithm>
#include <new>
#include <utility>

std::int16_t TARGAERROR = 0;
std::string TARGAERRORMESSAGE;

namespace {

using namespace targa_layout;
using namespace targa_pixels;

struct Header {
    std::uint8_t id_length = 0, map_type = 0, image_type = 0;
    std::uint16_t map_first = 0, map_length = 0;
    std::uint8_t map_entry_bits = 0;
    std::uint16_t x_origin = 0, y_origin = 0, width = 0, height = 0;
    std::uint8_t depth = 0, descriptor = 0;

    bool has_alpha() const { return descriptor & alpha_bits; }
    std::size_t map_entry_bytes() const { return map_entry_bits / 8; }
    std::size_t map_start() const { return header_bytes + id_length; }
    std::size_t pixel_start() const { return map_start() + (map_type != 0 ? map_entry_bytes() * map_length : 0); }
};

// What the file is too short for stays 0, which no decoder takes.
Header read_header(ByteReader& reader) {
    Header header;
    reader.u8(header.id_length);
    reader.u8(header.map_type);
    reader.u8(header.image_type);
    reader.u16(header.map_first);
    reader.u16(header.map_length);
    reader.u8(header.map_entry_bits);
    reader.u16(header.x_origin);
    reader.u16(header.y_origin);
    reader.u16(header.width);
    reader.u16(header.height);
    reader.u8(header.depth);
    reader.u8(header.descriptor);
    return header;
}

// ODDITY targa-packets-cross-rows (kept): the packet state carries over from one row to the next, although writers are
// asked to end their packets with the row.
template <typename Format>
void decode_packets(ByteReader& reader, Sink<Format>& sink) {
    std::uint8_t header = 0;
    while (!sink.full() && reader.u8(header)) {
        if (header & run_packet) {
            const FileBytes pixel = reader.view(Format::size);
            if (pixel.size() < Format::size) return;
            sink.run(Format::decode(pixel), header - std::size_t{127});
        } else {
            sink.literals(reader.view((header + std::size_t{1}) * Format::size));
        }
    }
}

template <typename Format>
void decode_plain(ByteReader& reader, Sink<Format>& sink) {
    sink.literals(reader.view(reader.remaining()));
}

// Returns whether every pixel had its value.
using Decoder = bool (*)(ByteReader&, Image&, bool from_the_top);

template <typename Format>
bool run_length(ByteReader& reader, Image& image, bool from_the_top) {
    Sink<Format> sink(image, from_the_top);
    decode_packets(reader, sink);
    return sink.full();
}

template <typename Format>
bool plain(ByteReader& reader, Image& image, bool from_the_top) {
    Sink<Format> sink(image, from_the_top);
    decode_plain(reader, sink);
    return sink.full();
}

struct DecoderRow {
    bool (*takes)(const Header&);
    int bytes_per_pixel; // of the image
    Decoder decode;
    std::size_t plain_bytes; // of a pixel in the file where pixels stand one by one, 0 where they are packed
};

bool is_kind(const Header& header, std::uint8_t type, std::uint8_t depth) {
    return header.image_type == type && header.depth == depth;
}

bool has_wide_map(const Header& header) { return header.map_entry_bits == 24 || header.map_entry_bits == 32; }

// The variants that are read; the first row that takes a header decodes it.
constexpr DecoderRow decoders[] = {
    // ODDITY targa-alpha-bits-must-fit (kept): a depth of 32 without alpha bits, or of 24 with some, has no decoder.
    {[](const Header& h) { return is_kind(h, run_length_true_colour, 32) && h.has_alpha(); }, 4, run_length<Argb32>, 0},
    {[](const Header& h) { return is_kind(h, run_length_true_colour, 24) && !h.has_alpha(); }, 4, run_length<Rgb24>, 0},
    {[](const Header& h) { return is_kind(h, true_colour, 32) && h.has_alpha(); }, 4, plain<Argb32>, Argb32::size},
    {[](const Header& h) { return is_kind(h, true_colour, 24) && !h.has_alpha(); }, 4, plain<Rgb24>, Rgb24::size},
    // ODDITY targa-16-bit-paths-differ (kept): packets are converted from 1-5-5-5 to 5-6-5, plain rows stay as they
    // are.
    {[](const Header& h) { return is_kind(h, run_length_true_colour, 16); }, 2, run_length<Rgb555>, 0},
    {[](const Header& h) { return is_kind(h, true_colour, 16); }, 2, plain<Word16>, Word16::size},
    {[](const Header& h) { return is_kind(h, run_length_mapped, 8) && has_wide_map(h); }, 1, run_length<Index8>, 0},
};

const DecoderRow* decoder_for(const Header& header) {
    const auto row = std::ranges::find_if(decoders, [&](const DecoderRow& r) { return r.takes(header); });
    return row == std::end(decoders) ? nullptr : row;
}

// Pixels that the file does not bring are 0.
ImageHandle image_for(const Header& header, const DecoderRow& decoder, std::size_t file_bytes) {
    const int depth = decoder.bytes_per_pixel * 8;
    const std::size_t plain_bytes = decoder.plain_bytes * header.width * header.height;
    const bool brings_all = plain_bytes != 0 && file_bytes >= plain_bytes;
    return brings_all ? create_unset_image(header.width, header.height, depth)
                      : create_image(header.width, header.height, 0, depth);
}

// Only whole entries that the file holds, and of those the ones below 256. The map lies behind the ID field whatever
// the header says of its type.
std::vector<TargaEntry> read_colour_map(FileBytes file, const Header& header) {
    std::vector<TargaEntry> map;
    ByteReader reader(file, header.map_start());
    const std::size_t end = std::min<std::size_t>(std::size_t{header.map_first} + header.map_length, 256);
    for (std::size_t index = header.map_first; index < end; ++index) {
        const FileBytes entry = reader.view(header.map_entry_bytes());
        if (entry.size() < header.map_entry_bytes()) break;
        map.push_back({.blue = std::to_integer<std::uint8_t>(entry[0]),
                       .green = std::to_integer<std::uint8_t>(entry[1]),
                       .red = std::to_integer<std::uint8_t>(entry[2])});
    }
    return map;
}

// Into the caller's palette, or into the one of 8-bit images.
void set_entry(TargaPalette* palette, std::size_t index, const TargaEntry& entry) {
    if (!palette) return set_palette_entry(static_cast<int>(index), entry.red, entry.green, entry.blue);
    (*palette)[3 * index] = entry.blue;
    (*palette)[3 * index + 1] = entry.green;
    (*palette)[3 * index + 2] = entry.red;
}

void apply_colour_map(const TargaPicture& picture, TargaPalette* palette) {
    std::size_t index = picture.first_entry;
    for (const TargaEntry& entry : picture.colour_map)
        set_entry(palette, index++, entry);
}

std::int16_t refusal(const Header& header) {
    if (header.width > largest_side || header.height > largest_side) return targa_error::too_large;
    if (header.descriptor & right_to_left) return targa_error::inverted_x;
    if (header.width == 0 || header.height == 0 || !decoder_for(header)) return targa_error::unsupported;
    return 0;
}

const char* message_of(std::int16_t code) {
    switch (code) {
    case targa_error::no_image: return "No image in buffer";
    case targa_error::cannot_create: return "Failed to create image file";
    case targa_error::not_found: return "File not found";
    case targa_error::too_large: return "Image is too large";
    case targa_error::inverted_x: return "Format not supported: X axis is inverted";
    case targa_error::no_memory: return "Could not allocate a buffer to decompress image";
    case targa_error::unsupported: return "Unsupported format";
    case targa_error::read_error: return "Read error";
    default: return "";
    }
}

} // namespace

void set_targa_error(std::int16_t code, int bits) {
    TARGAERROR = code;
    TARGAERRORMESSAGE = code == targa_error::wrong_depth ? "Not a " + std::to_string(bits) + "bit image. Unsupported"
                                                         : message_of(code);
}

TargaPicture decode_targa(std::span<const std::byte> file) {
    ByteReader reader(file);
    const Header header = read_header(reader);
    TargaPicture picture;
    picture.error = refusal(header);
    if (picture.error != 0) return picture;

    const DecoderRow& decoder = *decoder_for(header);
    reader.seek(header.pixel_start());
    picture.image = image_for(header, decoder, reader.remaining());
    if (!picture.image) {
        picture.error = targa_error::no_memory;
        return picture;
    }
    picture.whole = decoder.decode(reader, *picture.image, header.descriptor & top_to_bottom);
    if (header.image_type != run_length_mapped) return picture;
    picture.first_entry = header.map_first;
    picture.colour_map = read_colour_map(file, header);
    return picture;
}

std::optional<PictureSize> targa_size(std::span<const std::byte> file) {
    ByteReader reader(file);
    const Header header = read_header(reader);
    if ((header.descriptor & right_to_left) || !decoder_for(header)) return {};
    return PictureSize{header.width, header.height};
}

namespace {
TargaPicture read_targa(const std::string& filename) {
    try {
        const FileContent file = read_file_or_throw(filename, largest_targa);
        if (file) return decode_targa(*file);
        return {.error = file.failed() ? targa_error::read_error : targa_error::not_found};
    } catch (const std::bad_alloc&) {
        return {.error = targa_error::no_memory};
    }
}
} // namespace

ImageHandle TARGALOAD(const std::string& filename, TargaPalette* palette) {
    TargaPicture picture = read_targa(filename);
    set_targa_error(picture.error);
    if (picture.image) apply_colour_map(picture, palette);
    return std::move(picture.image);
}

namespace {
const ResetWithProgram registered([] {
    TARGAERROR = 0;
    TARGAERRORMESSAGE.clear();
});
}
