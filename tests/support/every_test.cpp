// What holds for every test of these programs: it begins with the program as it is before its start, and keeps nothing
// in the home of whoever runs it.
#include "base/reset.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

namespace {

class ResetBeforeEachTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override {
        reset_program();
        ::setenv("XDG_STATE_HOME", state_.path().c_str(), 1);
    }

    const TemporaryDirectory state_;
};

const bool listens = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new ResetBeforeEachTest);
    return true;
}();

} // namespace
