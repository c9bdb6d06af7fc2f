#include "formats/parameter_file.h"
#include "model/document.h"
#include "model/new_car.h"
#include "model/power_gear.h"

#include "formats/resource_archive.h"
#include "support/clean_car.h"

#include <numeric>

namespace {
constexpr std::size_t par_at = 38;

ParameterFile small_car() {
    ParameterFile car;
    for (std::size_t i = 0; i < car.par.size(); ++i)
        car.par[i] = static_cast<std::byte>(i * 13 + 5);
    car.name = "Ard";
    car.sign_name = "A";
    car.information = "One]Two]";
    return car;
}

ParameterFile earlier_car() {
    ParameterFile car;
    car.par.fill(std::byte{0xEE});
    car.name = "earlier name";
    car.sign_name = "earlier sign";
    car.information = "earlier information";
    return car;
}

ParameterFile decoded(const Bytes& file, ParameterFile onto = earlier_car()) {
    decode_parameter_file(file, onto);
    return onto;
}

ParameterFile globals() { return {PAR, CARNAME, CARSIGNNAME, CARINFO}; }

void set_globals(const ParameterFile& car) {
    PAR = car.par;
    CARNAME = car.name;
    CARSIGNNAME = car.sign_name;
    CARINFO = car.information;
}

Bytes par_of(const ParameterFile& car) { return Bytes(car.par.begin(), car.par.end()); }
Bytes zero_ended(const std::string& text) { return joined({bytes_of(text), byte_list({0})}); }

Bytes archive_in_another_order_with_extras() {
    const ParameterFile car = small_car();
    return encode_archive({{"xtra", bytes_of("unknown")},
                           {"edes", zero_ended(car.information)},
                           {"gsna", zero_ended(car.sign_name)},
                           {"SIMD", counting_bytes(776)},
                           {"simd", par_of(car)},
                           {"gnam", zero_ended(car.name)}});
}

Bytes archive_with_entry_past_end(std::size_t entry) {
    Bytes file = encode_parameter_file(small_car());
    put_u32(file, 22 + 4 * entry, 0xFFFFFFF0);
    return file;
}

std::string every_byte_but_zero() {
    std::string text(255, '\0');
    std::iota(text.begin(), text.end(), '\1');
    return text;
}

class ParameterFiles : public CleanCar {
protected:
    ParameterFiles() { new_car(); }
};
} // namespace

TEST(ParameterFileFormat, EncodesExactBytes) {
    const ParameterFile car = small_car();
    const Bytes expected = joined({byte_list({0x3D, 3, 0, 0, 4, 0}), bytes_of("simdgnamgsnaedes"),
                                   byte_list({0, 0, 0, 0, 8, 3, 0, 0, 12, 3, 0, 0, 14, 3, 0, 0}), par_of(car),
                                   zero_ended("Ard"), zero_ended("A"), zero_ended("One]Two]")});
    EXPECT_EQ(expected.size(), 0x33DU);
    EXPECT_EQ(encode_parameter_file(car), expected);
}

TEST(ParameterFileFormat, EmptyNameIsASingleZeroByte) {
    ParameterFile car = small_car();
    car.name.clear();
    const Bytes file = encode_parameter_file(car);
    EXPECT_EQ(bytes_between(file, par_at + 776, 3), joined({byte_list({0}), zero_ended("A")}));
}

TEST(ParameterFileFormat, DecodesWhatItEncoded) {
    for (const std::size_t length : {0U, 1U, 127U, 254U, 255U}) {
        ParameterFile car = small_car();
        car.name = every_byte_but_zero().substr(0, length);
        car.sign_name = std::string(255 - length, 's');
        car.information = std::string(4 * length + 3, ']');
        EXPECT_EQ(decoded(encode_parameter_file(car)), car) << length;
    }
}

TEST(ParameterFileFormat, FindsResourcesByIdInAnyOrderAndSkipsUnknownOnes) {
    EXPECT_EQ(decoded(archive_in_another_order_with_extras()), small_car());
}

TEST(ParameterFileFormat, WritesLongTextsWholeAndCutsThemWhenRead) {
    ParameterFile car = small_car();
    car.name = std::string(300, 'n');
    car.sign_name = std::string(256, 's');
    car.information = std::string(1500, 'i');
    const Bytes file = encode_parameter_file(car);
    EXPECT_EQ(file.size(), par_at + 776 + 301 + 257 + 1501);

    const ParameterFile read = decoded(file);
    EXPECT_EQ(read.name, std::string(255, 'n'));
    EXPECT_EQ(read.sign_name, std::string(255, 's'));
    EXPECT_EQ(read.information, std::string(1023, 'i'));
}

namespace {
// Whether a file whose name is `length` characters, ended by `end`, has room.
bool name_has_room(std::size_t length, const Bytes& end) {
    ParameterFile car;
    return !decode_parameter_file(encode_archive({{"gnam", joined({Bytes(length, std::byte{'n'}), end})}}), car).cut;
}
} // namespace

TEST(ParameterFileFormat, TextsThatGoOnPastTheirLimitAreCut) {
    EXPECT_TRUE(name_has_room(255, byte_list({0})));
    EXPECT_TRUE(name_has_room(255, {})); // the file ends
    EXPECT_TRUE(name_has_room(254, byte_list({0, 'x'})));
    EXPECT_FALSE(name_has_room(256, byte_list({0})));
    EXPECT_FALSE(name_has_room(255, byte_list({'x'}))); // be it the text's or the next resource's

    for (const auto& [id, longest] : {std::pair{"gnam", 255U}, {"gsna", 255U}, {"edes", 1023U}})
        for (const unsigned length : {longest, longest + 1}) {
            ParameterFile car;
            const Bytes file = encode_archive({{id, zero_ended(std::string(length, 't'))}, {"simd", par_of(car)}});
            EXPECT_EQ(decode_parameter_file(file, car).cut, length != longest) << id;
        }
}

TEST(ParameterFileFormat, MissingResourcesLeaveTheirFields) {
    const Bytes file = encode_archive({{"gsna", zero_ended("new")}});
    ParameterFile expected = earlier_car();
    expected.sign_name = "new";
    EXPECT_EQ(decoded(file), expected);
    EXPECT_EQ(decoded(encode_archive({})), earlier_car());
    EXPECT_EQ(decoded({}), earlier_car());
}

TEST(ParameterFileFormat, OfTwoEntriesWithOneIdBothActInOrder) {
    const Bytes file = encode_archive(
        {{"simd", counting_bytes(776)}, {"gnam", zero_ended("first")}, {"gnam", zero_ended("second")}, {"simd", {}}});
    const ParameterFile car = decoded(encode_archive({{"gnam", zero_ended("first")}, {"gnam", zero_ended("second")}}));
    EXPECT_EQ(car.name, "second");
    EXPECT_EQ(par_of(decoded(file)), counting_bytes(776));
}

TEST(ParameterFileFormat, TextWithoutZeroEndsWithTheFile) {
    const Bytes file = encode_archive({{"gnam", bytes_of("no end")}});
    EXPECT_EQ(decoded(file).name, "no end");
}

TEST(ParameterFileFormat, ParametersCutByTheEndOfTheFileKeepTheRest) {
    const Bytes file = encode_archive({{"simd", byte_list({1, 2, 3})}});
    const ParameterFile car = decoded(file);
    EXPECT_EQ(first_bytes(par_of(car), 4), byte_list({1, 2, 3, 0xEE}));
    EXPECT_EQ(last_bytes(par_of(car), 1), byte_list({0xEE}));
}

TEST(ParameterFileFormat, EntryPastEndKeepsParametersAndEmptiesATextThatHasNoBytes) {
    EXPECT_EQ(decoded(archive_with_entry_past_end(0)).par, earlier_car().par);
    EXPECT_EQ(decoded(archive_with_entry_past_end(1)).name, "");
    EXPECT_EQ(decoded(archive_with_entry_past_end(2)).sign_name, "");
    EXPECT_EQ(decoded(archive_with_entry_past_end(3)).information, "");
}

TEST(ParameterFileFormat, LyingCountFindsNothing) {
    Bytes file = encode_parameter_file(small_car());
    put_u16(file, archive_count_at, 65535);
    EXPECT_EQ(decoded(file), earlier_car());
}

TEST(ParameterFileFormat, CutAtEveryByteGivesWhatTheFileHolds) {
    const ParameterFile car = small_car();
    const Bytes file = encode_parameter_file(car);
    // The entry of a text is there from the end of its offset on, the text from its place on.
    const auto expected = [](std::size_t length, std::size_t entry_end, std::size_t text_at, const std::string& before,
                             const std::string& text) {
        return length < entry_end ? before : length <= text_at ? "" : text.substr(0, length - text_at);
    };
    for (std::size_t length = 0; length < file.size(); ++length) {
        const ParameterFile read = decoded(first_bytes(file, length));
        EXPECT_EQ(read.name, expected(length, 30, 814, "earlier name", car.name)) << length;
        EXPECT_EQ(read.sign_name, expected(length, 34, 818, "earlier sign", car.sign_name)) << length;
        EXPECT_EQ(read.information, expected(length, 38, 820, "earlier information", car.information)) << length;
        const std::size_t held =
            length < 26 ? 0 : std::min<std::size_t>(length - std::min<std::size_t>(length, 38), 776);
        ASSERT_EQ(first_bytes(par_of(read), held), first_bytes(par_of(car), held)) << length;
        ASSERT_EQ(last_bytes(par_of(read), 776 - held), last_bytes(par_of(earlier_car()), 776 - held)) << length;
    }
}

TEST_F(ParameterFiles, SavesAndLoadsTheSameCar) {
    set_globals(small_car());
    SAVERES(directory / "carards.res");
    EXPECT_EQ(FILE_FILE, directory / "carards.res");
    EXPECT_SUCCESS();
    EXPECT_EQ(get_file(directory / "carards.res"), encode_parameter_file(small_car()));

    set_globals(earlier_car());
    LOADRES(directory / "carards.res");
    EXPECT_EQ(FILE_FILE, directory / "carards.res");
    EXPECT_SUCCESS();
    EXPECT_EQ(globals(), small_car());
}

TEST_F(ParameterFiles, SavingDiscardsALongerFile) {
    put_file(directory / "file.res", Bytes(5000, std::byte{7}));
    set_globals(small_car());
    SAVERES(directory / "file.res");
    EXPECT_EQ(get_file(directory / "file.res"), encode_parameter_file(small_car()));
}

TEST_F(ParameterFiles, LoadingNamesTheCarInTheTitle) {
    put_file(directory / "file.res", encode_parameter_file(small_car()));
    LOADRES(directory / "file.res");
    EXPECT_EQ(TITLENAME, "Ard");
}

TEST_F(ParameterFiles, LoadingATextThatIsTooLongIsReported) {
    ParameterFile car = small_car();
    car.information = std::string(1024, 'i');
    put_file(directory / "file.res", encode_parameter_file(car));
    LOADRES(directory / "file.res");
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
    EXPECT_EQ(CARINFO, std::string(1023, 'i'));
    EXPECT_EQ(TITLENAME, "Ard");
}

TEST_F(ParameterFiles, SavesAndLoadsUnderAnyName) {
    const std::string name = directory / "it's \"a\" $(car) \xE9\xFF.res";
    set_globals(small_car());
    SAVERES(name);
    EXPECT_SUCCESS();
    set_globals(earlier_car());
    LOADRES(name);
    EXPECT_EQ(FILE_FILE, name);
    EXPECT_SUCCESS();
    EXPECT_EQ(globals(), small_car());
}

TEST_F(ParameterFiles, LoadingACarWithoutNameNamesNoneInTheTitle) {
    ParameterFile car = small_car();
    car.name.clear();
    put_file(directory / "file.res", encode_parameter_file(car));
    LOADRES(directory / "file.res");
    EXPECT_EQ(CARNAME, "");
    EXPECT_EQ(TITLENAME, "");
}

TEST_F(ParameterFiles, LoadingClassifiesTheMass) {
    for (const std::uint16_t mass : {std::uint16_t{700}, std::uint16_t{1234}, std::uint16_t{2000}}) {
        set_globals(small_car());
        set_par_word(par_offset::mass, mass);
        SAVERES(directory / "file.res");
        set_par_word(par_offset::mass, 1);
        POWERGEAR = -1;
        LOADRES(directory / "file.res");
        EXPECT_EQ(POWERGEAR, powergear_class(mass));
        EXPECT_EQ(par_word(par_offset::mass), mass);
    }
}

TEST_F(ParameterFiles, NoFileIsReportedAndChangesNothing) {
    set_globals(earlier_car());
    TITLENAME = "as it was";
    for (const std::string& name : names_of_no_file()) {
        reset_file_status();
        LOADRES(name);
        EXPECT_EQ(FILE_FILE, name);
        EXPECT_FAILURE(file_status::not_found, "File not found");
        EXPECT_EQ(globals(), earlier_car());
        EXPECT_EQ(TITLENAME, "as it was");
    }
    EXPECT_TRUE(read_error_when_unreadable(encode_parameter_file(small_car()), LOADRES));
}

TEST_F(ParameterFiles, EmptyFileLoadsAndChangesNothingButTheTitle) {
    put_file(directory / "file.res", {});
    set_globals(earlier_car());
    LOADRES(directory / "file.res");
    EXPECT_SUCCESS();
    EXPECT_EQ(globals(), earlier_car());
    EXPECT_EQ(TITLENAME, "earlier name");
}

TEST_F(ParameterFiles, SavingWhereNoFileCanBeIsAnInvalidName) {
    SAVERES(directory / "missing/file.res");
    EXPECT_EQ(FILE_FILE, directory / "missing/file.res");
    EXPECT_FAILURE(file_status::invalid_name, "Invalid file name");
    SAVERES(directory.path());
    EXPECT_FAILURE(file_status::invalid_name, "Invalid file name");
}

TEST_F(ParameterFiles, SavingThatCannotBeFinishedLeavesTheEarlierFile) {
    put_file(directory / "file.res", bytes_of("earlier"));
    EXPECT_EQ(save_with_file_size_limit(100, [&] { SAVERES(directory / "file.res"); }), file_status::write_error);
    EXPECT_EQ(get_file(directory / "file.res"), bytes_of("earlier"));
}
