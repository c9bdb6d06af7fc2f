// Any bytes as a car or a project whose name is listed, and as a name that a filter is to let through: the same as a
// second, literal reader says.
#include "expect.h"
#include "literal_reader.h"

#include "files/file_list.h"

namespace {

// Where a run lacks the marker, this is one before it.
std::size_t place_of(const std::string& run, const std::string& marker) { return run.find(marker); }

std::string car_literally(std::span<const std::byte> file) {
    std::size_t count = 0, offset = 0;
    LiteralReader(file, 4).number(2, count);
    const std::string ids = LiteralReader(file, 6).text(4 * count);
    LiteralReader(file, 6 + 4 * count + place_of(ids, "gnam")).number(4, offset);
    const std::string name = LiteralReader(file, 6 + 8 * count + offset).text(40);
    return name.substr(0, name.find('\0'));
}

std::string project_literally(std::span<const std::byte> file) {
    std::size_t offset = 0, length = 0;
    LiteralReader(file, place_of(LiteralReader(file).text(80), "Base") + 4).number(4, offset);
    LiteralReader reader(file, offset);
    reader.number(2, length);
    return reader.text(length);
}

std::string in_small_letters(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    return text;
}

void check_filter(const std::string& name, const std::string& filter) {
    const std::size_t dot = name.rfind('.');
    const bool passes = dot != std::string::npos &&
                        in_small_letters(filter).find(in_small_letters(name.substr(dot)) + ".") != std::string::npos;
    expect(passes_filter(name, filter) == passes, "the filter lets the same names through");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = input_bytes(data, size);
    const std::string car = listed_car_name(file), project = listed_project_name(file);
    expect(car == car_literally(file), "the same name of a car");
    expect(project == project_literally(file), "the same name of a project");
    expect(!input_is_good || car == "Speedster" || project == "My car", "a good file has its name");

    const std::string text = LiteralReader(file).text(size);
    for (const char* filter : {"", ".res.vsh.3sh.obj.", ".RES.", "res"})
        for (const std::string& name : {text, text + ".Obj", std::string("car.res")})
            check_filter(name, filter);
    check_filter(".res", text);
    check_filter("a.res", text + ".res.");
    return 0;
}
