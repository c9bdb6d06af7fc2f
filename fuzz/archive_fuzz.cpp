// Any bytes as an archive: its tables read as a second, literal reader reads them, and resources that are written are
// found again.
#include "expect.h"
#include "literal_reader.h"

#include "base/byte_reader.h"
#include "formats/resource_archive.h"

#include <algorithm>

namespace {
constexpr std::size_t few_entries = 16;
constexpr std::size_t longest_content = 32;

void check_directory(std::span<const std::byte> file, const ArchiveDirectory& directory, std::size_t most) {
    const LiteralArchive literal = read_archive_literally(file, most);
    expect(directory.count == literal.count && directory.whole == literal.whole, "the same count, all there or not");
    expect(directory.tables_end == literal.tables_end, "the same end of the tables");
    expect(directory.entries.size() == literal.entries.size(), "as many entries");
    for (std::size_t i = 0; i < literal.entries.size(); ++i) {
        const auto& [id, position] = literal.entries[i];
        expect(directory.entries[i].id == id && directory.entries[i].position == position, "the same entries");
    }
    if (literal.entries.size() > few_entries) return; // to look for each among all takes long
    for (const auto& [id, position] : literal.entries) {
        const auto first = std::ranges::find(literal.entries, id, [](const auto& entry) { return entry.first; });
        expect(directory.find(id) == first->second, "the first of an id is found");
    }
    expect(!directory.find("none?"), "what is not there is not found");
}

std::vector<ArchiveResource> resources_of(std::span<const std::byte> file, const ArchiveDirectory& directory) {
    std::vector<ArchiveResource> resources;
    for (const ArchiveEntry& entry : directory.entries) {
        const auto content = ByteReader(file, entry.position).view(longest_content);
        resources.push_back({entry.id, Bytes(content.begin(), content.end())});
    }
    return resources;
}

void check_round_trip(const std::vector<ArchiveResource>& resources) {
    const Bytes file = encode_archive(resources);
    const ArchiveDirectory directory = read_archive_directory(file);
    expect(directory.whole, "what was written is whole");
    expect(directory.entries.size() == resources.size(), "every resource is found again");
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const auto content = ByteReader(file, directory.entries[i].position).view(resources[i].content.size());
        expect(directory.entries[i].id == resources[i].id, "under its id");
        expect(Bytes(content.begin(), content.end()) == resources[i].content, "with its content");
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = input_bytes(data, size);
    const ArchiveDirectory few = read_archive_directory(file, few_entries);
    check_directory(file, few, few_entries);

    const ArchiveDirectory all = read_archive_directory(file);
    check_directory(file, all, 65535);
    expect(!input_is_good || all.whole, "a good archive is whole");
    check_round_trip(resources_of(file, all));
    return 0;
}
