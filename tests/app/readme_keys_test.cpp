// The key tables of the README are those of the program, row by row.
#include "app/everywhere.h"
#include "app/screens.h"
#include "support/text_file.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

namespace {

// What the chapter "Keys" of the README says of each screen, in the form in which the screen's tables are written
// below: its key tables, each with the line before it when that ends in a colon. Other tables and texts are its own
// affair.
std::map<std::string, std::string> tables_of_readme() {
    std::istringstream lines(read_text(KAROSMIT_SOURCE_DIR "README.md"));
    std::map<std::string, std::string> tables;
    std::string line, screen, heading;
    bool in_key_table = false;
    while (std::getline(lines, line) && line != "## Keys") {
    }
    while (std::getline(lines, line) && !line.starts_with("## ")) {
        if (line.starts_with("### ")) tables[screen = line.substr(4)];
        if (line.starts_with("| key ")) {
            in_key_table = true;
            tables[screen] += heading;
        } else if (!line.starts_with("|")) {
            in_key_table = false;
            if (!line.empty()) heading = line.ends_with(":") ? line + "\n" : "";
        } else if (in_key_table && line != "|---|---|") {
            tables[screen] += line + "\n";
        }
    }
    return tables;
}

std::string as_text(const std::vector<KeyHelpTable>& tables) {
    std::string text;
    for (const KeyHelpTable& table : tables) {
        if (!table.heading.empty()) text += table.heading + "\n";
        for (const KeyHelp& row : table.rows)
            text += "| " + row.keys + " | " + row.words + " |\n";
    }
    return text;
}

} // namespace

TEST(ReadmeKeys, AreThoseOfTheScreensRowByRow) {
    const auto readme = tables_of_readme();
    std::set<std::string> names;
    for (const ScreenRow& screen : screens()) {
        names.insert(screen.name);
        const auto found = readme.find(screen.name);
        ASSERT_NE(found, readme.end()) << "the README has no keys of " << screen.name;
        EXPECT_EQ(found->second, as_text(screen.keys())) << screen.name;
    }
    ASSERT_TRUE(readme.contains("Everywhere"));
    EXPECT_EQ(readme.at("Everywhere"), as_text({everywhere_keys()}));
    names.insert("Everywhere");
    for (const auto& [name, text] : readme)
        EXPECT_TRUE(names.contains(name)) << "the README has keys of a screen that is none: " << name;
}

TEST(Screens, HaveANumberEachAndACellInTheMenuBar) {
    std::set<int> numbers;
    for (const ScreenRow& screen : screens())
        numbers.insert(screen.number);
    EXPECT_EQ(numbers, (std::set<int>{0, 1, 2, 3}));
}

TEST(Screens, EveryRowOfKeysSaysWhatItDoes) {
    for (const ScreenRow& screen : screens())
        for (const KeyHelpTable& table : screen.keys()) {
            EXPECT_FALSE(table.rows.empty()) << screen.name;
            for (const KeyHelp& row : table.rows) {
                EXPECT_NE(row.keys, "") << row.words;
                EXPECT_NE(row.words, "") << row.keys;
            }
        }
}
