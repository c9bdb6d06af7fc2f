// Parts of a test that need a process of their own: fewer rights, tighter limits, a sudden end.
#pragma once

#include <csignal>
#include <fstream>
#include <functional>
#include <grp.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

constexpr int could_not_prepare = 99;

// Of a build that counts what was run through: writes the counts, which a process that ends at once would lose.
extern "C" void __gcov_dump() __attribute__((weak));

// Starts a process that runs `work` and ends with its result as exit status.
inline pid_t start_child(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error("cannot fork");
    if (child == 0) {
        const int status = work();
        if (__gcov_dump) __gcov_dump();
        ::_exit(status);
    }
    return child;
}

// Waits for it: its exit status, or -1 when a signal ended it.
inline int wait_for(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

inline int run_in_child(const std::function<int()>& work) { return wait_for(start_child(work)); }

// Runs `work` as a user whom file permissions bind, also when the tests run as root.
inline int run_as_ordinary_user(const std::function<int()>& work) {
    return run_in_child([&] {
        constexpr unsigned nobody = 65534;
        if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            return could_not_prepare;
        return work();
    });
}

// Runs `work` where no file can grow past `bytes`.
inline int run_with_file_size_limit(rlim_t bytes, const std::function<int()>& work) {
    return run_in_child([&] {
        const rlimit limit{bytes, bytes};
        std::signal(SIGXFSZ, SIG_IGN);
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return could_not_prepare;
        return work();
    });
}

// Runs `work` where no more than `bytes` of addresses can be had beyond those already taken.
inline int run_with_memory_limit(rlim_t bytes, const std::function<int()>& work) {
    return run_in_child([&] {
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        const rlim_t most = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + bytes;
        const rlimit limit{most, most};
        if (pages == 0 || ::setrlimit(RLIMIT_AS, &limit) != 0) return could_not_prepare;
        return work();
    });
}
