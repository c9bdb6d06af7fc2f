// Any bytes as a parameter file: read as a second, literal reader reads them, and what was read is written and read as
// the same.
#include "expect.h"
#include "literal_reader.h"

#include "formats/parameter_file.h"

namespace {

struct Literal {
    ParameterFile car;
    bool known = false, cut = false, ends_early = false;
};

void read_text(LiteralReader reader, std::size_t longest, std::string& text, Literal& literal) {
    const std::size_t there = reader.left();
    text = reader.text(longest);
    const std::size_t zero = text.find('\0');
    if (zero != std::string::npos)
        text.resize(zero);
    else if (there < longest)
        literal.ends_early = true;
    else if (const std::string behind = reader.text(1); !behind.empty() && behind[0] != '\0')
        literal.cut = true;
}

Literal read_literally(std::span<const std::byte> file, const ParameterFile& before) {
    Literal literal{.car = before};
    const LiteralArchive archive = read_archive_literally(file);
    literal.ends_early = !archive.whole;
    for (const auto& [id, position] : archive.entries) {
        LiteralReader reader(file, position);
        literal.known |= id == "simd" || id == "gnam" || id == "gsna" || id == "edes";
        if (id == "simd") {
            const std::string bytes = reader.text(776);
            std::memcpy(literal.car.par.data(), bytes.data(), bytes.size());
            literal.ends_early |= reader.ran_out();
        }
        if (id == "gnam") read_text(reader, 255, literal.car.name, literal);
        if (id == "gsna") read_text(reader, 255, literal.car.sign_name, literal);
        if (id == "edes") read_text(reader, 1023, literal.car.information, literal);
    }
    return literal;
}

void check_as_literal(const ParametersDecoded& decoded, const ParameterFile& car, const Literal& literal) {
    expect(car == literal.car, "the same parameters and texts");
    expect(decoded.cut == literal.cut, "cut where the other reader cuts");
    expect((decoded.remark == FileRemark::no_car_data) == !literal.known, "whether it is a car is said");
    expect((decoded.remark == FileRemark::ends_early) == (literal.known && literal.ends_early), "so is an early end");
    expect(!input_is_good || (!decoded.cut && decoded.remark == FileRemark::none), "a good file is read to its end");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = input_bytes(data, size);
    ParameterFile before{.name = "as it was", .sign_name = "so was this", .information = "and this"};
    before.par.fill(std::byte{0x5A});
    ParameterFile car = before;
    const ParametersDecoded decoded = decode_parameter_file(file, car);
    check_as_literal(decoded, car, read_literally(file, before));

    ParameterFile again;
    const ParametersDecoded written = decode_parameter_file(encode_parameter_file(car), again);
    expect(!written.cut && written.remark == FileRemark::none, "what was written is whole");
    expect(again == car, "what was read is written and read as the same");
    return 0;
}
