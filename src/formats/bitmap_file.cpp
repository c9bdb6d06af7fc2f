#include "formats/bitmap_file.h"
#include "model/document.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "base/text.h"
#include "formats/resource_archive.h"
#include "model/items.h"

#include <utility>

namespace {
constexpr std::string_view dashboard_file_prefix = "stda";

void read_header(ByteReader& reader, BitmapRecord& bitmap) {
    reader.u16(bitmap.width);
    reader.u16(bitmap.height);
    reader.u16(bitmap.header_word_3);
    reader.u16(bitmap.header_word_4);
    reader.i16(bitmap.relative_x);
    reader.i16(bitmap.relative_y);
    reader.bytes(bitmap.flags);
}

std::size_t area(const BitmapRecord& bitmap) { return std::size_t{bitmap.width} * bitmap.height; }

bool is_id_of(BitmapSet set, const std::string& id) {
    return id.size() == archive_id_length && bitmap_set_ids(set).find("/" + id + "/") != std::string_view::npos;
}

bool is_dashboard_id(const std::string& id) {
    return is_id_of(BitmapSet::dashboard, id) || is_id_of(BitmapSet::dots_and_digits, id);
}

bool has_room_for(const BitmapRecord& bitmap) {
    const int old = RBM(bitmap.name);
    if (old == 0 && BITMAPS == max_bitmaps) return false;
    const std::size_t freed = old == 0 ? 0 : BITMAP[old].pixels->size();
    return bitmap_pixels() - freed + bitmap.pixels->size() <= max_bitmap_pixels;
}

// ODDITY swap-with-last (kept): the bitmap that is replaced gives its place to the last one, the new one goes to the
// end, so that the order of the table, and of the files written from it, depends on what was loaded before.
bool merge(BitmapRecord bitmap) {
    if (!has_room_for(bitmap)) return false;
    drop_bitmap(RBM(bitmap.name));
    link_mask(bitmap);
    BITMAP[++BITMAPS] = std::move(bitmap);
    return true;
}
} // namespace

bool belongs_to(const BitmapRecord& bitmap, BitmapSet set) {
    return has_pixel_buffer(bitmap) && is_id_of(set, bitmap.name);
}

BitmapFile decode_bitmap_file(std::span<const std::byte> file) {
    BitmapFile result;
    ArchiveDirectory directory = read_archive_directory(file);
    bool of_a_dashboard = directory.whole && directory.count == 0, ends_early = !directory.whole;
    std::size_t room = max_bitmap_pixels;
    for (ArchiveEntry& entry : directory.entries) {
        of_a_dashboard |= is_dashboard_id(entry.id);
        BitmapRecord bitmap;
        bitmap.name = std::move(entry.id);
        ByteReader reader(file, entry.position);
        read_header(reader, bitmap);
        if (area(bitmap) > room) {
            result.cut = true;
            continue; // whether its pixels are there was not looked at
        }
        room -= area(bitmap);
        Pixels pixels(area(bitmap));
        reader.bytes(pixels);
        bitmap.pixels = std::move(pixels);
        result.bitmaps.push_back(std::move(bitmap));
        ends_early |= reader.ran_out();
    }
    result.remark = remark_on_content(of_a_dashboard, ends_early);
    return result;
}

Bytes encode_bitmap(const BitmapRecord& bitmap) {
    ByteWriter writer;
    writer.u16(bitmap.width);
    writer.u16(bitmap.height);
    writer.u16(bitmap.header_word_3);
    writer.u16(bitmap.header_word_4);
    writer.u16(static_cast<std::uint16_t>(bitmap.relative_x));
    writer.u16(static_cast<std::uint16_t>(bitmap.relative_y));
    writer.bytes(std::span<const std::uint8_t>(bitmap.flags));
    writer.bytes(std::span<const std::uint8_t>(*bitmap.pixels));
    return writer.take();
}

Bytes encode_bitmap_file(BitmapSet set) {
    std::vector<ArchiveResource> resources;
    for (int i = 1; i <= BITMAPS; ++i)
        if (belongs_to(BITMAP[i], set)) resources.push_back({BITMAP[i].name, encode_bitmap(BITMAP[i])});
    return encode_archive(resources);
}

// ODDITY any-other-name-is-second-set (kept): whatever does not begin with "stda" is written as the dots and digits.
BitmapSet bitmap_set_for(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    const std::string start = lower_case(name.substr(0, dashboard_file_prefix.size()));
    return start == dashboard_file_prefix ? BitmapSet::dashboard : BitmapSet::dots_and_digits;
}

// "!cg0" and "!eg0" are kept in either file.
std::string_view bitmap_set_ids(BitmapSet set) {
    return set == BitmapSet::dashboard
               ? "/!cg0/!eg0/dash/dast/dasm/gbox/ins1/inm1/ins2/ins3/inm3/roof/whl1/whl2/whl3/"
               : "/!cg0/!eg0/dot /dot1/dot2/dota/gnab/gnob/dig0/dig1/dig2/dig3/dig4/dig5/dig6/dig7/dig8/dig9/";
}

bool merge_bitmap_file(BitmapFile file) {
    bool everything = !file.cut;
    for (BitmapRecord& bitmap : file.bitmaps)
        if (!merge(std::move(bitmap))) everything = false;
    resolve_positions();
    UPDATEDASHITEMS();
    return everything;
}

FileOutcome LOADVSH(const std::string& filename) {
    auto [outcome, file] = load_and_report(filename);
    if (!file) return outcome;
    BitmapFile bitmaps = decode_bitmap_file(*file);
    outcome.remark = bitmaps.remark;
    if (!merge_bitmap_file(std::move(bitmaps))) outcome.code = file_status::cut_to_fit;
    return report_file(outcome);
}

FileOutcome SAVEVSH(const std::string& filename) {
    return save_and_report(filename, {encode_bitmap_file(bitmap_set_for(filename))});
}
