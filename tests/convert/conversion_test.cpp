#include "convert/conversion.h"

#include "base/text.h"
#include "convert_test.h"
#include "formats/bitmap_file.h"
#include "formats/parameter_file.h"
#include "formats/project_file.h"
#include "formats/resource_archive.h"
#include "formats/shape_file.h"
#include "model/document.h"
#include "support/bitmaps.h"
#include "support/child_process.h"

#include <filesystem>
#include <set>
#include <string_view>

using testing::HasSubstr;
using testing::Not;

namespace {

namespace fs = std::filesystem;

constexpr ConvertOptions forced{.force = true};

class CarConversions : public Conversions {
protected:
    void copy_sample(const std::string& as) {
        for (std::size_t i = 0; i < 4; ++i)
            fs::copy_file(sample_folder + car_file_names("brux")[i], directory / car_file_names(as)[i],
                          fs::copy_options::overwrite_existing);
    }
};

// The names behind a keyword at the beginning of a line.
std::set<std::string> names_behind(std::string_view keyword, std::string_view text) {
    std::set<std::string> names;
    for (std::string_view line; next_line(text, line);)
        if (line.starts_with(keyword)) names.emplace(line.substr(keyword.size()));
    return names;
}

} // namespace

TEST_F(CarConversions, SampleCarsComeBackFromTheirProjects) {
    for (const std::string& id : sample_cars) {
        expect_converted(sample_folder + id, directory / (id + ".car"));
        expect_converted(directory / (id + ".car"), directory / "abcd", forced);
        for (std::size_t i = 0; i < 4; ++i)
            expect_same_file(sample_folder + car_file_names(id)[i], directory / car_file_names("abcd")[i]);
        expect_converted(directory / "abcd", directory / "again.car", forced);
        expect_same_file(directory / (id + ".car"), directory / "again.car");
    }
}

TEST_F(CarConversions, SampleBitmapsAndParametersComeBackFromPicturesAndTexts) {
    for (const std::string& id : sample_cars)
        for (const std::string& name : car_file_names(id)) {
            if (name.ends_with(".3sh")) continue;
            const std::string middle = directory / (name.ends_with(".vsh") ? name + ".d/" : name + ".txt");
            expect_converted(sample_folder + name, middle);
            expect_converted(middle, directory / name);
            expect_same_file(sample_folder + name, directory / name);
        }
}

TEST_F(CarConversions, BothBitmapFilesKeepTheirOrder) {
    copy_sample("abcd");
    put_file(directory / "stdaabcd.vsh", file_of({"roof", "!cg0", "dash", "!eg0", "whl1"}));
    put_file(directory / "stdbabcd.vsh", file_of({"dot ", "!cg0", "dig1", "gnob", "!eg0", "dig0"}));
    expect_converted(directory / "abcd", directory / "abcd.car");
    EXPECT_EQ(table_names(), "roof/dot /!cg0/dash/dig1/gnob/!eg0/whl1/dig0/");
    expect_converted(directory / "abcd.car", directory / "wxyz");
    expect_same_file(directory / "stdaabcd.vsh", directory / "stdawxyz.vsh");
    expect_same_file(directory / "stdbabcd.vsh", directory / "stdbwxyz.vsh");
}

TEST_F(CarConversions, OfAnIdInBothFilesTheLaterOneCounts) {
    copy_sample("abcd");
    put_file(directory / "stdaabcd.vsh", file_of({"!cg0"}, 1));
    put_file(directory / "stdbabcd.vsh", file_of({"!cg0"}, 2));
    EXPECT_THAT(convert(directory / "abcd", directory / "abcd.car", {}).text,
                HasSubstr("(stdaabcd.vsh comes back with other bytes)"));
    EXPECT_EQ(BITMAPS, 1);
    EXPECT_EQ(BITMAP[1].width, 2);
}

TEST_F(CarConversions, NothingOfAnEarlierCarGoesIntoTheNext) {
    expect_converted(sample_folder + "brux", directory / "first.car");
    expect_converted(sample_folder + "tarn", directory / "tarn.car");
    expect_converted(sample_folder + "brux", directory / "second.car");
    expect_same_file(directory / "first.car", directory / "second.car");
}

TEST_F(CarConversions, FindsTheFilesHoweverTheyAreCased) {
    copy_sample("abcd");
    fs::rename(directory / "carabcd.res", directory / "CARABCD.RES");
    fs::rename(directory / "stdbabcd.vsh", directory / "StdbAbcd.Vsh");
    expect_converted(directory / "ABCD", directory / "abcd.car");
    const CurrentDirectory inside(directory.path());
    expect_converted("abcd", "here.car");
}

TEST_F(CarConversions, NeverReplacesWithoutForce) {
    copy_sample("abcd");
    put_file(directory / "a.car", bytes_of("old"));
    expect_refused(directory / "abcd", directory / "a.car", "is there already");
    EXPECT_EQ(get_file(directory / "a.car"), bytes_of("old"));
    expect_converted(directory / "abcd", directory / "a.car", forced);
    for (const std::string& name : car_file_names("wxyz")) {
        put_file(directory / name, bytes_of("old"));
        expect_refused(directory / "a.car", directory / "wxyz", name + " is there already");
        fs::remove(directory / name);
    }
    fs::create_symlink("nowhere", directory / "link.car");
    expect_refused(directory / "abcd", directory / "link.car", "is there already");
}

TEST_F(CarConversions, WritesAllOrNothing) {
    expect_converted(sample_folder + "brux", directory / "a.car");
    put_file(directory / "carabcd.res", bytes_of("old"));
    fs::create_directory(directory / "stdaabcd.vsh"); // cannot be written
    expect_refused(directory / "a.car", directory / "abcd", "cannot write", forced);
    EXPECT_EQ(get_file(directory / "carabcd.res"), bytes_of("old"));
}

TEST_F(CarConversions, AFolderThatWasMadeForNothingGoes) {
    EXPECT_EQ(run_with_file_size_limit(900,
                                       [&] {
                                           const bool done =
                                               convert(sample_folder + "stdabrux.vsh", directory / "new/er/", {}).done;
                                           return done || fs::exists(directory / "new") ? 1 : 0;
                                       }),
              0);
}

TEST_F(CarConversions, WhatTheShapeFileCannotSayIsRefused) {
    CAR[0].edit().nverts = 300;
    SAVECAR(directory / "a.car");
    expect_refused(directory / "a.car", directory / "abcd", "255 vertices");
}

TEST_F(CarConversions, AModelBecomesAnObjWithItsMaterials) {
    expect_converted(sample_folder + "stbrux.3sh", directory / "body.obj", {.model = 1, .paint_job = 2});
    const std::string obj = read_text(directory / "body.obj"), mtl = read_text(directory / "body.mtl");
    EXPECT_THAT(obj, testing::StartsWith("mtllib body.mtl\n"));
    EXPECT_GT(names_behind("usemtl ", obj).size(), 1u);
    EXPECT_EQ(names_behind("usemtl ", obj), names_behind("newmtl ", mtl));
    expect_converted(sample_folder + "stbrux.3sh", directory / "other.obj", {.model = 1, .paint_job = 3});
    EXPECT_NE(names_behind("usemtl ", read_text(directory / "other.obj")), names_behind("usemtl ", obj));
}

TEST_F(CarConversions, MaterialsHaveTheColoursOfTheTable) {
    MATERIAL[7].colour = 0xFFFF8000;
    SHAPEMODEL& model = CAR[0].edit();
    model.nverts = 3;
    model.nprims = 1;
    model.prims[0].type = 3;
    model.prims[0].vertex = {0, 1, 2};
    model.prims[0].material.fill(7);
    SAVECAR(directory / "a.car");
    expect_converted(directory / "a.car", directory / "a.obj");
    EXPECT_EQ(read_text(directory / "a.mtl"), "newmtl Vortag7\nKd 1 0.502 0\n");
    expect_refused(directory / "a.car", directory / "b.obj", "no polygon", {.model = 3});
    expect_refused(directory / "a.car", directory / "b.obj", "7 paint jobs", {.paint_job = 8});
    expect_refused(directory / "a.car", directory / "a.obj", "is there already");
}

TEST_F(CarConversions, AnObjGoesIntoAModelThatIsThere) {
    const std::string obj = sample_folder + "hull.obj", project = directory / "a.car";
    expect_refused(obj, project, "is not there");
    expect_converted(sample_folder + "brux", project);
    expect_refused(obj, project, "is there already");
    DOCUMENT = CarDocument{};
    EXPECT_EQ(LOADCAR(project).code, file_status::success);
    const Shared<SHAPEMODEL> showroom = CAR[0];
    expect_converted(obj, project, {.model = 4, .force = true});
    DOCUMENT = CarDocument{};
    EXPECT_EQ(LOADCAR(project).code, file_status::success);
    EXPECT_EQ(CAR[0], showroom);
    EXPECT_GT(CAR[4]->nprims, 4);

    fs::copy_file(sample_folder + "stbrux.3sh", directory / "a.3sh");
    expect_refused(obj, directory / "a.3sh", "models 0 to 2", {.model = 3, .force = true});
    expect_refused(directory / "a.3sh", directory / "b.obj", "models 0 to 2", {.model = 3});
    expect_converted(obj, directory / "a.3sh", {.model = 2, .force = true});
    EXPECT_NE(get_file(directory / "a.3sh"), get_file(sample_folder + "stbrux.3sh"));
}

TEST_F(CarConversions, AnObjThatLosesSomethingIsRefused) {
    expect_converted(sample_folder + "brux", directory / "a.car");
    const Bytes before = get_file(directory / "a.car");
    for (const std::string bad : {"", "f 1 2 3\n", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf -1 -2 -3\n"}) {
        write_text(directory / "bad.obj", bad);
        expect_refused(directory / "bad.obj", directory / "a.car", "", forced);
        EXPECT_EQ(get_file(directory / "a.car"), before) << bad;
    }
}

TEST_F(CarConversions, TextsGoOverANewCar) {
    write_text(directory / "a.txt", "mass 50\n");
    expect_converted(directory / "a.txt", directory / "a.res");
    EXPECT_EQ(LOADRES(directory / "a.res").code, file_status::success);
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(std::to_integer<int>(PAR[2]), 50);
    EXPECT_EQ(std::to_integer<int>(PAR[4]), 300 & 0xFF);
    write_text(directory / "b.txt", "gears 5\nmess 50\n");
    expect_refused(directory / "b.txt", directory / "b.res", "line 2: nothing is called \"mess\"");
}

TEST_F(CarConversions, OtherLayoutsOfAFileAreSaid) {
    const Bytes empty = byte_list({0});
    put_file(directory / "a.res",
             encode_archive({{"gnam", empty}, {"simd", Bytes(776)}, {"gsna", empty}, {"edes", empty}}));
    EXPECT_THAT(convert(directory / "a.res", directory / "a.txt", {}).text, HasSubstr("(comes back with other bytes)"));
    expect_converted(directory / "a.txt", directory / "b.res");
    EXPECT_THAT(convert(directory / "b.res", directory / "b.txt", {}).text, Not(HasSubstr("comes back")));
}

TEST_F(CarConversions, OtherPairsAreRefusedWithThoseThatThereAre) {
    put_file(directory / "a.vsh", file_of({"dash"}));
    expect_refused(directory / "a.vsh", directory / "a.png", ".vsh does not become .png but a folder of pictures");
    expect_refused(directory / "a.png", directory / "a.png", "but .tga, .bmp");
    expect_refused(directory / "a.doc", directory / "a.png", "not a kind of file");
    expect_refused(directory / "missing.vsh", directory / "a/", "File not found");
    expect_refused(directory / "missing.vsh/", directory / "b.vsh", "File not found");
}

TEST_F(CarConversions, WithoutColoursNothingIsMadeOfThem) {
    put_file(directory / "a.vsh", file_of({"dash"}));
    PAL.fill(0);
    expect_refused(directory / "a.vsh", directory / "a/", "vortag.col");
    expect_refused(directory / "a/", directory / "b.vsh", "vortag.col");
    MATERIAL.fill({});
    expect_refused(sample_folder + "stbrux.3sh", directory / "a.obj", "material.dat");
}

TEST_F(CarConversions, PicturesBecomeEachOther) {
    expect_converted(sample_folder + "badge.png", directory / "a.tga");
    expect_converted(directory / "a.tga", directory / "a.bmp");
    expect_converted(directory / "a.bmp", directory / "a.png");
    expect_converted(directory / "a.png", directory / "b.tga");
    expect_same_file(directory / "a.tga", directory / "b.tga");
}

TEST_F(CarConversions, ChecksSayWhatIsFound) {
    const ConvertOutcome sound = check(sample_folder + "brux");
    EXPECT_TRUE(sound.done) << sound.text;
    EXPECT_EQ(sound.text, sample_folder + "brux: nothing found");
    DOCUMENT = CarDocument{};
    SAVECAR(directory / "a.car");
    const ConvertOutcome empty = check(directory / "a.car");
    EXPECT_FALSE(empty.done);
    EXPECT_THAT(empty.text, testing::StartsWith(directory / "a.car" + ": serious: "));
    EXPECT_FALSE(check(directory / "a.res").done);
    expect_converted(sample_folder + "brux", directory / "b.car");
    LOADCAR(directory / "b.car");
    CARSIGNNAME = "A name too long for a sign";
    SAVECAR(directory / "b.car");
    const ConvertOutcome doubtful = check(directory / "b.car");
    EXPECT_TRUE(doubtful.done);
    EXPECT_THAT(doubtful.text, testing::StartsWith(directory / "b.car" + ": doubtful: Sign name: "));
    EXPECT_FALSE(check(directory / "none.car").done);
}
