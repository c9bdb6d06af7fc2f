// The two ways that a save takes: where the file system makes unnamed files, and where it does not.
#pragma once

#include "support/refused_call.h"

#include <gtest/gtest.h>

enum class FileSystem { ordinary, without_unnamed_files };

constexpr int not_allowed_here = 98;

// Prepares a child process. False when this machine does not allow it.
inline bool prepare(FileSystem kind) { return kind == FileSystem::ordinary || refuse_unnamed_files(); }

class BothWays : public testing::TestWithParam<FileSystem> {};

inline std::string way_name(const testing::TestParamInfo<FileSystem>& way) {
    return way.param == FileSystem::ordinary ? "ByUnnamedFile" : "ByNamedFile";
}

// Says why a test of a child's result proves nothing here.
#define SKIP_WHERE_NOT_ALLOWED(result)                                                                                 \
    if ((result) == not_allowed_here)                                                                                  \
    GTEST_SKIP() << "NOT TESTED: this machine lets no process refuse its own system calls or mount a disk of its own"
