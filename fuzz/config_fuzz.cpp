// Any text as a configuration: read as a second, literal reader reads it, and what was read is read again.
#include "expect.h"
#include "literal_reader.h"

#include "base/byte_reader.h"
#include "base/config.h"

#include <string>

namespace {
using Entries = std::vector<std::pair<std::string, std::string>>;

Entries read_literally(const std::string& text) {
    Entries entries;
    for (const std::string& whole_line : lines_of(text)) {
        const std::string line = bare(whole_line);
        const std::size_t equals = line.find('=');
        if (line.starts_with(';') || line.starts_with('#') || equals == std::string::npos) continue;
        if (entries.size() < 100) entries.emplace_back(bare(line.substr(0, equals)), bare(line.substr(equals + 1)));
    }
    return entries;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = ByteReader(input_bytes(data, size)).text(size);
    const auto entries = decode_config(text);
    expect(entries == read_literally(text), "the same entries");
    expect(!input_is_good || !entries.empty(), "a good file has entries");

    std::string again;
    for (const auto& [key, value] : entries)
        again += key + "=" + value + "\n";
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
