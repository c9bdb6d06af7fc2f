// Undo, and unsaved work that no end of the program loses, in a real window.
#include "formats/project_file.h"
#include "model/parameters.h"
#include "program/program_test.h"
#include "support/temporary_directory.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t hovered_value = 0xFF00FA00, edit_ground = 0xFF280A14;
constexpr int brakes_y = 134, value_x = 121;
constexpr int brakes_offset = 4;
constexpr double most_seconds_lost = 6;

double now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

// Some in every run of the tests; KAROSMIT_WINDOW_KILLS asks for more.
int kills() {
    const char* const asked = std::getenv("KAROSMIT_WINDOW_KILLS");
    return asked ? std::atoi(asked) : 2;
}

class UndoAndRecovery : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        for (const auto& entry : std::filesystem::directory_iterator(KAROSMIT_GARAGE))
            std::filesystem::copy_file(entry.path(), folder / entry.path().filename());
        start();
    }

    void go_to(int cell, const std::string& title) {
        window->click(cell * 48 + 24, 620);
        ASSERT_TRUE(screen_becomes(title));
    }
    void go_to_files() { go_to(0, "= FILES ="); }
    void go_to_parameters() { go_to(3, "= PHYSICAL PARAMETERS ="); }

    // On Physical parameters. True once the screen shows the new value.
    bool type_brakes(const std::string& digits) {
        window->click(29, brakes_y + 8);
        if (!window->wait_for_pixel(value_x - 7, brakes_y + 1, edit_ground)) return false;
        for (int k = 0; k < 5; ++k)
            window->key("BackSpace");
        window->type(digits);
        window->key("Return");
        return window->wait_for_text(value_x, brakes_y, digits + " ", hovered_value);
    }
    void undo() { window->key("z", {"Control_L"}); }
    // On the Files screen.
    void put_name(const std::string& name) {
        window->key("End");
        for (int k = 0; k < 8; ++k)
            window->key("BackSpace");
        window->type(name);
        ASSERT_TRUE(file_field_becomes(name));
    }
    void transfer(const std::string& key, const std::string& name, const std::string& word) {
        put_name(name);
        window->key(key, {"Control_L"});
        ASSERT_TRUE(window->wait_for_text(650, 150, word + " " + name, colour::success));
    }
    void load(const std::string& name) { transfer("l", name, "Loaded"); }
    void save(const std::string& name) { transfer("s", name, "Saved"); }

    Bytes parameters_of(const std::string& car) const { return get_file((folder / ("car" + car + ".res")).string()); }
    int saved_brakes(const std::string& car) const {
        constexpr std::size_t parameters_at = 38; // of the file, after the archive's tables
        return std::to_integer<int>(parameters_of(car).at(parameters_at + brakes_offset)) +
               256 * std::to_integer<int>(parameters_of(car).at(parameters_at + brakes_offset + 1));
    }
    std::vector<std::filesystem::path> kept_projects() const {
        std::vector<std::filesystem::path> found;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(state_folder / "karosmit", none))
            if (entry.path().extension() == ".car") found.push_back(entry.path());
        return found;
    }
    // -1 when no work is kept, or more than one.
    int kept_brakes() const {
        if (kept_projects().size() != 1) return -1;
        const Bytes content = get_file(kept_projects().front().string());
        ProjectFile project;
        decode_project_file(content, project);
        EXPECT_EQ(encode_project_file(project), content) << "the kept work is whole";
        return word_of(project.par, brakes_offset);
    }
    void forget_kept_work() const { std::filesystem::remove_all(state_folder); }
};

} // namespace

TEST_F(UndoAndRecovery, WhoLoadsOverUnsavedEditsGetsThemBackAndSavesThem) {
    go_to_parameters();
    ASSERT_TRUE(type_brakes("777"));
    go_to_files();
    load("brux");
    undo();
    EXPECT_TRUE(window->wait_for_text(208, 616, "Undone: load of brux", colour::title));
    EXPECT_TRUE(wait_until([&] { return window->title() == "Karosmit 1.0.4"; }));
    save("mine");
    EXPECT_EQ(saved_brakes("mine"), 777);
}

TEST_F(UndoAndRecovery, AStrokeADragARunOfArrowsAndATypedValueAreOneStepEach) {
    save("aaaa");
    go_to_parameters();
    ASSERT_TRUE(type_brakes("777"));
    window->drag({{100, 400}, {140, 380}, {200, 300}, {260, 420}});
    window->drag({{131, 530}, {160, 530}, {200, 530}});
    for (int k = 0; k < 5; ++k)
        window->key("Up");
    for (int k = 0; k < 3; ++k)
        undo();
    go_to_files();
    save("bbbb");
    EXPECT_EQ(saved_brakes("bbbb"), 777) << "the typed value is the first step";
    undo();
    save("cccc");
    EXPECT_EQ(parameters_of("cccc"), parameters_of("aaaa"));
    undo();
    EXPECT_TRUE(window->wait_for_text(208, 616, "Nothing to undo", colour::title));
}

TEST_F(UndoAndRecovery, EveryEndKeepsUnsavedWork) {
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"Escape", [&] { window->key("Escape"); }},
        {"the close button", [&] { window->ask_to_close(); }},
        {"SIGTERM", [&] { program->send_signal(SIGTERM); }},
        {"SIGHUP", [&] { program->send_signal(SIGHUP); }},
    };
    int value = 100;
    for (const auto& [name, end] : ends) {
        if (value > 100) start();
        go_to_parameters();
        // The first is kept at once, the second only by the end: five seconds are not over.
        ASSERT_TRUE(type_brakes(std::to_string(++value)));
        ASSERT_TRUE(wait_until([&] { return kept_brakes() == value; })) << name;
        ASSERT_TRUE(type_brakes(std::to_string(++value)));
        end();
        EXPECT_EQ(program->wait_for_end(), 0) << name;
        EXPECT_EQ(kept_brakes(), value) << name;
        forget_kept_work();
    }
}

TEST_F(UndoAndRecovery, ALostDisplayKeepsUnsavedWork) {
    VirtualDisplay lost;
    start_with({{"DISPLAY", lost.name()},
                {"WAYLAND_DISPLAY", ""},
                {"SDL_VIDEODRIVER", ""},
                {"HOME", folder.string()},
                {"XDG_STATE_HOME", state_folder.string()}});
    window = std::make_unique<RealWindow>(lost.name());
    ASSERT_TRUE(window->find("karosmit"));
    ASSERT_TRUE(screen_becomes("= FILES ="));
    go_to_parameters();
    ASSERT_TRUE(type_brakes("101"));
    ASSERT_TRUE(type_brakes("102"));
    window.reset();
    lost.end();
    EXPECT_TRUE(wait_until([&] { return program->wait_for_end(Milliseconds{0}).has_value(); }));
    EXPECT_EQ(kept_brakes(), 102);
}

TEST_F(UndoAndRecovery, KeptWorkIsTheFirstRowOfTheNextStartAndGoesWhenItIsSaved) {
    go_to_parameters();
    ASSERT_TRUE(type_brakes("777"));
    program->send_signal(SIGKILL); // perhaps before anything was written, then at the next end
    program->wait_for_end();
    if (kept_projects().empty()) {
        start();
        go_to_parameters();
        ASSERT_TRUE(type_brakes("777"));
        window->key("Escape");
        program->wait_for_end();
    }
    start();
    constexpr std::uint32_t directory_colour = 0xFF00FA00, hovered_directory = 0xFFC8FAC8;
    ASSERT_TRUE(window->wait_for_text(50, 130, "[ - Unsaved: New car, ", directory_colour));
    window->move(120, 138);
    ASSERT_TRUE(window->wait_for_text(50, 130, "[ - Unsaved: New car, ", hovered_directory));
    window->click(120, 138);
    ASSERT_TRUE(window->wait_for_text(650, 150, "Loaded New car", colour::success));
    save("mine");
    EXPECT_EQ(saved_brakes("mine"), 777);
    // The auxiliary models of the kept work are empty, so that the four files hold all of it.
    EXPECT_TRUE(wait_until([&] { return kept_projects().empty(); }));
    EXPECT_TRUE(window->wait_for_text(50, 130, "[..] ", hovered_directory)) << "the row goes with the work";
}

TEST_F(UndoAndRecovery, WithUnsavedWorkKeptAnUntouchedProgramDoesNotWakeUp) {
    go_to_parameters();
    ASSERT_TRUE(type_brakes("777"));
    ASSERT_TRUE(wait_until([&] { return kept_brakes() == 777; }));
    std::this_thread::sleep_for(Milliseconds{1000});
    const long sleeps = program->sleeps();
    std::this_thread::sleep_for(Milliseconds{6000});
    EXPECT_EQ(program->sleeps(), sleeps);
}

TEST_F(UndoAndRecovery, AKilledProgramLosesNoFinishedEditOlderThanSixSeconds) {
    std::mt19937 random(20240613);
    int edits = 0, missing = 0;
    for (int kill = 0; kill < kills(); ++kill) {
        if (kill > 0) start();
        go_to_parameters();
        const double end = now() + std::uniform_real_distribution<double>(0.3, 10)(random);
        std::vector<double> finished;
        while (now() < end) {
            ASSERT_TRUE(type_brakes(std::to_string(finished.size() + 1)));
            finished.push_back(now());
            if (random() % 8 == 0) std::this_thread::sleep_for(Milliseconds{random() % 1500});
        }
        const double killed_at = now();
        program->send_signal(SIGKILL);
        program->wait_for_end();
        const auto old_enough =
            std::ranges::count_if(finished, [&](double moment) { return moment < killed_at - most_seconds_lost; });
        EXPECT_GE(std::max(0, kept_brakes()), old_enough) << "kill " << kill;
        EXPECT_LE(kept_projects().size(), 1u);
        edits += static_cast<int>(finished.size());
        missing = std::max(missing, static_cast<int>(finished.size()) - std::max(0, kept_brakes()));
        forget_kept_work();
    }
    std::cout << "[ MEASURED ] " << kills() << " kills, " << edits << " edits; at most " << missing
              << " of the last seconds missing\n";
}

TEST_F(UndoAndRecovery, WithoutAHomeItWorksAndSaysOnceThatNothingIsKept) {
    start({{"HOME", ""}, {"XDG_STATE_HOME", ""}});
    go_to_parameters();
    ASSERT_TRUE(type_brakes("777"));
    window->move(400, 20);
    EXPECT_TRUE(window->wait_for_text(208, 616, "Unsaved work is not kept: no home folder", colour::title));
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);
}
