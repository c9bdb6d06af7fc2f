// Bitmaps and bitmap files for the tests of the dashboard.
#pragma once

#include "formats/bitmap_file.h"
#include "formats/resource_archive.h"
#include "model/document.h"
#include "support/bytes.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

// A resource: header with words 3 and 4 and flags that differ, then as many pixels as `pixels` says.
inline Bytes bitmap_resource(int width, int height, int x, int y, std::size_t pixels) {
    ByteWriter writer;
    for (const int word : {width, height, 0x0303, 0x0404, x, y})
        writer.u16(static_cast<std::uint16_t>(word));
    writer.bytes(std::span<const std::byte>(byte_list({0xF1, 0xF2, 0xF3, 0xF4})));
    writer.bytes(std::span<const std::byte>(counting_bytes(pixels)));
    return writer.take();
}

inline Bytes whole_bitmap(int width, int height, int x = 0, int y = 0) {
    return bitmap_resource(width, height, x, y, static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
}

// A file of one whole bitmap an id, each `size` pixels wide and high.
inline Bytes file_of(const std::vector<std::string>& ids, int size = 1) {
    std::vector<ArchiveResource> resources;
    for (const std::string& id : ids)
        resources.push_back({id, whole_bitmap(size, size)});
    return encode_archive(resources);
}

// Tables of `entries` ids that all point at the same bitmap.
inline Bytes archive_of_one_bitmap_under_many_ids(int entries, const Bytes& bitmap) {
    ByteWriter writer;
    writer.u32(0);
    writer.u16(static_cast<std::uint16_t>(entries));
    for (int i = 0; i < entries; ++i) {
        writer.text("id");
        writer.u16(static_cast<std::uint16_t>(i));
    }
    writer.zeros(4 * static_cast<std::size_t>(entries));
    writer.bytes(std::span<const std::byte>(bitmap));
    return writer.take();
}

inline std::string table_names() {
    std::string all;
    for (int i = 1; i <= BITMAPS; ++i)
        all += BITMAP[i].name + "/";
    return all;
}

inline void expect_same_bitmap(const BitmapRecord& a, const BitmapRecord& b) {
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    EXPECT_EQ(a.header_word_3, b.header_word_3);
    EXPECT_EQ(a.header_word_4, b.header_word_4);
    EXPECT_EQ(a.relative_x, b.relative_x);
    EXPECT_EQ(a.relative_y, b.relative_y);
    EXPECT_EQ(a.flags, b.flags);
    EXPECT_EQ(a.pixels, b.pixels);
}
