// What the tests of conversions share: a folder of their own, the colours, the sample cars.
#pragma once

#include "base/config.h"
#include "convert/conversion.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

inline const std::string sample_folder = std::string(KAROSMIT_DATA_DIR) + "garage/";
inline const std::vector<std::string> sample_cars = {"brux", "tarn", "vela"};

// The names of a car's four files, in the order in which they are loaded.
inline std::vector<std::string> car_file_names(const std::string& id) {
    return {"car" + id + ".res", "st" + id + ".3sh", "stda" + id + ".vsh", "stdb" + id + ".vsh"};
}

class Conversions : public testing::Test {
protected:
    Conversions() {
        PROGDIR = KAROSMIT_DATA_DIR;
        LOADPALETTE();
        LOADMATERIALS();
    }

    void expect_converted(const std::string& source, const std::string& target, const ConvertOptions& options = {}) {
        const ConvertOutcome outcome = convert(source, target, options);
        EXPECT_TRUE(outcome.done) << outcome.text;
    }
    // Nothing is made, and the one line of reason has these words in it.
    void expect_refused(const std::string& source, const std::string& target, const std::string& words,
                        const ConvertOptions& options = {}) {
        const auto before = directory.names();
        const ConvertOutcome outcome = convert(source, target, options);
        EXPECT_FALSE(outcome.done) << outcome.text;
        EXPECT_THAT(outcome.text, testing::StartsWith(source));
        EXPECT_THAT(outcome.text, testing::HasSubstr(words));
        EXPECT_THAT(outcome.text, testing::Not(testing::HasSubstr("\n")));
        EXPECT_EQ(directory.names(), before) << outcome.text;
    }
    void expect_same_file(const std::string& a, const std::string& b) { EXPECT_TRUE(get_file(a) == get_file(b)) << a; }

    TemporaryDirectory directory;
};
