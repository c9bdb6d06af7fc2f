// The converter's entry: command line, colours, one line a source, exit status.

#include "base/config.h"
#include "base/version.h"
#include "convert/command_line.h"
#include "convert/many.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int all_done = 0, some_failed = 1, usage_failed = 2;

// "12 of 1000" on a terminal, once it takes longer than a second.
class Progress {
public:
    explicit Progress(std::size_t count) : count_(count) {}

    void show(std::size_t finished) {
        if (!terminal_ || std::chrono::steady_clock::now() < next_) return;
        next_ = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
        std::fprintf(stderr, "\r%zu of %zu ", finished, count_);
        shown_ = true;
    }
    // Before anything else is printed.
    void clear() {
        if (shown_) std::fputs("\r\x1B[K", stderr);
        shown_ = false;
    }

private:
    const std::size_t count_;
    const bool terminal_ = ::isatty(STDERR_FILENO) == 1;
    std::chrono::steady_clock::time_point next_ = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    bool shown_ = false;
};

// More than there are cores: a conversion also waits until its files are on the disk.
int usual_jobs() {
    constexpr int jobs_a_core = 2;
    return jobs_a_core * std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

ConvertOutcome carry_out(const PlannedConversion& conversion, const CommandLine& line) {
    if (line.action == CommandLine::Action::check) return check(conversion.source);
    if (!conversion.refusal.empty()) return {.text = conversion.source + ": " + conversion.refusal};
    return convert(conversion.source, conversion.target, line.options);
}

int work_on_all(const CommandLine& line) {
    const std::vector<PlannedConversion> conversions = plan(line);
    Progress progress(conversions.size());
    int status = all_done;
    run_many({.count = conversions.size(),
              .convert = [&](std::size_t number) { return carry_out(conversions[number], line); },
              .report =
                  [&](std::size_t number, const ConvertOutcome& outcome) {
                      progress.clear();
                      if (!outcome.done) status = some_failed;
                      const std::string& source = conversions[number].source;
                      const std::string text = outcome.text.starts_with(source) ? "" : source + ": ";
                      std::fprintf(outcome.done ? stdout : stderr, "%s%s\n", text.c_str(), outcome.text.c_str());
                      std::fflush(stdout);
                  },
              .progress = [&](std::size_t finished) { progress.show(finished); }},
             line.jobs > 0 ? line.jobs : usual_jobs());
    progress.clear();
    return status;
}

// A search path leaves the path it was called with bare; that one serves where no /proc is mounted.
std::string own_path(const std::string& invocation_path) {
    std::error_code failed;
    const std::string path = std::filesystem::read_symlink("/proc/self/exe", failed);
    return failed ? invocation_path : path;
}

} // namespace

int main(int argument_count, char** arguments) {
    const std::vector<const char*> all(arguments, arguments + argument_count);
    CommandLine line;
    try {
        line = read_command_line(std::span(all).subspan(std::min<std::size_t>(all.size(), 1)));
    } catch (const UsageError& error) {
        std::fprintf(stderr, "karosmit-convert: %s; --help tells more\n", error.text.c_str());
        return usage_failed;
    }
    switch (line.action) {
    case CommandLine::Action::help: return std::fputs(usage_text.data(), stdout) < 0 ? some_failed : all_done;
    case CommandLine::Action::version: std::printf("%s\n", program_title.data()); return all_done;
    default: break;
    }
    PROGDIR = program_directory(own_path(all.empty() ? "" : all.front()));
    LOADPALETTE();
    LOADMATERIALS();
    return work_on_all(line);
}
