// What the Files screen says in the strip beside the menu bar.
#include "files/file_screen_test.h"
#include "support/environment.h"
#include "support/faultless_car.h"
#include "widgets/strip.h"

#include <fstream>

namespace {

class FileScreenStripTest : public FileScreenTest {
protected:
    // A save has nothing to say of the checks.
    void SetUp() override {
        FileScreenTest::SetUp();
        DOCUMENT = faultless_car();
    }
    void TearDown() override {
        reset_strip();
        FileScreenTest::TearDown();
    }
    static ScriptStep says(const std::string& message) {
        return look([message] { EXPECT_EQ(said(), message); });
    }
    static ScriptStep strip_shows(const std::string& message) {
        return look([message] { EXPECT_TRUE(screen_shows(208, 616, message, 0xFFFAFAFA)) << message; });
    }
};

} // namespace

TEST_F(FileScreenStripTest, IsPlainAtTheStartAndAfterAVisitWithoutAWord) {
    const auto plain = [] {
        for (int y = 600; y < 648; ++y)
            for (int x = 200; x < 960; ++x)
                ASSERT_EQ(drawn(x, y).value & 0xFFFFFF, drawn(500, 620).value & 0xFFFFFF) << x << "," << y;
    };
    visit({mouse_at(100, 138), look(plain), typed("abcd"), look(plain)});
    plain();
}

TEST_F(FileScreenStripTest, SaysThatTheFileFieldIsEmpty) {
    visit({ctrl_key(Key::s), strip_shows("Nothing to save: the File field is empty"), click(700, 80),
           strip_shows("Nothing to load: the File field is empty")});
}

TEST_F(FileScreenStripTest, SaysHowLongAnIdentifierIs) {
    visit({typed("abcde"), ctrl_key(Key::l), strip_shows("A car's identifier has four characters")});
}

TEST_F(FileScreenStripTest, SaysThatNoUnpackerIsConfigured) {
    visit({typed("car.p3s"), ctrl_key(Key::l), strip_shows("Packed, and no unpacker (vorpack) is configured")});
}

TEST_F(FileScreenStripTest, SaysWhyADirectoryCannotBeEntered) {
    CONFIGS = 1;
    CONFIG_ID[1] = "dirlink";
    CONFIG_VALUE[1] = "gone:/nowhere/\u00E4";
    visit({key_press(Key::tab), ctrl_key(Key::u), typed("/nowhere"), key_press(Key::enter),
           strip_shows("Cannot enter: /nowhere: No such file or directory"), row_click(0),
           strip_shows("Cannot enter: /nowhere/\x84: No such file or directory")});
}

TEST_F(FileScreenStripTest, SaysThatTheDirFieldIsEmpty) {
    visit({key_press(Key::tab), ctrl_key(Key::u), key_press(Key::enter),
           says("Nothing to enter: the Dir field is empty")});
}

TEST_F(FileScreenStripTest, SaysWhatAnEnterDidThatChangesNothing) {
    visit({key_press(Key::tab), key_press(Key::enter), says("The directory is read anew"), key_press(Key::tab),
           key_press(Key::enter), says("Ctrl+L loads, Ctrl+S saves")});
}

TEST_F(FileScreenStripTest, SaysThatAListHasNoFiles) {
    visit({ctrl_key(Key::c), says("No car files in this directory"), ctrl_key(Key::c),
           says("No cars in this directory")});
    write_text("a.vsh", "");
    reset_strip();
    visit({ctrl_key(Key::c), says("")});
}

TEST_F(FileScreenStripTest, SaysWhyASaveWasRefused) {
    std::filesystem::create_directory("dir.res");
    visit({typed("dir.res"), ctrl_key(Key::s), strip_shows("Cannot be written: dir.res: Is a directory")});
}

TEST_F(FileScreenStripTest, IsSilentWhereTheStatusSaysAll) {
    visit({typed("abcd"), ctrl_key(Key::s), says(""), ctrl_key(Key::l), says(""), typed(".txt"), ctrl_key(Key::l),
           says(""), ctrl_key(Key::u), typed("none.res"), ctrl_key(Key::l), says("")});
}

TEST_F(FileScreenStripTest, WhatWasSaidOfSomethingEarlierGoesWithTheNextLoadSaveOrDirectory) {
    DOCUMENT = faultless_car();
    visit({ctrl_key(Key::s), typed("none.res"), ctrl_key(Key::l), says(""), ctrl_key(Key::u), ctrl_key(Key::s),
           typed("abcd"), ctrl_key(Key::s), says(""), ctrl_key(Key::u), ctrl_key(Key::s), row_click(0), says("")});
}

TEST_F(FileScreenStripTest, SaysHowManyCharactersAFieldHolds) {
    visit({typed(std::string(62, 'x')), says(""), typed("y"), says("62 characters at most"), key_press(Key::home),
           key_press(Key::left), says("62 characters at most")});
}

TEST_F(FileScreenStripTest, TellsHowManyEntriesACutListLeavesOut) {
    for (int i = 0; i < 400; ++i)
        write_text("f" + std::to_string(1000 + i) + ".vsh", "");
    const auto fact = [](bool there) {
        return look(
            [there] { EXPECT_EQ(screen_shows(960 - 8 - 8 * 18, 616, "200 of 401 entries", 0xFFB4B4B4), there); });
    };
    visit({fact(false), ctrl_key(Key::c), fact(true), key_press(Key::page_down), fact(true), ctrl_key(Key::c),
           fact(false)});
}

TEST_F(FileScreenStripTest, ANameThatIsNoUtf8IsShownAsTheGamesCharacters) {
    std::filesystem::create_directory("GR\x9AN.res");
    visit({ctrl_key(Key::c), row_click(1), look([] { EXPECT_TRUE(screen_shows(90, 76, " ", 0xFF00B464)); })});
    EXPECT_EQ(current_directory(), directory / "GR\x9AN.res");
}

TEST_F(FileScreenStripTest, SaysAfterASaveHowManySeriousChecksFailed) {
    CARNAME = std::string(30, 'n'); // not serious
    visit({typed("abcd"), ctrl_key(Key::s), says(""), look([] { PAR[0] = std::byte{0}; }), ctrl_key(Key::s),
           says("1 check failed, F2"), look([] {
               unsay(said());
               CAR[1] = SHAPEMODEL();
           }),
           ctrl_key(Key::s), says("2 checks failed, F2"), look([] { unsay(said()); }), ctrl_key(Key::l), says("")});
}

TEST_F(FileScreenStripTest, SaysBothWhatWasLeftOutAndThatChecksFailed) {
    CAR[0].edit().prims[4].vertex[1] = 500;
    visit(
        {typed("a.obj"), ctrl_key(Key::s), says("1 polygon left out: its vertices are not there; 1 check failed, F2")});
}

TEST_F(FileScreenStripTest, AFailedSaveSaysNothingOfChecks) {
    PAR[0] = std::byte{0};
    visit({typed("no/such/folder.res"), ctrl_key(Key::s),
           look([] { EXPECT_EQ(said().find("check"), std::string::npos) << said(); })});
}
