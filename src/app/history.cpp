#include "app/history.h"

#include "app/step_words.h"
#include "window/key_strings.h"

namespace {

bool is_cursor_key(std::string_view key) {
    return key == key::left || key == key::right || key == key::up || key == key::down;
}

} // namespace

bool History::continues_run(std::string_view key, double time) const {
    return done_ > 0 && !run_key_.empty() && key == run_key_ && time - run_time_ <= run_seconds;
}

bool History::note(const CarDocument& now, std::string_view key, double time) {
    if (now == last_) {
        last_.origin = now.origin;
        if (!key.empty() && key != run_key_) end_run();
        return false;
    }
    forget_redo();
    if (continues_run(key, time))
        merge_into_last(now);
    else
        push(now);
    last_ = now;
    run_key_ = is_cursor_key(key) ? std::string(key) : std::string();
    run_time_ = time;
    forget_oldest();
    return true;
}

void History::push(const CarDocument& now) {
    steps_.emplace_back(last_, now);
    bytes_ += steps_.back().bytes();
    ++done_;
}

// A run that ends where it began is no step.
void History::merge_into_last(const CarDocument& now) {
    steps_.back().take_back(last_);
    bytes_ -= steps_.back().bytes();
    steps_.pop_back();
    --done_;
    if (!(last_ == now)) push(now);
}

void History::forget_redo() {
    while (can_redo()) {
        bytes_ -= steps_.back().bytes();
        steps_.pop_back();
    }
}

void History::forget_oldest() {
    while (bytes_ > most_history_bytes && done_ > 1) {
        bytes_ -= steps_.front().bytes();
        steps_.pop_front();
        --done_;
    }
}

std::string History::undo(CarDocument& document) {
    note(document, {}, run_time_);
    end_run();
    if (!can_undo()) return {};
    const CarDocument newer = last_;
    steps_[--done_].take_back(last_);
    document = last_;
    return step_words(last_, newer);
}

std::string History::redo(CarDocument& document) {
    note(document, {}, run_time_);
    end_run();
    if (!can_redo()) return {};
    const CarDocument older = last_;
    steps_[done_++].bring(last_);
    document = last_;
    return step_words(older, last_);
}
