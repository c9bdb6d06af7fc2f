#include "expect.h"

#include "formats/parameter_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ParameterFile car;
    car.name = "as it was";
    decode_parameter_file(input_bytes(data, size), car);
    expect(car.name.size() <= 255 && car.sign_name.size() <= 255, "names are at most 255 characters");
    expect(car.information.size() <= 1023, "the description is at most 1023 characters");

    ParameterFile again;
    decode_parameter_file(encode_parameter_file(car), again);
    expect(again == car, "what was read is written and read as the same");
    return 0;
}
