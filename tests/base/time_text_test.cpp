#include "base/time_text.h"

#include "support/environment.h"

#include <gtest/gtest.h>

TEST(TimeText, IsInTheZoneThatWasAskedFor) {
    const EnvironmentVariable zone("TZ");
    zone.set("XYZ-2");
    ::tzset();
    constexpr const char* format = "%Y-%m-%d %H:%M:%S";
    EXPECT_EQ(utc_text(86399, format), "1970-01-01 23:59:59");
    EXPECT_EQ(local_text(86399, format), "1970-01-02 01:59:59");
}

TEST(TimeText, AFormatThatGivesTooMuchIsEmpty) {
    EXPECT_EQ(utc_text(0, "%Y %Y %Y %Y %Y %Y %Y %Y %Y %Y %Y %Y %Y %Y"), "");
}
