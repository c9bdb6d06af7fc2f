// A program that is killed while it saves a car leaves four whole files, of one car but for a moment.
#include "base/file_io.h"
#include "files/transfer.h"
#include "formats/bitmap_file.h"
#include "formats/parameter_file.h"
#include "formats/shape_file.h"
#include "model/bitmap_table.h"
#include "model/parameters.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <thread>

namespace {

using std::chrono::microseconds;

// Some in every run of the tests; KAROSMIT_KILLS asks for more.
int kills() {
    const char* const asked = std::getenv("KAROSMIT_KILLS");
    return asked ? std::atoi(asked) : 15;
}

constexpr int versions = 2;
constexpr std::array<const char*, 4> names = {"cartest.res", "sttest.3sh", "stdatest.vsh", "stdbtest.vsh"};
using FourFiles = std::array<Bytes, 4>;

// Every file of it differs from the other version's.
void become_version(int version) {
    const auto value = static_cast<std::uint8_t>(version + 1);
    set_par_word(4, value);
    SHAPEMODEL& model = CAR[0].edit();
    model.nverts = model.nprims = 200;
    model.verts[0].x = value;
    BITMAPS = 0;
    for (const char* id : {"dash", "whl2", "dot ", "gnob"}) {
        BitmapRecord& bitmap = BITMAP[++BITMAPS];
        bitmap = {};
        bitmap.name = id;
        bitmap.width = 320;
        bitmap.height = 100;
        bitmap.pixels = Pixels(std::size_t{320} * 100, value);
    }
}

FourFiles files_of_version(int version) {
    become_version(version);
    return {parameter_file_of_car().bytes, shape_file_of_car().bytes, encode_bitmap_file(BitmapSet::dashboard),
            encode_bitmap_file(BitmapSet::dots_and_digits)};
}

enum class Way { together, one_by_one };

bool save(Way way) {
    if (way == Way::together) return !transfer(Transfer::save, "test").failed;
    return SAVERES(names[0]).succeeded() && SAVE3SH(names[1]).succeeded() && SAVEVSH(names[2]).succeeded() &&
           SAVEVSH(names[3]).succeeded();
}

class KilledCarSave : public testing::Test {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};
    const std::array<FourFiles, versions> whole = {files_of_version(0), files_of_version(1)};
    std::mt19937 random{20240517};

    // -1 for a file that is neither.
    int version_of(std::size_t file) const {
        const Bytes found = get_file(names[file]);
        for (int version = 0; version < versions; ++version)
            if (found == whole[static_cast<std::size_t>(version)][file]) return version;
        return -1;
    }
    // Saves both versions in turn until it is killed.
    void kill_while_saving(Way way, microseconds moment) const {
        const pid_t child = start_child([way] {
            for (int version = 0;; version = 1 - version) {
                become_version(version);
                if (!save(way)) return 1;
            }
        });
        std::this_thread::sleep_for(moment);
        ::kill(child, SIGKILL);
        ASSERT_EQ(wait_for(child), -1) << "the saving process ended by itself";
    }
    microseconds time_of_two_saves() const {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(run_in_child([] {
                      for (int version = 0; version < versions; ++version) {
                          become_version(version);
                          if (!save(Way::together)) return 1;
                      }
                      return 0;
                  }),
                  0);
        return std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - start);
    }
    // How many kills left files of both versions.
    int mixed_after_kills(Way way) {
        std::uniform_int_distribution<microseconds::rep> moment(0, 3 * time_of_two_saves().count());
        int mixed = 0;
        for (int i = 0; i < kills(); ++i) {
            for (std::size_t file = 0; file < names.size(); ++file)
                put_file(names[file], whole[1][file]);
            kill_while_saving(way, microseconds(moment(random)));
            const int first = version_of(0);
            bool differs = false;
            for (std::size_t file = 0; file < names.size(); ++file) {
                EXPECT_NE(version_of(file), -1) << names[file] << " is torn by kill " << i;
                differs = differs || version_of(file) != first;
            }
            if (differs) ++mixed;
        }
        return mixed;
    }
};

} // namespace

TEST_F(KilledCarSave, LeavesWholeFilesAndHardlyEverOfTwoCars) {
    const int together = mixed_after_kills(Way::together);
    const int one_by_one = mixed_after_kills(Way::one_by_one);
    std::cout << "[ MEASURED ] of " << kills() << " kills each, mixed sets: " << together << " saved together, "
              << one_by_one << " one by one\n";
    EXPECT_LE(together, one_by_one);
    EXPECT_EQ(run_in_child([] { return save(Way::together) ? 0 : 1; }), 0);
    EXPECT_EQ(directory.names().size(), names.size()) << "a temporary file stays after the next save";
}
