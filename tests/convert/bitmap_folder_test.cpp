#include "convert/bitmap_folder.h"

#include "base/byte_reader.h"
#include "convert/bitmap_layout.h"
#include "convert/refusal.h"
#include "convert_test.h"
#include "image/picture_file.h"
#include "model/colours.h"

#include <algorithm>
#include <random>
#include <utility>

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

namespace {

BitmapRecord bitmap(const std::string& name, int width, int height) {
    static std::mt19937 random(5);
    BitmapRecord result;
    result.name = name;
    result.width = static_cast<std::uint16_t>(width);
    result.height = static_cast<std::uint16_t>(height);
    Pixels& pixels = result.pixels.edit();
    for (int i = 0; i < width * height; ++i)
        pixels.push_back(static_cast<std::uint8_t>(random() & 0xFF));
    return result;
}

class Folder {
public:
    explicit Folder(const std::vector<BitmapRecord>& bitmaps) : files_(bitmap_folder(bitmaps)) {}

    Bytes& operator[](const std::string& name) {
        const auto file = std::ranges::find(files_, name, &NamedFile::name);
        if (file == files_.end()) throw Refusal("no " + name);
        return file->content;
    }
    std::vector<BitmapRecord> read() {
        return read_bitmap_folder(ByteReader((*this)["layout.txt"]).text_view(),
                                  [&](const std::string& name) { return (*this)[name]; });
    }
    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const NamedFile& file : files_)
            result.push_back(file.name);
        return result;
    }

private:
    std::vector<NamedFile> files_;
};

Bytes png_of_size(int width, int height) { return *encode_png(*create_image(width, height, 0, 32), true); }

class BitmapFolders : public Conversions {
protected:
    // A palette in which colours occur several times: entry 45 looks like 5.
    void repeat_colours() {
        for (std::size_t i = 0; i < PAL.size(); ++i)
            PAL[i] = 0xFF000000 | static_cast<std::uint32_t>(i % 40) * 0x050301;
    }
};

} // namespace

TEST_F(BitmapFolders, ComeBackAsTheyWere) {
    std::vector<BitmapRecord> bitmaps = {bitmap("dash", 16, 16), bitmap("roof", 3, 2), bitmap("gbox", 1, 1),
                                         bitmap("none", 0, 7)};
    bitmaps[1].relative_x = -5;
    bitmaps[1].relative_y = 32767;
    bitmaps[2].header_word_3 = 65535;
    bitmaps[2].header_word_4 = 1;
    bitmaps[3].flags = {1, 2, 3, 255};
    EXPECT_EQ(Folder(bitmaps).read(), bitmaps);
    repeat_colours();
    EXPECT_EQ(Folder(bitmaps).read(), bitmaps);
    EXPECT_EQ(Folder({}).read(), std::vector<BitmapRecord>());
}

TEST_F(BitmapFolders, MasksTravelInTheAlphaOfTheirOwners) {
    repeat_colours();
    const std::vector<BitmapRecord> bitmaps = {bitmap("dasm", 9, 9), bitmap("dast", 9, 9), bitmap("gnob", 4, 4),
                                               bitmap("gnab", 4, 5), bitmap("inm1", 4, 5)};
    Folder folder(bitmaps);
    EXPECT_THAT(folder.names(), ElementsAre("layout.txt", "dast.png", "gnob.png", "gnab.png", "inm1.png"));
    EXPECT_EQ(folder.read(), bitmaps);
}

TEST_F(BitmapFolders, SameAndOddIdsGetPicturesOfTheirOwn) {
    const std::vector<BitmapRecord> bitmaps = {bitmap("dast", 2, 2), bitmap("DAST", 2, 2), bitmap("dast", 2, 2),
                                               bitmap("dasm", 2, 2), bitmap("dot ", 2, 2), bitmap("a/\x01\xE1", 2, 2)};
    Folder folder(bitmaps);
    EXPECT_THAT(folder.names(), ElementsAre("layout.txt", "dast.png", "DAST-2.png", "dast-3.png", "dasm.png", "dot.png",
                                            "a%2F%01%E1.png"));
    EXPECT_EQ(folder.read(), bitmaps);
}

TEST_F(BitmapFolders, AnEditedPictureWins) {
    repeat_colours();
    std::vector<BitmapRecord> bitmaps = {bitmap("dast", 2, 1), bitmap("dasm", 2, 1)};
    bitmaps[0].pixels = Pixels{45, 45};
    bitmaps[1].pixels = Pixels{100, 100};
    Folder folder(bitmaps);
    Image edited(2, 1, 4, 8);
    edited.set_pixel(0, 0, (PAL[45] & 0xFFFFFF) | (255u - 100) << 24); // as it was
    edited.set_pixel(1, 0, (PAL[7] & 0xFFFFFF) | 0x7F000000);
    folder["dast.png"] = *encode_png(edited, true);
    EXPECT_THAT(*folder.read()[0].pixels, ElementsAre(45, 7));
    EXPECT_THAT(*folder.read()[1].pixels, ElementsAre(100, 255));
    edited.set_pixel(1, 0, 0x80000000);
    folder["dast.png"] = *encode_png(edited, true);
    EXPECT_THAT(*folder.read()[1].pixels, ElementsAre(100, 0));
}

TEST_F(BitmapFolders, APictureOfAnotherSizeWinsWhereItFitsTheCanvas) {
    repeat_colours();
    BitmapRecord wide = bitmap("dash", 321, 1);
    wide.pixels.edit().assign(321, 40); // looks like 0
    Folder folder({wide, bitmap("dast", 1, 1), bitmap("dasm", 1, 1)});
    EXPECT_EQ(folder.read()[0], wide);
    folder["dast.png"] = png_of_size(320, 200);
    EXPECT_EQ(folder.read()[1].width, 320);
    EXPECT_EQ(folder.read()[2].pixels->size(), 320u * 200);
    folder["dash.png"] = png_of_size(320, 1);
    EXPECT_THAT(*folder.read()[0].pixels, Each(0));
    folder["dash.png"] = png_of_size(322, 1);
    EXPECT_THAT([&] { folder.read(); }, ThrowsMessage<Refusal>(HasSubstr("dash.png: larger than 320 x 200")));
}

TEST_F(BitmapFolders, WhatCannotBeAPictureIsRefused) {
    EXPECT_THAT([] { bitmap_folder({bitmap("wide", 4097, 1)}); }, ThrowsMessage<Refusal>(HasSubstr("4097 x 1")));
}

TEST_F(BitmapFolders, DamagedPicturesAreNamed) {
    Folder folder({bitmap("dash", 4, 4)});
    folder["dash.png"].pop_back();
    EXPECT_THAT([&] { folder.read(); }, ThrowsMessage<Refusal>(HasSubstr("dash.png: ends before")));
}

TEST_F(BitmapFolders, AMaskOfNothingIsRefused) {
    EXPECT_THAT([] { read_bitmap_folder("mask \"dasm\" of \"dast\" 1 1 0 0 0 0 0 0 0 0", {}); },
                ThrowsMessage<Refusal>(HasSubstr("dast")));
}

TEST(BitmapLayout, RefusesMalformedRowsWithTheirLine) {
    const std::string good = "bitmap \"dash\" dash.png 2 2 0 0 0 0 0 0 0 0";
    EXPECT_EQ(read_layout(good).size(), 1u);
    for (const std::string bad : {"bitmap",
                                  "bitmap \"das\" a.png 2 2 0 0 0 0 0 0 0 0",
                                  "bitmap dash a.png 2 2 0 0 0 0 0 0 0 0",
                                  "bitmap \"dash\" ../a.png 2 2 0 0 0 0 0 0 0 0",
                                  "bitmap \"dash\" a.png 2 2 0 0 0 0 0 0 0",
                                  "bitmap \"dash\" a.png 2 2 0 0 0 0 0 0 0 0 0",
                                  "bitmap \"dash\" a.png 65536 2 0 0 0 0 0 0 0 0",
                                  "bitmap \"dash\" a.png 2 2 32768 0 0 0 0 0 0 0",
                                  "bitmap \"dash\" a.png 2 2 0 0 0 0 0 0 0 256",
                                  "bitmap \"dash\" a.png 0 2 0 0 0 0 0 0 0 0",
                                  "empty \"dash\" 2 2 0 0 0 0 0 0 0 0",
                                  "mask \"dasm\" of",
                                  "picture \"dash\"",
                                  "pixels 0:1",
                                  "pixels 0x1:2",
                                  "pixels 4:1x1",
                                  "pixels 3:1x2",
                                  "pixels 0:256x1",
                                  "pixels 0:1x0",
                                  "pixels 1:1x1 0:1x1"})
        EXPECT_THAT([&] { read_layout(good + "\n" + bad); }, ThrowsMessage<Refusal>(HasSubstr("line 2: "))) << bad;
    EXPECT_THROW(read_layout("pixels 0:1x1"), Refusal);
}

TEST(BitmapLayout, ComesBackAsItWas) {
    LayoutRow row{.kind = LayoutRow::Kind::bitmap, .bitmap = {}};
    row.bitmap.name = "\"#\\ ";
    row.bitmap.width = 100;
    row.bitmap.height = 7;
    row.picture = "a.png";
    for (std::size_t i = 0; i < 25; ++i)
        row.kept.push_back({.at = i * 27, .count = i + 1, .value = static_cast<std::uint8_t>(i * 10)});
    EXPECT_EQ(read_layout(layout_text({row, row})), std::vector({row, row}));
}
