// The key tables of the README are those of the program, row by row.
#include "app/everywhere.h"
#include "app/screens.h"
#include "dash/dash_screen.h"
#include "editor3d/editor_screen.h"
#include "params/parameter_screen.h"
#include "support/text_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
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

namespace {

// The names of keys in a row's label, each by itself: "P", "." of "P, .". What is said of the mouse is no name.
std::set<std::string> names_in(std::string label) {
    std::set<std::string> names;
    for (const char* const separator : {", ", " or ", " over ", " to ", " in "})
        for (std::size_t at = label.find(separator); at != std::string::npos; at = label.find(separator, at + 1))
            label.replace(at, std::string_view(separator).size(), "\n");
    std::istringstream lines(label);
    for (std::string name; std::getline(lines, name);)
        names.insert(name == "comma" ? "," : name);
    return names;
}

std::set<std::string> names_of_all_keys() {
    std::set<std::string> names;
    const auto add = [&](const KeyHelpTable& table) {
        for (const KeyHelp& row : table.rows)
            names.merge(names_in(row.keys));
    };
    for (const ScreenRow& screen : screens())
        std::ranges::for_each(screen.keys(), add);
    add(everywhere_keys());
    return names;
}

// The first cells of the manual's tables of keys, without the marks around what is typed.
std::vector<std::string> key_cells_of(const std::string& page) {
    std::vector<std::string> cells;
    std::istringstream lines(page);
    bool in_key_table = false;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("| ")) in_key_table = in_key_table && line.starts_with("|---");
        if (in_key_table && line.starts_with("| ")) cells.push_back(line.substr(2, line.find(" | ") - 2));
        if (line.starts_with("| keys |")) in_key_table = true;
    }
    for (std::string& cell : cells)
        std::erase(cell, '`');
    return cells;
}

} // namespace

TEST(ManualKeys, AreKeysThatThereAre) {
    const std::set<std::string> known = names_of_all_keys();
    std::size_t found = 0;
    for (const char* const name : {"dashboard.md", "gauges.md", "models.md"})
        for (const std::string& cell : key_cells_of(read_text(KAROSMIT_SOURCE_DIR "docs/manual/" + std::string(name))))
            for (const std::string& key : names_in(cell)) {
                EXPECT_TRUE(known.contains(key)) << name << " tells of the key " << key;
                ++found;
            }
    EXPECT_GT(found, 15U) << "no tables were found";
}

// Wherever its text tells to press Ctrl and a letter.
TEST(ManualKeys, ControlAndALetterIsOneWhereverItIsTold) {
    const std::set<std::string> known = names_of_all_keys();
    std::size_t found = 0;
    for (const auto& page : std::filesystem::directory_iterator(KAROSMIT_SOURCE_DIR "docs/manual")) {
        if (page.path().extension() != ".md") continue;
        const std::string text = read_text(page.path());
        const std::regex keys("Ctrl\\+(Shift\\+)?[A-Z]\\b");
        for (std::sregex_iterator key(text.begin(), text.end(), keys), end; key != end; ++key, ++found)
            EXPECT_TRUE(known.contains(key->str())) << page.path() << " tells of " << key->str();
    }
    EXPECT_GT(found, 30U);
}

// A label stands in place of the names of the keys: it may leave out a spelling, but names no key that the row has not.
TEST(Screens, ALabelNamesNoKeyThatItsRowHasNot) {
    std::size_t compared = 0;
    const auto compare = [&](const auto& row) {
        if (!row.label || !row.keys[0]) return;
        for (const std::string& name : names_in(row.label)) {
            const bool is_key = name.size() == 1 || name == "Enter" || name == "Escape" || name == "Tab" ||
                                (name.starts_with("Ctrl+") && name.size() == 6);
            if (!is_key) continue;
            ++compared;
            EXPECT_TRUE(std::ranges::any_of(row.keys, [&](const char* key) { return key && names_of({key}) == name; }))
                << row.label << " names " << name;
        }
    };
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode)
        std::ranges::for_each(mode_of(mode).keys, compare);
    std::ranges::for_each(dash_screen.keys, compare);
    std::ranges::for_each(editor_screen.keys, compare);
    std::ranges::for_each(parameter_screen.keys, compare);
    EXPECT_GT(compared, 20U);
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
