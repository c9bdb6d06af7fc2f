#include "convert/many.h"

#include "support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <unistd.h>
#include <vector>

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

namespace {

std::vector<std::string> reports_of(std::size_t count, int jobs,
                                    const std::function<ConvertOutcome(std::size_t)>& work) {
    std::vector<std::string> reports;
    run_many({.count = count,
              .convert = work,
              .report =
                  [&](std::size_t number, const ConvertOutcome& outcome) {
                      EXPECT_EQ(number, reports.size());
                      reports.push_back((outcome.done ? "+" : "-") + outcome.text);
                  }},
             jobs);
    return reports;
}

} // namespace

TEST(ManyConversions, ReportInOrderHoweverLongEachTakes) {
    const auto reports = reports_of(20, 4, [](std::size_t number) {
        ::usleep(number % 5 == 0 ? 30'000 : 0);
        return ConvertOutcome{.done = number != 3, .text = std::to_string(number)};
    });
    ASSERT_THAT(reports, SizeIs(20));
    for (std::size_t i = 0; i < reports.size(); ++i)
        EXPECT_EQ(reports[i], (i == 3 ? "-" : "+") + std::to_string(i));
}

TEST(ManyConversions, OneThatCrashesFailsAlone) {
    const auto reports = reports_of(3, 2, [](std::size_t number) {
        if (number == 1) std::raise(SIGKILL);
        return ConvertOutcome{.done = true};
    });
    EXPECT_THAT(reports, ElementsAre("+", HasSubstr("signal 9"), "+"));
}

TEST(ManyConversions, RunAtMostSoManyAtATime) {
    const TemporaryDirectory directory;
    for (const std::size_t jobs : {1u, 3u}) {
        const auto reports = reports_of(9, static_cast<int>(jobs), [&](std::size_t number) {
            put_file(directory / std::to_string(number), {});
            ::usleep(5'000);
            const std::size_t running = directory.names().size();
            std::filesystem::remove(directory / std::to_string(number));
            return ConvertOutcome{.done = running <= jobs};
        });
        EXPECT_THAT(reports, Each(StartsWith("+"))) << jobs;
    }
}

TEST(ManyConversions, LongWordsArriveWhole) {
    const auto reports =
        reports_of(2, 2, [](std::size_t) { return ConvertOutcome{.done = true, .text = std::string(200'000, 'x')}; });
    EXPECT_THAT(reports, ElementsAre(SizeIs(200'001), SizeIs(200'001)));
}
