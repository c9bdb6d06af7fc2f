#include "expect.h"

#include "base/byte_reader.h"
#include "formats/resource_archive.h"

namespace {
constexpr std::size_t few_entries = 16;
constexpr std::size_t longest_content = 32;

void check_positions(const ArchiveDirectory& directory) {
    for (const ArchiveEntry& entry : directory.entries) {
        expect(entry.id.size() == archive_id_length, "ids are four characters");
        expect(entry.position >= archive_ids_at + 8U * directory.count, "data lie behind the tables");
        expect(directory.find(entry.id).has_value(), "every entry can be found");
    }
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
    expect(few.entries.size() <= few_entries, "no more entries than asked for");
    check_positions(few);

    const ArchiveDirectory all = read_archive_directory(file);
    expect(all.entries.size() <= all.count, "no more entries than the file says");
    for (std::size_t i = 0; i < few.entries.size(); ++i)
        expect(few.entries[i].position == all.entries[i].position, "the first entries do not depend on the limit");
    check_round_trip(resources_of(file, all));
    return 0;
}
