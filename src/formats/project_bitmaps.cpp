#include "formats/project_bitmaps.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>

namespace {
constexpr std::size_t id_length = 4;

std::size_t area(const BitmapRecord& bitmap) { return std::size_t{bitmap.width} * bitmap.height; }

std::string four_characters(std::string id) {
    id.resize(id_length, ' ');
    return id;
}

void read_fields(ByteReader& reader, BitmapRecord& bitmap) {
    reader.u16(bitmap.width);
    reader.u16(bitmap.height);
    reader.u16(bitmap.header_word_3);
    reader.u16(bitmap.header_word_4);
    for (std::int16_t* position : {&bitmap.relative_x, &bitmap.relative_y, &bitmap.absolute_x, &bitmap.absolute_y})
        reader.i16(*position);
    reader.bytes(bitmap.flags);
    reader.u8(bitmap.is_mask);
    reader.u8(bitmap.has_mask);
    bitmap.mask_name = four_characters(reader.text(id_length));
}

Pixels read_pixels(ByteReader& reader, std::size_t count) {
    Pixels pixels(count);
    reader.bytes(pixels);
    return pixels;
}

// Index of the bitmap that is the mask of this one; -1 when it has none or the table has not.
std::ptrdiff_t mask_index(const std::vector<BitmapRecord>& bitmaps, const BitmapRecord& bitmap) {
    if (bitmap.has_mask == 0) return -1;
    const auto mask = std::ranges::find(bitmaps, bitmap.mask_name, &BitmapRecord::name);
    return mask == bitmaps.end() ? -1 : mask - bitmaps.begin();
}

void cut_mask_circle(std::vector<BitmapRecord>& bitmaps, std::ptrdiff_t first) {
    std::set<std::ptrdiff_t> seen;
    for (std::ptrdiff_t at = first, next = 0; at >= 0; at = next) {
        seen.insert(at);
        BitmapRecord& bitmap = bitmaps[static_cast<std::size_t>(at)];
        next = mask_index(bitmaps, bitmap);
        if (!seen.contains(next)) continue;
        bitmap.has_mask = 0;
        return;
    }
}

void write_bitmap(ByteWriter& writer, const BitmapRecord& bitmap) {
    writer.text(four_characters(bitmap.name));
    for (const std::uint16_t word : {bitmap.width, bitmap.height, bitmap.header_word_3, bitmap.header_word_4})
        writer.u16(word);
    for (const std::int16_t position : {bitmap.relative_x, bitmap.relative_y, bitmap.absolute_x, bitmap.absolute_y})
        writer.u16(static_cast<std::uint16_t>(position));
    writer.bytes(std::span<const std::uint8_t>(bitmap.flags));
    writer.u8(bitmap.is_mask);
    writer.u8(bitmap.has_mask);
    writer.text(four_characters(bitmap.mask_name));
    const std::size_t there = std::min(bitmap.pixels->size(), area(bitmap));
    writer.bytes(std::span<const std::uint8_t>(*bitmap.pixels).first(there));
    writer.zeros(area(bitmap) - there);
}
} // namespace

ProjectBitmaps read_project_bitmaps(ByteReader& reader) {
    std::uint8_t count = 0;
    reader.u8(count);
    ProjectBitmaps result;
    std::size_t room = max_bitmap_pixels;
    for (int i = 0; i < count; ++i) {
        BitmapRecord bitmap;
        bitmap.name = reader.text(id_length);
        if (bitmap.name.size() < id_length) break;
        read_fields(reader, bitmap);
        if (result.bitmaps.size() == max_bitmaps || area(bitmap) > room) {
            result.cut = true;
            reader.skip(area(bitmap));
            continue;
        }
        room -= area(bitmap);
        bitmap.pixels = read_pixels(reader, area(bitmap));
        result.bitmaps.push_back(std::move(bitmap));
    }
    for (std::size_t i = 0; i < result.bitmaps.size(); ++i)
        cut_mask_circle(result.bitmaps, static_cast<std::ptrdiff_t>(i));
    return result;
}

void write_project_bitmaps(ByteWriter& writer, const std::vector<BitmapRecord>& bitmaps) {
    std::size_t pixels = 0;
    for (const BitmapRecord& bitmap : bitmaps)
        pixels += area(bitmap);
    writer.expect(pixels);
    writer.u8(static_cast<std::uint8_t>(bitmaps.size()));
    for (const BitmapRecord& bitmap : bitmaps)
        write_bitmap(writer, bitmap);
}
