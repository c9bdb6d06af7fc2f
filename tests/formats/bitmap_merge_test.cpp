// LOADVSH and SAVEVSH: between the file and the bitmap table.
#include "model/document.h"
#include "model/preview.h"
#include "support/clean_car.h"

#include "model/colours.h"
#include "model/items.h"
#include "support/bitmaps.h"

namespace {
class DashFiles : public CleanCar {
protected:
    DashFiles() { INITDASHITEMS(); }

    std::string file_with(const Bytes& content, const std::string& name = "stdatest.vsh") {
        put_file(directory / name, content);
        return directory / name;
    }
    void load(const Bytes& content) { LOADVSH(file_with(content)); }
};
} // namespace

TEST_F(DashFiles, LoadingFillsTheTableInTheOrderOfTheFile) {
    load(file_of({"dash", "dig7", "what"}));
    EXPECT_EQ(FILE_FILE, directory / "stdatest.vsh");
    EXPECT_SUCCESS();
    EXPECT_EQ(table_names(), "dash/dig7/what/");
}

TEST_F(DashFiles, LoadedBitmapsHavePreviewsMaskLinksPositionsAndItems) {
    PAL[1] = 0xFF112233;
    load(encode_archive({{"dast", whole_bitmap(2, 3, 7, -8)}, {"dasm", whole_bitmap(2, 3, 7, -8)}}));
    BitmapRecord& owner = BITMAP[1];
    EXPECT_EQ(owner.mask_name, "dasm");
    EXPECT_EQ(owner.has_mask, 255);
    EXPECT_EQ(BITMAP[2].is_mask, 255);
    EXPECT_EQ(preview(owner, 2)->pixel(1, 1), 0xFF112233);
    EXPECT_EQ(preview(BITMAP[2], 3)->pixel(0, 0), 0xFFFFFFFF);
    EXPECT_EQ(owner.absolute_x, 7);
    EXPECT_EQ(owner.absolute_y, -8);
    EXPECT_EQ(DASHITEM[2].bitmap, 1);
}

// ODDITY swap-with-last
TEST_F(DashFiles, ReplacedBitmapGivesItsPlaceToTheLastOne) {
    load(file_of({"dash", "roof", "gbox", "whl1"}));
    load(file_of({"roof"}, 3));
    EXPECT_EQ(table_names(), "dash/whl1/gbox/roof/");
    EXPECT_EQ(BITMAP[4].width, 3);
    EXPECT_EQ(DASHITEM[3].bitmap, 4);
    load(file_of({"roof"}, 2)); // already the last
    EXPECT_EQ(table_names(), "dash/whl1/gbox/roof/");
    EXPECT_EQ(BITMAP[4].width, 2);
}

TEST_F(DashFiles, LoadingASecondFileMerges) {
    load(file_of({"dash", "roof"}));
    load(file_of({"dig0", "dot "}));
    EXPECT_EQ(table_names(), "dash/roof/dig0/dot /");
}

TEST_F(DashFiles, OfTwoEntriesWithOneIdTheLastStays) {
    load(encode_archive({{"dash", whole_bitmap(1, 1)}, {"roof", whole_bitmap(2, 2)}, {"dash", whole_bitmap(3, 3)}}));
    EXPECT_EQ(table_names(), "roof/dash/");
    EXPECT_EQ(BITMAP[2].width, 3);
}

TEST_F(DashFiles, TrailingBlankBelongsToTheId) {
    load(file_of({"dot ", "dot1"}));
    EXPECT_EQ(RBM("dot "), 1);
    EXPECT_EQ(RBM("dot"), 0);
    EXPECT_EQ(BITMAP[1].mask_name, "dota");
}

TEST_F(DashFiles, PanelsFollowTheInstrumentsWhereverTheyStandInTheFile) {
    load(encode_archive({{"ins1", whole_bitmap(1, 1, 5, 6)}, {"ins2", whole_bitmap(1, 1, 100, 120)}}));
    EXPECT_EQ(BITMAP[1].absolute_x, 105);
    EXPECT_EQ(BITMAP[1].absolute_y, 126);
    EXPECT_EQ(BITMAP[1].relative_x, 5);
}

TEST_F(DashFiles, PanelsWithoutInstrumentsAreWhereTheySay) {
    load(encode_archive({{"ins1", whole_bitmap(1, 1, 5, 6)}}));
    EXPECT_EQ(BITMAP[1].absolute_x, 5);
    EXPECT_EQ(BITMAP[1].absolute_y, 6);
}

TEST_F(DashFiles, LoadingInstrumentsLaterMovesThePanels) {
    load(encode_archive({{"inm3", whole_bitmap(1, 1, 5, 6)}}));
    load(encode_archive({{"ins2", whole_bitmap(1, 1, 100, 120)}}));
    EXPECT_EQ(BITMAP[1].absolute_x, 105);
}

TEST_F(DashFiles, TableTakesAHundredBitmapsAndReportsTheRest) {
    load(archive_of_one_bitmap_under_many_ids(100, whole_bitmap(1, 1)));
    EXPECT_EQ(BITMAPS, 100);
    EXPECT_SUCCESS();
    load(file_of({"dash"}));
    EXPECT_EQ(BITMAPS, 100);
    EXPECT_EQ(RBM("dash"), 0);
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
}

TEST_F(DashFiles, FullTableStillReplaces) {
    load(archive_of_one_bitmap_under_many_ids(99, whole_bitmap(1, 1)));
    load(file_of({"dash"}));
    load(file_of({"surplus", "dash"}, 4));
    EXPECT_EQ(BITMAPS, 100);
    EXPECT_EQ(BITMAP[RBM("dash")].width, 4);
    EXPECT_EQ(FILE_ERNUM, file_status::cut_to_fit);
}

TEST_F(DashFiles, FileOfManyThousandsOfEntriesFillsTheTable) {
    load(archive_of_one_bitmap_under_many_ids(65535, whole_bitmap(3, 3)));
    EXPECT_EQ(BITMAPS, 100);
    EXPECT_EQ(FILE_ERNUM, file_status::cut_to_fit);
}

TEST_F(DashFiles, BitmapTooLargeIsLeftOutAndTheEarlierOneStays) {
    load(file_of({"dash"}, 5));
    load(encode_archive({{"dash", bitmap_resource(65535, 65535, 0, 0, 20)}}));
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
    EXPECT_EQ(BITMAP[RBM("dash")].width, 5);
}

TEST_F(DashFiles, PixelsOfTheTableAreBoundedOverSeveralFiles) {
    load(encode_archive({{"aaaa", bitmap_resource(65535, 97, 0, 0, 9)}}));
    EXPECT_SUCCESS();
    load(encode_archive({{"bbbb", bitmap_resource(1000, 900, 0, 0, 9)}}));
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
    EXPECT_EQ(table_names(), "aaaa/");
    load(
        encode_archive({{"aaaa", bitmap_resource(1000, 900, 0, 0, 9)}, {"bbbb", bitmap_resource(1000, 900, 0, 0, 9)}}));
    EXPECT_EQ(table_names(), "aaaa/bbbb/");
    EXPECT_EQ(FILE_ERNUM, file_status::success);
}

TEST_F(DashFiles, NoFileIsReportedAndChangesNothing) {
    load(file_of({"dash"}));
    for (const std::string& name : names_of_no_file()) {
        reset_file_status();
        LOADVSH(name);
        EXPECT_EQ(FILE_FILE, name);
        EXPECT_FAILURE(file_status::not_found, "File not found");
        EXPECT_EQ(table_names(), "dash/");
    }
    EXPECT_TRUE(read_error_when_unreadable(file_of({"dash"}), LOADVSH));
}

TEST_F(DashFiles, EmptyFileAddsNothing) {
    load(file_of({"dash"}));
    load({});
    EXPECT_SUCCESS();
    EXPECT_EQ(table_names(), "dash/");
}

TEST_F(DashFiles, CutAtEveryByteKeepsTheTableWhole) {
    const Bytes file = encode_archive({{"dash", whole_bitmap(5, 4)}, {"ins1", whole_bitmap(3, 3)}});
    for (std::size_t length = 0; length < file.size(); ++length) {
        reset_bitmaps();
        load(first_bytes(file, length));
        ASSERT_LE(BITMAPS, 2);
        for (int i = 1; i <= BITMAPS; ++i) {
            ASSERT_EQ(BITMAP[i].name.size(), 4U);
            ASSERT_TRUE(has_pixel_buffer(BITMAP[i])) << length;
        }
    }
}

TEST_F(DashFiles, SavingWritesTheSetOfTheName) {
    load(file_of({"dash", "dig0", "!eg0"}));
    SAVEVSH(directory / "STDAcopy.vsh");
    EXPECT_EQ(FILE_FILE, directory / "STDAcopy.vsh");
    EXPECT_SUCCESS();
    EXPECT_EQ(get_file(directory / "STDAcopy.vsh"), file_of({"dash", "!eg0"}));
    SAVEVSH(directory / "default.vsh");
    EXPECT_EQ(get_file(directory / "default.vsh"), file_of({"dig0", "!eg0"}));
}

TEST_F(DashFiles, SavingNothingIsAnArchiveOfSixBytes) {
    load(file_of({"dig0"}));
    SAVEVSH(directory / "stdaxxxx.vsh");
    EXPECT_EQ(get_file(directory / "stdaxxxx.vsh"), byte_list({6, 0, 0, 0, 0, 0}));
    EXPECT_SUCCESS();
}

TEST_F(DashFiles, SavesStoredAndNotCanvasPositions) {
    const Bytes file = encode_archive({{"ins2", whole_bitmap(1, 1, 100, 120)}, {"ins1", whole_bitmap(1, 1, 5, 6)}});
    load(file);
    SAVEVSH(directory / "stdasame.vsh");
    EXPECT_EQ(get_file(directory / "stdasame.vsh"), file);
}

TEST_F(DashFiles, SavingWhereNoFileCanBeIsAnInvalidName) {
    SAVEVSH(directory / "missing/stda.vsh");
    EXPECT_EQ(FILE_FILE, directory / "missing/stda.vsh");
    EXPECT_FAILURE(file_status::invalid_name, "Invalid file name");
}

TEST_F(DashFiles, SavingThatCannotBeFinishedLeavesTheEarlierFile) {
    load(file_of({"dash"}, 50));
    const std::string file = file_with(bytes_of("earlier"));
    EXPECT_EQ(save_with_file_size_limit(100, [&] { SAVEVSH(file); }), file_status::write_error);
    EXPECT_EQ(get_file(file), bytes_of("earlier"));
}
