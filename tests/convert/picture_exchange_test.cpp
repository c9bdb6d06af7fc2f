#include "convert/picture_exchange.h"
#include "convert/refusal.h"
#include "image/tga.h"
#include "support/bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

Image painted(bool opaque) {
    Image image(5, 3, 4, 20);
    for (unsigned y = 0; y < 3; ++y)
        for (unsigned x = 0; x < 5; ++x)
            image.set_pixel(static_cast<int>(x), static_cast<int>(y),
                            (opaque ? 0xFF000000u : x * 50 << 24) | (x * 0x102030 + y * 0x404000));
    return image;
}

void expect_same(const Image& a, const Image& b) {
    ASSERT_EQ(a.width(), b.width());
    ASSERT_EQ(a.height(), b.height());
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            EXPECT_EQ(a.pixel(x, y), b.pixel(x, y)) << x << " " << y;
}

bool is_refused(const std::string& name, const Bytes& file) {
    try {
        decode_whole_picture(name, file);
        return false;
    } catch (const Refusal&) {
        return true;
    }
}

} // namespace

TEST(PictureExchange, KeepsEveryPixelInEveryKind) {
    for (const bool opaque : {true, false})
        for (const std::string name : {"a.tga", "a.PNG", "a.bmp"}) {
            const Image image = painted(opaque);
            expect_same(*decode_whole_picture(name, encode_picture(name, image)), image);
        }
}

TEST(PictureExchange, RefusesWhatEndsEarly) {
    for (const std::string name : {"a.tga", "a.png", "a.bmp"}) {
        const Bytes whole = encode_picture(name, painted(false));
        // Behind the pixels a TGA has a footer, which nobody needs.
        const std::size_t needed = name == "a.tga" ? whole.size() - 26 : whole.size();
        for (std::size_t size = 0; size < needed; ++size)
            EXPECT_TRUE(is_refused(name, first_bytes(whole, size))) << name << " " << size;
        EXPECT_FALSE(is_refused(name, first_bytes(whole, needed))) << name;
    }
}

TEST(PictureExchange, RefusesAnyChangedByteOfAPng) {
    const Bytes whole = encode_picture("a.png", painted(false));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        Bytes changed = whole;
        changed[at] ^= std::byte{4};
        EXPECT_TRUE(is_refused("a.png", changed)) << at;
    }
}

TEST(PictureExchange, RefusesOneKindUnderTheNameOfAnother) {
    EXPECT_TRUE(is_refused("a.png", encode_picture("a.bmp", painted(true))));
    EXPECT_TRUE(is_refused("a.bmp", encode_picture("a.png", painted(true))));
    EXPECT_TRUE(is_refused("a.jpg", encode_picture("a.png", painted(true))));
}

TEST(PictureExchange, TakesBitmapsOfTheShortHeader) {
    // A row of two pixels with its padding.
    const Bytes file = joined({bytes_of("BM"), byte_list({0, 0, 0, 0, 0, 0, 0, 0, 26, 0, 0, 0}),
                               byte_list({12, 0, 0, 0, 2, 0, 1, 0, 1, 0, 24, 0}), byte_list({1, 2, 3, 4, 5, 6, 0, 0})});
    EXPECT_EQ(decode_whole_picture("a.bmp", file)->pixel(1, 0), 0xFF060504u);
    EXPECT_FALSE(is_refused("a.bmp", first_bytes(file, file.size() - 2)));
    EXPECT_TRUE(is_refused("a.bmp", first_bytes(file, file.size() - 3)));
}

TEST(PictureExchange, MappedPicturesTakeTheirOwnColours) {
    Image indices(2, 1, 1, 2);
    indices.set_pixel(0, 0, 1);
    indices.set_pixel(1, 0, 2);
    const Bytes file = encode_targa_8(indices, std::vector<std::uint8_t>{0, 0, 0, 3, 2, 1, 6, 5, 4});
    const ImageHandle image = decode_whole_picture("a.tga", file);
    EXPECT_EQ(image->pixel(0, 0), 0xFF010203u);
    EXPECT_EQ(image->pixel(1, 0), 0xFF040506u);
}
