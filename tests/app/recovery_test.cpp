// Unsaved work is kept by itself, in visits of the whole program.
#include "app/editing.h"
#include "app/editing_test.h"
#include "app/recovery.h"
#include "base/config.h"
#include "files/file_list.h"
#include "files/kept_work.h"
#include "support/child_process.h"
#include "support/text_file.h"
#include "window/window.h"

#include <fstream>
#include <functional>
#include <utility>

namespace {

namespace fs = std::filesystem;

class RecoveryTest : public EditingTest {
protected:
    TemporaryDirectory state;
    EnvironmentVariable state_home{"XDG_STATE_HOME"};

    void SetUp() override {
        state_home.set(state.path());
        EditingTest::SetUp();
    }
    void TearDown() override {
        end_editing();
        EditingTest::TearDown();
    }
    std::vector<std::string> projects() const {
        std::vector<std::string> found;
        std::error_code none;
        for (const auto& entry : fs::directory_iterator(state / "karosmit", none))
            if (entry.path().extension() == ".car") found.push_back(entry.path().string());
        return found;
    }
    static bool comes_to_be(const std::function<bool()>& wanted) {
        for (int k = 0; k < 300 && !wanted(); ++k)
            ::usleep(10'000);
        return wanted();
    }
    // A run that ends with these steps, as the next program finds it.
    void run_and_end(const std::vector<ScriptStep>& steps) {
        EXPECT_EQ(run_in_child([&] {
                      visit(steps);
                      shut_down();
                      return HasFailure() ? 1 : 0;
                  }),
                  0);
    }
    // The brakes in the one project that is kept; -1 when there is none.
    int kept_brakes() const {
        if (projects().size() != 1) return -1;
        return run_in_child([&] {
            load_kept_work(fs::path(projects().front()).stem().string());
            return static_cast<int>(par_word(brakes_offset));
        });
    }
};

const std::vector<ScriptStep> edit = std::vector<ScriptStep>{to_screen(3)} + type_brakes("77");
const ScriptStep first_row = click(100, 138);

} // namespace

TEST_F(RecoveryTest, UnsavedWorkIsThereAtTheNextStartAsTheFirstRow) {
    run_and_end(edit);
    ASSERT_EQ(projects().size(), 1u);
    visit({look([] {
               EXPECT_EQ(LFILE[1].kind, entry_kind::kept_work);
               EXPECT_TRUE(LFILE[1].shown.starts_with("Unsaved: New car, ")) << LFILE[1].shown;
           }),
           first_row, look([] {
               EXPECT_EQ(par_word(brakes_offset), 77);
               EXPECT_TRUE(screen_shows(650, 150, "Loaded New car", 0xFF00DC64));
           }),
           undo_step, look([] {
               EXPECT_EQ(said(), "Undone: load of New car");
               EXPECT_EQ(par_word(brakes_offset), 300);
           })});
}

TEST_F(RecoveryTest, WithoutUnsavedWorkNothingIsKeptAndTheListIsAsItWas) {
    run_and_end(load("brux"));
    EXPECT_TRUE(projects().empty());
    run_and_end(edit + std::vector<ScriptStep>{undo_step});
    EXPECT_TRUE(projects().empty()) << "what was taken back is no work";
    visit({look([] { EXPECT_EQ(LFILE[1].name, ".."); })});
}

TEST_F(RecoveryTest, WhatIsSavedIsNoLongerKept) {
    run_and_end(edit);
    ASSERT_EQ(projects().size(), 1u);
    run_and_end(std::vector<ScriptStep>{first_row} + save("mine"));
    EXPECT_TRUE(projects().empty());
    EXPECT_TRUE(fs::is_empty(state / "karosmit"));
}

TEST_F(RecoveryTest, TheEndDoesNotWaitUntilTheTimeIsCome) {
    run_and_end(edit + type_brakes("78"));
    EXPECT_EQ(kept_brakes(), 78);
}

TEST_F(RecoveryTest, WorkThatWasLoadedAndIsKeptAgainIsOneFile) {
    run_and_end(edit);
    run_and_end(std::vector<ScriptStep>{first_row, to_screen(3)} + type_brakes("78"));
    EXPECT_EQ(kept_brakes(), 78);
    run_and_end({first_row});
    EXPECT_EQ(kept_brakes(), 78) << "loaded and left as it was";
}

// A program that goes without notice: what was done is kept as soon as the person pauses, and every five seconds.
TEST_F(RecoveryTest, WorkIsKeptInTheFirstIdleMomentAndAtMostEveryFiveSeconds) {
    const auto wait = [&](double seconds) { return look([this, seconds] { window.clock += seconds; }); };
    const auto later = [&](int value) {
        return look([this, value] {
            for (int k = 0; k < 200 && kept_brakes() != value; ++k)
                ::usleep(10'000);
            EXPECT_EQ(kept_brakes(), value);
        });
    };
    visit({to_screen(3)});
    visit(type_brakes("77") + std::vector<ScriptStep>{wait(1), later(77)} + type_brakes("78") +
          std::vector<ScriptStep>{wait(3), look([&] {
                                      ::usleep(300'000);
                                      EXPECT_EQ(kept_brakes(), 77) << "not yet";
                                  }),
                                  wait(2.5), mouse_at(20, 20), later(78)});
}

// Where every reading of input finds the next key.
TEST_F(RecoveryTest, OfWhoNeverPausesTheWorkIsKeptAllTheSame) {
    Recovery recovery;
    Input key;
    key.key = "1";
    for (std::uint16_t brakes = 401; brakes < 410; ++brakes) {
        window.clock += 0.2;
        set_par_word(brakes_offset, brakes);
        recovery.changed();
        recovery.waiting(key);
    }
    EXPECT_TRUE(comes_to_be([&] { return projects().size() == 1; }));
}

TEST_F(RecoveryTest, WhatCouldNotBeKeptIsTriedOnceMoreAtTheEnd) {
    write_text(state / "karosmit", "in the way");
    Recovery recovery;
    set_par_word(brakes_offset, 77);
    recovery.changed();
    recovery.keep_now();
    EXPECT_TRUE(comes_to_be([&] {
        recovery.waiting({});
        return said().starts_with("Unsaved work is not kept: ");
    }));
    fs::remove(state / "karosmit");
    recovery.finish();
    EXPECT_EQ(kept_brakes(), 77);
}

TEST_F(RecoveryTest, WorkThatWasLoadedAndSavedIsKeptAgainWhenTheSavedIsTakenBack) {
    run_and_end(edit);
    run_and_end(std::vector<ScriptStep>{first_row, to_screen(3)} + type_brakes("78") +
                std::vector<ScriptStep>{to_screen(0)} + save("mine") + std::vector<ScriptStep>{undo_step});
    EXPECT_EQ(kept_brakes(), 77);
}

TEST_F(RecoveryTest, NothingIsKeptWhileAButtonIsDown) {
    visit({to_screen(3)});
    const auto pass = look([this] { window.clock += 10; });
    const auto later = [&](int value) {
        return look([this, value] {
            for (int k = 0; k < 100 && kept_brakes() != value; ++k)
                ::usleep(10'000);
            EXPECT_EQ(kept_brakes(), value);
        });
    };
    visit(type_brakes("77") + std::vector<ScriptStep>{later(77)} + type_brakes("78") +
          std::vector<ScriptStep>{press(300, 20), pass, pass, look([&] {
                                      ::usleep(300'000);
                                      EXPECT_EQ(kept_brakes(), 77) << "the button is down";
                                  }),
                                  release(300, 20), later(78)});
}

TEST_F(RecoveryTest, WhoTypesMeanwhileDoesNotHoldItUp) {
    visit({to_screen(3)});
    const auto wait = look([this] { window.clock += 6; });
    visit(type_brakes("77") + type_brakes("78") +
          std::vector<ScriptStep>{click(200, 134), typed("1"), wait, mouse_at(30, 30), look([this] {
                                      for (int k = 0; k < 200 && kept_brakes() != 78; ++k)
                                          ::usleep(10'000);
                                      EXPECT_EQ(kept_brakes(), 78) << "a field that is open stops nothing";
                                  }),
                                  key_press(Key::escape)});
}

TEST_F(RecoveryTest, TheConfigurationTurnsItOff) {
    write_text("karosmit.cfg", "recovery = Off\n");
    end_editing();
    start();
    run_and_end(edit);
    EXPECT_FALSE(fs::exists(state / "karosmit"));
}

TEST_F(RecoveryTest, WithoutAFolderItSaysOnceThatWorkIsNotKept) {
    write_text(state / "karosmit", "in the way");
    int told = 0;
    bool stands = false;
    std::vector<ScriptStep> listen; // for a second, in which the thread has its time
    for (int k = 0; k < 50; ++k) {
        listen.push_back(mouse_at(30 + k, 30));
        listen.push_back(look([&] {
            ::usleep(20'000);
            const bool stood = std::exchange(stands, said().starts_with("Unsaved work is not kept: "));
            told += stands && !stood ? 1 : 0;
        }));
    }
    const std::vector<ScriptStep> pass{look([this] { window.clock += 20; })};
    visit({to_screen(3)});
    visit(type_brakes("77") + pass + listen + type_brakes("78") + pass + listen);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(said(), "") << "it was said once";
}

TEST_F(RecoveryTest, TwoProgramsKeepTheirOwnAndDoNotOfferEachOthers) {
    const pid_t other = start_child([&]() -> int {
        visit(edit + std::vector<ScriptStep>{look([] { ::usleep(3'000'000); })});
        ::_exit(0); // without an end
    });
    ::usleep(1'500'000);
    EXPECT_EQ(projects().size(), 1u);
    visit({look([] { EXPECT_EQ(LFILE[1].name, "..") << "the other program runs"; })});
    visit(edit);
    end_editing();
    EXPECT_EQ(projects().size(), 2u);
    wait_for(other);
}
