#include "convert/many.h"

#include "base/descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <map>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

constexpr char done_mark = '+', failed_mark = '-'; // begin what a process says

void write_all(int to, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(to, text.data(), text.size());
        if (count < 0 && errno != EINTR) return;
        if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    }
}

ConvertOutcome failed(const std::string& why) { return {.text = why}; }

// One conversion that runs.
struct Process {
    pid_t id = -1;
    std::size_t number = 0;
    Descriptor said;
    std::string text{};
};

// Its outcome, after it has said all.
ConvertOutcome outcome_of(const Process& process) {
    int status = 0;
    while (::waitpid(process.id, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status)) return failed("the conversion ended by signal " + std::to_string(WTERMSIG(status)));
    if (process.text.empty()) return failed("the conversion ended without a word");
    return {.done = process.text[0] == done_mark, .text = process.text.substr(1)};
}

class Running {
public:
    Running(const ManyConversions& many, std::size_t jobs) : many_(many), jobs_(jobs) {}

    void run() {
        while (next_ < many_.count || !processes_.empty()) {
            while (next_ < many_.count && processes_.size() < jobs_)
                start(next_++);
            if (!processes_.empty()) listen();
        }
    }

private:
    void start(std::size_t number) {
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_CLOEXEC) != 0) return finish(number, failed(std::generic_category().message(errno)));
        Descriptor said(ends[0]);
        const Descriptor mouth(ends[1]);
        const pid_t id = ::fork();
        if (id < 0) return finish(number, failed(std::generic_category().message(errno)));
        if (id == 0) {
            const ConvertOutcome outcome = many_.convert(number);
            write_all(mouth.number(), (outcome.done ? done_mark : failed_mark) + outcome.text);
            ::_exit(0);
        }
        processes_.push_back({id, number, std::move(said)});
    }

    // Waits until a process says something, or has ended.
    void listen() {
        std::vector<pollfd> waiting;
        for (const Process& process : processes_)
            waiting.push_back({process.said.number(), POLLIN, 0});
        if (::poll(waiting.data(), waiting.size(), -1) < 0) return;
        for (std::size_t i = processes_.size(); i-- > 0;)
            if (waiting[i].revents != 0 && !hear(processes_[i])) {
                finish(processes_[i].number, outcome_of(processes_[i]));
                processes_.erase(processes_.begin() + static_cast<std::ptrdiff_t>(i));
            }
    }

    // False when there is no more to hear.
    static bool hear(Process& process) {
        char piece[4096];
        const ssize_t count = ::read(process.said.number(), piece, sizeof piece);
        if (count > 0) process.text.append(piece, static_cast<std::size_t>(count));
        return count > 0 || (count < 0 && errno == EINTR);
    }

    void finish(std::size_t number, ConvertOutcome outcome) {
        finished_[number] = std::move(outcome);
        many_.progress(finished_.size() + reported_);
        for (auto first = finished_.begin(); first != finished_.end() && first->first == reported_;
             first = finished_.erase(first))
            many_.report(reported_++, first->second);
    }

    const ManyConversions& many_;
    const std::size_t jobs_;
    std::size_t next_ = 0, reported_ = 0;
    std::vector<Process> processes_;
    std::map<std::size_t, ConvertOutcome> finished_; // not reported yet
};

} // namespace

void run_many(const ManyConversions& many, int jobs) { Running(many, static_cast<std::size_t>(jobs)).run(); }
