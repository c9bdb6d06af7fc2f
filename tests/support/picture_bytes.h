// Picture files built by hand: PNG of every form, JPEG of flat blocks, Windows bitmaps, DirectDraw surfaces.
#pragma once

#include "base/byte_writer.h"
#include "image/image.h"
#include "support/bytes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <vector>

inline void put_big_endian(ByteWriter& writer, std::uint32_t value, int bytes) {
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        writer.u8(static_cast<std::uint8_t>(value >> shift));
}

// --- PNG ------------------------------------------------------------------------------------------------------------

namespace png {

namespace colour {
constexpr int grey = 0, rgb = 2, palette = 3, grey_alpha = 4, rgb_alpha = 6;
}

inline std::uint32_t crc(const Bytes& bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (const std::byte b : bytes) {
        sum ^= std::to_integer<std::uint32_t>(b);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum & 1 ? sum >> 1 ^ 0xEDB88320 : sum >> 1;
    }
    return ~sum;
}

inline Bytes chunk(std::string_view type, const Bytes& content) {
    ByteWriter typed, whole;
    typed.text(type);
    typed.bytes(std::span<const std::byte>(content));
    put_big_endian(whole, static_cast<std::uint32_t>(content.size()), 4);
    whole.bytes(std::span<const std::byte>(typed.written()));
    put_big_endian(whole, crc(typed.written()), 4);
    return whole.take();
}

// A zlib stream that is stored, not packed.
inline Bytes stored(const Bytes& content) {
    constexpr std::size_t longest_block = 65535;
    ByteWriter writer;
    writer.u16(0x0178);
    std::uint32_t a = 1, b = 0;
    for (const std::byte value : content) {
        a = (a + std::to_integer<std::uint32_t>(value)) % 65521;
        b = (b + a) % 65521;
    }
    std::size_t at = 0;
    do {
        const std::size_t length = std::min(longest_block, content.size() - at);
        writer.u8(at + length == content.size());
        writer.u16(static_cast<std::uint16_t>(length));
        writer.u16(static_cast<std::uint16_t>(~length));
        writer.bytes(std::span<const std::byte>(content).subspan(at, length));
        at += length;
    } while (at < content.size());
    put_big_endian(writer, b << 16 | a, 4);
    return writer.take();
}

// A zlib stream of so many zeros, as short as it can be: one of them, then repetitions of 258.
inline Bytes packed_zeros(int count) {
    ByteWriter writer;
    writer.u16(0x0178);
    unsigned bits = 0;
    int filled = 0;
    const auto put = [&](unsigned code, int length, bool first_bit_uppermost) {
        for (int i = 0; i < length; ++i) {
            bits |= (code >> (first_bit_uppermost ? length - 1 - i : i) & 1) << filled;
            if (++filled < 8) continue;
            writer.u8(static_cast<std::uint8_t>(bits));
            bits = 0;
            filled = 0;
        }
    };
    constexpr int longest_repetition = 258;
    put(3, 3, false); // the last block, of fixed codes
    for (; count % longest_repetition != 1; --count)
        put(0x30, 8, true);
    put(0x30, 8, true);
    for (; count > 1; count -= longest_repetition) {
        put(0xC5, 8, true);
        put(0, 5, true);
    }
    put(0, 7, true);
    put(0, 7, false); // up to the byte's end
    writer.zeros(4);  // in place of the check sum
    return writer.take();
}

struct Form {
    int width = 1, height = 1;
    int depth = 8, colour = colour::rgb_alpha;
    bool interlaced = false;
    Bytes palette{}, transparency{}; // chunks of their own unless empty
};

// A pixel as the samples of its channels.
using Samples = std::vector<unsigned>;
using PixelAt = std::function<Samples(int x, int y)>;

inline Bytes header(const Form& form) {
    ByteWriter writer;
    put_big_endian(writer, static_cast<std::uint32_t>(form.width), 4);
    put_big_endian(writer, static_cast<std::uint32_t>(form.height), 4);
    for (const int value : {form.depth, form.colour, 0, 0, form.interlaced ? 1 : 0})
        writer.u8(static_cast<std::uint8_t>(value));
    return chunk("IHDR", writer.written());
}

// The rows of the pixels (left + i * across, top + j * down), each behind a filter byte of 0.
inline void put_rows(ByteWriter& writer, const Form& form, const PixelAt& pixel, std::array<int, 4> pass) {
    const auto [left, top, across, down] = pass;
    if (left >= form.width) return;
    for (int y = top; y < form.height; y += down) {
        writer.u8(0);
        unsigned bits = 0;
        int filled = 0;
        for (int x = left; x < form.width; x += across)
            for (const unsigned sample : pixel(x, y)) {
                if (form.depth >= 8) {
                    put_big_endian(writer, sample, form.depth / 8);
                    continue;
                }
                bits = bits << form.depth | sample;
                filled += form.depth;
                if (filled == 8) writer.u8(static_cast<std::uint8_t>(bits));
                filled %= 8;
            }
        if (filled > 0) writer.u8(static_cast<std::uint8_t>(bits << (8 - filled)));
    }
}

inline Bytes rows(const Form& form, const PixelAt& pixel) {
    ByteWriter writer;
    if (!form.interlaced) {
        put_rows(writer, form, pixel, {0, 0, 1, 1});
    } else {
        for (const auto& pass : std::initializer_list<std::array<int, 4>>{
                 {0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}})
            put_rows(writer, form, pixel, pass);
    }
    return writer.take();
}

inline Bytes signature() { return byte_list({0x89, 'P', 'N', 'G', 13, 10, 26, 10}); }

inline Bytes file(const Form& form, const PixelAt& pixel) {
    Bytes bytes = joined({signature(), header(form)});
    if (!form.palette.empty()) bytes = joined({bytes, chunk("PLTE", form.palette)});
    if (!form.transparency.empty()) bytes = joined({bytes, chunk("tRNS", form.transparency)});
    return joined({bytes, chunk("IDAT", stored(rows(form, pixel))), chunk("IEND", {})});
}

// A header that says so, and nothing that comes up to it.
inline Bytes file_of_size(int width, int height) {
    return joined(
        {signature(), header({.width = width, .height = height}), chunk("IDAT", stored({})), chunk("IEND", {})});
}

// The pixels of an image of 32 bits, with alpha.
inline Bytes file_of(const Image& image) {
    return file({.width = image.width(), .height = image.height()}, [&](int x, int y) {
        const std::uint32_t pixel = image.pixel(x, y);
        return Samples{pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255, pixel >> 24};
    });
}

} // namespace png

// --- JPEG -----------------------------------------------------------------------------------------------------------

namespace jpeg {

// Bits of coded data, the first one uppermost, with a zero behind each byte of 255.
class BitWriter {
public:
    void put(unsigned value, int count) {
        while (count-- > 0) {
            byte_ = byte_ << 1 | (value >> count & 1);
            if (++filled_ == 8) flush();
        }
    }
    Bytes take() {
        while (filled_ > 0)
            put(1, 1);
        return writer_.take();
    }

private:
    void flush() {
        writer_.u8(static_cast<std::uint8_t>(byte_));
        if ((byte_ & 255) == 255) writer_.u8(0);
        filled_ = 0;
    }
    ByteWriter writer_;
    unsigned byte_ = 0;
    int filled_ = 0;
};

inline Bytes segment(int marker, const Bytes& content) {
    ByteWriter writer;
    writer.u8(0xFF);
    writer.u8(static_cast<std::uint8_t>(marker));
    put_big_endian(writer, static_cast<std::uint32_t>(content.size() + 2), 2);
    writer.bytes(std::span<const std::byte>(content));
    return writer.take();
}

struct Form {
    int width = 8, height = 8;
    bool progressive = false;
    bool adobe = false; // four channels as they are, inverted as Adobe's programs write them
};

// A DC table of twelve codes of four bits, and an AC table of the one code that ends a block.
inline Bytes tables() {
    Bytes dc(1 + 16 + 12), ac(1 + 16 + 1);
    dc[1 + 3] = std::byte{12};
    for (std::size_t i = 0; i < 12; ++i)
        dc[17 + i] = static_cast<std::byte>(i);
    ac[0] = std::byte{0x10};
    ac[1] = std::byte{1};
    return joined({segment(0xC4, dc), segment(0xC4, ac)});
}

// Every block of 8 x 8 pixels in one colour, given as the channels of the block at (column, row).
inline Bytes file(const Form& form, int channels, const std::function<std::vector<int>(int, int)>& block) {
    ByteWriter frame, scan;
    frame.u8(8);
    put_big_endian(frame, static_cast<std::uint32_t>(form.height), 2);
    put_big_endian(frame, static_cast<std::uint32_t>(form.width), 2);
    frame.u8(static_cast<std::uint8_t>(channels));
    scan.u8(static_cast<std::uint8_t>(channels));
    for (int i = 1; i <= channels; ++i) {
        for (const int value : {i, 0x11, 0})
            frame.u8(static_cast<std::uint8_t>(value));
        for (const int value : {i, 0})
            scan.u8(static_cast<std::uint8_t>(value));
    }
    for (const int value : {0, form.progressive ? 0 : 63, 0})
        scan.u8(static_cast<std::uint8_t>(value));

    BitWriter bits;
    std::vector<int> before(static_cast<std::size_t>(channels), 128);
    for (int row = 0; row * 8 < form.height; ++row)
        for (int column = 0; column * 8 < form.width; ++column) {
            const std::vector<int> levels = block(column, row);
            for (std::size_t i = 0; i < levels.size(); ++i) {
                const int difference = levels[i] - before[i];
                before[i] = levels[i];
                int size = 0;
                while (std::abs(difference) >> size)
                    ++size;
                bits.put(static_cast<unsigned>(size), 4);
                bits.put(static_cast<unsigned>(difference < 0 ? difference - 1 : difference), size);
                if (!form.progressive) bits.put(0, 1);
            }
        }

    Bytes quantiser(65, std::byte{8});
    quantiser[0] = std::byte{0};
    const Bytes adobe = bytes_of(std::string_view("Adobe\0\x64\0\0\0\0\0", 12));
    return joined({byte_list({0xFF, 0xD8}), form.adobe ? segment(0xEE, adobe) : Bytes{}, segment(0xDB, quantiser),
                   segment(form.progressive ? 0xC2 : 0xC0, frame.written()), tables(), segment(0xDA, scan.written()),
                   bits.take(), byte_list({0xFF, 0xD9})});
}

inline Bytes grey(int width, int height, int level) {
    return file({.width = width, .height = height}, 1, [level](int, int) { return std::vector{level}; });
}

} // namespace jpeg

// --- Windows bitmaps ------------------------------------------------------------------------------------------------

namespace bmp {

struct Form {
    int width = 1, height = 1; // below 0: stored from the top
    int depth = 24;
    int compression = 0;
    Bytes palette{};               // blue, green, red, 0
    std::vector<unsigned> masks{}; // behind the header
};

// `rows`: padded to four bytes each, the lowest first.
inline Bytes file(const Form& form, const Bytes& rows) {
    constexpr std::uint32_t heads = 54;
    const auto start = static_cast<std::uint32_t>(heads + form.palette.size() + 4 * form.masks.size());
    ByteWriter writer;
    writer.text("BM");
    writer.u32(static_cast<std::uint32_t>(start + rows.size()));
    writer.u32(0);
    writer.u32(start);
    writer.u32(40);
    writer.u32(static_cast<std::uint32_t>(form.width));
    writer.u32(static_cast<std::uint32_t>(form.height));
    writer.u16(1);
    writer.u16(static_cast<std::uint16_t>(form.depth));
    writer.u32(static_cast<std::uint32_t>(form.compression));
    writer.zeros(20);
    for (const unsigned mask : form.masks)
        writer.u32(mask);
    writer.bytes(std::span<const std::byte>(form.palette));
    writer.bytes(std::span<const std::byte>(rows));
    return writer.take();
}

} // namespace bmp

// --- DirectDraw surfaces --------------------------------------------------------------------------------------------

namespace dds {

struct Form {
    int width = 1, height = 1;
    unsigned flags = 0x41;   // RGB with alpha
    std::string_view code{}; // of a block format; then the flags do not matter
    int bits = 32;
    std::array<unsigned, 4> masks{0xFF0000, 0xFF00, 0xFF, 0xFF000000};
};

inline Bytes file(const Form& form, const Bytes& pixels) {
    ByteWriter writer;
    writer.text("DDS ");
    writer.u32(124);
    writer.u32(0x1007);
    writer.u32(static_cast<std::uint32_t>(form.height));
    writer.u32(static_cast<std::uint32_t>(form.width));
    writer.zeros(14 * 4);
    writer.u32(32);
    writer.u32(form.code.empty() ? form.flags : 4);
    if (form.code.empty()) {
        writer.u32(0);
        writer.u32(static_cast<std::uint32_t>(form.bits));
        for (const unsigned mask : form.masks)
            writer.u32(mask);
    } else {
        writer.text(form.code);
        writer.zeros(5 * 4);
    }
    writer.u32(0x1000);
    writer.zeros(4 * 4);
    writer.bytes(std::span<const std::byte>(pixels));
    return writer.take();
}

} // namespace dds
