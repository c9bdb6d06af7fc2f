#include "base/shared.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using Block = Shared<std::vector<int>>;

TEST(SharedBlock, IsSharedByItsCopiesUntilOneIsChanged) {
    Block first(std::vector<int>{1, 2, 3});
    Block second = first;
    EXPECT_TRUE(second.is(first));
    second.edit()[0] = 9;
    EXPECT_FALSE(second.is(first));
    EXPECT_EQ(*first, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(*second, (std::vector<int>{9, 2, 3}));
}

TEST(SharedBlock, ThatIsNotSharedIsChangedInPlace) {
    Block block(std::vector<int>{1});
    const std::vector<int>* before = &*block;
    block.edit()[0] = 2;
    EXPECT_EQ(&*block, before);
}

TEST(SharedBlock, IsEqualByContent) {
    EXPECT_EQ(Block(std::vector<int>{1}), Block(std::vector<int>{1}));
    EXPECT_NE(Block(std::vector<int>{1}), Block(std::vector<int>{2}));
}

TEST(SharedBlock, FreshOnesAreOneBlockThatNoChangeReaches) {
    Block first, second;
    EXPECT_TRUE(first.is(second));
    first.edit().push_back(1);
    EXPECT_TRUE(second->empty());
    EXPECT_TRUE(Block()->empty());
}

TEST(SharedBlock, SetToWhatItHoldsStaysTheSameBlock) {
    Block first(std::vector<int>{1, 2});
    const Block second = first;
    first.set({1, 2});
    EXPECT_TRUE(first.is(second));
    first.set({3});
    EXPECT_FALSE(first.is(second));
    EXPECT_EQ(*first, std::vector<int>{3});
}

} // namespace
