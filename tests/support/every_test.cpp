// What holds for every test of these programs: it begins with the program as it is before its start.
#include "base/reset.h"

#include <gtest/gtest.h>

namespace {

class ResetBeforeEachTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override { reset_program(); }
};

const bool listens = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new ResetBeforeEachTest);
    return true;
}();

} // namespace
