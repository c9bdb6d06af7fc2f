// Undo and redo: the steps between the states that the car went through, the oldest first, bounded in memory.
//
// Nobody who edits tells the history anything: after each input it looks whether the car is another one.
#pragma once

#include "model/document_step.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

constexpr std::size_t most_history_bytes = std::size_t{256} << 20;
constexpr double run_seconds = 1; // the same cursor key again within this time belongs to the same step

class History {
public:
    // The state in which nothing can be taken back.
    explicit History(const CarDocument& start) : last_(start) {}

    // What was done since the last call, by an input at `time` (seconds) whose key was `key` ("" for the mouse),
    // becomes a step if it changed the car; whether it did. Not to be called while a button is down: a drag or stroke
    // is one step.
    bool note(const CarDocument& now, std::string_view key, double time);

    // Something else was done, which changed nothing: the next cursor key begins a step.
    void end_run() { run_key_.clear(); }

    bool can_undo() const { return done_ > 0; }
    bool can_redo() const { return done_ < steps_.size(); }
    // Puts the document back by a step, or brings the step again. Returns the words for what was undone or redone; ""
    // when there is nothing, and the document stays. What was not noted yet is a step of its own first.
    std::string undo(CarDocument& document);
    std::string redo(CarDocument& document);

    std::size_t steps() const { return done_; }
    std::size_t bytes() const { return bytes_; }

private:
    bool continues_run(std::string_view key, double time) const;
    void merge_into_last(const CarDocument& now);
    void push(const CarDocument& now);
    void forget_redo();
    void forget_oldest();

    CarDocument last_;
    std::deque<DocumentStep> steps_; // those done, then those that can be brought again
    std::size_t done_ = 0;
    std::size_t bytes_ = 0;
    std::string run_key_; // of the last step, if it may go on
    double run_time_ = 0;
};
