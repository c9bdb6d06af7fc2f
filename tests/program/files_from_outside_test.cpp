// Files that come from outside: dropped on the real window, or named in the command line.
#include "program/program_test.h"

#include "support/text_file.h"

namespace {

class FilesFromOutside : public ProgramTest {
protected:
    std::filesystem::path cars() const { return folder / "cars of mine"; }

    void SetUp() override {
        ProgramTest::SetUp();
        std::filesystem::create_directory(cars());
        for (const auto& entry : std::filesystem::directory_iterator(KAROSMIT_GARAGE))
            std::filesystem::copy_file(entry.path(), cars() / entry.path().filename());
    }
    bool car_is_loaded(const std::string& identifier) const {
        return screen_becomes("= FILES =") &&
               window->wait_for_text(650, 150, "Loaded " + identifier, colour::success) &&
               file_field_becomes(identifier);
    }
    bool directory_becomes(const std::string& path) const {
        return window->wait_for_text(90, 60, path.substr(0, 63), colour::value);
    }
    // Without any display.
    int run_to_the_end(const std::vector<std::string>& arguments) {
        start_with({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", ""}}, arguments);
        return program->wait_for_end().value_or(-1);
    }
};

} // namespace

TEST_F(FilesFromOutside, ACarIsDroppedOnEveryScreen) {
    start();
    for (const auto& [cell, title, car] : {std::tuple{0, "= FILES =", "brux"},
                                           {1, "= 3D EDITOR =", "tarn"},
                                           {2, "= DASH MANAGER =", "vela"},
                                           {3, "= PHYSICAL PARAMETERS =", "brux"}}) {
        window->click(cell * 48 + 24, 620);
        ASSERT_TRUE(screen_becomes(title));
        ASSERT_TRUE(window->drop(cars() / ("car" + std::string(car) + ".res")));
        EXPECT_TRUE(car_is_loaded(car)) << title;
        EXPECT_TRUE(directory_becomes(cars()));
    }
}

TEST_F(FilesFromOutside, ADirectoryIsEntered) {
    start();
    ASSERT_TRUE(window->drop(cars()));
    EXPECT_TRUE(directory_becomes(cars()));
    EXPECT_TRUE(window->wait_for_text(50, 130 + 16, "Haldmark Brux 3.0 E (BRUX)", colour::label));
}

TEST_F(FilesFromOutside, ADropCancelsWhatIsTyped) {
    start();
    window->click(3 * 48 + 24, 620);
    ASSERT_TRUE(screen_becomes("= PHYSICAL PARAMETERS ="));
    window->click(30, 110); // the mass, 20
    window->type("7");
    ASSERT_TRUE(window->wait_for_text(121, 102, "207", 0xFF64FF64));
    ASSERT_TRUE(window->drop(cars()));
    ASSERT_TRUE(directory_becomes(cars()));
    window->click(3 * 48 + 24, 620);
    EXPECT_TRUE(window->wait_for_text(121, 102, "20 ", colour::value));
}

TEST_F(FilesFromOutside, APictureIsImportedAsTheSelectedItem) {
    start();
    window->click(2 * 48 + 24, 620);
    ASSERT_TRUE(screen_becomes("= DASH MANAGER ="));
    window->key("Tab");
    window->key("Next");
    window->type("t");
    EXPECT_TRUE(window->wait_for_text(208, 616, "Dithering of imported pictures: ordered", colour::title));
    ASSERT_TRUE(window->drop(cars() / "badge.png"));
    EXPECT_TRUE(window->wait_for_text(824, 422, "dast/dasm", colour::value));
    EXPECT_TRUE(wait_until([&] {
        return window->shows_text(208, 616, "Imported dast from badge.png", colour::title) ||
               window->shows_text(208, 608, "Imported dast from badge.png", colour::title);
    }));
}

TEST_F(FilesFromOutside, TheCommandLineNamesAFileOrADirectory) {
    start({}, {(cars() / "cartarn.res").string()});
    EXPECT_TRUE(car_is_loaded("tarn"));
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);

    start({}, {"cars of mine"});
    EXPECT_TRUE(directory_becomes(cars()));
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);

    const std::string name = std::string(150, 'n') + ".res";
    std::filesystem::copy_file(cars() / "carvela.res", cars() / name);
    start({}, {"cars of mine/" + name});
    EXPECT_TRUE(wait_until([&] { return window->title().find("Vela") != std::string::npos; })) << window->title();
}

TEST_F(FilesFromOutside, HelpAndVersionNeedNoDisplay) {
    EXPECT_EQ(run_to_the_end({"--version"}), 0);
    EXPECT_EQ(program->output(), "Karosmit 1.0.4\n");
    EXPECT_EQ(program->error_output(), "");
    EXPECT_EQ(run_to_the_end({"--help"}), 0);
    EXPECT_THAT(program->output(), testing::HasSubstr("[FILE | DIRECTORY]"));
    EXPECT_EQ(run_to_the_end({}), 1) << "a window does";
}

TEST_F(FilesFromOutside, UnknownOptionsAreOneLineAndStatusTwo) {
    for (const char* option : {"--verbose", "-x"}) {
        EXPECT_EQ(run_to_the_end({option}), 2);
        EXPECT_EQ(program->output(), "");
        const std::string told = program->error_output();
        EXPECT_EQ(std::ranges::count(told, '\n'), 1) << told;
        EXPECT_THAT(told, testing::HasSubstr(option));
    }
}
