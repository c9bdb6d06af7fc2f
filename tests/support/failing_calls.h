// Calls of the system that fail when a test wants it: its own `open`, `stat`, `fstat`, `read`, `opendir` and `readdir`
// stand before the system's in the whole test program, and so does an `fsync` that does nothing. To be included by one
// source file of a program only.
#pragma once

#include <cerrno>
#include <cstdarg>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

enum class SystemCall { open, stat, fstat, read, opendir, readdir };

// The n-th call of a kind from now on fails, alone or with all that follow it.
struct FailingCall {
    SystemCall kind = SystemCall::read;
    int number = 1; // 0: none fails, they are only counted
    int error = EIO;
    bool for_ever = false;
    bool is_short = false; // no error: `read` brings half of what it was asked for, or nothing more when for_ever
};

namespace failing_calls {
inline std::optional<FailingCall> armed;
inline int counted = 0;

// Whether this call is to fail.
inline bool hits(SystemCall kind) {
    if (!armed || armed->kind != kind) return false;
    ++counted;
    return armed->number > 0 && (armed->for_ever ? counted >= armed->number : counted == armed->number);
}

// Whether this call is to fail with an error, which is then set.
inline bool fails(SystemCall kind) {
    if (!hits(kind)) return false;
    errno = armed->error;
    return true;
}

template <typename Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}
} // namespace failing_calls

// Does the work with that failure; how many calls of the kind it made.
inline int with_failing_call(const FailingCall& failure, auto&& work) {
    failing_calls::armed = failure;
    failing_calls::counted = 0;
    work();
    failing_calls::armed.reset();
    return failing_calls::counted;
}

// NOLINTBEGIN(misc-definitions-in-headers): one source file of a program includes this
extern "C" {
inline int open_with(const char* path, int flags, mode_t mode) {
    static auto* const next = failing_calls::real<int(const char*, int, ...)>("open");
    return failing_calls::fails(SystemCall::open) ? -1 : next(path, flags, mode);
}

int open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return open_with(path, flags, mode);
}

int stat(const char* path, struct stat* status) {
    static auto* const next = failing_calls::real<int(const char*, struct stat*)>("stat");
    return failing_calls::fails(SystemCall::stat) ? -1 : next(path, status);
}

int fstat(int descriptor, struct stat* status) {
    static auto* const next = failing_calls::real<int(int, struct stat*)>("fstat");
    return failing_calls::fails(SystemCall::fstat) ? -1 : next(descriptor, status);
}

ssize_t read(int descriptor, void* buffer, std::size_t length) {
    static auto* const next = failing_calls::real<ssize_t(int, void*, std::size_t)>("read");
    if (!failing_calls::hits(SystemCall::read)) return next(descriptor, buffer, length);
    if (failing_calls::armed->is_short)
        return failing_calls::armed->for_ever ? 0 : next(descriptor, buffer, length > 1 ? length / 2 : length);
    errno = failing_calls::armed->error;
    return -1;
}

DIR* opendir(const char* path) {
    static auto* const next = failing_calls::real<DIR*(const char*)>("opendir");
    return failing_calls::fails(SystemCall::opendir) ? nullptr : next(path);
}

// What a test saves need not survive a power cut, and flushing takes most of its time.
int fsync(int /*descriptor*/) { return 0; }

dirent* readdir(DIR* directory) {
    static auto* const next = failing_calls::real<dirent*(DIR*)>("readdir");
    return failing_calls::fails(SystemCall::readdir) ? nullptr : next(directory);
}
}
// NOLINTEND(misc-definitions-in-headers)
