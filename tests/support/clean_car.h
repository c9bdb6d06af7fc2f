// A test of a car file, in a directory of its own.
#pragma once

#include "base/file_status.h"
#include "support/bytes.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

#include <filesystem>
#include <gtest/gtest.h>

class CleanCar : public testing::Test {
protected:
    CleanCar() { FILE_ERROR = "an earlier failure"; }

    // Names under which a reader finds no file: absent, a directory, a pipe.
    std::vector<std::string> names_of_no_file() {
        std::filesystem::create_directory(directory / "folder");
        ::mkfifo((directory / "pipe").c_str(), 0600);
        return {directory / "missing", directory / "folder", directory / "pipe", std::string()};
    }

    // Whether `load` reports "Read error" with its reason for a file without any permission.
    bool read_error_when_unreadable(const Bytes& content, const std::function<void(const std::string&)>& load) {
        put_file(directory / "locked", content);
        std::filesystem::permissions(directory / "locked", std::filesystem::perms::none);
        std::filesystem::permissions(directory.path(), std::filesystem::perms::all);
        return run_as_ordinary_user([&] {
                   load(directory / "locked");
                   const bool told = FILE_ERROR == "Read error" && FILE_REASON == "Permission denied";
                   return FILE_ERNUM == file_status::read_error && told ? 0 : 1;
               }) == 0;
    }

    // What a save reports where a file cannot grow past `bytes`.
    int save_with_file_size_limit(unsigned bytes, const std::function<void()>& save) {
        return run_with_file_size_limit(bytes, [&] {
            save();
            return int{FILE_ERNUM};
        });
    }

    TemporaryDirectory directory;
};

#define EXPECT_SUCCESS()                                                                                               \
    EXPECT_EQ(FILE_ERNUM, file_status::success);                                                                       \
    EXPECT_EQ(FILE_ERROR, "an earlier failure")
#define EXPECT_FAILURE(code, text)                                                                                     \
    EXPECT_EQ(FILE_ERNUM, code);                                                                                       \
    EXPECT_EQ(FILE_ERROR, text)
