#include "expect.h"

#include "base/byte_reader.h"
#include "files/file_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = input_bytes(data, size);
    const std::string car = listed_car_name(file);
    expect(car.size() <= 40 && car.find('\0') == std::string::npos, "a car's name is at most 40 bytes, without a zero");
    expect(listed_project_name(file).size() <= size, "a project's name is what the file holds");

    const std::string name = ByteReader(file).text(size);
    expect(!passes_filter(name, ""), "the empty filter lets no name through by itself");
    passes_filter(name, ".res.vsh.3sh.obj.");
    passes_filter(".res", name);
    return 0;
}
