// Keeps unsaved work by itself while a person edits, so that no end of the program loses it.
//
// A thread of its own writes a copy of the car, which costs the person's input next to nothing: copies share their
// blocks. When it is time to write is decided here, before every reading of input.
#pragma once

#include "model/document.h"
#include "window/input.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

constexpr double kept_every_seconds = 5; // at most so often while a person works

class Recovery {
public:
    Recovery();
    ~Recovery() { stop(); }
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;

    // The car, or what is known of its files, is another.
    void changed();
    // A loop is about to read, and has read this last: writes in the first idle moment, never while a button is down.
    void waiting(const Input& last);
    // Hands a copy of the car to the thread.
    void keep_now();
    // The end of the program: what is unsaved is kept when this returns.
    void finish();

private:
    struct Job {
        std::string stem;
        std::optional<CarDocument> car; // none: what is kept goes
        std::string folder{};
    };

    void keep_when_due(const Input& last);
    std::string stem_of_now();
    bool is_kept(const std::string& stem) const;
    void drop(std::string stem);
    void hand_over(Job job);
    void work();
    void run(const Job& job);
    void tell_failure();
    bool is_writing();
    bool has_failed();
    void stop();

    const bool on_;
    std::string own_stem_;
    std::map<std::string, CarDocument> handed_; // by stem: the car that was written last
    std::optional<double> due_;
    double written_at_;
    bool told_failure_ = false;

    std::mutex mutex_; // of what follows
    std::condition_variable more_;
    std::deque<Job> jobs_;
    bool at_work_ = false; // on a job that is no longer among them
    std::string failure_;
    bool over_ = false;
    std::thread thread_;
};
