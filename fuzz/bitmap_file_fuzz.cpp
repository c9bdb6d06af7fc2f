#include "expect.h"

#include "dash/bitmap_file.h"
#include "dash/items.h"

namespace {
void check_decoded(const BitmapFile& file) {
    std::size_t pixels = 0;
    for (const BitmapRecord& bitmap : file.bitmaps) {
        expect(bitmap.name.size() == 4, "ids are four characters");
        expect(has_pixel_buffer(bitmap), "every bitmap has its pixels");
        pixels += bitmap.pixels.size();
    }
    expect(pixels <= max_bitmap_pixels, "memory is bounded");
}

void check_table() {
    expect(BITMAPS <= max_bitmaps, "the table holds its count");
    expect(bitmap_pixels() <= max_bitmap_pixels, "the table's memory is bounded");
    for (int i = 1; i <= BITMAPS; ++i) {
        expect(RBM(BITMAP[i].name) == i, "every id is there once");
        expect(has_pixel_buffer(BITMAP[i]), "every entry has its pixels");
    }
    for (const DashItem& item : DASHITEM)
        expect(item.bitmap == RBM(item.id), "items are bound");
}

void check_round_trip(BitmapSet set) {
    const Bytes written = encode_bitmap_file(set);
    reset_bitmaps();
    expect(merge_bitmap_file(decode_bitmap_file(written)), "what was written has room");
    expect(encode_bitmap_file(set) == written, "what was written is read and written as the same");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const BitmapSet set : {BitmapSet::dashboard, BitmapSet::dots_and_digits}) {
        reset_bitmaps();
        INITDASHITEMS();
        BitmapFile file = decode_bitmap_file(input_bytes(data, size));
        check_decoded(file);
        merge_bitmap_file(std::move(file));
        check_table();
        check_round_trip(set);
    }
    return 0;
}
