#include "base/file_status.h"

#include <gtest/gtest.h>

namespace {
class FileStatus : public testing::Test {};

std::string text_of(std::uint8_t code) {
    FILE_ERROR = "as it was";
    report_file(code);
    EXPECT_EQ(FILE_ERNUM, code);
    return FILE_ERROR;
}
} // namespace

TEST_F(FileStatus, EveryFailureHasItsText) {
    EXPECT_EQ(text_of(1), "File not found");
    EXPECT_EQ(text_of(2), "Invalid file name");
    EXPECT_EQ(text_of(3), "Write error");
    EXPECT_EQ(text_of(4), "Too large, cut to fit");
    EXPECT_EQ(text_of(255), "Unknown format");
}

TEST_F(FileStatus, CodesWithoutTextLeaveIt) {
    EXPECT_EQ(text_of(0), "as it was");
    EXPECT_EQ(text_of(156), "as it was");
}

TEST_F(FileStatus, BeginningNamesTheFileAndKeepsTheLastErrorText) {
    report_file(file_status::not_found);
    begin_file("next.res");
    EXPECT_EQ(FILE_FILE, "next.res");
    EXPECT_EQ(FILE_ERNUM, 0);
    EXPECT_EQ(FILE_ERROR, "File not found");
}

TEST_F(FileStatus, ResetForgetsAll) {
    begin_file("name");
    report_file(file_status::write_error);
    reset_file_status();
    EXPECT_EQ(FILE_FILE + FILE_ERROR, "");
    EXPECT_EQ(FILE_ERNUM, 0);
}
