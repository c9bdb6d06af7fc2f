#include "base/table.h"

#include <gtest/gtest.h>

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
