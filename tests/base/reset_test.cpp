#include "base/reset.h"

#include "base/config.h"
#include "base/file_status.h"

#include <gtest/gtest.h>

namespace {

int first = 1, second = 1;
const ResetWithProgram resets_first([] { first = 0; });
const ResetWithProgram resets_second([] { second = 0; });

} // namespace

TEST(Reset, CallsEveryProcedureThatIsRegistered) {
    FILE_FILE = "x";
    CONFIGS = 1;
    reset_program();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 0);
    EXPECT_EQ(FILE_FILE, "");
    EXPECT_EQ(CONFIGS, 0);
    first = 5;
    reset_program();
    EXPECT_EQ(first, 0);
}
