#include "image/jpeg_check.h"

#include "base/byte_reader.h"

#include <cstdint>

namespace {

constexpr std::uint8_t escape = 0xFF, start_of_image = 0xD8, start_of_frame = 0xC0, last_frame_read = 0xC2,
                       huffman_tables = 0xC4, start_of_scan = 0xDA;
constexpr int most_codes = 256;
// Far more than encoders make, and few enough to be gone through.
constexpr int most_scans = 100, most_table_segments = 1000;

// A byte that is not there reads as 0, for the decoder as well.
std::uint8_t next_byte(ByteReader& reader) {
    std::uint8_t value = 0;
    reader.u8(value);
    return value;
}
int next_length(ByteReader& reader) {
    const int high = next_byte(reader);
    return high << 8 | next_byte(reader);
}

// From behind the marker on.
bool tables_fit(ByteReader reader) {
    constexpr int table_head = 17; // class and number, and how many codes there are of each length
    int left = next_length(reader) - 2;
    while (left > 0) {
        next_byte(reader);
        int codes = 0;
        for (int length = 1; length < table_head; ++length)
            codes += next_byte(reader);
        if (codes > most_codes) return false;
        reader.skip(static_cast<std::uint64_t>(codes));
        left -= table_head + codes;
    }
    return true;
}

// The next marker, past bytes that are none; 0 at the end.
std::uint8_t next_marker(ByteReader& reader) {
    while (reader.remaining() > 0) {
        if (next_byte(reader) != escape) continue;
        std::uint8_t marker = escape;
        while (marker == escape && reader.remaining() > 0)
            marker = next_byte(reader);
        return marker;
    }
    return 0;
}

bool is_frame(std::uint8_t marker) { return marker >= start_of_frame && marker <= last_frame_read; }

// Up to the frame header the file is segments with a length each, which the decoder follows just so.
bool head_is_safe(ByteReader& reader) {
    next_marker(reader); // of the picture's start
    while (const std::uint8_t marker = next_marker(reader)) {
        if (is_frame(marker)) return true;
        if (marker == huffman_tables && !tables_fit(reader)) return false;
        const int length = next_length(reader);
        reader.skip(static_cast<std::uint64_t>(length > 2 ? length - 2 : 0));
    }
    return true;
}

// From the frame on, where the decoder goes on after a scan depends on what is in it: every place that looks like a
// table counts.
bool rest_is_safe(ByteReader reader) {
    int scans = 0, table_segments = 0;
    for (std::uint8_t before = 0; reader.remaining() > 0;) {
        const std::uint8_t here = next_byte(reader);
        if (before == escape && here == start_of_scan && ++scans > most_scans) return false;
        if (before == escape && here == huffman_tables)
            if (++table_segments > most_table_segments || !tables_fit(reader)) return false;
        before = here;
    }
    return true;
}

} // namespace

bool is_jpeg(std::span<const std::byte> file) {
    ByteReader reader(file);
    return !file.empty() && file[0] == std::byte{escape} && next_marker(reader) == start_of_image;
}

bool is_safe_jpeg(std::span<const std::byte> file) {
    ByteReader reader(file);
    return head_is_safe(reader) && rest_is_safe(reader);
}
