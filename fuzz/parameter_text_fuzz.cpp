#include "expect.h"

#include "base/byte_reader.h"
#include "convert/parameter_text.h"
#include "convert/refusal.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ParameterFile car;
    try {
        read_parameter_text(ByteReader(input_bytes(data, size)).text_view(), car);
    } catch (const Refusal&) {
        return 0;
    }
    expect(car.name.size() <= longest_name && car.sign_name.size() <= longest_name, "names fit their file");
    expect(car.information.size() <= longest_information, "the description fits its file");

    ParameterFile again;
    read_parameter_text(parameter_text(car), again);
    expect(again == car, "what was read is written and read as the same");
    return 0;
}
