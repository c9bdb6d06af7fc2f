#include "widgets/undo_keys.h"

#include <gtest/gtest.h>

namespace {

TEST(UndoKeys, ShiftMakesUndoRedo) {
    Input input;
    input.key = key::undo;
    EXPECT_EQ(with_one_redo_key(input), key::undo);
    input.qualifiers.shift_right = true;
    EXPECT_EQ(with_one_redo_key(input), key::redo);
    input.key = "z";
    EXPECT_EQ(with_one_redo_key(input), "z");
}

TEST(TypedStep, PutsTheStartBackAndBringsTheTypedTextAgain) {
    std::string text = "start";
    TypedStep<std::string> step(text);
    EXPECT_FALSE(step.take_back(text));
    EXPECT_FALSE(step.bring_again(text));
    text = "typed";
    EXPECT_TRUE(step.take_back(text));
    EXPECT_EQ(text, "start");
    EXPECT_FALSE(step.take_back(text));
    EXPECT_TRUE(step.bring_again(text));
    EXPECT_EQ(text, "typed");
    EXPECT_FALSE(step.bring_again(text));
}

TEST(TypedStep, WhatWasTakenBackIsGoneOnceSomethingElseIsTyped) {
    std::string text = "start";
    TypedStep<std::string> step(text);
    text = "typed";
    step.take_back(text);
    text = "other";
    step.typed();
    EXPECT_FALSE(step.bring_again(text));
    EXPECT_EQ(text, "other");
}

} // namespace
