// Any bytes as a picture: the sizes that a PNG or BMP header gives, the pixels of good ones as they stand in the file,
// and what was read is written and read, imported and exported as the same.
#include "expect.h"
#include "literal_reader.h"

#include "formats/bitmap_export.h"
#include "formats/bitmap_import.h"
#include "image/picture_file.h"
#include "model/bitmap_table.h"
#include "model/colours.h"
#include "model/items.h"

#include <algorithm>
#include <cstdlib>
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

// Where the first pixel of a picture stands whose bytes are not packed, from which side the rows come, and how far they
// are apart.
struct Layout {
    std::size_t first, row_step, pixel_bytes;
    bool from_the_top, red_first;
};

std::uint32_t big_endian(std::span<const std::byte> file, std::size_t at) {
    std::uint32_t value = 0;
    for (const char c : LiteralReader(file, at).text(4))
        value = value << 8 | static_cast<std::uint8_t>(c);
    return value;
}

void check_size(std::span<const std::byte> file, const PictureSize& size) {
    std::int64_t width = size.width, height = size.height;
    if (LiteralReader(file).text(4) == "\x89PNG") {
        width = big_endian(file, 16);
        height = big_endian(file, 20);
    }
    std::uint32_t header_size = 0;
    LiteralReader(file, 14).number(4, header_size);
    if (LiteralReader(file).text(2) == "BM" && header_size >= 40) {
        std::int32_t rows = 0;
        LiteralReader(file, 18).number(4, width);
        LiteralReader(file, 22).number(4, rows);
        height = std::abs(std::int64_t{rows});
    }
    expect(width == size.width && height == size.height, "the size of the header");
}

void check_pixels(std::span<const std::byte> file, const Image& image, const Layout& layout) {
    for (int y = 0; y < image.height(); ++y) {
        const auto row = static_cast<std::size_t>(layout.from_the_top ? y : image.height() - 1 - y);
        LiteralReader reader(file, layout.first + row * layout.row_step);
        for (int x = 0; x < image.width(); ++x) {
            std::uint32_t a = 0, green = 0, b = 0, alpha = 255;
            reader.number(1, a);
            reader.number(1, green);
            reader.number(1, b);
            if (layout.pixel_bytes == 4) reader.number(1, alpha);
            const std::uint32_t red = layout.red_first ? a : b, blue = layout.red_first ? b : a;
            expect(image.pixel(x, y) == (alpha << 24 | red << 16 | green << 8 | blue), "the pixels of the file");
        }
    }
}

// A good PNG has one stored block of unfiltered rows with alpha, a good BMP 24 bits a pixel.
void check_good(std::span<const std::byte> file, const DecodedPicture& picture) {
    expect(picture.image != nullptr, "a good picture can be decoded");
    const auto width = static_cast<std::size_t>(picture.image->width());
    const std::string start = LiteralReader(file).text(2);
    expect(start == "BM" || start == "\x89P", "the other reader knows it");
    const Layout png{.first = 49, .row_step = 4 * width + 1, .pixel_bytes = 4, .from_the_top = true, .red_first = true};
    const Layout bmp{
        .first = 54, .row_step = (3 * width + 3) / 4 * 4, .pixel_bytes = 3, .from_the_top = false, .red_first = false};
    check_pixels(file, *picture.image, start == "BM" ? bmp : png);
}

void check_decoder(std::span<const std::byte> file) {
    const DecodedPicture picture = decode_picture(file, most);
    expect((picture.image == nullptr) == !picture.reason.empty(), "there is a picture or a reason");
    if (input_is_good) check_good(file, picture);
    const auto size = picture_size(file);
    if (size) check_size(file, *size);
    if (!picture.image) return;
    const Image& image = *picture.image;
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
