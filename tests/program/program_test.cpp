#include "program/program_test.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

std::unique_ptr<VirtualDisplay> ProgramTest::display;

void ProgramTest::SetUpTestSuite() { display = std::make_unique<VirtualDisplay>(); }

void ProgramTest::TearDownTestSuite() { display.reset(); }

void ProgramTest::SetUp() {
    ASSERT_NE(display->name(), "") << "Xvfb did not start";
    std::string pattern = (std::filesystem::temp_directory_path() / "karosmit-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder = pattern;
    state_folder = pattern + "-state"; // beside it, so that no list shows it
}

// A checker that runs the program writes what it finds, also of one that is killed in the end.
void ProgramTest::expect_no_finding() const {
    if (!program || !std::getenv("KAROSMIT_RUN_BY")) return;
    EXPECT_THAT(program->error_output(), testing::Not(testing::HasSubstr("== ")));
}

void ProgramTest::TearDown() {
    expect_no_finding();
    if (HasFailure() && window) {
        const std::string picture =
            std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + ".failed.ppm";
        window->save_picture(picture);
    }
    window.reset();
    program.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    std::filesystem::remove_all(state_folder, ignored);
}

void ProgramTest::start_with(const std::map<std::string, std::string>& environment,
                             const std::vector<std::string>& arguments) {
    expect_no_finding();
    program = std::make_unique<StartedProgram>(KAROSMIT_PROGRAM, folder.string(), environment, arguments);
}

void ProgramTest::start(const std::map<std::string, std::string>& environment,
                        const std::vector<std::string>& arguments) {
    std::map<std::string, std::string> whole = {{"DISPLAY", display->name()},
                                                {"WAYLAND_DISPLAY", ""},
                                                {"SDL_VIDEODRIVER", ""},
                                                {"XMODIFIERS", ""},
                                                {"XCOMPOSEFILE", ""},
                                                {"HOME", folder.string()},
                                                {"XDG_STATE_HOME", state_folder.string()}};
    for (const auto& [name, value] : environment)
        whole[name] = value;
    start_with(whole, arguments);
    window = std::make_unique<RealWindow>(display->name());
    if (!window->find("karosmit")) throw std::runtime_error("no window appeared: " + program->error_output());
    if (!screen_becomes("= FILES =")) throw std::runtime_error("no Files screen appeared");
}

bool ProgramTest::file_field_becomes(const std::string& text) const {
    constexpr int x = 90, y = 76;
    constexpr std::uint32_t value = colour::value;
    return wait_until([&] {
        // The cell behind the text is empty but for the caret, which has another colour.
        return window->shows_text(x, y, text + " ", value);
    });
}

void ProgramTest::make_file(const std::string& name, const std::string& content) const {
    std::ofstream(folder / name, std::ios::binary) << content;
}

Busy::Busy(const StartedProgram& program) : program_(program) { program.send_signal(SIGSTOP); }

Busy::~Busy() { program_.send_signal(SIGCONT); }
