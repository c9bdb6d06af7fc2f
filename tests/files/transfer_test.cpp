#include "files/transfer.h"
#include "model/document.h"

#include "base/config.h"
#include "base/file_status.h"
#include "base/shell.h"
#include "base/text.h"
#include "formats/parameter_file.h"
#include "model/items.h"
#include "model/new_car.h"
#include "support/child_process.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using testing::ElementsAre;

namespace {

class TransferTest : public testing::Test {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        new_car();
        INITDASHITEMS();
        WORKDIR = directory.path() + "/";
    }

    static void configure(const std::string& key, const std::string& value) {
        ++CONFIGS;
        CONFIG_ID[CONFIGS] = key;
        CONFIG_VALUE[CONFIGS] = value;
    }
};

} // namespace

TEST_F(TransferTest, AnIdentifierStandsForTheFourFilesInLowerCase) {
    EXPECT_EQ(transfer(Transfer::save, "ABCD").text, "Saved ABCD");
    EXPECT_THAT(directory.names(), ElementsAre("carabcd.res", "stabcd.3sh", "stdaabcd.vsh", "stdbabcd.vsh"));

    CARNAME = "changed";
    const TransferReport report = transfer(Transfer::load, "aBcD");
    EXPECT_EQ(report.text, "Loaded aBcD");
    EXPECT_FALSE(report.failed);
    EXPECT_EQ(report.first_failure, "");
    EXPECT_EQ(CARNAME, "New car");
}

TEST_F(TransferTest, ACarInCapitalsAsDosWritesItIsLoadedAndSavedUnderItsNames) {
    CARNAME = "From a floppy";
    transfer(Transfer::save, "abcd");
    for (const char* name : {"carabcd.res", "stabcd.3sh", "stdaabcd.vsh", "stdbabcd.vsh"})
        std::filesystem::rename(name, upper_case(name));
    CARNAME = "";
    EXPECT_EQ(transfer(Transfer::load, "abcd").text, "Loaded abcd");
    EXPECT_EQ(CARNAME, "From a floppy");
    EXPECT_EQ(transfer(Transfer::save, "abcd").text, "Saved abcd");
    EXPECT_THAT(directory.names(), ElementsAre("CARABCD.RES", "STABCD.3SH", "STDAABCD.VSH", "STDBABCD.VSH"));

    CARNAME = "Small letters";
    SAVERES("carabcd.res");
    CARNAME = "";
    transfer(Transfer::load, "ABCD");
    EXPECT_EQ(CARNAME, "Small letters") << "they come first where both are there";
}

TEST_F(TransferTest, NamesOfAnotherLengthWithoutADotDoNothing) {
    for (const std::string name : {"", "abc", "abcde"}) {
        EXPECT_EQ(transfer(Transfer::load, name).text, "");
        EXPECT_EQ(transfer(Transfer::save, name).text, "");
        EXPECT_EQ(FILE_ERNUM, file_status::nothing_done);
        if (name.empty()) continue;
        EXPECT_EQ(transfer(Transfer::load, name).note, "A car's identifier has four characters");
    }
    EXPECT_EQ(transfer(Transfer::load, "").note, "Nothing to load: the File field is empty");
    EXPECT_EQ(transfer(Transfer::save, "").note, "Nothing to save: the File field is empty");
    EXPECT_TRUE(directory.names().empty());
}

TEST_F(TransferTest, TheExtensionIsLowerCasedAndPicksTheReaderAndTheWriter) {
    EXPECT_EQ(transfer(Transfer::save, "car.RES").text, "Saved car.RES");
    EXPECT_EQ(transfer(Transfer::load, "car.RES").text, "Loaded car.RES");
    EXPECT_EQ(transfer(Transfer::save, "a.3sh").text, "Saved a.3sh");
    EXPECT_EQ(transfer(Transfer::load, "a.3sh").text, "Loaded a.3sh");
    EXPECT_EQ(transfer(Transfer::save, "a.vsh").text, "Saved a.vsh");
    EXPECT_EQ(transfer(Transfer::load, "a.vsh").text, "Loaded a.vsh");
    EXPECT_EQ(get_file("a.vsh").size(), 6u);
}

TEST_F(TransferTest, AMissingFileIsNamedWithItsError) {
    const TransferReport report = transfer(Transfer::load, "none.res");
    EXPECT_EQ(report.text, "File not found: none.res");
    EXPECT_TRUE(report.failed);
}

TEST_F(TransferTest, ANameThatCannotBeCreatedIsReported) {
    std::filesystem::create_directory("dir.res");
    EXPECT_EQ(transfer(Transfer::save, "dir.res").text, "Invalid file name: dir.res");
    EXPECT_EQ(transfer(Transfer::load, "dir.res").text, "File not found: dir.res");
    EXPECT_EQ(transfer(Transfer::save, "nowhere/x.res").text, "Invalid file name: nowhere/x.res");
}

TEST_F(TransferTest, UnknownExtensionsAreReportedWithoutAName) {
    for (const std::string name : {"x.txt", "x.", ".x", "a.b/c", "x.ob", "x.cars"}) {
        for (const Transfer direction : {Transfer::load, Transfer::save}) {
            const TransferReport report = transfer(direction, name);
            EXPECT_TRUE(report.unknown_format) << name;
            EXPECT_EQ(report.text, "") << name;
            EXPECT_EQ(FILE_ERNUM, file_status::nothing_done);
        }
    }
}

TEST_F(TransferTest, WhatIsSaidOfAnUnknownFormatStandsInTheRecordToo) {
    FILE_FILE = "earlier";
    const TransferReport report = report_unknown_format();
    EXPECT_EQ(report.text, "Unknown format: ");
    EXPECT_TRUE(report.failed);
    EXPECT_EQ(FILE_ERNUM, 255);
    EXPECT_EQ(FILE_ERROR, "Unknown format");
    EXPECT_EQ(FILE_FILE, "");
}

TEST_F(TransferTest, SavingNeverPacks) {
    configure("vorpack", "true");
    for (const std::string name : {"x.p3s", "x.pvs", "x.pre"}) {
        EXPECT_TRUE(transfer(Transfer::save, name).unknown_format);
        EXPECT_TRUE(directory.names().empty());
    }
}

TEST_F(TransferTest, PackedFilesWithoutAnUnpackerDoNothingAndShowNothing) {
    write_text("car.p3s", "packed");
    const TransferReport report = transfer(Transfer::load, "car.p3s");
    EXPECT_EQ(report.text, "");
    EXPECT_EQ(report.note, "Packed, and no unpacker (vorpack) is configured");
    EXPECT_FALSE(report.unknown_format);
    EXPECT_EQ(FILE_ERNUM, file_status::nothing_done);
}

TEST_F(TransferTest, PackedFilesGoThroughTheUnpackerIntoTheWorkDirectory) {
    configure("vorpack", "cp");
    std::filesystem::create_directory("work dir");
    WORKDIR = directory / "work dir/";
    CARNAME = "Packed";
    transfer(Transfer::save, "plain.res");
    std::filesystem::rename("plain.res", "it's packed.PRE");
    CARNAME = "";
    EXPECT_EQ(transfer(Transfer::load, "it's packed.PRE").text, "Loaded " + WORKDIR + "temp.res");
    EXPECT_EQ(CARNAME, "Packed");
    EXPECT_TRUE(std::filesystem::exists(WORKDIR + "temp.res")) << "the unpacked file is left in place";

    transfer(Transfer::save, "plain.3sh");
    std::filesystem::rename("plain.3sh", "p.p3s");
    EXPECT_EQ(transfer(Transfer::load, "p.p3s").text, "Loaded " + WORKDIR + "temp.3sh");
    transfer(Transfer::save, "plain.vsh");
    std::filesystem::rename("plain.vsh", "p.pvs");
    EXPECT_EQ(transfer(Transfer::load, "p.pvs").text, "Loaded " + WORKDIR + "temp.vsh");
}

TEST_F(TransferTest, AnUnpackerThatFailsCrashesOrPrintsNeverShowsAnEarlierCar) {
    transfer(Transfer::save, "temp.res"); // what an earlier unpacking left
    write_text("x.pre", "packed");
    for (const std::string command : {"false", "kill -9 $$ #", "echo noise #", "/nowhere/unpacker"}) {
        reset_config();
        WORKDIR = directory.path() + "/";
        configure("vorpack", command);
        transfer(Transfer::save, "temp.res");
        EXPECT_EQ(transfer(Transfer::load, "x.pre").text, "File not found: " + WORKDIR + "temp.res") << command;
    }
}

TEST_F(TransferTest, AnUnpackerThatIsCancelledLoadsNothing) {
    configure("vorpack", "unpack");
    write_text("x.pre", "packed");
    CARNAME = "There before";
    use_program_runner([](const std::string&, const std::string& what, std::optional<std::chrono::milliseconds>) {
        EXPECT_EQ(what, "the unpacker");
        SAVERES("temp.res"); // as far as it had come
        return CommandOutcome{CommandEnd::cancelled, 0};
    });
    CARNAME = "Changed meanwhile";
    const TransferReport report = transfer(Transfer::load, "x.pre");
    use_program_runner(nullptr);
    EXPECT_EQ(report.text, "Not unpacked: x.pre");
    EXPECT_TRUE(report.failed);
    EXPECT_EQ(report.note, "Not unpacked: cancelled");
    EXPECT_EQ(FILE_ERNUM, file_status::not_unpacked);
    EXPECT_EQ(CARNAME, "Changed meanwhile");
    EXPECT_FALSE(std::filesystem::exists("temp.res"));
}

TEST_F(TransferTest, WhatCannotBeRemovedFromTheUnpackersPlaceIsNeverLoaded) {
    configure("vorpack", "touch ran; true");
    write_text("x.pre", "packed");
    std::filesystem::create_directory("temp.res");
    const TransferReport report = transfer(Transfer::load, "x.pre");
    EXPECT_EQ(report.text, "Not unpacked: x.pre");
    EXPECT_EQ(report.note, "Not unpacked: " + WORKDIR + "temp.res: Is a directory");
    EXPECT_FALSE(std::filesystem::exists("ran"));
}

TEST_F(TransferTest, AnOlderTemporaryFileInAFolderThatMayNotBeWrittenIsNotLoaded) {
    configure("vorpack", "true");
    std::filesystem::create_directory("work");
    WORKDIR = directory / "work/";
    CARNAME = "Older";
    SAVERES(WORKDIR + "temp.res");
    CARNAME = "There before";
    write_text("x.pre", "packed");
    std::filesystem::permissions("work", static_cast<std::filesystem::perms>(0555));
    std::filesystem::permissions(directory.path(), std::filesystem::perms::all);
    EXPECT_EQ(run_as_ordinary_user([] {
                  const TransferReport report = transfer(Transfer::load, "x.pre");
                  const bool told = report.failed && report.note.ends_with("temp.res: Permission denied");
                  return told && CARNAME == "There before" ? 0 : 1;
              }),
              0);
    std::filesystem::permissions("work", std::filesystem::perms::owner_all);
}

TEST_F(TransferTest, AFileNameRunsNothingInTheShell) {
    configure("vorpack", "true");
    transfer(Transfer::load, "x;touch harm;.pre");
    transfer(Transfer::load, "$(touch harm).pre");
    transfer(Transfer::load, "'`touch harm`.pre");
    EXPECT_FALSE(std::filesystem::exists("harm"));
}

TEST_F(TransferTest, TheLastFileDecidesAboutTheSetAndTheFirstFailureIsNamedBesideIt) {
    transfer(Transfer::save, "abcd");
    std::filesystem::remove("stabcd.3sh");
    std::filesystem::remove("stdaabcd.vsh");
    const TransferReport report = transfer(Transfer::load, "abcd");
    EXPECT_EQ(report.text, "Loaded abcd");
    EXPECT_FALSE(report.failed);
    EXPECT_EQ(report.first_failure, "File not found: stabcd.3sh");
}

TEST_F(TransferTest, ACarThatMayNotBeWrittenIsToldAsSuch) {
    transfer(Transfer::save, "abcd");
    for (const std::string& name : directory.names())
        std::filesystem::permissions(name, std::filesystem::perms::all);
    std::filesystem::permissions(directory.path(), static_cast<std::filesystem::perms>(0555));
    EXPECT_EQ(run_as_ordinary_user([] {
                  const TransferReport report = transfer(Transfer::save, "abcd");
                  if (report.text != "Invalid file name: stdbabcd.vsh") return 1;
                  if (report.first_failure != "Not writable: carabcd.res") return 2;
                  if (report.note != "Not writable: carabcd.res: its folder: Permission denied") return 3;
                  const TransferReport single = transfer(Transfer::save, "x.3sh");
                  if (single.text != "Invalid file name: x.3sh") return 4;
                  return single.note == "Not writable: x.3sh: its folder: Permission denied" ? 0 : 5;
              }),
              0);
}

TEST_F(TransferTest, TheFirstFailureOfACarGivesTheReasonAndOthersKeepTheirs) {
    for (const char* name : {"stabcd.3sh", "stdbabcd.vsh"})
        std::filesystem::create_directory(name);
    const TransferReport report = transfer(Transfer::save, "abcd");
    EXPECT_EQ(report.first_failure, "Invalid file name: stabcd.3sh");
    EXPECT_EQ(report.note, "Cannot be written: stabcd.3sh: Is a directory");
}

TEST_F(TransferTest, WhatCannotBeReadIsNotedWithTheSystemsReason) {
    write_text("x.res", "x");
    std::filesystem::permissions("x.res", std::filesystem::perms::none);
    std::filesystem::permissions(directory.path(), std::filesystem::perms::all);
    EXPECT_EQ(run_as_ordinary_user([] {
                  const TransferReport report = transfer(Transfer::load, "x.res");
                  return report.text == "Read error: x.res" && report.note == "Cannot read x.res: Permission denied"
                             ? 0
                             : 1;
              }),
              0);
}

TEST_F(TransferTest, AFileThatEndsTooEarlyIsNamedInTheNote) {
    transfer(Transfer::save, "abcd");
    std::filesystem::resize_file("stabcd.3sh", std::filesystem::file_size("stabcd.3sh") - 4);
    const TransferReport single = transfer(Transfer::load, "stabcd.3sh");
    EXPECT_EQ(single.text, "Loaded stabcd.3sh");
    EXPECT_EQ(single.note, "Ends too early: stabcd.3sh, loaded as far as it goes");
    const TransferReport car = transfer(Transfer::load, "abcd");
    EXPECT_EQ(car.text, "Loaded abcd");
    EXPECT_EQ(car.note, "Ends too early: stabcd.3sh, loaded as far as it goes");
    EXPECT_EQ(car.first_failure, "");
}

TEST_F(TransferTest, AFailureOfACarGoesBeforeWhatThereIsToRemark) {
    transfer(Transfer::save, "abcd");
    std::filesystem::resize_file("carabcd.res", 100);
    put_file("stdaabcd.vsh", Bytes(3));
    write_text("stabcd.3sh", "x");
    std::filesystem::permissions("stabcd.3sh", std::filesystem::perms::none);
    std::filesystem::permissions(directory.path(), std::filesystem::perms::all);
    for (const char* name : {"carabcd.res", "stdaabcd.vsh", "stdbabcd.vsh"})
        std::filesystem::permissions(name, std::filesystem::perms::all);
    EXPECT_EQ(run_as_ordinary_user([] {
                  return transfer(Transfer::load, "abcd").note == "Cannot read stabcd.3sh: Permission denied" ? 0 : 1;
              }),
              0);
}

TEST_F(TransferTest, AFileOfAnotherKindHasNoCarData) {
    for (const char* name : {"letter.res", "letter.3sh", "letter.vsh"}) {
        write_text(name, "A letter to somebody, and nothing else.\n");
        EXPECT_EQ(transfer(Transfer::load, name).note, std::string("No car data in it: ") + name);
    }
}

TEST_F(TransferTest, WhatSaysAllInItsStatusHasNoNote) {
    for (const char* name : {"abcd", "x.res", "x.3sh", "x.vsh", "x.car"}) {
        EXPECT_EQ(transfer(Transfer::save, name).note, "") << name;
        EXPECT_EQ(transfer(Transfer::load, name).note, "") << name;
    }
    EXPECT_EQ(transfer(Transfer::load, "none.res").note, "");
    EXPECT_EQ(transfer(Transfer::load, "none").note, "");
}

TEST_F(TransferTest, AnIdentifierIsCountedInCharacters) {
    CARNAME = "Umlaut";
    EXPECT_EQ(transfer(Transfer::save, "abc\u00E4").text, "Saved abc\u00E4");
    EXPECT_TRUE(std::filesystem::exists("carabc\u00E4.res"));
    EXPECT_EQ(transfer(Transfer::save, "ab\u00E4").note, "A car's identifier has four characters");
}

// ODDITY four-file-save-keeps-file
TEST_F(TransferTest, AFailedLoadOfACarNamesTheIdentifierAndAFailedSaveTheFile) {
    EXPECT_EQ(transfer(Transfer::load, "abcd").text, "File not found: abcd");
    for (const char* name : {"carabcd.res", "stabcd.3sh", "stdaabcd.vsh", "stdbabcd.vsh"})
        std::filesystem::create_directory(name);
    EXPECT_EQ(transfer(Transfer::save, "abcd").text, "Invalid file name: stdbabcd.vsh");
}

TEST_F(TransferTest, TheFilterOffersPackedKindsOnlyWithAnUnpacker) {
    EXPECT_EQ(car_file_filter(), ".res.vsh.3sh.obj.");
    configure("vorpack", "unpack");
    EXPECT_EQ(car_file_filter(), ".res.vsh.3sh.obj.p3s.pvs.pre.");
}

TEST_F(TransferTest, ACarsFilesComeInTheirOrder) {
    const std::vector<std::string> order{"carabcd.res", "stabcd.3sh", "stdaabcd.vsh", "stdbabcd.vsh"};
    for (const std::string& name : order)
        std::filesystem::create_directory(name);
    for (const std::string& first : order) {
        EXPECT_EQ(transfer(Transfer::save, "abcd").first_failure, "Invalid file name: " + first);
        EXPECT_EQ(transfer(Transfer::load, "abcd").first_failure, "File not found: " + first);
        std::filesystem::remove(first);
        write_text(first, "");
    }
    EXPECT_EQ(transfer(Transfer::save, "abcd").first_failure, "");
}
