// Damaged files of every kind: a line of error, nothing made, no crash.
#include "convert_test.h"
#include "formats/bitmap_file.h"
#include "formats/shape_file.h"
#include "support/bitmaps.h"

#include <filesystem>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

class DamagedFiles : public Conversions {
protected:
    // A file that ends early, at many places, is refused at each.
    void expect_refused_when_cut(const std::string& source, const std::string& name, const std::string& target) {
        const Bytes whole = get_file(source);
        constexpr std::size_t cuts = 40;
        for (std::size_t cut = 0; cut < cuts; ++cut) {
            put_file(directory / name, first_bytes(whole, whole.size() * cut / cuts));
            expect_refused(directory / name, directory / target, "");
        }
        fs::remove(directory / name);
    }
};

// What the fuzz targets' corpora keep, as files of this name.
struct Corpus {
    std::string folder, name, target;
};
const std::vector<Corpus> corpora = {
    {"parameter_file", "a.res", "b.txt"}, {"archive", "a.res", "b.txt"},     {"archive", "a.vsh", "b/"},
    {"bitmap_file", "a.vsh", "b/"},       {"project_file", "a.car", "wxyz"}, {"project_file", "a.car", "b.obj"},
    {"shape_file", "a.3sh", "b.obj"},     {"picture", "a.png", "b.tga"},     {"picture", "a.bmp", "b.png"},
    {"targa", "a.tga", "b.png"},          {"obj_file", "a.txt", "b.res"},    {"parameter_text", "a.txt", "b.res"},
};

} // namespace

TEST_F(DamagedFiles, OfACarAreRefusedWhereverTheyEnd) {
    expect_refused_when_cut(sample_folder + "carbrux.res", "a.res", "b.txt");
    expect_refused_when_cut(sample_folder + "stbrux.3sh", "a.3sh", "b.obj");
    expect_refused_when_cut(sample_folder + "stdabrux.vsh", "a.vsh", "b/");
    expect_converted(sample_folder + "brux", directory / "whole.car");
    expect_refused_when_cut(directory / "whole.car", "a.car", "abcd");
}

TEST_F(DamagedFiles, OfFourSpoilTheCar) {
    for (const std::string& spoilt : car_file_names("abcd")) {
        for (std::size_t i = 0; i < 4; ++i)
            fs::copy_file(sample_folder + car_file_names("brux")[i], directory / car_file_names("abcd")[i],
                          fs::copy_options::overwrite_existing);
        put_file(directory / spoilt, first_bytes(get_file(directory / spoilt), 100));
        const ConvertOutcome outcome = convert(directory / "abcd", directory / "b.car", {});
        EXPECT_FALSE(outcome.done);
        EXPECT_THAT(outcome.text, testing::HasSubstr(spoilt + ": "));
        EXPECT_FALSE(fs::exists(directory / "b.car"));
    }
}

TEST_F(DamagedFiles, OfAnotherKindHoldNoCarData) {
    write_text(directory / "a.res", "This is no car.");
    expect_refused(directory / "a.res", directory / "b.txt", "No car data in it");
    write_text(directory / "a.vsh", "This is no car.");
    expect_refused(directory / "a.vsh", directory / "b/", "No car data in it");
    write_text(directory / "a.3sh", "This is no car.");
    expect_refused(directory / "a.3sh", directory / "b.obj", "No car data in it");
    write_text(directory / "a.car", "This is no car.");
    expect_refused(directory / "a.car", directory / "abcd", "Unknown format");
}

TEST_F(DamagedFiles, InAFolderOfPicturesAreNamed) {
    expect_converted(sample_folder + "stdabrux.vsh", directory / "a/");
    fs::remove(directory / "a/dast.png");
    expect_refused(directory / "a/", directory / "b.vsh", "dast.png: File not found");
    put_file(directory / "a/dast.png", first_bytes(get_file(directory / "a/dash.png"), 500));
    expect_refused(directory / "a/", directory / "b.vsh", "dast.png: ends before");
    write_text(directory / "a/layout.txt", "\n\nbitmap");
    expect_refused(directory / "a/", directory / "b.vsh", "line 3");
}

// Whatever becomes of them: one that is converted comes with a target, one that is not with a line and without.
TEST_F(DamagedFiles, OfEveryCorpusEndInATargetOrALine) {
    for (const Corpus& corpus : corpora)
        for (const auto& entry :
             fs::directory_iterator(std::string(KAROSMIT_SOURCE_DIR) + "fuzz/corpus/" + corpus.folder)) {
            const TemporaryDirectory folder;
            fs::copy_file(entry.path(), folder / corpus.name);
            const ConvertOutcome outcome = convert(folder / corpus.name, folder / corpus.target, {});
            EXPECT_EQ(folder.names().size() > 1, outcome.done) << entry.path() << ": " << outcome.text;
            EXPECT_THAT(outcome.text, testing::StartsWith(folder / corpus.name));
            EXPECT_THAT(outcome.text, testing::Not(testing::HasSubstr("\n")));
        }
}
