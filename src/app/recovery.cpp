#include "app/recovery.h"

#include "base/code_page.h"
#include "base/config.h"
#include "base/state_folder.h"
#include "base/text.h"
#include "files/kept_work.h"
#include "formats/saved_car.h"
#include "widgets/strip.h"

#include <algorithm>
#include <utility>

namespace {

// Of who never pauses the work is kept all the same, so late.
constexpr double patience_seconds = 0.5;
// How soon it is looked whether what is being written could be written.
constexpr double look_seconds = 0.05;

bool is_idle(const Input& last) { return last.key.empty() && !last.mouse_changed(); }
bool button_is_down() { return mouse().buttons != 0 || bar_mouse().buttons != 0; }

} // namespace

Recovery::Recovery() : on_(lower_case(CONFIG("recovery")) != "off"), written_at_(timer() - kept_every_seconds) {
    if (on_) tidy_kept_works();
}

// Work that was kept by another run goes on under its stem, all other under one that this run has for its own.
std::string Recovery::stem_of_now() {
    if (const AdoptedWork* const adopted = adopted_work()) {
        handed_.try_emplace(adopted->stem, adopted->car);
        return adopted->stem;
    }
    if (own_stem_.empty()) own_stem_ = new_stem();
    return own_stem_;
}

bool Recovery::is_kept(const std::string& stem) const {
    const auto handed = handed_.find(stem);
    return handed != handed_.end() && handed->second == DOCUMENT;
}

void Recovery::changed() {
    if (!on_) return;
    if (!saved_car().unsaved) {
        due_.reset();
        drop(own_stem_);
        if (const AdoptedWork* const adopted = adopted_work()) drop(adopted->stem);
    } else if (is_kept(stem_of_now())) {
        due_.reset();
    } else if (!due_) { // what is due already does not wait for more
        due_ = std::max(timer(), written_at_ + kept_every_seconds);
    }
}

void Recovery::waiting(const Input& last) {
    tell_failure();
    keep_when_due(last);
    if (is_writing()) alarm_no_later_than(timer() + look_seconds);
}

void Recovery::keep_when_due(const Input& last) {
    if (!due_ || button_is_down()) return;
    const double now = timer();
    if (now >= *due_ + (is_idle(last) ? 0 : patience_seconds))
        keep_now();
    else
        alarm_no_later_than(*due_);
}

void Recovery::keep_now() {
    due_.reset();
    written_at_ = timer();
    const std::string stem = stem_of_now();
    handed_[stem] = DOCUMENT;
    hand_over({stem, DOCUMENT, current_directory()});
}

// What is unsaved later is kept under a stem of this run: nothing of another run's is left to go on with.
void Recovery::drop(std::string stem) {
    const bool adopted = forget_adopted_work(stem), kept = handed_.erase(stem) > 0;
    if (adopted || kept) hand_over({std::move(stem), std::nullopt});
}

void Recovery::hand_over(Job job) {
    const std::lock_guard guard(mutex_);
    std::erase_if(jobs_, [&](const Job& earlier) { return earlier.stem == job.stem; });
    jobs_.push_back(std::move(job));
    if (!thread_.joinable()) thread_ = std::thread([this] { work(); });
    more_.notify_one();
}

void Recovery::work() {
    std::unique_lock guard(mutex_);
    for (;;) {
        more_.wait(guard, [this] { return over_ || !jobs_.empty(); });
        if (jobs_.empty()) return;
        const Job job = std::move(jobs_.front());
        jobs_.pop_front();
        at_work_ = true;
        guard.unlock();
        run(job);
        guard.lock();
        at_work_ = false;
    }
}

void Recovery::run(const Job& job) {
    if (!job.car) return drop_kept_work(job.stem);
    std::string reason;
    if (keep_work(job.stem, *job.car, job.folder, reason)) return;
    const std::lock_guard guard(mutex_);
    failure_ = reason;
}

bool Recovery::is_writing() {
    const std::lock_guard guard(mutex_);
    return at_work_ || !jobs_.empty();
}

// Once: who was told that the disk is full knows it.
void Recovery::tell_failure() {
    if (told_failure_) return;
    const std::lock_guard guard(mutex_);
    if (failure_.empty()) return;
    told_failure_ = true;
    say(code_page_from_utf8("Unsaved work is not kept: " + failure_));
}

bool Recovery::has_failed() {
    const std::lock_guard guard(mutex_);
    return !failure_.empty();
}

// What could not be written is tried once more.
void Recovery::finish() {
    if (has_failed() && on_ && saved_car().unsaved) handed_.erase(stem_of_now());
    changed();
    if (due_) keep_now();
    stop();
}

// The jobs that are left are done first.
void Recovery::stop() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard guard(mutex_);
        over_ = true;
    }
    more_.notify_one();
    thread_.join();
    thread_ = {};
    over_ = false;
}
