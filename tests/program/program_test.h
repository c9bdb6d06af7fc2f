// A test of the whole program: on a display of its own, in an empty folder of its own.
#pragma once

#include "program/real_window.h"
#include "program/virtual_display.h"
#include "widgets/widgets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ProgramTest : public testing::Test {
protected:
    // One X server serves all tests of this program.
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    // Starts the editor, with further environment variables, and waits for the Files screen. Throws when none appears.
    void start(const std::map<std::string, std::string>& environment = {},
               const std::vector<std::string>& arguments = {});
    // Starts it with other environment variables; does not wait.
    void start_with(const std::map<std::string, std::string>& environment,
                    const std::vector<std::string>& arguments = {});

    // In the File field of the Files screen.
    bool file_field_becomes(const std::string& text) const;
    bool screen_becomes(const std::string& title) const { return window->wait_for_text(16, 16, title, colour::title); }
    // A file in the folder.
    void make_file(const std::string& name, const std::string& content) const;

    static std::unique_ptr<VirtualDisplay> display;
    std::filesystem::path folder, state_folder;
    std::unique_ptr<StartedProgram> program;
    std::unique_ptr<RealWindow> window;

private:
    void expect_no_finding() const;
};

// Stops the program while it exists: what is typed and clicked meanwhile arrives at a program that was busy.
class Busy {
public:
    explicit Busy(const StartedProgram& program);
    ~Busy();
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    const StartedProgram& program_;
};
