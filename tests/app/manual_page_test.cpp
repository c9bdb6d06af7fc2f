// The manual pages say what the programs say: the keys row by row, the options of the command line.
#include "app/everywhere.h"
#include "app/screens.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace {

// A text as the manual's formatter takes it without changing a character.
std::string escaped(std::string_view text) {
    constexpr std::pair<char, std::string_view> special[] = {
        {'\\', "\\e"}, {'-', "\\-"}, {'"', "\\(dq"}, {'`', "\\(ga"}, {'\'', "\\(aq"}, {'^', "\\(ha"}, {'~', "\\(ti"}};
    std::string result = text.starts_with('.') ? "\\&" : "";
    for (const char c : text) {
        const auto row = std::ranges::find(special, c, [](const auto& pair) { return pair.first; });
        result += row == std::end(special) ? std::string(1, c) : std::string(row->second);
    }
    return result;
}

std::string section_of_keys(const std::string& screen, const std::vector<KeyHelpTable>& tables) {
    std::string text = ".SS " + escaped(screen) + "\n";
    for (const KeyHelpTable& table : tables) {
        if (!table.heading.empty()) text += ".PP\n" + escaped(table.heading) + "\n";
        for (const KeyHelp& row : table.rows)
            text += ".TP\n.B " + escaped(row.keys) + "\n" + escaped(row.words) + "\n";
    }
    return text;
}

std::string section(const std::string& page, const std::string& heading) {
    const std::size_t begin = page.find(".SH " + heading + "\n") + heading.size() + 5;
    return page.substr(begin, page.find("\n.SH ", begin) + 1 - begin);
}

} // namespace

TEST(ManualPage, HasTheKeysOfTheProgram) {
    std::string keys;
    for (const ScreenRow& screen : screens())
        keys += section_of_keys(screen.name, screen.keys());
    keys += section_of_keys("Everywhere", {everywhere_keys()});
    EXPECT_EQ(section(read_text(KAROSMIT_SOURCE_DIR "packaging/karosmit.1"), "KEYS"), keys);
}
