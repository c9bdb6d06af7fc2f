#include "files/file_list.h"

#include "base/config.h"
#include "formats/parameter_file.h"
#include "formats/resource_archive.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using testing::ElementsAre;

namespace {

class FileList : public testing::Test {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    static void add_config(const std::string& key, const std::string& value) {
        ++CONFIGS;
        CONFIG_ID[CONFIGS] = key;
        CONFIG_VALUE[CONFIGS] = value;
    }
    static void put_car(const std::string& file, const std::string& name) {
        ParameterFile car;
        car.name = name;
        put_file(file, encode_parameter_file(car));
    }
    static std::vector<std::string> shown() {
        std::vector<std::string> texts;
        for (int i = 1; i <= LFILES; ++i)
            texts.push_back(LFILE[i].shown);
        return texts;
    }
};

Bytes project_named(const std::string& name) {
    ByteWriter file;
    file.text("*car");
    file.bytes(byte_list({13, 10, 26, 0, 1, 0, 0, 1}));
    file.text("Base");
    file.u32(20);
    file.u16(static_cast<std::uint16_t>(name.size()));
    file.text(name);
    return file.take();
}

} // namespace

TEST_F(FileList, AnEmptyDirectoryShowsTheWayUpAndNothingElse) {
    UPDATEFILELIST("");
    EXPECT_THAT(shown(), ElementsAre(".."));
    EXPECT_EQ(LFILE[1].kind, entry_kind::directory);
}

TEST_F(FileList, ALinkWithoutAColonStandsForItself) {
    add_config("DirLink", "  /mnt/cd ");
    UPDATEFILELIST("");
    EXPECT_EQ(LFILE[1].name, "/mnt/cd");
    EXPECT_EQ(LFILE[1].shown, "/mnt/cd");
    EXPECT_EQ(LFILE[1].kind, entry_kind::link);
}

TEST_F(FileList, ALinkWithAColonShowsItsLabelAndLeadsToItsPath) {
    add_config("dirlink", "Game cars : /home/me/cars:old");
    add_config("vorpack", "x:y");
    UPDATEFILELIST("");
    EXPECT_EQ(LFILE[1].shown, "Game cars");
    EXPECT_EQ(LFILE[1].name, "/home/me/cars:old");
    EXPECT_EQ(LFILES, 2);
}

TEST_F(FileList, CarsAreShownByTheirNamesAndChosenByTheirIdentifiers) {
    put_car("CARabCD.RES", "Speedster");
    write_text("other.txt", "x");
    UPDATEFILELIST(cars_mode);
    EXPECT_THAT(shown(), ElementsAre("..", "Speedster (ABCD)"));
    EXPECT_EQ(LFILE[2].name, "abcd");
    EXPECT_EQ(LFILE[2].kind, entry_kind::file);
}

TEST_F(FileList, ACarNameIsReadUpTo40BytesOrAZero) {
    put_car("carlong.res", std::string(50, 'n'));
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].shown, std::string(40, 'n') + " (LONG)");
}

TEST_F(FileList, AShortCarFileNameGivesTheCharactersThatExist) {
    put_car("ab.res", "Short");
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].shown, "Short (RES)") << "characters 4 to 7 of \"ab.res\" are \"res\"";
    EXPECT_EQ(LFILE[2].name, "res");
}

TEST_F(FileList, AProjectIsShownByItsNameWithItsMark) {
    put_file("mine.car", project_named("My car"));
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].shown, "My car (c/p)");
    EXPECT_EQ(LFILE[2].name, "mine.car");
}

// ODDITY list-missing-marker
TEST_F(FileList, AMissingMarkerReadsOneByteBeforeWhereAMatchWouldStart) {
    Bytes archive = byte_list({0, 0, 0, 0, 1, 0});
    archive = joined({archive, bytes_of("simx"), byte_list({0, 0, 0, 0}), bytes_of("hello")});
    // Without a match the offset is taken from position 9: the last id byte and three zeros, 'x' = 120.
    archive.resize(14 + 'x');
    archive = joined({archive, bytes_of("found"), byte_list({0, 1})});
    EXPECT_EQ(listed_car_name(archive), "found");

    Bytes project(80, std::byte{0});
    put_u32(project, 3, 70); // one before where a marker at the front would have its offset
    put_u16(project, 70, 2);
    project[72] = std::byte{'h'};
    project[73] = std::byte{'i'};
    EXPECT_EQ(listed_project_name(project), "hi");
}

TEST_F(FileList, OfTwoNamesTheFirstIsListed) {
    const auto archive =
        joined({byte_list({0, 0, 0, 0, 2, 0}), bytes_of("gnamgnam"), byte_list({0, 0, 0, 0, 2, 0, 0, 0}), bytes_of("A"),
                byte_list({0}), bytes_of("B"), byte_list({0})});
    EXPECT_EQ(listed_car_name(archive), "A");
}

TEST_F(FileList, DamagedCarsAreListedWithWhatTheyHold) {
    ParameterFile car;
    car.name = "Whole";
    const Bytes whole = encode_parameter_file(car);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const std::string name = listed_car_name(first_bytes(whole, length));
        EXPECT_LE(name.size(), 40u);
    }
    const Bytes project = project_named("Whole");
    for (std::size_t length = 0; length <= project.size(); ++length)
        EXPECT_LE(listed_project_name(first_bytes(project, length)).size(), length);
    put_file("carbad1.res", {});
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].shown, " (BAD1)");
}

TEST_F(FileList, AFilterTakesExtensionsInAnyCaseAndOnlyTheLastOne) {
    for (const char* name : {"X.RES", "README", "a.res.bak", "b.3sh", "c.res2"})
        write_text(name, "");
    UPDATEFILELIST(".res.vsh.3sh.obj.");
    EXPECT_THAT(shown(), ElementsAre("..", "b.3sh", "X.RES"));
    EXPECT_EQ(LFILE[3].name, "X.RES");
}

TEST_F(FileList, TheComparisonWithCarsIsExact) {
    put_car("carabcd.res", "Speedster");
    UPDATEFILELIST("Cars");
    EXPECT_THAT(shown(), ElementsAre(".."));
}

TEST_F(FileList, LinksComeBeforeDirectoriesAndTheseBeforeFilesEachByTheShownText) {
    add_config("dirlink", "zoo");
    add_config("dirlink", "Ant");
    std::filesystem::create_directory("beta");
    std::filesystem::create_directory("Alpha");
    write_text("a.txt", "");
    write_text("B.txt", "");
    UPDATEFILELIST("");
    EXPECT_THAT(shown(), ElementsAre("Ant", "zoo", "..", "Alpha", "beta", "a.txt", "B.txt"));
}

TEST_F(FileList, EqualTextsKeepTheOrderOfTheirNames) {
    put_car("carbbbb.res", "Same");
    put_car("CARBBBB.res", "Same");
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILES, 3);
    EXPECT_EQ(LFILE[2].shown, "Same (BBBB)");
    EXPECT_EQ(LFILE[3].shown, "Same (BBBB)");
}

TEST_F(FileList, TwoHundredEntriesAreTakenLinksFirstThenTheWayUpThenByName) {
    for (int i = 0; i < 10000; ++i)
        ::close(::creat(("f" + std::to_string(10000 + i)).c_str(), 0600));
    add_config("dirlink", "link");
    UPDATEFILELIST("");
    EXPECT_EQ(LFILES, 200);
    EXPECT_EQ(LFILE[1].shown, "link");
    EXPECT_EQ(LFILE[2].shown, "..");
    EXPECT_EQ(LFILE[3].shown, "f10000");
    EXPECT_EQ(LFILE[200].shown, "f10197");
}

// Opening the pipe would wait for a writer for ever.
TEST_F(FileList, APipeIsListedByItsNameAndNeverOpened) {
    ASSERT_EQ(::mkfifo("carpipe.res", 0600), 0);
    ASSERT_EQ(::mkfifo("pipe.car", 0600), 0);
    UPDATEFILELIST(cars_mode);
    EXPECT_THAT(shown(), ElementsAre("..", "carpipe.res", "pipe.car"));
}

TEST_F(FileList, LinksThatLeadNowhereAndUnreadableDirectoriesDoNoHarm) {
    std::filesystem::create_symlink("nowhere", "dangling");
    std::filesystem::create_directory("closed");
    std::filesystem::permissions("closed", std::filesystem::perms::none);
    UPDATEFILELIST("");
    EXPECT_THAT(shown(), ElementsAre("..", "closed", "dangling"));
    std::filesystem::permissions("closed", std::filesystem::perms::owner_all);
}

TEST_F(FileList, NamesInUtf8AreShownInTheFontsCharactersAndKeepTheirBytes) {
    write_text("\u00C4rger.res", "");
    write_text("\u4E2D.res", "");
    std::filesystem::create_directory("\u00E9t\u00E9");
    add_config("dirlink", "\u00D6l: ~/\u00D6l");
    UPDATEFILELIST(".res.");
    EXPECT_THAT(shown(), ElementsAre("\x99l", "..", "\x82t\x82", "?.res", "\x8Erger.res"));
    EXPECT_EQ(LFILE[1].name, "~/\u00D6l");
    EXPECT_EQ(LFILE[3].name, "\u00E9t\u00E9");
    EXPECT_EQ(LFILE[4].name, "\u4E2D.res");
    EXPECT_EQ(LFILE[5].name, "\u00C4rger.res");
}

TEST_F(FileList, AnIdentifierInUtf8IsFourWholeCharacters) {
    put_car("carabc\u00E4.res", "Umlaut");
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].name, "abc\u00E4");
    EXPECT_EQ(LFILE[2].shown, "Umlaut (ABC\x84)");
}

// Texts of the game are of its own code page, whatever they look like.
TEST_F(FileList, ACarsNameIsShownByteByByte) {
    put_car("carname.res", "\xC3\xA9");
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].shown, "\xC3\xA9 (NAME)");
}

TEST_F(FileList, CountsWhatItHasNoRoomFor) {
    for (int i = 0; i < 198; ++i)
        write_text("f" + std::to_string(i), "");
    UPDATEFILELIST("");
    EXPECT_EQ(LFILES, 199);
    EXPECT_EQ(listable_entries(), 199);
    for (int i = 198; i < 400; ++i)
        write_text("f" + std::to_string(i), "");
    UPDATEFILELIST("");
    EXPECT_EQ(LFILES, 200);
    EXPECT_EQ(listable_entries(), 401);
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(listable_entries(), 1);
}

TEST_F(FileList, ANameIsLookedForAtEveryPlaceOfTheIds) {
    // "xgnamxxx": the marker begins in the middle of an id, and its offset in that of another.
    const Bytes archive = joined({byte_list({0, 0, 0, 0, 2, 0}), bytes_of("xgnamxxx"),
                                  byte_list({0xFF, 3, 0, 0, 0, 0xFF, 0xFF, 0xFF}), bytes_of("...odd"), byte_list({0})});
    EXPECT_EQ(listed_car_name(archive), "odd");
}

TEST_F(FileList, ANameFarBackInAFileIsFound) {
    for (const std::size_t place : {4000U, 5000U, 100'000U, (1U << 20) - 100U}) {
        put_file("carback.res",
                 encode_archive({{"else", Bytes(place)}, {"gnam", joined({bytes_of("Far back"), Bytes(40)})}}));
        UPDATEFILELIST(cars_mode);
        EXPECT_EQ(LFILE[2].shown, "Far back (BACK)") << place;
    }
    put_file("carback.res", encode_archive({{"else", Bytes(1 << 20)}, {"gnam", bytes_of("Too far back")}}));
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].shown, " (BACK)");
}

TEST_F(FileList, ANameOfAProjectFarBackIsFound) {
    Bytes project = joined({bytes_of("*car"), Bytes(8), bytes_of("Base"), byte_list({0, 0, 2, 0}), Bytes(0x20000)});
    project.resize(0x20000);
    project = joined({project, byte_list({8, 0}), bytes_of("Far back")});
    put_file("back.car", project);
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILE[2].shown, "Far back (c/p)");
}

TEST_F(FileList, TheFirstEightyBytesOfAProjectAreSearched) {
    const auto named = [](std::size_t at) {
        Bytes project(200);
        std::ranges::copy(bytes_of("Base"), project.begin() + static_cast<std::ptrdiff_t>(at));
        project[at + 4] = std::byte{100};
        project[100] = std::byte{4};
        std::ranges::copy(bytes_of("Name"), project.begin() + 102);
        return listed_project_name(project);
    };
    EXPECT_EQ(named(75), "Name");
    EXPECT_EQ(named(76), "Name");
    EXPECT_NE(named(77), "Name");
}
