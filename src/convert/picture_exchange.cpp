#include "convert/picture_exchange.h"

#include "base/byte_reader.h"
#include "base/text.h"
#include "convert/refusal.h"
#include "image/picture_file.h"
#include "image/tga.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace {

using FileBytes = std::span<const std::byte>;

constexpr const char* ends_early = "ends before its picture does";

// --- is it whole? ---------------------------------------------------------------------------------------------------

// The check value of PNG chunks: CRC-32 of the polynomial 04C11DB7, bits in reflected order.
constexpr std::array<std::uint32_t, 256> crc_table = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t value = 0; value < table.size(); ++value) {
        std::uint32_t rest = value;
        for (int bit = 0; bit < 8; ++bit)
            rest = rest & 1 ? rest >> 1 ^ 0xEDB88320 : rest >> 1;
        table[value] = rest;
    }
    return table;
}();

std::uint32_t check_value(FileBytes bytes) {
    std::uint32_t rest = 0xFFFFFFFF;
    for (const std::byte b : bytes)
        rest = rest >> 8 ^ crc_table[(rest ^ std::to_integer<std::uint32_t>(b)) & 0xFF];
    return ~rest;
}

std::uint32_t big_endian(ByteReader& reader) {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i) {
        std::uint8_t byte = 0;
        reader.u8(byte);
        word = word << 8 | byte;
    }
    return word;
}

// Every chunk up to the last one, "IEND", is there and has its check value.
void expect_whole_png(FileBytes file) {
    constexpr std::size_t signature = 8, name_length = 4;
    ByteReader reader(file, signature);
    for (std::string name; name != "IEND";) {
        const std::size_t length = big_endian(reader);
        const std::size_t name_at = reader.position();
        name = reader.text(name_length);
        if (name.size() < name_length || reader.remaining() < length) throw Refusal(ends_early);
        reader.skip(length);
        const std::uint32_t expected = check_value(file.subspan(name_at, name_length + length));
        if (big_endian(reader) != expected || reader.ran_out())
            throw Refusal(reader.ran_out() ? ends_early : "damaged: a checksum is not what it should be");
    }
}

// A bitmap has all its rows; the padding of the last one may be missing.
void expect_whole_bmp(FileBytes file) {
    constexpr std::size_t pixels_at = 10;
    constexpr std::uint32_t short_header = 12; // whose sides are words
    ByteReader reader(file, pixels_at);
    std::uint32_t pixels = 0, header = 0, width = 0, height = 0;
    std::uint16_t planes = 0, bits = 0;
    reader.u32(pixels);
    reader.u32(header);
    for (std::uint32_t* side : {&width, &height}) {
        std::uint16_t word = 0;
        if (header != short_header) {
            reader.u32(*side);
        } else if (reader.u16(word)) {
            *side = word;
        }
    }
    reader.u16(planes);
    reader.u16(bits);
    const auto rows = static_cast<std::uint64_t>(std::abs(std::int64_t{static_cast<std::int32_t>(height)}));
    const std::uint64_t row_bits = std::uint64_t{width} * bits;
    const std::uint64_t all = rows == 0 ? 0 : (rows - 1) * ((row_bits + 31) / 32 * 4) + (row_bits + 7) / 8;
    if (pixels + all > file.size()) throw Refusal(ends_early);
}

// --- reading --------------------------------------------------------------------------------------------------------

ImageHandle of_32_bits(const TargaPicture& picture) {
    std::size_t index = picture.first_entry;
    for (const TargaEntry& entry : picture.colour_map)
        set_palette_entry(static_cast<int>(index++), entry.red, entry.green, entry.blue);
    const Image& from = *picture.image;
    ImageHandle image = create_image(from.width(), from.height(), 0, 32);
    if (!image) return image;
    for (int y = 0; y < from.height(); ++y)
        for (int x = 0; x < from.width(); ++x)
            image->set_pixel(x, y, raw_to_argb(from.pixel(x, y), from.bytes_per_pixel()));
    return image;
}

ImageHandle decode_whole_targa(FileBytes file) {
    TargaPicture picture = decode_targa(file);
    if (picture.error != 0) {
        set_targa_error(picture.error);
        throw Refusal(TARGAERRORMESSAGE);
    }
    if (!picture.whole) throw Refusal(ends_early);
    return of_32_bits(picture);
}

template <void (*expect_whole)(FileBytes)>
ImageHandle decode_other(FileBytes file) {
    if (const auto size = picture_size(file); size && size->fits(largest_picture)) expect_whole(file);
    DecodedPicture picture = decode_picture(file);
    if (!picture.image) throw Refusal(picture.reason);
    return std::move(picture.image);
}

// --- kinds ----------------------------------------------------------------------------------------------------------

struct PictureKind {
    std::string_view extension;
    std::string_view signature; // begins every file of the kind
    ImageHandle (*decode)(FileBytes file);
    std::optional<Bytes> (*encode)(const Image& image);
};
constexpr PictureKind picture_kinds[] = {
    {".tga", "", decode_whole_targa, [](const Image& image) -> std::optional<Bytes> { return encode_targa_32(image); }},
    {".png", "\x89PNG\r\n\x1A\n", decode_other<expect_whole_png>,
     [](const Image& image) { return encode_png(image, true); }},
    {".bmp", "BM", decode_other<expect_whole_bmp>, encode_bmp},
};

const PictureKind& kind_of(std::string_view name) {
    for (const PictureKind& kind : picture_kinds)
        if (kind.extension == extension_of(name)) return kind;
    throw Refusal("no picture by its name");
}

} // namespace

ImageHandle decode_whole_picture(std::string_view name, FileBytes file) {
    const PictureKind& kind = kind_of(name);
    if (ByteReader(file).text(kind.signature.size()) != kind.signature)
        throw Refusal("no " + std::string(kind.extension).substr(1) + " picture");
    ImageHandle image = kind.decode(file);
    if (!image) throw Refusal("no room in memory");
    return image;
}

Bytes encode_picture(std::string_view name, const Image& image) {
    std::optional<Bytes> file = kind_of(name).encode(image);
    if (!file) throw Refusal("no room in memory");
    return std::move(*file);
}
