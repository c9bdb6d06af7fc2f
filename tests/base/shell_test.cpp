#include "base/shell.h"

#include "support/text_file.h"

#include <gtest/gtest.h>

TEST(Shell, TheCommandIsWaitedForAndItsStatusReturned) {
    EXPECT_EQ(run_command("exit 3"), 3);
    EXPECT_EQ(run_command("true"), 0);
    EXPECT_EQ(run_command("kill -9 $$"), -1);
}

// Every name must reach the command as one argument, unchanged, and run nothing of its own.
TEST(Shell, NoSpellingOfANameLeavesItsQuotes) {
    const TemporaryDirectory directory;
    const std::string told = directory / "told";
    for (const std::string name : {"plain", "two words", "it's", "a\"b", "$(touch x)", "`id`", "a;b", "a\nb", "*", "\\",
                                   "'; exit 9 #", "\xE4\xFF"}) {
        ASSERT_EQ(run_command("printf %s " + shell_quoted(name) + " > " + shell_quoted(told)), 0) << name;
        EXPECT_EQ(read_text(told), name);
    }
}

TEST(Shell, ANameThatLooksLikeAnOptionBecomesAPath) { EXPECT_EQ(shell_quoted("-rf"), "'./-rf'"); }
