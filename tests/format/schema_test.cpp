#include "format/schema.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <string>

#include "convert/form.h"

namespace tools::format {
namespace {

using Json = nlohmann::ordered_json;

std::string textOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Judges a value by the words that the schema uses, and by no other.
class Judge {
 public:
  explicit Judge(const Json& schema) : schema_(schema) {}

  bool accepts(const Json& value) const { return accepts(value, schema_); }

 private:
  bool accepts(const Json& value, const Json& schema) const {
    if (schema.is_boolean()) return schema.get<bool>();
    for (const auto& [word, wanted] : schema.items()) {
      if (!holds(value, word, wanted, schema)) return false;
    }
    return true;
  }

  bool holds(const Json& value, const std::string& word, const Json& wanted,
             const Json& schema) const {
    if (word == "$ref") {
      return accepts(value, schema_.at(Json::json_pointer(wanted.get<std::string>().substr(1))));
    }
    if (word == "type") return hasType(value, wanted);
    if (word == "pattern") {
      return !value.is_string() ||
             std::regex_search(value.get<std::string>(), std::regex(wanted.get<std::string>()));
    }
    if (word == "minItems") return !value.is_array() || value.size() >= wanted;
    if (word == "maxItems") return !value.is_array() || value.size() <= wanted;
    if (word == "prefixItems" || word == "items") return itemsHold(value, word, wanted, schema);
    if (word == "properties" || word == "patternProperties") return true;  // with the next
    if (word == "additionalProperties") return membersHold(value, wanted, schema);
    EXPECT_TRUE(word == "$schema" || word == "$defs" || word == "title" || word == "description")
        << "a word that nobody judges by: " << word;
    return word != "$defs" || membersHold(value, true, schema);
  }

  static bool hasType(const Json& value, const Json& wanted) {
    if (wanted.is_array()) {
      return std::ranges::any_of(wanted, [&](const Json& one) { return hasType(value, one); });
    }
    return value.is_number() ? wanted == "number" : wanted == value.type_name();
  }

  bool itemsHold(const Json& value, const std::string& word, const Json& wanted,
                 const Json& schema) const {
    if (!value.is_array()) return true;
    const std::size_t prefix = schema.contains("prefixItems") ? schema["prefixItems"].size() : 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
      if ((i < prefix) != (word == "prefixItems")) continue;
      if (!accepts(value[i], i < prefix ? wanted[i] : wanted)) return false;
    }
    return true;
  }

  bool membersHold(const Json& value, const Json& others, const Json& schema) const {
    if (!value.is_object()) return true;
    for (const auto& [name, member] : value.items()) {
      if (!accepts(member, schemaOf(name, others, schema))) return false;
    }
    return true;
  }

  static Json schemaOf(const std::string& name, const Json& others, const Json& schema) {
    if (schema.contains("properties") && schema["properties"].contains(name)) {
      return schema["properties"][name];
    }
    if (!schema.contains("patternProperties")) return others;
    for (const auto& [pattern, wanted] : schema["patternProperties"].items()) {
      if (std::regex_search(name, std::regex(pattern))) return wanted;
    }
    return others;
  }

  Json schema_;
};

TEST(Schema, AcceptsEveryExample) {
  const Json schema = themeSchema();
  int themes = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PRISMAL_TREE "/examples")) {
    const auto file = entry.path() / "theme.plist";
    if (!std::filesystem::exists(file)) continue;
    const auto reading = convert::readAnyForm(textOf(file));
    ASSERT_TRUE(reading) << reading.reason;
    const auto json = convert::writeForm(reading.list, convert::Form::kJson).bytes;
    EXPECT_TRUE(Judge(schema).accepts(Json::parse(json))) << entry.path();
    ++themes;
  }
  EXPECT_GE(themes, 1);
}

TEST(Schema, TellsWhatDoesSomethingFromWhatDoesNot) {
  struct Case {
    std::string theme;
    bool accepted;
  };
  const Case cases[] = {
      {R"({})", true},
      {R"([])", false},
      {R"({"Author": "somebody"})", true},
      {R"({"$schema": "theme.schema.json"})", true},
      {R"({"CustomColor": [["A", "#FF8000CC"], ["B", " ff8000cc"]]})", true},
      {R"({"CustomColor": [["A", "#FF8000"]]})", false},
      {R"({"CustomColor": [["A", "#FF8000CC", "x"]]})", false},
      {R"({"CustomColor": [["A"]]})", false},
      {R"({"CustomColor": {"A": "#FF8000CC"}})", false},
      {R"({"CustomLinearGradient": [["A", "B"], ["A", "B", "C"]]})", true},
      {R"({"CustomLinearGradient": [["A"]]})", false},
      {R"({"CustomLinearGradient": [["A", "B", "C", "D"]]})", false},
      {R"({"CustomLinearGradient": [["A", 7]]})", false},
      {R"({"Styles": {"iPhone-Standard": [["*", {"EtchOffsetX": 0.5}]]}})", true},
      {R"({"Styles": {"iPhone-Standard": [["*", {"EtchOffsetX": true}]]}})", true},
      {R"({"Styles": {"iPhone-Standard": [["*", {"EtchOffsetX": "0.5"}]]}})", false},
      {R"({"Styles": {"iPhone-Standard": [["*", {"TransparentForeground": true}]]}})", true},
      {R"({"Styles": {"iPhone-Standard": [["*", {"textColor": "A"}]]}})", false},
      {R"({"Styles": {"iPad-Split": []}})", false},
      {R"({"Styles": {"iPhone-Standard": [["Row=Row1;DisplayType=", {}]]}})", true},
      {R"({"Styles": {"iPhone-Standard": [["Row=Row1;", {}]]}})", false},
      {R"({"Styles": {"iPhone-Standard": [["row=Row1", {}]]}})", false},
      {R"({"Styles": {"iPhone-Standard": ["*", {}]}})", false},
      {R"({"BackgroundImages": {"Portrait;iPad-Split;3;770": "a.png"}})", true},
      {R"({"BackgroundImages": {"Landscape;iPhone-Dictation": "a.png"}})", true},
      {R"({"BackgroundImages": {"Landscape;iPhone-Dictation;1": "a.png"}})", false},
      {R"({"BackgroundImages": {"Portrait;iPhone-Standard;4": "a.png"}})", false},
      {R"({"BackgroundImages": {"Portrait; iPhone-Standard": "a.png"}})", false},
      {R"({"BackgroundImages": {"Portrait": 7}})", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Judge(themeSchema()).accepts(Json::parse(c.theme)), c.accepted) << c.theme;
  }
}

TEST(Schema, IsTheOneThatIsPublished) {
  EXPECT_EQ(themeSchema().dump(2) + "\n", textOf(PRISMAL_TREE "/docs/theme.schema.json"))
      << "prismal format --schema > docs/theme.schema.json";
}

}  // namespace
}  // namespace tools::format
