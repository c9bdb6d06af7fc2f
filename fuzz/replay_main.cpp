// Runs a fuzz target over the files of a folder: the corpus as an ordinary test. Fails when the folder holds nothing.
#include "expect.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argument_count, char** arguments) {
    if (argument_count != 2) return 2;
    int replayed = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
        const std::vector<std::uint8_t> bytes(content.begin(), content.end());
        input_is_good = entry.path().filename().string().starts_with("good_");
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        ++replayed;
    }
    std::printf("%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}
