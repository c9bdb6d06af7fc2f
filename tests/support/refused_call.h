// Lets the system refuse calls to this process, as file systems and disks do that no test machine has.
#pragma once

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

// From now on every call of this number whose third argument has a bit of `flags` (any call, when `flags` is 0) fails
// with `error`. It holds for good, so that it is for a child process. False when this machine does not allow it.
inline bool refuse_calls(unsigned number, int error, std::uint32_t flags = 0) {
    constexpr std::uint32_t number_at = offsetof(seccomp_data, nr);
    constexpr std::uint32_t third_argument_at = offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t);
    const auto answer = SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(error);
    const std::uint8_t whatever_the_argument = flags == 0 ? 2 : 0; // two instructions on, to the answer
    std::array<sock_filter, 6> program = {{{BPF_LD | BPF_W | BPF_ABS, 0, 0, number_at},
                                           {BPF_JMP | BPF_JEQ | BPF_K, whatever_the_argument, 3, number},
                                           {BPF_LD | BPF_W | BPF_ABS, 0, 0, third_argument_at},
                                           {BPF_JMP | BPF_JSET | BPF_K, 0, 1, flags},
                                           {BPF_RET | BPF_K, 0, 0, answer},
                                           {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW}}};
    const sock_fprog filter{program.size(), program.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

// A file system that knows no unnamed files.
inline bool refuse_unnamed_files() { return refuse_calls(SYS_openat, EOPNOTSUPP, O_TMPFILE & ~O_DIRECTORY); }
