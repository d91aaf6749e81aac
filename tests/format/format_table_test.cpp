// The table says what the library does: its names are those in the library's sources, and the page
// that people read has them all.

#include "theme/format_table.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "styles/visual_style.h"

namespace tools::theme {
namespace {

std::string textOf(const std::string& path) {
  std::ifstream file(std::string(PRISMAL_TREE "/") + path, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(file), {});
  EXPECT_FALSE(text.empty()) << path;
  return text;
}

/// What the groups of `pattern` matched in `text`, joined by a space, match by match.
std::vector<std::string> found(const std::string& text, const std::string& pattern) {
  std::vector<std::string> matches;
  const std::regex expression(pattern);
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    std::string joined = (*match)[1];
    for (std::size_t i = 2; i < match->size(); ++i) joined += " " + (*match)[i].str();
    matches.push_back(joined);
  }
  return matches;
}

template <class Table>
std::set<std::string> namesOf(const Table& table) {
  std::set<std::string> names;
  for (const auto& row : table) names.emplace(row.name);
  return names;
}

std::set<std::string> asSet(const std::vector<std::string>& names) {
  return {names.begin(), names.end()};
}

TEST(FormatTable, HasThePropertiesOfTheLibraryInTheirOrder) {
  std::vector<std::string> expected;
  for (const auto& property : kStyleProperties) {
    expected.push_back(std::string(property.name) +
                       (property.type == ValueType::kString ? " String" : " Number"));
  }
  auto properties = found(textOf("src/styles/style_properties.cpp"),
                          R"re(\{"(\w+)", ValueType::k(\w+), StylePart::)re");
  // A number that has to be true is a number.
  for (std::string& property : properties) {
    if (property.ends_with(" True")) property.replace(property.size() - 4, 4, "Number");
  }
  EXPECT_EQ(properties, expected);
}

TEST(FormatTable, HasTheKeysAndTermsThatTheLibraryReads) {
  const std::string readsKey = R"re(objectForKey\("(\w+)"\))re";
  const auto theme = textOf("src/settings/theme_data.cpp") + textOf("src/styles/style_table.cpp");
  const auto pictures = found(textOf("src/backgrounds/background_filenames.cpp"),
                              R"re(PMGetThemeData\(\)\.objectForKey\("(\w+)"\))re");
  auto sections = asSet(found(theme, readsKey));
  sections.insert(pictures.begin(), pictures.end());
  EXPECT_EQ(sections, namesOf(kSections));

  const auto settings = found(textOf("src/settings/settings_store.cpp") +
                                  textOf("src/backgrounds/background_filenames.cpp"),
                              R"re(settings->objectForKey\("(\w+)"\))re");
  EXPECT_EQ(asSet(settings), namesOf(kSettings));

  EXPECT_EQ(asSet(found(textOf("src/styles/condition_walk.h"),
                        R"re(ifNamed\("(\w+)=", ConditionSubject)re")),
            namesOf(kConditionTerms));
}

TEST(FormatTable, HasTheVisualStylesOfTheLibrary) {
  std::set<std::string> names;
  for (int number = 0; number < 100; ++number) {
    if (const auto name = prismal::visualStyleName(number)) names.emplace(*name);
  }
  EXPECT_EQ(names, namesOf(kVisualStyles));
}

TEST(FormatTable, AgreesWithThePageOfTheFormat) {
  const std::string page = textOf("docs/theme-format.md");
  const auto expectRow = [&](const std::string& row) {
    EXPECT_NE(page.find("\n| " + row), std::string::npos) << row;
  };
  const auto quoted = [](std::string_view name) { return "`" + std::string(name) + "`"; };
  int number = 0;
  for (const auto& property : kStyleProperties) {
    expectRow(std::to_string(++number) + " | " + quoted(property.name) + " | " +
              std::string(typeName(property.type)) + " | ");
  }
  EXPECT_EQ(found(page, R"re((\n\| \d+ \| `\w+` \| (?:string|number)))re").size(),
            std::size(kStyleProperties));
  for (const auto& section : kSections) {
    const bool isArray = section.type == ValueType::kArray;
    expectRow(quoted(section.name) + (isArray ? " | an array of " : " | a dictionary: "));
  }
  for (const auto& term : kConditionTerms) {
    expectRow(quoted(std::string(term.name) + "=") + " | ");
    EXPECT_NE(page.find(term.example), std::string::npos) << term.example;
  }
  expectRow(quoted(kEveryKey) + " | always");
  for (const auto& style : kVisualStyles) expectRow(quoted(style.name) + " | ");
  for (const auto& form : kBackgroundKeyForms) {
    expectRow(std::string(form.name) + " | " + quoted(form.example) + " | " +
              std::string(form.description) + " |");
  }
  for (const auto& setting : kSettings) {
    const std::string type(typeName(setting.type));
    expectRow(quoted(setting.name) + " | " + type);
  }
  for (const auto orientation : kBackgroundOrientations) {
    EXPECT_NE(page.find(quoted(std::string(orientation) + ";" + std::string(kDictationStyle))),
              std::string::npos);
  }
}

}  // namespace
}  // namespace tools::theme
