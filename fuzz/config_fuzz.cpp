#include "expect.h"

#include "base/byte_reader.h"
#include "base/config.h"
#include "base/text.h"

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
    const auto read_again = decode_config(again);
    expect(read_again.size() == entries.size(), "every entry is read again");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        expect(read_again[i].first == entries[i].first, "with its key");
        // A value that ends in the CR of another system's lines loses it.
        const bool ends_in_cr = entries[i].second.ends_with('\r');
        expect(ends_in_cr || read_again[i].second == entries[i].second, "with its value");
    }
    return 0;
}
