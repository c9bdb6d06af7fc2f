// A monkey at the keyboard and the mouse: a seeded stream of everything that a person can do, into the whole program.
// After every hundred events the tables must hold what they promise.
//
// KAROSMIT_MONKEY_EVENTS says how many events each of the two has, KAROSMIT_MONKEY_SEED from which seed on; every
// 10,000 events begin with a fresh program and a seed of their own, which is printed, so that one that fails can be
// played alone (scripts/monkey.sh).
#include "app/program.h"
#include "base/random.h"
#include "model/document.h"
#include "monkey/invariants.h"
#include "support/environment.h"
#include "support/play.h"
#include "support/temporary_directory.h"
#include "widgets/menu_bar.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>
#include <set>
#include <string_view>

namespace {

namespace fs = std::filesystem;

constexpr int events_between_looks = 100;
constexpr int seeds_of_a_monkey = 1'000'000;
constexpr int events_between_errands = 250;
constexpr int events_of_a_run = 10'000;
constexpr int folders_above = 120; // more than a monkey climbs between two looks

int number_from(const char* variable, int otherwise) {
    const char* value = std::getenv(variable);
    return value ? std::atoi(value) : otherwise;
}

// Letters that the monkey types, those that mean something more often. No "/" and no "~": it stays in its cage.
constexpr std::string_view letters =
    "0123456789+-*.,<>[]()`'\"!@#$%^&=_?;:|\\{} abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
    "123456+-*xyzXYZ..";
constexpr std::array special_keys = {
    Key::up,  Key::down,  Key::left,   Key::right,   Key::home,  Key::end,       Key::page_up,  Key::page_down,
    Key::tab, Key::enter, Key::insert, Key::delete_, Key::f1,    Key::backspace, Key::f2,       Key::f3,
    Key::f10, Key::up,    Key::down,   Key::left,    Key::right, Key::enter,     Key::keypad_5, Key::keypad_enter,
};
// What a person would type on purpose.
constexpr std::array<std::string_view, 10> words = {"brux",    "vela",    "tarn",      "new1",    "hull.obj",
                                                    "one.car", "one.obj", "badge.png", "out.tga", "stdabrux.vsh"};

class Monkey {
    template <class Choices>
    typename Choices::value_type any(const Choices& choices) {
        return choices[random_() % choices.size()];
    }

public:
    explicit Monkey(unsigned seed) : random_(seed) {}

    ScriptStep next() {
        const int kind = below(100);
        if (kind < 22) return key_press(any(special_keys), some_modifiers(20));
        if (kind < 40) return typed({letters[static_cast<std::size_t>(below(static_cast<int>(letters.size())))]});
        if (kind < 52) return key_press(letter(), {.control = true, .shift = below(6) == 0});
        if (kind < 54) return typed(std::string(any(words)));
        if (kind < 62) return moved();
        if (kind < 72) return clicked();
        if (kind < 78) return press(x_, y_, a_button());
        if (kind < 84) return release(x_, y_, a_button());
        if (kind < 89) return wheel(x_, y_, below(7) - 3);
        if (kind < 93) return click(below(menu_cells) * menu_cell + 10, 620);
        if (kind < 95) return key_down(any(special_keys), some_modifiers(10));
        if (kind < 97) return key_up(any(special_keys));
        if (kind < 98) return below(3) == 0 ? drop(std::string(any(words))) : focus_lost();
        if (kind < 99) return key_press(Key::escape);
        return close_window();
    }
    // What a person does on purpose: a file of the list is loaded or saved.
    std::vector<ScriptStep> errand() {
        std::vector<ScriptStep> steps{key_press(Key::enter), release(480, 640), click(10, 620)};
        for (int toggles = below(2); toggles > 0; --toggles)
            steps.push_back(key_press(Key::c, {.control = true}));
        steps.push_back(click(100, 130 + 16 * below(12) + 8));
        steps.push_back(key_press(below(4) == 0 ? Key::s : Key::l, {.control = true}));
        return steps;
    }
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

private:
    Key letter() { return static_cast<Key>(static_cast<int>(Key::a) + below(26)); }
    int a_button() { return below(4) == 0 ? 2 : 1; }
    Modifiers some_modifiers(int percent) {
        return {.control = below(100) < percent, .shift = below(100) < percent, .num_lock = below(2) == 0};
    }

    // Near to where it is, or anywhere; seldom outside the picture.
    ScriptStep moved() {
        if (below(3) == 0) {
            x_ = below(screen_width);
            y_ = below(screen_height);
        } else {
            x_ = std::clamp(x_ + below(41) - 20, -1, screen_width - 1);
            y_ = std::clamp(y_ + below(41) - 20, -1, screen_height - 1);
        }
        return mouse_at(x_, y_);
    }
    ScriptStep clicked() {
        moved();
        return click(x_, y_, a_button());
    }
    static ScriptStep focus_lost() {
        InputEvent event;
        event.kind = InputEvent::Kind::focus_lost;
        return {{event}, {}};
    }

    std::minstd_rand random_;
    int x_ = 480, y_ = 300;
};

class MonkeyTest : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    EnvironmentVariable home{"HOME"}, appdata{"APPDATA"}, state{"XDG_STATE_HOME"};
    std::string cage;
    std::set<std::string> cars; // the names of those that were seen
    std::set<int> screens_seen;

    void SetUp() override {
        ScriptedTest::SetUp();
        home.set(directory / "home");
        state.set(directory / "state");
        appdata.unset();
        cage = directory.path();
        for (int folder = 0; folder < folders_above; ++folder)
            cage += "/f";
        fs::create_directories(cage + "/inner");
        for (const auto& entry : fs::directory_iterator(KAROSMIT_DATA_DIR "garage"))
            fs::copy(entry.path(), cage, fs::copy_options::recursive);
    }

    void look_around(unsigned seed, int event) {
        EXPECT_THAT(broken_invariants(), testing::IsEmpty()) << "seed " << seed << ", after event " << event;
        cars.insert(TITLENAME);
        screens_seen.insert(CURMENU);
        fs::current_path(cage); // where it may have climbed to
    }

    // One fresh program, and the monkey at it until its events are used up, however often it ends the program.
    void run(unsigned seed, int events) {
        std::printf("seed %u, %d events\n", seed, events);
        std::fflush(stdout);
        fs::current_path(cage);
        std::string error;
        ASSERT_TRUE(start_up(KAROSMIT_DATA_DIR "karosmit", error)) << error;
        seed_random(seed);

        Monkey monkey(seed);
        std::vector<ScriptStep> steps;
        for (int event = 1; event <= events; ++event) {
            steps.push_back(monkey.next());
            if (event % events_between_errands == 1) steps = std::move(steps) + monkey.errand();
            if (event % events_between_looks == 0) steps.push_back(look([=, this] { look_around(seed, event); }));
        }
        window.play(std::move(steps));
        while (!window.finished() && !HasFailure()) {
            reset_menu_bar();
            CURMENU = static_cast<std::uint8_t>(monkey.below(menu_cells));
            run_screens();
        }
        shut_down();
    }
};

} // namespace

// Two, so that two cores have something to do.
class Monkeys : public MonkeyTest, public testing::WithParamInterface<int> {};

TEST_P(Monkeys, WhateverTheyDoTheTablesHoldWhatTheyPromise) {
    const CurrentDirectory back(directory.path());
    const int events = number_from("KAROSMIT_MONKEY_EVENTS", 100'000);
    auto seed = static_cast<unsigned>(number_from("KAROSMIT_MONKEY_SEED", 1) + GetParam() * seeds_of_a_monkey);
    for (int done = 0; done < events && !HasFailure(); done += events_of_a_run)
        run(seed++, std::min(events_of_a_run, events - done));
    EXPECT_EQ(screens_seen.size(), 4u) << "a monkey that does not get about finds nothing";
    EXPECT_GE(cars.size(), 3u);
}
INSTANTIATE_TEST_SUITE_P(OnTwoCores, Monkeys, testing::Values(0, 1));
