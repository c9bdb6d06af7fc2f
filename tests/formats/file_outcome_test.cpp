// What every reader and writer returns is what the file-status record shows.
#include "formats/bitmap_file.h"
#include "formats/obj_file.h"
#include "formats/parameter_file.h"
#include "formats/project_file.h"
#include "formats/shape_file.h"
#include "model/items.h"
#include "model/new_car.h"
#include "support/clean_car.h"

namespace {

struct Kind {
    const char* name;
    FileOutcome (*load)(const std::string&);
    FileOutcome (*save)(const std::string&);
};

constexpr Kind kinds[] = {
    {"stdacar.res", LOADRES, SAVERES},
    {"stdacar.vsh", LOADVSH, SAVEVSH},
    {"car.car", LOADCAR, SAVECAR},
    {"car.3sh", [](const std::string& name) { return LOAD3SH(name, all_shapes); }, SAVE3SH},
    {"car.obj", [](const std::string& name) { return LOADOBJ(name, 0).outcome; },
     [](const std::string& name) { return SAVEOBJ(name, 0).outcome; }},
};

class FileOutcomes : public CleanCar {
protected:
    FileOutcomes() {
        new_car();
        INITDASHITEMS();
        FILE_ERROR = "an earlier failure";
    }

    // The outcome has this code and text, and the record was left with the same.
    static void expect(const FileOutcome& outcome, const std::string& file, std::uint8_t code,
                       const std::string& reason) {
        EXPECT_EQ(outcome, (FileOutcome{file, code, reason}));
        EXPECT_EQ((FileOutcome{FILE_FILE, FILE_ERNUM, FILE_REASON}), outcome);
    }
};

} // namespace

TEST_F(FileOutcomes, WhatIsReturnedIsWhatTheRecordShows) {
    for (const Kind& kind : kinds) {
        SCOPED_TRACE(kind.name);
        const std::string file = directory / kind.name, nowhere = directory / "no/" + kind.name;
        expect(kind.load(file), file, file_status::not_found, "");
        expect(kind.save(nowhere), nowhere, file_status::invalid_name,
               "Folder " + directory / "no" + ": No such file or directory");
        expect(kind.save(file), file, file_status::success, "");
        expect(kind.load(file), file, file_status::success, "");
    }
}

TEST_F(FileOutcomes, WhatWasCutIsReturnedAndShown) {
    CARINFO.assign(1024, 'x');
    CAR[0].edit().nverts = 300;
    const auto expect_cut = [&](auto procedure, const char* name) {
        SCOPED_TRACE(name);
        expect(procedure(directory / name), directory / name, file_status::cut_to_fit, "");
    };
    SAVERES(directory / "car.res");
    expect_cut(LOADRES, "car.res");
    expect_cut(SAVE3SH, "car.3sh");
}

TEST_F(FileOutcomes, AFileThatIsNoProjectIsOfAnUnknownFormat) {
    put_file(directory / "car.car", bytes_of("no project"));
    expect(LOADCAR(directory / "car.car"), directory / "car.car", file_status::unknown_format, "");
}
