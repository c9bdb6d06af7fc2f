#include "program/real_window.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

bool wait_until(const std::function<bool()>& condition, Milliseconds at_most) {
    const auto end = std::chrono::steady_clock::now() + at_most;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(Milliseconds{2});
    }
    return true;
}

namespace {

void set_environment(const std::map<std::string, std::string>& environment) {
    for (const auto& [name, value] : environment) {
        if (value.empty())
            unsetenv(name.c_str());
        else
            setenv(name.c_str(), value.c_str(), 1);
    }
}

void put_into_file(int descriptor, const std::string& name) {
    dup2(open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
}

[[noreturn]] void become(const std::string& program, const std::string& folder,
                         const std::map<std::string, std::string>& environment, std::vector<std::string> arguments) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // Of use to a program built with the sanitizers only.
    setenv("LSAN_OPTIONS", "suppressions=" LIBRARY_LEAKS ":print_suppressions=0", 1);
    set_environment(environment);
    if (chdir(folder.c_str()) != 0) _exit(126);
    arguments.insert(arguments.begin(), program);
    if (const char* const checker = std::getenv("KAROSMIT_RUN_BY")) arguments.insert(arguments.begin(), checker);
    std::vector<char*> words;
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    execv(words.front(), words.data());
    _exit(127);
}

} // namespace

StartedProgram::StartedProgram(const std::string& program, const std::string& folder,
                               const std::map<std::string, std::string>& environment,
                               const std::vector<std::string>& arguments)
    : output_file_(folder + "/.standard_output"), error_file_(folder + "/.standard_error") {
    id_ = fork();
    if (id_ != 0) return;
    put_into_file(STDOUT_FILENO, output_file_);
    put_into_file(STDERR_FILENO, error_file_);
    become(program, folder, environment, arguments);
}

StartedProgram::~StartedProgram() {
    if (id_ <= 0 || has_ended()) return;
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
}

void StartedProgram::send_signal(int signal) const { kill(id_, signal); }

bool StartedProgram::has_ended() {
    int status = 0;
    if (!status_ && waitpid(id_, &status, WNOHANG) == id_) status_ = status;
    return status_.has_value();
}

std::optional<int> StartedProgram::wait_for_end(Milliseconds at_most) {
    if (!wait_until([this] { return has_ended(); }, at_most) || !WIFEXITED(*status_)) return std::nullopt;
    return WEXITSTATUS(*status_);
}

namespace {
std::string content_of(const std::string& name) {
    std::ifstream file(name);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
} // namespace

std::string StartedProgram::error_output() const { return content_of(error_file_); }
std::string StartedProgram::output() const { return content_of(output_file_); }

std::vector<std::filesystem::path> StartedProgram::threads() const {
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(id_) + "/task");
    return {begin(all), end(all)};
}

long StartedProgram::sleeps() const {
    long count = 0;
    for (const std::filesystem::path& thread : threads()) {
        std::ifstream file(thread / "status");
        for (std::string name; file >> name;)
            if (long value = 0; name == "voluntary_ctxt_switches:" && file >> value) count += value;
    }
    return count;
}

double StartedProgram::processor_time() const {
    double nanoseconds = 0;
    for (const std::filesystem::path& thread : threads()) {
        std::ifstream file(thread / "schedstat");
        double used = 0; // the first figure: time spent on a processor
        file >> used;
        nanoseconds += used;
    }
    return nanoseconds / 1e9;
}
