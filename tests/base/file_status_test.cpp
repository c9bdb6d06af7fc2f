#include "base/file_status.h"

#include <gtest/gtest.h>

namespace {
class FileStatus : public testing::Test {};

std::string text_of(std::uint8_t code) {
    FILE_ERROR = "as it was";
    EXPECT_EQ(report_file({"name", code}), (FileOutcome{"name", code}));
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
    report_file({"last.res", file_status::not_found});
    begin_file("next.res");
    EXPECT_EQ(FILE_FILE, "next.res");
    EXPECT_EQ(FILE_ERNUM, 0);
    EXPECT_EQ(FILE_ERROR, "File not found");
}

TEST_F(FileStatus, TheRecordMirrorsCodeAndReasonAndKeepsTheNameThatWasBegun) {
    begin_file("asked.res");
    report_file({"other.res", file_status::read_error, "Input/output error"});
    EXPECT_EQ(FILE_FILE, "asked.res");
    EXPECT_EQ(FILE_ERNUM, file_status::read_error);
    EXPECT_EQ(FILE_REASON, "Input/output error");
}

TEST_F(FileStatus, ResetForgetsAll) {
    begin_file("name");
    report_file({"name", file_status::write_error, "No space left on device"});
    reset_file_status();
    EXPECT_EQ(FILE_FILE + FILE_ERROR + FILE_REASON, "");
    EXPECT_EQ(FILE_ERNUM, 0);
}
