// Programs that are killed while a person edits: no finished edit older than six seconds is missing afterwards.
//
// Several at once, each in a process and with a state folder of its own, in real time. KAROSMIT_VISITS asks for more.
#include "app/editing_test.h"
#include "app/recovery.h"
#include "base/reset.h"
#include "files/kept_work.h"
#include "formats/project_file.h"
#include "support/child_process.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>
#include <sys/mman.h>
#include <thread>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr double most_seconds_lost = 6;
constexpr int side_by_side = 8;
constexpr int most_edits = 2000;

int visits() {
    const char* const asked = std::getenv("KAROSMIT_VISITS");
    return asked ? std::atoi(asked) : side_by_side;
}

double now() { return std::chrono::duration<double>(Clock::now().time_since_epoch()).count(); }

// A script in real time: a step every few milliseconds, sometimes after a pause.
class PacedBackend : public ScriptedBackend {
public:
    explicit PacedBackend(unsigned seed) : random_(seed) {}

    double seconds() override { return now(); }
    void wait(int milliseconds) override {
        double until = next_;
        if (milliseconds >= 0) until = std::min(until, now() + milliseconds / 1000.0);
        std::this_thread::sleep_for(std::chrono::duration<double>(std::max(0.0, until - now())));
        if (now() < next_) return;
        ScriptedBackend::wait(milliseconds);
        const bool pause = std::uniform_int_distribution(0, 60)(random_) == 0;
        next_ = now() + std::uniform_real_distribution(0.001, pause ? 2.0 : 0.03)(random_);
    }

private:
    std::mt19937 random_;
    double next_ = 0;
};

// What the visiting process tells, also when it is killed: when each edit was finished.
struct Diary {
    int edits = 0;
    double finished[most_edits] = {};
};

struct Visit {
    TemporaryDirectory state;
    Diary* diary =
        static_cast<Diary*>(::mmap(nullptr, sizeof(Diary), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    pid_t process = 0;
    double killed_at = 0;

    Visit() = default;
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;
    ~Visit() { ::munmap(diary, sizeof(Diary)); }
};

class KilledVisit : public EditingTest {
protected:
    EnvironmentVariable state_home{"XDG_STATE_HOME"};

    // Types one value after another: the k-th edit makes the brakes k.
    void edit_for_ever(unsigned seed, Diary& diary) {
        PacedBackend paced(seed);
        use_backend(&paced);
        start();
        std::vector<ScriptStep> steps{to_screen(3)};
        for (int k = 1; k < most_edits; ++k)
            steps = std::move(steps) + type_brakes(std::to_string(k)) + std::vector<ScriptStep>{look([&diary, k] {
                        if (par_word(brakes_offset) != k) std::abort();
                        diary.finished[k] = now();
                        diary.edits = k;
                    })};
        paced.play(std::move(steps));
        run_screens();
    }
    void check(const Visit& visit) {
        state_home.set(visit.state.path());
        int must_be_there = 0;
        while (must_be_there < visit.diary->edits &&
               visit.diary->finished[must_be_there + 1] < visit.killed_at - most_seconds_lost)
            ++must_be_there;
        reset_program();
        const std::vector<KeptWork> offered = offered_works();
        ASSERT_LE(offered.size(), 1u);
        if (offered.empty()) {
            EXPECT_EQ(must_be_there, 0);
            return;
        }
        const Bytes content = get_file(visit.state / "karosmit/" + offered.front().stem + ".car");
        ProjectFile kept;
        decode_project_file(content, kept);
        EXPECT_EQ(encode_project_file(kept), content) << "the kept work is whole";
        EXPECT_GE(word_of(kept.par, brakes_offset), must_be_there);
        newest_missing = std::max(newest_missing, visit.diary->edits - word_of(kept.par, brakes_offset));
        // Nothing else stays but what the next program takes over.
        tidy_kept_works();
        std::string reason;
        EXPECT_TRUE(keep_work(offered.front().stem, DOCUMENT, "/", reason)) << reason;
        for (const auto& entry : fs::directory_iterator(visit.state / "karosmit"))
            EXPECT_EQ(entry.path().stem(), offered.front().stem);
    }

    int newest_missing = 0; // edits, of the last seconds
};

} // namespace

TEST_F(KilledVisit, LosesNoFinishedEditOlderThanSixSeconds) {
    std::mt19937 random(20240613);
    std::uniform_real_distribution<double> moment(0.5, 14);
    int kept = 0, edits = 0;
    for (int done = 0; done < visits(); done += side_by_side) {
        std::vector<Visit> all(side_by_side);
        const double begin = now();
        std::vector<double> moments;
        for (Visit& one : all) {
            state_home.set(one.state.path());
            const auto seed = static_cast<unsigned>(random());
            one.process = start_child([&]() -> int {
                edit_for_ever(seed, *one.diary);
                return 0;
            });
            moments.push_back(moment(random));
        }
        std::vector<std::size_t> order(all.size());
        for (std::size_t k = 0; k < order.size(); ++k)
            order[k] = k;
        std::ranges::sort(order, {}, [&](std::size_t k) { return moments[k]; });
        for (const std::size_t k : order) {
            std::this_thread::sleep_for(std::chrono::duration<double>(std::max(0.0, begin + moments[k] - now())));
            all[k].killed_at = now();
            ::kill(all[k].process, SIGKILL);
            EXPECT_EQ(wait_for(all[k].process), -1) << "the visit ended by itself";
        }
        for (const Visit& one : all) {
            check(one);
            edits += one.diary->edits;
            std::error_code none;
            kept += fs::is_empty(one.state.path(), none) ? 0 : 1;
        }
    }
    EXPECT_GT(kept, visits() / 2);
    EXPECT_GT(edits, visits());
    std::cout << "[ MEASURED ] " << visits() << " kills, " << edits << " edits; at most " << newest_missing
              << " of the last seconds missing\n";
}
