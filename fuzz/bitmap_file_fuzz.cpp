// Any bytes as a bitmap file: read as a second, literal reader reads them, merged into the table, and written and read
// as the same.
#include "expect.h"
#include "literal_reader.h"
#include "model/document.h"

#include "formats/bitmap_file.h"
#include "model/items.h"
#include "model/preview.h"

#include <algorithm>
#include <map>

namespace {
// Painting previews of more than this costs time and tells nothing new; tests load the largest.
constexpr std::size_t pixels_worth_painting = std::size_t{1} << 15;

constexpr std::string_view dashboard_ids = "!cg0 !eg0 dash dast dasm gbox ins1 inm1 ins2 ins3 inm3 roof whl1 whl2 whl3 "
                                           "dot  dot1 dot2 dota gnab gnob dig0 dig1 dig2 dig3 dig4 dig5 dig6 dig7 "
                                           "dig8 dig9 ";

bool is_dashboard_id(const std::string& id) {
    for (std::size_t at = 0; at < dashboard_ids.size(); at += 5)
        if (dashboard_ids.substr(at, 4) == id) return true;
    return false;
}

BitmapFile read_literally(std::span<const std::byte> file) {
    BitmapFile result;
    const LiteralArchive archive = read_archive_literally(file);
    bool known = archive.whole && archive.count == 0, ends_early = !archive.whole;
    std::size_t room = std::size_t{100} * 320 * 200;
    for (const auto& [id, position] : archive.entries) {
        known |= is_dashboard_id(id);
        BitmapRecord bitmap;
        bitmap.name = id;
        LiteralReader reader(file, position);
        for (std::uint16_t* word : {&bitmap.width, &bitmap.height, &bitmap.header_word_3, &bitmap.header_word_4})
            reader.number(2, *word);
        reader.number(2, bitmap.relative_x);
        reader.number(2, bitmap.relative_y);
        const std::string flags = reader.text(4);
        std::memcpy(bitmap.flags.data(), flags.data(), flags.size());
        const std::size_t area = std::size_t{bitmap.width} * bitmap.height;
        result.cut |= area > room;
        if (area > room) continue;
        room -= area;
        const std::string bytes = reader.text(area);
        Pixels pixels(bytes.begin(), bytes.end());
        pixels.resize(area);
        bitmap.pixels = std::move(pixels);
        result.bitmaps.push_back(std::move(bitmap));
        ends_early |= reader.ran_out();
    }
    if (ends_early) result.remark = FileRemark::ends_early;
    if (!known) result.remark = FileRemark::no_car_data;
    return result;
}

bool same(const BitmapRecord& a, const BitmapRecord& b) {
    return a.name == b.name && a.width == b.width && a.height == b.height && a.header_word_3 == b.header_word_3 &&
           a.header_word_4 == b.header_word_4 && a.relative_x == b.relative_x && a.relative_y == b.relative_y &&
           a.flags == b.flags && a.pixels == b.pixels;
}

void check_as_literal(const BitmapFile& file, const BitmapFile& literal) {
    expect(file.cut == literal.cut && file.remark == literal.remark, "the same outcome");
    expect(std::ranges::equal(file.bitmaps, literal.bitmaps, same), "the same bitmaps");
    expect(!input_is_good || (!file.cut && file.remark == FileRemark::none), "a good file is read to its end");
}

std::size_t pixels_of(const BitmapFile& file) {
    std::size_t pixels = 0;
    for (const BitmapRecord& bitmap : file.bitmaps)
        pixels += bitmap.pixels->size();
    return pixels;
}

// The last bitmap of an id is the one that stays, and a hundred ids have room.
void check_merged(const BitmapFile& file, bool everything) {
    std::map<std::string, const BitmapRecord*> last;
    for (const BitmapRecord& bitmap : file.bitmaps)
        last[bitmap.name] = &bitmap;
    expect(everything == (!file.cut && last.size() <= 100), "what was left out is told");
    expect(BITMAPS == std::min<std::size_t>(last.size(), 100), "the table holds what has room");
    for (int i = 1; i <= BITMAPS; ++i)
        expect(same(BITMAP[i], *last.at(BITMAP[i].name)), "as it was read");
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
    const BitmapFile file = decode_bitmap_file(input_bytes(data, size));
    check_as_literal(file, read_literally(input_bytes(data, size)));
    if (pixels_of(file) > pixels_worth_painting) return 0;
    check_merged(file, merge_bitmap_file(file));
    check_table();
    check_round_trip(BitmapSet::dashboard);
    check_round_trip(BitmapSet::dots_and_digits);
    return 0;
}
