// What a reader remarks on a file that it has read to its end: that it ends before what it announces, or holds nothing
// of a car.
#include "formats/parameter_file.h"
#include "formats/project_file.h"
#include "formats/resource_archive.h"
#include "formats/shape_file.h"
#include "support/bitmaps.h"
#include "support/models.h"
#include "support/text_file.h"

#include "model/items.h"
#include "model/new_car.h"

#include <gtest/gtest.h>

namespace {

FileRemark remark_on_parameters(const Bytes& file) {
    ParameterFile car;
    return decode_parameter_file(file, car).remark;
}
FileRemark remark_on_shapes(const Bytes& file) {
    const auto shapes = std::make_unique<ShapeFile>();
    return decode_shape_file(file, all_shapes, *shapes);
}
FileRemark remark_on_bitmaps(const Bytes& file) { return decode_bitmap_file(file).remark; }
FileRemark remark_on_project(const Bytes& file) {
    ProjectFile project;
    return decode_project_file(file, project);
}

struct Kind {
    const char* name;
    FileRemark (*remark)(const Bytes& file);
    std::size_t first_data; // how much of a file must be there before it holds anything of a car
    std::size_t padding;    // bytes at the end that nobody reads
};
constexpr Kind kinds[] = {
    {"parameters", remark_on_parameters, 26, 0},
    {"shapes", remark_on_shapes, 38, 3},
    {"bitmaps", remark_on_bitmaps, 18, 0},
    {"project", remark_on_project, 20, 0},
};

Bytes whole_file(const std::string& kind) {
    if (kind == "parameters") {
        ParameterFile car;
        car.name = "Name";
        car.information = "Text]";
        return encode_parameter_file(car);
    }
    if (kind == "bitmaps") return file_of({"dash", "dot "}, 3);
    new_car();
    CAR[0] = model_with_wheels();
    CEXP[3] = model_with_wheels();
    PAINTJOBS = 2;
    if (kind == "shapes") return encode_shape_file(*shapes_of_tables());
    return encode_project_file(project_of_tables());
}

} // namespace

TEST(FileRemarks, AWholeFileDeservesNone) {
    for (const Kind& kind : kinds)
        EXPECT_EQ(kind.remark(whole_file(kind.name)), FileRemark::none) << kind.name;
}

TEST(FileRemarks, AFileCutAnywhereEndsTooEarly) {
    for (const Kind& kind : kinds) {
        const Bytes whole = whole_file(kind.name);
        for (std::size_t length = kind.first_data; length + kind.padding < whole.size(); ++length)
            ASSERT_EQ(kind.remark(first_bytes(whole, length)), FileRemark::ends_early) << kind.name << " " << length;
    }
}

TEST(FileRemarks, AFileOfAnotherKindHoldsNoCarData) {
    const Bytes others[] = {{},
                            bytes_of("x"),
                            bytes_of("A letter to somebody, and nothing else.\n"),
                            encode_archive({{"else", bytes_of("something")}})};
    for (const Kind& kind : kinds)
        for (const Bytes& other : others)
            EXPECT_EQ(kind.remark(other), FileRemark::no_car_data) << kind.name;
}

// What is saved of a car without bitmaps.
TEST(FileRemarks, AnEmptyArchiveOfBitmapsIsOne) { EXPECT_EQ(remark_on_bitmaps(encode_archive({})), FileRemark::none); }

TEST(FileRemarks, ACountThatLiesEndsTooEarly) {
    for (const char* kind : {"parameters", "shapes", "bitmaps"}) {
        Bytes file = whole_file(kind);
        put_u16(file, archive_count_at, 0xFFFF);
        const auto found = std::ranges::find(kinds, std::string(kind), &Kind::name);
        EXPECT_NE(found->remark(file), FileRemark::none) << kind;
    }
}

TEST(FileRemarks, ATextWithoutItsZeroEndsTooEarly) {
    const auto remark = [](const std::string& text) {
        return remark_on_parameters(encode_archive({{"gnam", bytes_of(text)}}));
    };
    EXPECT_EQ(remark("Name"), FileRemark::ends_early);
    EXPECT_EQ(remark(std::string("Name\0", 5)), FileRemark::none);
    EXPECT_EQ(remark(std::string(255, 'n')), FileRemark::none) << "a full text needs none";
}

TEST(FileRemarks, TheReadersReturnThem) {
    const TemporaryDirectory directory;
    new_car();
    INITDASHITEMS();
    const std::pair<const char*, FileOutcome (*)(const std::string&)> readers[] = {
        {"parameters", LOADRES},
        {"shapes", [](const std::string& name) { return LOAD3SH(name, all_shapes); }},
        {"bitmaps", LOADVSH},
        {"project", LOADCAR}};
    for (const auto& [kind, load] : readers) {
        Bytes file = whole_file(kind);
        put_file(directory / kind, file);
        EXPECT_EQ(load(directory / kind).remark, FileRemark::none) << kind;
        file.resize(file.size() - 4);
        put_file(directory / kind, file);
        const FileOutcome outcome = load(directory / kind);
        EXPECT_EQ(outcome.remark, FileRemark::ends_early) << kind;
        EXPECT_TRUE(outcome.succeeded()) << "the status stays as it is: " << kind;
    }
    put_file(directory / "letter", bytes_of("A letter to somebody, and nothing else.\n"));
    for (const auto& [kind, load] : std::span(readers).first(3))
        EXPECT_EQ(load(directory / "letter").remark, FileRemark::no_car_data) << kind;
}
