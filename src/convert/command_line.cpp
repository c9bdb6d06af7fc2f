#include "convert/command_line.h"

#include "convert/refusal.h"
#include "model/shape.h"

#include <charconv>
#include <cstddef>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

const std::string_view usage_text =
    R"(karosmit-convert SOURCE TARGET
karosmit-convert [OPTION...] SOURCE... FOLDER
karosmit-convert --check CAR...

Converts car files without a display. What each is follows from its name:

  FOLDER/abcd   the four files of the car abcd      x.car  a project
  x.vsh         dashboard bitmaps                   x/     a folder of pictures with layout.txt
  x.3sh         models                              x.obj  the body of one model
  x.res         parameters                          x.txt  parameters as a text
  x.tga  x.png  x.bmp  pictures

Four files and project, .vsh and folder, .res and .txt become each other, and so do pictures. A .3sh or .car gives an
OBJ with its materials (.mtl) beside it; an OBJ goes into a model of a .3sh or .car that is there (with --force).

  --to KIND        into FOLDER as this kind: files car vsh folder 3sh obj res txt tga png bmp
                   (without it: files and car, vsh and folder, res and txt, tga and png change over; 3sh to obj, bmp
                   to png)
  --model N        of a car: 0 showroom (if nothing is said), 1 game, 2 intro; in projects also 3 and 4, auxiliary
  --paint-job N    whose materials an OBJ has, counted from 1
  --force          replace targets that are there
  --check          say what the game or the files will not take of each car, and what looks forgotten
  --jobs N         so many processes at a time, not two a core
  --help           this text
  --version        the program's version

Examples:

  karosmit-convert cars/brux brux.car           four files into a project
  karosmit-convert brux.car new/abcd            a project into the four files of abcd
  karosmit-convert stdabrux.vsh brux/           bitmaps into PNG files; edit them, then
  karosmit-convert --force brux/ stdabrux.vsh   back again
  karosmit-convert --model 1 brux.car body.obj  the model of the game for a modelling tool
  karosmit-convert --to txt *.res texts/        many at once, a line for each

Exit status: 0 all done; 1 a file failed or a check found something serious, the others are done; 2 the command line
cannot be understood.
)";

namespace {

[[noreturn]] void refuse(const std::string& why) { throw UsageError{why}; }

class ArgumentReader {
public:
    explicit ArgumentReader(std::span<const char* const> arguments) : rest_(arguments) {}

    CommandLine read() {
        while (!rest_.empty())
            take(next());
        if (line_.action == CommandLine::Action::convert) take_target();
        if (line_.action == CommandLine::Action::convert || line_.action == CommandLine::Action::check) take_sources();
        return std::move(line_);
    }

private:
    std::string next() {
        std::string argument = rest_.front();
        rest_ = rest_.subspan(1);
        return argument;
    }

    void take(const std::string& argument) {
        if (only_names_ || !argument.starts_with("-")) return names_.push_back(argument);
        const std::size_t equals = argument.find('=');
        const std::string option = argument.substr(0, equals);
        if (equals != std::string::npos) value_ = argument.substr(equals + 1);
        for (const OptionRow& row : options())
            if (row.name == option) {
                (this->*row.take)();
                if (value_) refuse(option + " takes no value");
                return;
            }
        refuse("unknown option " + option);
    }

    std::string value_of(const std::string& option) {
        if (value_) return *std::exchange(value_, std::nullopt);
        if (rest_.empty()) refuse(option + " needs a value");
        return next();
    }

    int number_of(const std::string& option, int least, int most) {
        const std::string text = value_of(option);
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number < least || number > most)
            refuse(option + " is a number from " + std::to_string(least) + " to " + std::to_string(most));
        return number;
    }

    void take_help() { line_.action = CommandLine::Action::help; }
    void take_version() { line_.action = CommandLine::Action::version; }
    void take_check() { line_.action = CommandLine::Action::check; }
    void take_force() { line_.options.force = true; }
    void take_model() { line_.options.model = number_of("--model", 0, car_slots - 1); }
    void take_paint_job() { line_.options.paint_job = number_of("--paint-job", 1, max_paint_jobs); }
    void take_jobs() { line_.jobs = number_of("--jobs", 1, most_jobs); }
    void take_to() {
        const std::string kind = value_of("--to");
        line_.to = kind_called(kind);
        if (!line_.to) refuse("--to is one of " + kind_names());
    }
    void take_end() { only_names_ = true; }

    void take_target() {
        if (names_.size() < 2) refuse(names_.empty() ? "no source" : "no target");
        line_.target = std::move(names_.back());
        names_.pop_back();
    }
    void take_sources() {
        if (names_.empty()) refuse("no source");
        line_.sources = std::move(names_);
    }

    struct OptionRow {
        std::string_view name;
        void (ArgumentReader::*take)();
    };
    static constexpr int most_jobs = 1024;
    static std::span<const OptionRow> options();

    std::span<const char* const> rest_;
    CommandLine line_;
    std::vector<std::string> names_;
    std::optional<std::string> value_; // behind "=", until it is taken
    bool only_names_ = false;
};

std::span<const ArgumentReader::OptionRow> ArgumentReader::options() {
    static constexpr OptionRow rows[] = {
        {"--help", &ArgumentReader::take_help},       {"-h", &ArgumentReader::take_help},
        {"--version", &ArgumentReader::take_version}, {"--force", &ArgumentReader::take_force},
        {"--model", &ArgumentReader::take_model},     {"--paint-job", &ArgumentReader::take_paint_job},
        {"--jobs", &ArgumentReader::take_jobs},       {"--to", &ArgumentReader::take_to},
        {"--check", &ArgumentReader::take_check},     {"--", &ArgumentReader::take_end},
    };
    return rows;
}

bool is_folder(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

// Whether the target is the folder that the counterparts go into, not the counterpart itself.
bool goes_into_folder(const CommandLine& line) {
    if (line.sources.size() > 1 || line.to) return true;
    const bool becomes_folder = counterpart_of(kind_of(line.sources.front())) == FileKind::folder;
    return !becomes_folder && (line.target.ends_with('/') || is_folder(line.target));
}

PlannedConversion into_folder(const std::string& source, const std::string& folder, std::optional<FileKind> to) {
    const FileKind kind = to.value_or(counterpart_of(kind_of(source)));
    if (kind == FileKind::unknown) return {source, {}, "say with --to what it shall become"};
    try {
        return {source, target_in_folder(source, folder, kind)};
    } catch (const Refusal& why) {
        return {source, {}, why.what()};
    }
}

} // namespace

CommandLine read_command_line(std::span<const char* const> arguments) { return ArgumentReader(arguments).read(); }

std::vector<PlannedConversion> plan(const CommandLine& line) {
    std::vector<PlannedConversion> conversions;
    if (line.action == CommandLine::Action::check) {
        for (const std::string& source : line.sources)
            conversions.push_back({source, {}});
        return conversions;
    }
    if (!goes_into_folder(line)) return {{line.sources.front(), line.target}};
    const std::string folder = line.target.ends_with('/') ? line.target : line.target + "/";
    std::map<std::string, std::string> source_of;
    for (const std::string& source : line.sources) {
        PlannedConversion conversion = into_folder(source, folder, line.to);
        const auto [first, is_new] = source_of.try_emplace(conversion.target, source);
        if (!is_new && conversion.refusal.empty()) conversion.refusal = "has the target of " + first->second;
        conversions.push_back(std::move(conversion));
    }
    return conversions;
}
