// The keys of undo and redo, the same wherever something can be taken back: Ctrl+Z takes back, Ctrl+Y and Ctrl+Shift+Z
// bring again.
#pragma once

#include "window/input.h"

#include <optional>
#include <string>
#include <utility>

namespace key {
inline constexpr const char *undo = ctrl<'Z'>, *redo = ctrl<'Y'>;
inline constexpr const char *undo_label = "Ctrl+Z", *redo_label = "Ctrl+Y, Ctrl+Shift+Z";
} // namespace key

// The key of an input, with key::redo for both ways to bring something again.
std::string with_one_redo_key(const Input& input);

// What was typed in place since it began, as one step.
template <class Text>
class TypedStep {
public:
    explicit TypedStep(Text start) : start_(std::move(start)) {}

    // The text as it was when typing began, and the typed one again. False when that is no change.
    bool take_back(Text& text) {
        if (text == start_) return false;
        typed_ = std::exchange(text, start_);
        return true;
    }
    bool bring_again(Text& text) {
        if (!typed_) return false;
        text = *std::exchange(typed_, std::nullopt);
        return true;
    }
    // Something else was typed: what was taken back is gone.
    void typed() { typed_.reset(); }

private:
    Text start_;
    std::optional<Text> typed_;
};
