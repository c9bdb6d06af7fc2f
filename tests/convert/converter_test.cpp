// The converter as a person calls it: lines, exit status.
#include "convert_test.h"
#include "support/child_process.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <sys/wait.h>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

struct Ended {
    int status = 0;
    std::string said{}, complained{};
};

class Converter : public testing::Test {
protected:
    Converter() : inside_(directory.path()) {}

    // Runs the converter in the test's directory.
    Ended run(const std::string& arguments) { return run_command(std::string(KAROSMIT_CONVERTER) + " " + arguments); }

    Ended run_command(const std::string& command) {
        const int status = std::system((command + " >out 2>err").c_str());
        Ended ended{WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_text("out"), read_text("err")};
        std::filesystem::remove("out");
        std::filesystem::remove("err");
        return ended;
    }

    TemporaryDirectory directory;

private:
    CurrentDirectory inside_;
};

} // namespace

TEST_F(Converter, PrintsALineAFileAndGoesOnBehindOneThatFails) {
    write_text("bad.res", "no");
    const Ended ended = run("--jobs 2 " + sample_folder + "carbrux.res bad.res " + sample_folder + "carvela.res texts");
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.complained, "bad.res: No car data in it\n");
    EXPECT_EQ(ended.said, sample_folder + "carbrux.res -> texts/carbrux.txt\n" + sample_folder +
                              "carvela.res -> texts/carvela.txt\n");
    EXPECT_TRUE(std::filesystem::exists("texts/carvela.txt"));
}

TEST_F(Converter, HasItsColoursFromBesideTheProgram) {
    EXPECT_EQ(run(sample_folder + "stdabrux.vsh a/").status, 0);
    EXPECT_EQ(run("a/ b.vsh").status, 0);
    EXPECT_EQ(get_file("b.vsh"), get_file(sample_folder + "stdabrux.vsh"));
}

TEST_F(Converter, HasItsColoursWhenItIsFoundInTheSearchPath) {
    const std::filesystem::path program = KAROSMIT_CONVERTER;
    const std::string call = "PATH=" + program.parent_path().string() + ":$PATH " + program.filename().string();
    const Ended ended = run_command(call + " " + sample_folder + "stdabrux.vsh a/");
    EXPECT_EQ(ended.status, 0) << ended.complained;
}

TEST_F(Converter, EndsWithTwoWhenItDoesNotUnderstand) {
    const Ended ended = run("--colour a b");
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.said, IsEmpty());
    EXPECT_THAT(ended.complained, StartsWith("karosmit-convert: unknown option --colour"));
    EXPECT_EQ(run("").status, 2);
}

TEST_F(Converter, HelpsAndSaysItsVersion) {
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_THAT(run("--help").said, HasSubstr("Examples:"));
    EXPECT_THAT(run("--version").said, StartsWith("Karosmit "));
}

TEST_F(Converter, ChecksCars) {
    const Ended ended = run("--check " + sample_folder + "brux " + sample_folder + "tarn none.car");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.said, HasSubstr("brux: nothing found\n"));
    EXPECT_EQ(ended.complained, "none.car: File not found\n");
}
