// The 3D editor, played by script.
#pragma once

#include "base/config.h"
#include "editor3d/editor_screen.h"
#include "editor3d/views.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/parameters.h"
#include "support/models.h"
#include "support/play.h"
#include "support/temporary_directory.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

#include <array>
#include <set>
#include <string>
#include <utility>
#include <vector>

constexpr int top_view = 1, front_view = 2, side_view = 3;
constexpr int panel = 5; // among the parts of the screen, beside the views

inline ScriptStep control(Key letter) { return key_press(letter, {.control = true}); }

class EditorTest : public ScriptedTest {
protected:
    TemporaryDirectory directory;

    void SetUp() override {
        ScriptedTest::SetUp();
        INIT3DWINDOWS();
        CURMENU = screen_number::editor_3d;
        before_ = current_directory();
        change_directory(directory.path());
        for (std::size_t i = 0; i < MATERIAL.size(); ++i)
            MATERIAL[i].colour = 0xFF000100U | static_cast<std::uint32_t>(i);
        for (auto& slot : CAR)
            slot = car_with_a_face();
    }
    void TearDown() override {
        change_directory(before_);
        ScriptedTest::TearDown();
    }

    // Wheels and a face that looks at the eye, material 60.
    static SHAPEMODEL car_with_a_face() {
        SHAPEMODEL model = model_with_wheels();
        add_triangle(model, {{{-1, 0, 0.2}, {1, 0, 0.2}, {0, 0, 1.2}}}, 60);
        return model;
    }

    // A place inside a view, away from everything that is drawn in it.
    static std::pair<int, int> inside(int view) { return {W3D[view].left + 20, W3D[view].top + 20}; }
    static ScriptStep over(int view) {
        if (view == 0) return mouse_at(5, 595);
        return mouse_at(inside(view).first, inside(view).second);
    }

    // The screen's loop, left by the close request.
    void play_editor(std::vector<ScriptStep> steps) {
        CURMENU = screen_number::editor_3d;
        steps.push_back(close_window());
        play(std::move(steps), EDIT3D);
        EXPECT_EQ(CURMENU, screen_number::quit);
    }

    // Which parts of the screen a step draws anew: views 1 to 4, the panel, 0 for the whole work area.
    std::set<int> redrawn_by(std::vector<ScriptStep> before, const ScriptStep& step) {
        std::set<int> parts;
        before.push_back(look(spoil_all_parts));
        before.push_back(step);
        before.push_back(look([&parts] { parts = whole_parts(); }));
        play_editor(std::move(before));
        return parts;
    }

    static const SHAPEMODEL& model() { return *shown_slot(); }
    static const SHAPEMODEL& model(int slot) { return *CAR[static_cast<std::size_t>(slot)]; }

private:
    static constexpr std::uint32_t spoilt = 0xFF123456;

    static std::vector<std::pair<int, int>> places() {
        std::vector<std::pair<int, int>> all{{5, 580}};
        for (int view = 1; view <= views; ++view)
            all.emplace_back(W3D[view].right - 5, W3D[view].bottom - 5);
        all.emplace_back(928, 70);
        return all;
    }
    static void spoil_all_parts() {
        for (const auto& [x, y] : places())
            draw_pixel(screen(), x, y, spoilt);
    }
    static std::set<int> whole_parts() {
        std::set<int> parts;
        for (std::size_t i = 0; i < places().size(); ++i)
            if (drawn(places()[i].first, places()[i].second) != Pixel{spoilt}) parts.insert(static_cast<int>(i));
        return parts;
    }

    std::string before_;
};
