#include "expect.h"

#include "formats/bitmap_export.h"
#include "formats/bitmap_import.h"
#include "image/picture_file.h"
#include "model/bitmap_table.h"
#include "model/colours.h"
#include "model/items.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace {

// Enough for every way through the decoders, and quick.
constexpr PictureSize most{400, 400};

bool same_pixels(const Image& a, const Image& b) {
    if (a.width() != b.width() || a.height() != b.height()) return false;
    for (int y = 0; y < a.height(); ++y)
        if (!std::ranges::equal(a.row(y), b.row(y))) return false;
    return true;
}

void check_decoder(std::span<const std::byte> file) {
    const DecodedPicture picture = decode_picture(file, most);
    expect((picture.image == nullptr) == !picture.reason.empty(), "there is a picture or a reason");
    if (!picture.image) return;
    const Image& image = *picture.image;
    const auto size = picture_size(file);
    expect(size && size->width == image.width() && size->height == image.height(), "the size was told before");
    expect(size->fits(most), "no picture is larger than asked for");
    expect(image.bytes_per_pixel() == 4 && image.pitch() % 16 == 0, "the picture has the form it should have");
    expect(same_pixels(image, *decode_picture(file, most).image), "the same file gives the same pixels");

    const auto png = encode_png(image, true);
    expect(png.has_value(), "every picture can be written");
    const DecodedPicture again = decode_picture(*png, most);
    expect(again.image && same_pixels(image, *again.image), "what was written comes back the same");
}

void check_record(const BitmapRecord& bitmap, const Image& image) {
    expect(bitmap.width == image.width() && bitmap.height == image.height(), "a bitmap is as large as its picture");
    expect(has_pixel_buffer(bitmap), "a bitmap has its pixels");
}

// Whatever could be imported is exported and imported again without a change.
void check_import(std::string_view path, std::span<const std::byte> file) {
    reset_bitmaps();
    const ImportedPicture picture = decode_import(path, file);
    expect((picture.image == nullptr) == !picture.reason.empty(), "there is a picture or a reason");
    if (!picture.image) return;
    expect(import_bitmap("dast", *picture.image).done, "an empty table has room");
    expect(BITMAPS == 2 && RBM("dast") == 1 && RBM("dasm") == 2, "owner and mask are there");
    check_record(BITMAP[1], *picture.image);
    check_record(BITMAP[2], *picture.image);

    const BitmapRecord owner = BITMAP[1], mask = BITMAP[2];
    const ImageHandle exported = export_image(owner, &mask);
    expect(exported != nullptr, "what was imported can be exported");
    const Import again = import_bitmap("dast", *exported);
    expect(again.done && again.foreign_colours == 0, "it has the palette's colours");
    expect(BITMAP[RBM("dast")] == owner && BITMAP[RBM("dasm")] == mask, "and is the same bitmap");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (std::uint32_t i = 0; i < PAL.size(); ++i) // no two alike
        PAL[i] = 0xFF000000 | i << 16 | (i * 5 & 255) << 8 | (i * 11 & 255);
    INITDASHITEMS();
    const auto file = input_bytes(data, size);
    check_decoder(file);
    for (const std::string_view path : {"x.png", "x.tga"})
        check_import(path, file);
    return 0;
}
