// Playing screens by script, and looking at what they drew.
#pragma once

#include "window/backend.h"
#include "window/input.h"
#include "window/scripted_backend.h"
#include "window/window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <iomanip>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

// A colour or raw pixel, printed as people write it.
struct Pixel {
    std::uint32_t value = 0;
    bool operator==(const Pixel&) const = default;
};
inline void PrintTo(const Pixel& pixel, std::ostream* out) {
    *out << "0x" << std::hex << std::uppercase << std::setw(8) << std::setfill('0') << pixel.value;
}

// A test with a scripted window in use.
class ScriptedTest : public testing::Test {
protected:
    ScriptedBackend window;

    void SetUp() override {
        use_backend(&window);
        std::string error;
        ASSERT_TRUE(open_screen(error)) << error;
    }
    void TearDown() override { use_backend(nullptr); }

    // Runs a screen until it returns. The script must end it: a close request that was needed beyond the script's end
    // is a failure.
    void play(std::vector<ScriptStep> steps, const std::function<void()>& run) {
        play_to_the_end(std::move(steps), run);
        EXPECT_EQ(window.overrun(), 0) << "the screen went on after the script's last step";
    }
    // The same for a script that leaves the ending to the close requests that follow it.
    void play_to_the_end(std::vector<ScriptStep> steps, const std::function<void()>& run) {
        window.play(std::move(steps));
        run();
        EXPECT_TRUE(window.finished()) << "the screen ended before the script did";
    }

    // The next key, past what the mouse does; "" when nothing is left to read.
    static std::string next_key() {
        for (;;) {
            const Input input = read_input();
            if (!input.key.empty() || !input.mouse_changed()) return input.key;
        }
    }

    // What was drawn, and what the person sees of it.
    static Pixel drawn(int x, int y) { return {screen().image().pixel(x, y)}; }
    Pixel shown(int x, int y) const { return {window.shown_pixel(x, y)}; }
};

// One after the other, for scripts put together from parts.
inline std::vector<ScriptStep> operator+(std::vector<ScriptStep> first, const std::vector<ScriptStep>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// A press, positions with the button down, and the release at the last one: everything in a step of its own.
inline std::vector<ScriptStep> drag(const std::vector<std::pair<int, int>>& path, int button = 1) {
    std::vector<ScriptStep> steps{mouse_at(path.front().first, path.front().second),
                                  press(path.front().first, path.front().second, button)};
    for (const auto& [x, y] : path)
        steps.push_back(mouse_at(x, y));
    steps.push_back(release(path.back().first, path.back().second, button));
    return steps;
}

// The steps' events in one step: everything has happened before the program looks.
inline ScriptStep at_once(const std::vector<ScriptStep>& steps) {
    ScriptStep all;
    for (const ScriptStep& step : steps)
        all.events.insert(all.events.end(), step.events.begin(), step.events.end());
    return all;
}

// Whether the text stands on the image at this place: its glyph pixels in the colour, no other pixel of its cells.
inline bool shows_text(const Image& image, int x, int y, const std::string& text, std::uint32_t colour) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint8_t* rows = glyph_rows(static_cast<unsigned char>(text[i]));
        for (int row = 0; row < glyph_height; ++row)
            for (int column = 0; column < glyph_width; ++column) {
                const bool ink = (rows[row] >> (7 - column) & 1) != 0;
                const int at = x + static_cast<int>(i) * glyph_width + column;
                if (ink != (image.pixel(at, y + row) == colour)) return false;
            }
    }
    return true;
}
inline bool screen_shows(int x, int y, const std::string& text, std::uint32_t colour) {
    return shows_text(screen().image(), x, y, text, colour);
}
