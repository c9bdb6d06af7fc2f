// Every call by which a reader reads, made to fail in every way: nothing of the file is kept, the failure is told, and
// the next save writes what was there before.
#include "support/failing_calls.h"

#include "base/config.h"
#include "base/file_status.h"
#include "base/reset.h"
#include "base/text.h"
#include "files/file_list.h"
#include "files/transfer.h"
#include "formats/bitmap_file.h"
#include "formats/bitmap_import.h"
#include "formats/material_file.h"
#include "formats/obj_file.h"
#include "formats/palette_file.h"
#include "formats/parameter_file.h"
#include "formats/project_file.h"
#include "formats/shape_file.h"
#include "image/tga.h"
#include "model/car.h"
#include "model/document.h"
#include "model/items.h"
#include "model/new_car.h"
#include "support/bitmaps.h"
#include "support/environment.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using Parts = std::vector<std::string>;

// One reader: `kept` is what the tables hold, a part for each file that it reads, where there is a writer as that
// writes it.
struct Reader {
    std::string name;
    std::function<void()> load;
    std::function<Parts()> kept;
    std::function<bool()> told;
};

std::string as_text(const Bytes& bytes) {
    std::string text;
    for (const std::byte b : bytes)
        text += static_cast<char>(b);
    return text;
}

std::string saved_by(FileOutcome (*save)(const std::string&), const std::string& name) {
    save(name);
    return read_text(name);
}

Bytes parameter_file_named(const std::string& name) {
    ParameterFile car;
    car.name = name;
    return encode_parameter_file(car);
}

bool record_tells() {
    return FILE_ERNUM == file_status::read_error && FILE_ERROR == "Read error" && !FILE_REASON.empty();
}
bool notes_tell() { return !take_unreadable_files().empty(); }

std::string config_entries() {
    std::string text;
    for (int i = 1; i <= CONFIGS; ++i)
        text += CONFIG_ID[i] + "=" + CONFIG_VALUE[i] + "\n";
    return text;
}

std::string schemes_in_use() {
    std::string text;
    for (int i = 1; i <= PJCOLS; ++i)
        text += std::to_string(PJCOL[i][0]) + " ";
    return text;
}

// What a call is made to do instead, and whether the reading can still be whole.
struct Way {
    int error;
    bool for_ever, is_short, harmless;
};
constexpr Way ways[] = {
    {EIO, false, false, false},  {EIO, true, false, false}, {ESTALE, false, false, false}, {ESTALE, true, false, false},
    {0, true, true, false},      {0, false, true, true}, // the rest comes with the next call
    {EINTR, false, false, true},                         // asked again
};

class FailingReads : public testing::Test {
protected:
    void SetUp() override {
        home.set(directory.path());
        reset();
        put_file("car.res", parameter_file_named("Read"));
        change_a_shape();
        SAVE3SH("car.3sh");
        CARNAME = "Read";
        SAVECAR("car.car");
        CARNAME = "There before";
        write_text("car.obj", "v 1 3 2\nv 4 6 5\nv 7 9 8\nusemtl Vortag99\nf 1 2 3\n");
        put_file("car.vsh", file_of({"dash"}, 2));
        put_file("stdacar0.vsh", file_of({"dash"}, 2));
        SAVERES("carcar0.res");
        SAVE3SH("stcar0.3sh");
        SAVEVSH("stdbcar0.vsh");
        for (const std::string name : {"carcar1.res", "stcar1.3sh", "stdacar1.vsh", "stdbcar1.vsh"}) {
            std::string like = name;
            like[like.find('1')] = '0';
            put_file(upper_case(name), get_file(like));
        }
        put_file("picture.tga", joined({targa_of_one_pixel()}));
        put_file("vortag.col", counting_bytes(1024));
        put_file("material.dat", counting_bytes(1024));
        write_text("pjobs.cfg", "1 2 3 4\n5 6 7 8\n");
        write_text("karosmit.cfg", "imagick = convert\n");
    }

    // A program that holds another car than the files do.
    static void reset() {
        reset_program();
        new_car();
        INITDASHITEMS();
        CARNAME = "There before";
    }
    static void change_a_shape() {
        SHAPEMODEL& model = CAR[0].edit();
        model.nverts = 9;
        model.verts[8].x = 5 * CARSCALE[0];
    }
    static Bytes targa_of_one_pixel() {
        return joined({byte_list({0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 24, 0}), byte_list({1, 2, 3})});
    }

    std::vector<Reader> readers();
    void expect_all_failures_harmless(const Reader& reader);
    void expect_failure_harmless(const Reader& reader, const FailingCall& failure, bool harmless, const Parts& before,
                                 const Parts& whole);

    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};
    EnvironmentVariable home{"HOME"};
    ImageHandle picture;
};

std::vector<Reader> FailingReads::readers() {
    const auto whole_car = [] {
        return Parts{saved_by(SAVERES, "out.res") + saved_by(SAVE3SH, "out.3sh") + saved_by(SAVEVSH, "stdaout.vsh")};
    };
    return {
        {"LOADRES", [] { LOADRES("car.res"); }, [] { return Parts{saved_by(SAVERES, "out.res")}; }, record_tells},
        {"LOAD3SH", [] { LOAD3SH("car.3sh", all_shapes); }, [] { return Parts{saved_by(SAVE3SH, "out.3sh")}; },
         record_tells},
        {"LOADVSH", [] { LOADVSH("car.vsh"); }, [] { return Parts{saved_by(SAVEVSH, "stdaout.vsh")}; }, record_tells},
        {"LOADCAR", [] { LOADCAR("car.car"); }, [] { return Parts{saved_by(SAVECAR, "out.car")}; }, record_tells},
        {"LOADOBJ", [] { LOADOBJ("car.obj", 0); }, [] { return Parts{saved_by(SAVE3SH, "out.3sh")}; }, record_tells},
        {"LOADBITMAP", [] { LOADBITMAP("dash", "picture.tga"); },
         [] { return Parts{saved_by(SAVEVSH, "stdaout.vsh")}; }, record_tells},
        {"a car of four files", [] { transfer(Transfer::load, "car0"); }, whole_car, record_tells},
        {"a car in capitals", [] { transfer(Transfer::load, "car1"); }, whole_car, record_tells},
        {"TARGALOAD", [this] { picture = TARGALOAD("picture.tga"); },
         [this] { return Parts{picture ? std::to_string(picture->pixel(0, 0)) : ""}; },
         [] { return TARGAERROR == targa_error::read_error && TARGAERRORMESSAGE == "Read error"; }},
        {"LOADPALETTE", LOADPALETTE, [] { return Parts{as_text(encode_palette(PAL))}; }, notes_tell},
        {"LOADMATERIALS", LOADMATERIALS,
         [] {
             return Parts{as_text(encode_materials(MATERIAL)), schemes_in_use()};
         },
         notes_tell},
        {"LOADCONFIG", [] { LOADCONFIG("karosmit"); }, [] { return Parts{config_entries()}; }, notes_tell},
    };
}

// Either all of it was read after all, or the failure is told and every file's part is as it was before or whole.
void FailingReads::expect_failure_harmless(const Reader& reader, const FailingCall& failure, bool harmless,
                                           const Parts& before, const Parts& whole) {
    reset();
    picture.reset();
    with_failing_call(failure, reader.load);
    const bool told = reader.told();
    const Parts kept = reader.kept();
    EXPECT_TRUE(told != (kept == whole));
    if (harmless) {
        EXPECT_FALSE(told);
    }
    if (failure.for_ever && failure.number == 1) {
        EXPECT_TRUE(kept == before);
    }
    for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_TRUE(kept[i] == before[i] || kept[i] == whole[i]) << "part " << i;
}

void FailingReads::expect_all_failures_harmless(const Reader& reader) {
    reset();
    picture.reset();
    const Parts before = reader.kept();
    reader.load();
    const Parts whole = reader.kept();
    for (std::size_t i = 0; i < whole.size(); ++i)
        ASSERT_NE(whole[i], before[i]) << "the good file must change part " << i;

    for (const SystemCall kind : {SystemCall::open, SystemCall::stat, SystemCall::fstat, SystemCall::read,
                                  SystemCall::opendir, SystemCall::readdir}) {
        reset();
        const int calls = with_failing_call({.kind = kind, .number = 0}, reader.load);
        const bool of_directories = kind == SystemCall::opendir || kind == SystemCall::readdir;
        EXPECT_GT(calls, of_directories ? -1 : 0);
        for (int number = 1; number <= calls; ++number)
            for (const Way& way : ways) {
                if (kind != SystemCall::read && (way.is_short || way.harmless)) continue;
                SCOPED_TRACE(reader.name + ", kind " + std::to_string(static_cast<int>(kind)) + ", call " +
                             std::to_string(number) + ", error " + std::to_string(way.error) +
                             (way.for_ever ? ", for ever" : ", once"));
                expect_failure_harmless(reader, {kind, number, way.error, way.for_ever, way.is_short}, way.harmless,
                                        before, whole);
            }
    }
}

} // namespace

TEST_F(FailingReads, NothingOfAFileThatCannotBeReadIsKeptAndItIsTold) {
    for (const Reader& reader : readers())
        expect_all_failures_harmless(reader);
}

// The list tells in its own way: a file that cannot be read is shown by its name; a directory, by a note.
TEST_F(FailingReads, TheListNeverShowsHalfAName) {
    put_file("carzzzz.res", parameter_file_named("Speedster"));
    const auto shown = [] {
        Parts texts;
        for (int i = 1; i <= LFILES; ++i)
            texts.push_back(LFILE[i].shown);
        return texts;
    };
    const auto list = [] { UPDATEFILELIST(cars_mode); };
    list();
    const Parts whole = shown();
    EXPECT_THAT(whole, testing::Contains("Speedster (ZZZZ)"));

    for (const SystemCall kind :
         {SystemCall::open, SystemCall::fstat, SystemCall::read, SystemCall::opendir, SystemCall::readdir}) {
        const int calls = with_failing_call({.kind = kind, .number = 0}, list);
        EXPECT_GT(calls, 0);
        for (int number = 1; number <= calls; ++number)
            for (const bool for_ever : {false, true}) {
                SCOPED_TRACE("kind " + std::to_string(static_cast<int>(kind)) + ", call " + std::to_string(number));
                take_unreadable_files();
                with_failing_call({kind, number, EIO, for_ever}, list);
                const bool of_the_directory = kind == SystemCall::opendir || kind == SystemCall::readdir;
                EXPECT_EQ(!take_unreadable_files().empty(), of_the_directory);
                if (of_the_directory) {
                    EXPECT_THAT(shown(), testing::ElementsAre(".."));
                    continue;
                }
                EXPECT_EQ(shown().size(), whole.size());
                EXPECT_NE(shown(), whole);
                for (const std::string& text : shown())
                    EXPECT_TRUE(std::ranges::count(whole, text) > 0 || lower_case(text).ends_with(".res") ||
                                text == "car.car")
                        << text;
            }
    }
}
