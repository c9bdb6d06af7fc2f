// Reading TGA images. Decoding trusts nothing: every byte comes through the reader, every pixel goes through a sink
// that ends with the image.
#include "image/tga.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "image/tga_layout.h"

#include <algorithm>
#include <cstring>
#include <new>

std::int16_t TARGAERROR = 0;
std::string TARGAERRORMESSAGE;

namespace {

using namespace targa_layout;
using FileBytes = std::span<const std::byte>;

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

std::uint32_t byte_at(FileBytes bytes, std::size_t index) { return std::to_integer<std::uint32_t>(bytes[index]); }

// One pixel of a file, and what it becomes in the image.
struct Argb32 {
    using Pixel = std::uint32_t;
    static constexpr std::size_t size = 4;
    static Pixel decode(FileBytes b) {
        return byte_at(b, 0) | byte_at(b, 1) << 8 | byte_at(b, 2) << 16 | byte_at(b, 3) << 24;
    }
};
struct Rgb24 {
    using Pixel = std::uint32_t;
    static constexpr std::size_t size = 3;
    static Pixel decode(FileBytes b) { return byte_at(b, 0) | byte_at(b, 1) << 8 | byte_at(b, 2) << 16 | 0xFF000000; }
};
struct Word16 {
    using Pixel = std::uint16_t;
    static constexpr std::size_t size = 2;
    static Pixel decode(FileBytes b) { return static_cast<Pixel>(byte_at(b, 0) | byte_at(b, 1) << 8); }
};
// 1-5-5-5 to 5-6-5, the top bit dropped.
struct Rgb555 {
    using Pixel = std::uint16_t;
    static constexpr std::size_t size = 2;
    static Pixel decode(FileBytes b) {
        const unsigned value = Word16::decode(b);
        return static_cast<Pixel>((value * 2 & 0xFFC0) | (value & 31));
    }
};
struct Index8 {
    using Pixel = std::uint8_t;
    static constexpr std::size_t size = 1;
    static Pixel decode(FileBytes b) { return static_cast<Pixel>(byte_at(b, 0)); }
};

// The pixels of an image in the order of the file, row after row. What comes when it is full is dropped.
template <typename Format>
class Sink {
public:
    using Pixel = typename Format::Pixel;

    Sink(Image& image, bool from_the_top) : image_(image), from_the_top_(from_the_top) { take_row(); }

    bool full() const { return row_number_ == image_.height(); }

    void run(Pixel pixel, std::size_t count) {
        while (count > 0 && !full()) {
            const std::size_t part = std::min(count, room());
            for (std::size_t i = 0; i < part; ++i)
                put(i, pixel);
            advance(part);
            count -= part;
        }
    }

    // As many pixels as `bytes` holds whole ones.
    void literals(FileBytes bytes) {
        while (bytes.size() >= Format::size && !full()) {
            const std::size_t part = std::min(bytes.size() / Format::size, room());
            for (std::size_t i = 0; i < part; ++i)
                put(i, Format::decode(bytes.subspan(i * Format::size, Format::size)));
            bytes = bytes.subspan(part * Format::size);
            advance(part);
        }
    }

private:
    // Of the row that is being filled.
    std::size_t room() const { return rest_.size() / sizeof(Pixel); }
    void put(std::size_t index, Pixel pixel) { std::memcpy(&rest_[index * sizeof pixel], &pixel, sizeof pixel); }

    void advance(std::size_t pixels) {
        rest_ = rest_.subspan(pixels * sizeof(Pixel));
        if (!rest_.empty()) return;
        ++row_number_;
        if (!full()) take_row();
    }

    void take_row() { rest_ = image_.row(from_the_top_ ? row_number_ : image_.height() - 1 - row_number_); }

    Image& image_;
    const bool from_the_top_;
    int row_number_ = 0;
    std::span<std::uint8_t> rest_;
};

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

using Decoder = void (*)(ByteReader&, Image&, bool from_the_top);

template <typename Format>
void run_length(ByteReader& reader, Image& image, bool from_the_top) {
    Sink<Format> sink(image, from_the_top);
    decode_packets(reader, sink);
}

template <typename Format>
void plain(ByteReader& reader, Image& image, bool from_the_top) {
    Sink<Format> sink(image, from_the_top);
    decode_plain(reader, sink);
}

struct DecoderRow {
    bool (*takes)(const Header&);
    int bytes_per_pixel; // of the image
    Decoder decode;
};

bool is_kind(const Header& header, std::uint8_t type, std::uint8_t depth) {
    return header.image_type == type && header.depth == depth;
}

bool has_wide_map(const Header& header) { return header.map_entry_bits == 24 || header.map_entry_bits == 32; }

// The variants that are read; the first row that takes a header decodes it.
constexpr DecoderRow decoders[] = {
    // ODDITY targa-alpha-bits-must-fit (kept): a depth of 32 without alpha bits, or of 24 with some, has no decoder.
    {[](const Header& h) { return is_kind(h, run_length_true_colour, 32) && h.has_alpha(); }, 4, run_length<Argb32>},
    {[](const Header& h) { return is_kind(h, run_length_true_colour, 24) && !h.has_alpha(); }, 4, run_length<Rgb24>},
    {[](const Header& h) { return is_kind(h, true_colour, 32) && h.has_alpha(); }, 4, plain<Argb32>},
    {[](const Header& h) { return is_kind(h, true_colour, 24) && !h.has_alpha(); }, 4, plain<Rgb24>},
    // ODDITY targa-16-bit-paths-differ (kept): packets are converted from 1-5-5-5 to 5-6-5, plain rows stay as they
    // are.
    {[](const Header& h) { return is_kind(h, run_length_true_colour, 16); }, 2, run_length<Rgb555>},
    {[](const Header& h) { return is_kind(h, true_colour, 16); }, 2, plain<Word16>},
    {[](const Header& h) { return is_kind(h, run_length_mapped, 8) && has_wide_map(h); }, 1, run_length<Index8>},
};

const DecoderRow* decoder_for(const Header& header) {
    const auto row = std::ranges::find_if(decoders, [&](const DecoderRow& r) { return r.takes(header); });
    return row == std::end(decoders) ? nullptr : row;
}

void set_entry(TargaPalette* palette, std::size_t index, FileBytes entry) {
    const auto blue = std::to_integer<std::uint8_t>(entry[0]);
    const auto green = std::to_integer<std::uint8_t>(entry[1]);
    const auto red = std::to_integer<std::uint8_t>(entry[2]);
    if (!palette) return set_palette_entry(static_cast<int>(index), red, green, blue);
    (*palette)[3 * index] = blue;
    (*palette)[3 * index + 1] = green;
    (*palette)[3 * index + 2] = red;
}

// Only whole entries that the file holds, and of those the ones below 256. The map lies behind the ID field whatever
// the header says of its type.
void apply_colour_map(FileBytes file, const Header& header, TargaPalette* palette) {
    ByteReader reader(file, header.map_start());
    const std::size_t end = std::min<std::size_t>(std::size_t{header.map_first} + header.map_length, 256);
    for (std::size_t index = header.map_first; index < end; ++index) {
        const FileBytes entry = reader.view(header.map_entry_bytes());
        if (entry.size() < header.map_entry_bytes()) return;
        set_entry(palette, index, entry);
    }
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
    default: return "";
    }
}

} // namespace

void set_targa_error(std::int16_t code, int bits) {
    TARGAERROR = code;
    TARGAERRORMESSAGE = code == targa_error::wrong_depth ? "Not a " + std::to_string(bits) + "bit image. Unsupported"
                                                         : message_of(code);
}

ImageHandle decode_targa(std::span<const std::byte> file, TargaPalette* palette, std::int16_t& error) {
    ByteReader reader(file);
    const Header header = read_header(reader);
    error = refusal(header);
    if (error != 0) return nullptr;

    const DecoderRow& decoder = *decoder_for(header);
    ImageHandle image = create_image(header.width, header.height, 0, decoder.bytes_per_pixel * 8);
    if (!image) {
        error = targa_error::no_memory;
        return nullptr;
    }
    reader.seek(header.pixel_start());
    decoder.decode(reader, *image, header.descriptor & top_to_bottom);
    if (header.image_type == run_length_mapped) apply_colour_map(file, header, palette);
    return image;
}

ImageHandle TARGALOAD(const std::string& filename, TargaPalette* palette) {
    set_targa_error(0);
    std::int16_t error = targa_error::not_found;
    ImageHandle image;
    try {
        if (const auto file = read_file_or_throw(filename, largest_targa)) image = decode_targa(*file, palette, error);
    } catch (const std::bad_alloc&) {
        error = targa_error::no_memory;
    }
    set_targa_error(error);
    return image;
}
