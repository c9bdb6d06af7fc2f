#include "files/kept_work.h"

#include "base/descriptor.h"
#include "base/reset.h"
#include "base/state_folder.h"
#include "files/file_list.h"
#include "formats/saved_car.h"
#include "model/new_car.h"
#include "model/parameters.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/environment.h"
#include "support/temporary_directory.h"
#include "support/text_file.h"

#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>

namespace {

namespace fs = std::filesystem;

class KeptWorkTest : public testing::Test {
protected:
    TemporaryDirectory state, directory;
    CurrentDirectory inside{directory.path()};
    EnvironmentVariable state_home{"XDG_STATE_HOME"}, zone{"TZ"};

    KeptWorkTest() {
        state_home.set(state.path());
        zone.set("UTC");
        ::tzset();
        new_car();
    }

    std::string path(const std::string& name) const { return state / "karosmit/" + name; }
    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(path("")))
            found.push_back(entry.path().filename().string());
        std::ranges::sort(found);
        return found;
    }
    static bool keep(const std::string& stem, const std::string& car) {
        CarDocument document = DOCUMENT;
        document.name = car;
        std::string reason;
        return keep_work(stem, document, "/cars", reason);
    }
    // In another program, while this one runs.
    static int in_another(bool (*work)()) {
        return run_in_child([work] {
            reset_program();
            return work() ? 0 : 1;
        });
    }
    // As another program that has ended since.
    static void keep_by_another(const std::string& stem, const std::string& car) {
        EXPECT_EQ(run_in_child([&] { return keep(stem, car) ? 0 : 1; }), 0);
    }
    void set_time(const std::string& stem, const std::string& time) const {
        write_text(path(stem + ".txt"), time + "\tBrux\t/cars\n");
    }
    static std::vector<std::string> offered() {
        std::vector<std::string> stems;
        for (const KeptWork& work : offered_works())
            stems.push_back(work.stem);
        return stems;
    }
};

using testing::ElementsAre;
using testing::IsEmpty;

} // namespace

TEST_F(KeptWorkTest, IsAProjectWithALineOfTextForItsOwnerAlone) {
    set_par_word(4, 77);
    keep_by_another("work-1", "Haldmark Brux");
    EXPECT_THAT(names(), ElementsAre("work-1.car", "work-1.lock", "work-1.txt"));
    for (const std::string& name : names())
        EXPECT_EQ(mode_of(path(name)), 0600u) << name;
    EXPECT_EQ(mode_of(path("")), 0700u);
    EXPECT_THAT(read_text(path("work-1.txt")),
                testing::MatchesRegex("....-..-.. ..:..:.. UTC\tHaldmark Brux\t/cars\n"));
}

TEST_F(KeptWorkTest, IsOfferedNewestFirstThreeAtMost) {
    for (const char* stem : {"work-a", "work-b", "work-c", "work-d"})
        keep_by_another(stem, "Brux");
    set_time("work-a", "2024-11-21 18:32:05 UTC");
    set_time("work-b", "2024-11-21 18:32:07 UTC");
    set_time("work-c", "2024-11-21 18:32:06 UTC");
    set_time("work-d", "2024-11-21 18:32:04 UTC");
    EXPECT_THAT(offered(), ElementsAre("work-b", "work-c", "work-a"));
    EXPECT_EQ(shown_work(offered_works().front()), "Unsaved: Brux, 21 Nov 18:32");
}

TEST_F(KeptWorkTest, ItsRowsComeFirstInTheListAndAreNoDirectories) {
    keep_by_another("work-a", "Brux");
    set_time("work-a", "2024-11-01 08:02:05 UTC");
    UPDATEFILELIST(cars_mode);
    EXPECT_EQ(LFILES, 1) << "the picker's list";
    list_kept_work();
    ASSERT_EQ(LFILES, 2);
    EXPECT_EQ(LFILE[1].shown, "Unsaved: Brux, 1 Nov 08:02");
    EXPECT_EQ(LFILE[1].kind, entry_kind::kept_work);
    EXPECT_EQ(LFILE[2].name, "..");
}

TEST_F(KeptWorkTest, OfARunningProgramIsNotOffered) {
    keep("work-mine", "Brux");
    EXPECT_THAT(offered(), IsEmpty()) << "this program's own";
    EXPECT_EQ(in_another([] { return offered().empty(); }), 0) << "another program's";
    EXPECT_EQ(in_another([] { return load_kept_work("work-mine").failed; }), 0);
    tidy_kept_works();
    EXPECT_EQ(names().size(), 3u);
}

TEST_F(KeptWorkTest, OfARunningProgramIsNotWrittenOver) {
    keep("work-mine", "Brux");
    EXPECT_EQ(in_another([] { return !keep("work-mine", "Vela"); }), 0);
    EXPECT_NE(read_text(path("work-mine.txt")).find("Brux"), std::string::npos);
}

TEST_F(KeptWorkTest, WhoOnlyLooksHidesItFromNobody) {
    keep_by_another("work-a", "Brux");
    const Descriptor other(::open(path("work-a.lock").c_str(), O_RDWR));
    ASSERT_EQ(::flock(other.number(), LOCK_SH), 0);
    EXPECT_THAT(offered(), ElementsAre("work-a"));
    ASSERT_EQ(::flock(other.number(), LOCK_EX), 0);
    EXPECT_THAT(offered(), IsEmpty());
}

TEST_F(KeptWorkTest, IsLoadedUnsavedAndGoesOnUnderItsStem) {
    set_par_word(4, 77);
    CAR[4].edit().nverts = 3;
    CAR[4].edit().verts[2].x = 1.0 / 3;
    keep_by_another("work-a", "Haldmark Brux");
    const CarDocument kept = DOCUMENT;
    new_car();
    begin_with_saved_car();
    EXPECT_EQ(load_kept_work("work-a").text, "Loaded Haldmark Brux");
    EXPECT_EQ(PAR, kept.par);
    EXPECT_EQ(CAR, kept.models);
    EXPECT_EQ(saved_car(), (SavedCar{"Haldmark Brux", true, "only a .car holds Aux 1 and 2"}));
    ASSERT_TRUE(adopted_work());
    EXPECT_EQ(adopted_work()->stem, "work-a");
    EXPECT_THAT(offered(), ElementsAre("work-a")) << "it stays until it is saved";
    EXPECT_EQ(in_another([] { return offered().empty(); }), 0) << "this program works on it now";
    drop_kept_work("work-a");
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(KeptWorkTest, ThatIsDamagedIsOfferedAndLoadsAsFarAsItGoes) {
    keep_by_another("work-a", "Brux");
    const Bytes whole = get_file(path("work-a.car"));
    set_par_word(4, 1);
    put_file(path("work-a.car"), Bytes(whole.begin(), whole.begin() + 120));
    fs::remove(path("work-a.txt"));
    ASSERT_THAT(offered(), ElementsAre("work-a"));
    EXPECT_THAT(shown_work(offered_works().front()), testing::StartsWith("Unsaved: a car without a name, "));
    EXPECT_FALSE(load_kept_work("work-a").failed);
    put_file(path("work-a.car"), bytes_of("rubbish"));
    EXPECT_EQ(load_kept_work("work-a").text, "Unknown format: " + path("work-a.car"));
}

TEST_F(KeptWorkTest, IsKeptForThirtyDaysAndTwentyAtMost) {
    for (int k = 10; k < 35; ++k) {
        keep_by_another("work-" + std::to_string(k), "Brux");
        set_time("work-" + std::to_string(k), "2099-11-21 18:32:" + std::to_string(k) + " UTC");
    }
    set_time("work-34", "2024-01-01 00:00:00 UTC");
    tidy_kept_works();
    EXPECT_EQ(names().size(), 3u * most_kept_works);
    EXPECT_FALSE(fs::exists(path("work-34.car")));
    EXPECT_FALSE(fs::exists(path("work-13.car")));
    EXPECT_TRUE(fs::exists(path("work-14.car")));
    set_time("work-20", "2024-01-01 00:00:00 UTC");
    tidy_kept_works();
    EXPECT_FALSE(fs::exists(path("work-20.car"))) << "too old";
    EXPECT_TRUE(fs::exists(path("work-14.car")));
}

TEST_F(KeptWorkTest, WhatAKilledProgramLeftHalfDoneGoes) {
    keep_by_another("work-a", "Brux");
    write_text(path("work-b.txt"), "x");
    write_text(path("work-c.lock"), "");
    write_text(path("of another kind.txt"), "x");
    tidy_kept_works();
    EXPECT_THAT(names(), ElementsAre("of another kind.txt", "work-a.car", "work-a.lock", "work-a.txt"));
}

TEST_F(KeptWorkTest, ThatCannotBeWrittenSaysWhy) {
    std::string reason;
    put_file(state / "karosmit", {});
    EXPECT_FALSE(keep_work("work-a", DOCUMENT, "/cars", reason));
    EXPECT_NE(reason, "");
    EXPECT_THAT(offered_works(), IsEmpty());
}

TEST_F(KeptWorkTest, WhereTheDiskIsFullTheWorkThatWasKeptBeforeStaysWhole) {
    set_par_word(4, 77);
    keep_by_another("work-a", "Brux");
    const Bytes before = get_file(path("work-a.car"));
    constexpr unsigned less_than_a_project = 200;
    std::string reason;
    const int kept = run_with_file_size_limit(less_than_a_project, [&] {
        set_par_word(4, 78);
        const bool done = keep_work("work-a", DOCUMENT, "/cars", reason);
        return done ? 1 : reason.empty() ? 2 : 0;
    });
    EXPECT_EQ(kept, 0);
    EXPECT_EQ(get_file(path("work-a.car")), before);
    EXPECT_THAT(names(), ElementsAre("work-a.car", "work-a.lock", "work-a.txt"));
}

TEST_F(KeptWorkTest, InAFolderThatMayNotBeWrittenNothingIsKeptAndSaysWhy) {
    fs::permissions(state.path(), static_cast<fs::perms>(0555));
    const int kept = run_as_ordinary_user([&] {
        std::string reason;
        const bool done = keep_work("work-a", DOCUMENT, "/cars", reason);
        return done ? 1 : reason.find("Permission denied") == std::string::npos ? 2 : 0;
    });
    EXPECT_EQ(kept, 0);
    EXPECT_TRUE(fs::is_empty(state.path()));
}
