#include "base/table.h"

#include "base/reset.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace {

void say_rescued() { std::fputs("rescued\n", stderr); }

// Comes upon a wrong index itself.
void fail_in_rescue() {
    OneBased<int, 2> table;
    say_rescued();
    table[7] = 1;
}

} // namespace

TEST(Table, IsNumberedFromItsFirstIndex) {
    OneBased<int, 3> table;
    table[1] = 10;
    table[3] = 30;
    EXPECT_EQ(*table.begin(), 10);
    EXPECT_EQ(*(table.end() - 1), 30);
    EXPECT_EQ(table.end() - table.begin(), 3);
    EXPECT_EQ(table[2], 0);
}

TEST(Table, MayHaveAnEntryZero) {
    Table<int, 0, 100> table;
    table[0] = 1;
    table[100] = 2;
    EXPECT_EQ(table.end() - table.begin(), 101);
    const auto& unchanging = table;
    EXPECT_EQ(unchanging[100], 2);
}

TEST(TableDeathTest, RefusesEveryIndexOutside) {
    OneBased<int, 3> table;
    EXPECT_DEATH(table[0] = 1, "table index 0 outside 1..3");
    EXPECT_DEATH(table[4] = 1, "table index 4 outside 1..3");
    EXPECT_DEATH(table[-1] = 1, "table index -1 outside 1..3");
}

TEST(TableDeathTest, TheRescueHasItsChanceAfterTheLine) {
    OneBased<int, 3> table;
    set_rescue(say_rescued);
    EXPECT_DEATH(table[4] = 1, "table index 4 outside 1..3\nrescued\n$");
    set_rescue(nullptr);
    EXPECT_DEATH(table[4] = 1, "table index 4 outside 1..3\n$");
}

TEST(TableDeathTest, ARescueThatFailsDoesNotBeginAgain) {
    OneBased<int, 3> table;
    set_rescue(fail_in_rescue);
    EXPECT_DEATH(table[4] = 1, "index 4 outside 1..3\nrescued\nkarosmit: table index 7 outside 1..2\n$");
    reset_program();
    EXPECT_DEATH(table[4] = 1, "outside 1..3\n$") << "no rescue is left";
}
