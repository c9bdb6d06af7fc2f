// The checks find nothing in the cars that the program ships.
#include "base/config.h"
#include "files/transfer.h"
#include "formats/data_files.h"
#include "model/check_car.h"
#include "model/items.h"
#include "params/parameter_table.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

namespace {

class ChecksOfSampleCar : public testing::TestWithParam<const char*> {
protected:
    CurrentDirectory inside{KAROSMIT_DATA_DIR "garage/"};

    void SetUp() override {
        INITPARAMTARGETS();
        INITDASHITEMS();
        load_data_files(KAROSMIT_DATA_DIR "karosmit");
        ASSERT_FALSE(transfer(Transfer::load, GetParam()).failed);
    }
};

std::string told(const Finding& finding) { return finding.where + ": " + finding.what; }

} // namespace

TEST_P(ChecksOfSampleCar, FindNothing) {
    for (const Finding& finding : check_car(DOCUMENT))
        ADD_FAILURE() << told(finding);
}

INSTANTIATE_TEST_SUITE_P(All, ChecksOfSampleCar, testing::Values("brux", "tarn", "vela"));
