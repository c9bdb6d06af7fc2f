#include "model/document.h"
#include "support/clean_car.h"

#include "support/bitmaps.h"

namespace {
using Flags = std::array<std::uint8_t, 4>;

void put_into_table(const BitmapFile& file) {
    for (const BitmapRecord& bitmap : file.bitmaps) {
        BitmapRecord& entry = BITMAP[++BITMAPS];
        entry.name = bitmap.name;
        entry.width = bitmap.width;
        entry.height = bitmap.height;
        entry.header_word_3 = bitmap.header_word_3;
        entry.header_word_4 = bitmap.header_word_4;
        entry.relative_x = bitmap.relative_x;
        entry.relative_y = bitmap.relative_y;
        entry.flags = bitmap.flags;
        entry.pixels = *bitmap.pixels;
    }
}

BitmapFile decoded(std::string id, Bytes resource) {
    return decode_bitmap_file(encode_archive({{std::move(id), std::move(resource)}}));
}

class BitmapFileFormat : public CleanCar {};
} // namespace

TEST_F(BitmapFileFormat, EncodesExactBytes) {
    put_into_table(decode_bitmap_file(
        encode_archive({{"roof", bitmap_resource(2, 1, 3, -1, 2)}, {"!cg0", bitmap_resource(1, 1, 0, 0, 1)}})));
    EXPECT_EQ(encode_bitmap_file(BitmapSet::dashboard),
              joined({byte_list({57, 0, 0, 0, 2, 0}), bytes_of("roof!cg0"), byte_list({0, 0, 0, 0, 18, 0, 0, 0}),
                      byte_list({2, 0, 1, 0, 3, 3, 4, 4, 3, 0, 0xFF, 0xFF, 0xF1, 0xF2, 0xF3, 0xF4, 1, 8}),
                      byte_list({1, 0, 1, 0, 3, 3, 4, 4, 0, 0, 0, 0, 0xF1, 0xF2, 0xF3, 0xF4, 1})}));
}

TEST_F(BitmapFileFormat, WithoutBitmapsIsSixBytes) {
    EXPECT_EQ(encode_bitmap_file(BitmapSet::dashboard), byte_list({6, 0, 0, 0, 0, 0}));
    EXPECT_EQ(encode_bitmap_file(BitmapSet::dots_and_digits), byte_list({6, 0, 0, 0, 0, 0}));
}

TEST_F(BitmapFileFormat, DecodesEveryField) {
    const BitmapFile file = decoded("roof", bitmap_resource(3, 2, -5, 600, 6));
    ASSERT_EQ(file.bitmaps.size(), 1U);
    const BitmapRecord& bitmap = file.bitmaps[0];
    EXPECT_EQ(bitmap.name, "roof");
    EXPECT_EQ(bitmap.width, 3);
    EXPECT_EQ(bitmap.height, 2);
    EXPECT_EQ(bitmap.header_word_3, 0x0303);
    EXPECT_EQ(bitmap.header_word_4, 0x0404);
    EXPECT_EQ(bitmap.relative_x, -5);
    EXPECT_EQ(bitmap.relative_y, 600);
    EXPECT_EQ(bitmap.flags, (Flags{0xF1, 0xF2, 0xF3, 0xF4}));
    EXPECT_EQ(*bitmap.pixels, (std::vector<std::uint8_t>{1, 8, 15, 22, 29, 36}));
    EXPECT_FALSE(file.cut);
}

TEST_F(BitmapFileFormat, ComesBackTheSameWhateverTheSize) {
    for (const auto& [width, height] : std::vector<std::pair<int, int>>{
             {0, 0}, {0, 9}, {9, 0}, {1, 1}, {320, 200}, {1, 65535}, {65535, 1}, {1023, 7}, {2048, 1000}}) {
        const Bytes file = encode_archive({{"dash", whole_bitmap(width, height, 319, -1)}});
        reset_bitmaps();
        put_into_table(decode_bitmap_file(file));
        EXPECT_EQ(encode_bitmap_file(BitmapSet::dashboard), file) << width << " x " << height;
    }
}

TEST_F(BitmapFileFormat, PixelsThatTheFileLacksAreZero) {
    const BitmapFile file = decoded("roof", bitmap_resource(3, 2, 0, 0, 4));
    EXPECT_EQ(*file.bitmaps[0].pixels, (std::vector<std::uint8_t>{1, 8, 15, 22, 0, 0}));
}

TEST_F(BitmapFileFormat, EntryPastEndIsABitmapOfNothing) {
    Bytes file = file_of({"dash"});
    put_u32(file, 10, 0xFFFFFFFF);
    const BitmapFile read = decode_bitmap_file(file);
    ASSERT_EQ(read.bitmaps.size(), 1U);
    EXPECT_EQ(read.bitmaps[0].width + read.bitmaps[0].height, 0);
    EXPECT_TRUE(read.bitmaps[0].pixels->empty());
}

TEST_F(BitmapFileFormat, CutAtEveryByteHoldsTheBitmapsThatAreWhole) {
    const Bytes file = encode_archive(
        {{"dash", whole_bitmap(5, 4, 1, 2)}, {"roof", whole_bitmap(3, 3, 3, 4)}, {"gbox", whole_bitmap(2, 6)}});
    const BitmapFile whole = decode_bitmap_file(file);
    const ArchiveDirectory tables = read_archive_directory(file);
    for (std::size_t length = 0; length < file.size(); ++length) {
        const BitmapFile cut = decode_bitmap_file(first_bytes(file, length));
        // An entry is there as soon as its offset is.
        ASSERT_EQ(cut.bitmaps.size(), length < 22 ? 0U : length < 26 ? 1U : length < 30 ? 2U : 3U) << length;
        EXPECT_FALSE(cut.cut);
        for (std::size_t i = 0; i < cut.bitmaps.size(); ++i) {
            const BitmapRecord& bitmap = cut.bitmaps[i];
            ASSERT_TRUE(has_pixel_buffer(bitmap)) << length;
            if (i < 2 && length >= tables.entries[i + 1].position) expect_same_bitmap(bitmap, whole.bitmaps[i]);
            if (length < tables.entries[i].position + 16) continue;
            const std::size_t held =
                std::min<std::size_t>(length - tables.entries[i].position - 16, bitmap.pixels->size());
            for (std::size_t pixel = 0; pixel < bitmap.pixels->size(); ++pixel)
                ASSERT_EQ((*bitmap.pixels)[pixel], pixel < held ? (*whole.bitmaps[i].pixels)[pixel] : 0) << length;
        }
    }
}

TEST_F(BitmapFileFormat, SizeThatNoMemoryShouldBeGivenForIsLeftOut) {
    const Bytes file =
        encode_archive({{"dash", bitmap_resource(65535, 65535, 0, 0, 20)}, {"roof", whole_bitmap(2, 2)}});
    const BitmapFile read = decode_bitmap_file(file);
    EXPECT_TRUE(read.cut);
    ASSERT_EQ(read.bitmaps.size(), 1U);
    EXPECT_EQ(read.bitmaps[0].name, "roof");
}

TEST_F(BitmapFileFormat, PixelsOfAllBitmapsTogetherAreBounded) {
    const Bytes file = archive_of_one_bitmap_under_many_ids(65535, bitmap_resource(1000, 1000, 0, 0, 20));
    const BitmapFile read = decode_bitmap_file(file);
    EXPECT_TRUE(read.cut);
    EXPECT_EQ(read.bitmaps.size(), 6U);
}

TEST_F(BitmapFileFormat, HundredWholeCanvasesHaveRoom) {
    const Bytes file = archive_of_one_bitmap_under_many_ids(101, bitmap_resource(320, 200, 0, 0, 20));
    const BitmapFile read = decode_bitmap_file(file);
    EXPECT_TRUE(read.cut);
    EXPECT_EQ(read.bitmaps.size(), 100U);
    EXPECT_EQ(decode_bitmap_file(archive_of_one_bitmap_under_many_ids(100, bitmap_resource(320, 200, 0, 0, 20))).cut,
              false);
}

TEST_F(BitmapFileFormat, SetFollowsTheFileName) {
    for (const char* path : {"stdaards.vsh", "/a/b/STDA", "./StDaXXXX.pvs", "stda/stda.vsh"})
        EXPECT_EQ(bitmap_set_for(path), BitmapSet::dashboard) << path;
    // ODDITY any-other-name-is-second-set
    for (const char* path : {"stdbards.vsh", "std", "", "my.vsh", "/stda/", "stdastda/default.vsh", "xstda.vsh"})
        EXPECT_EQ(bitmap_set_for(path), BitmapSet::dots_and_digits) << path;
}

namespace {
const std::vector<std::string> all_ids = {
    "!cg0", "!eg0", "dash", "dast", "dasm", "gbox", "ins1", "inm1", "ins2", "ins3", "inm3", "roof", "whl1",
    "whl2", "whl3", "dot ", "dot1", "dot2", "dota", "gnab", "gnob", "dig0", "dig1", "dig2", "dig3", "dig4",
    "dig5", "dig6", "dig7", "dig8", "dig9", "digA", "dot3", "xxxx", "DASH", "inm2", "das/"};

std::string ids_in(const Bytes& file) {
    std::string ids;
    for (const ArchiveEntry& entry : read_archive_directory(file).entries)
        ids += entry.id + "/";
    return ids;
}
} // namespace

TEST_F(BitmapFileFormat, EachSetHasItsIdsAndBothTheCommonOnes) {
    put_into_table(decode_bitmap_file(file_of(all_ids)));
    EXPECT_EQ(ids_in(encode_bitmap_file(BitmapSet::dashboard)),
              "!cg0/!eg0/dash/dast/dasm/gbox/ins1/inm1/ins2/ins3/inm3/roof/whl1/whl2/whl3/");
    EXPECT_EQ(ids_in(encode_bitmap_file(BitmapSet::dots_and_digits)),
              "!cg0/!eg0/dot /dot1/dot2/dota/gnab/gnob/dig0/dig1/dig2/dig3/dig4/dig5/dig6/dig7/dig8/dig9/");
}

TEST_F(BitmapFileFormat, IsWrittenInTheOrderOfTheTable) {
    put_into_table(decode_bitmap_file(file_of({"whl3", "dig0", "dash", "!cg0"})));
    EXPECT_EQ(ids_in(encode_bitmap_file(BitmapSet::dashboard)), "whl3/dash/!cg0/");
}

TEST_F(BitmapFileFormat, BitmapWithoutItsPixelsIsNotWritten) {
    put_into_table(decode_bitmap_file(file_of({"dash", "roof"}, 2)));
    BITMAP[1].pixels = {};
    EXPECT_EQ(ids_in(encode_bitmap_file(BitmapSet::dashboard)), "roof/");
}

TEST_F(BitmapFileFormat, NamesThatOnlyLookLikeTheSetAreNotWritten) {
    put_into_table(decode_bitmap_file(file_of({"dash"})));
    for (const char* name : {"dash/dast", "dot", "", "das"}) {
        BITMAP[1].name = name;
        EXPECT_EQ(ids_in(encode_bitmap_file(BitmapSet::dashboard)), "") << name;
    }
}
