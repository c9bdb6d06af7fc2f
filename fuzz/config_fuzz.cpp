#include "expect.h"

#include "app/config.h"
#include "app/text.h"
#include "formats/byte_reader.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = ByteReader(input_bytes(data, size)).text(size);
    const auto entries = decode_config(text);
    expect(entries.size() <= max_config_entries, "at most 100 entries");

    std::string again;
    for (const auto& [key, value] : entries) {
        expect(key.find('=') == std::string::npos, "a key ends at the first \"=\"");
        expect(without_trailing_blanks(key) == key && without_leading_blanks(value) == value, "blanks do not count");
        again += key + "=" + value + "\n";
    }
    expect(decode_config(again) == entries || text.find('\r') != std::string::npos,
           "entries are read again as they are");
    return 0;
}
