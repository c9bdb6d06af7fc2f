#include "expect.h"
#include "model/document.h"

#include "formats/bitmap_file.h"
#include "model/items.h"
#include "model/preview.h"

#include <algorithm>

namespace {
// Painting previews of more than this costs time and tells nothing new; tests load the largest.
constexpr std::size_t pixels_worth_painting = std::size_t{1} << 15;

// Checks what was decoded and counts its pixels.
std::size_t check_decoded(const BitmapFile& file) {
    std::size_t pixels = 0;
    for (const BitmapRecord& bitmap : file.bitmaps) {
        expect(bitmap.name.size() == 4, "ids are four characters");
        expect(has_pixel_buffer(bitmap), "every bitmap has its pixels");
        pixels += bitmap.pixels->size();
    }
    expect(pixels <= max_bitmap_pixels, "memory is bounded");
    return pixels;
}

void check_table() {
    expect(BITMAPS <= max_bitmaps, "the table holds its count");
    expect(bitmap_pixels() <= max_bitmap_pixels, "the table's memory is bounded");
    for (int i = 1; i <= BITMAPS; ++i) {
        expect(RBM(BITMAP[i].name) == i, "every id is there once");
        expect(has_pixel_buffer(BITMAP[i]), "every entry has its pixels");
        const bool narrow = BITMAP[i].width < 10000 && BITMAP[i].height < 10000 && !BITMAP[i].pixels->empty();
        expect(!narrow || (preview(BITMAP[i], 2) && preview(BITMAP[i], 3)), "every entry can be shown");
    }
    for (const DashItem& item : DASHITEM)
        expect(item.bitmap == RBM(item.id), "items are bound");
}

bool same(const BitmapRecord& a, const BitmapRecord& b) {
    return a.name == b.name && a.width == b.width && a.height == b.height && a.header_word_3 == b.header_word_3 &&
           a.header_word_4 == b.header_word_4 && a.relative_x == b.relative_x && a.relative_y == b.relative_y &&
           a.flags == b.flags && a.pixels == b.pixels;
}

// The table's entries that a file of this set must hold, in table order.
std::vector<const BitmapRecord*> entries_of(BitmapSet set) {
    std::vector<const BitmapRecord*> entries;
    for (int i = 1; i <= BITMAPS; ++i)
        if (bitmap_set_ids(set).find("/" + BITMAP[i].name + "/") != std::string_view::npos)
            entries.push_back(&BITMAP[i]);
    return entries;
}

void check_round_trip(BitmapSet set) {
    const BitmapFile again = decode_bitmap_file(encode_bitmap_file(set));
    expect(!again.cut, "what was written has room");
    const auto wanted = entries_of(set);
    expect(std::ranges::equal(again.bitmaps, wanted, same, {},
                              [](const BitmapRecord* entry) -> const BitmapRecord& { return *entry; }),
           "all entries of the set, and no others, are written in table order and read as the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reset_bitmaps();
    INITDASHITEMS();
    BitmapFile file = decode_bitmap_file(input_bytes(data, size));
    if (check_decoded(file) > pixels_worth_painting) return 0;
    merge_bitmap_file(std::move(file));
    check_table();
    check_round_trip(BitmapSet::dashboard);
    check_round_trip(BitmapSet::dots_and_digits);
    return 0;
}
