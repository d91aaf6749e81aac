#include "format/schema.h"

#include <string>
#include <string_view>

#include "theme/format_table.h"

namespace tools::format {

using Json = nlohmann::ordered_json;
using theme::ValueType;

namespace {

/// The names of `table`, or those that `wanted` accepts, as alternatives of a regular expression.
template <class Table, class Wanted>
std::string namesOf(const Table& table, Wanted wanted) {
  std::string names;
  for (const auto& row : table) {
    if (wanted(row)) names.append(names.empty() ? "" : "|").append(row.name);
  }
  return "(?:" + names + ")";
}

template <class Table>
std::string namesOf(const Table& table) {
  return namesOf(table, [](const auto&) { return true; });
}

std::string conditionPattern() {
  const std::string term = "(?:\\*|" + namesOf(theme::kConditionTerms) + "=[^;]*)";
  return "^" + term + "(?:;" + term + ")*$";
}

std::string orientations() {
  std::string names;
  for (const auto name : theme::kBackgroundOrientations) {
    names.append(names.empty() ? "" : "|").append(name);
  }
  return "(?:" + names + ")";
}

std::string backgroundKeyPattern() {
  const std::string keyplane = "(?:;[0-3](?:;[0-9]+)?)?";
  return "^" + orientations() + "(?:;(?:" + namesOf(theme::kVisualStyles) + keyplane + "|" +
         std::string(theme::kDictationStyle) + "))?$";
}

Json reference(const std::string& name) {
  return {{"$ref", "#/$defs/" + name}};
}

Json typeOf(ValueType type) {
  switch (type) {
    case ValueType::kString:
      return "string";
    case ValueType::kNumber:
    case ValueType::kSwitch:
      // A boolean is a number on the device.
      return Json::array({"number", "boolean"});
    case ValueType::kArray:
      return "array";
    case ValueType::kDictionary:
      return "object";
  }
  return nullptr;
}

/// What every array of `items` that are themselves arrays of given length looks like.
Json tuple(const Json& items, std::size_t least) {
  return {{"type", "array"},
          {"prefixItems", items},
          {"items", false},
          {"minItems", least},
          {"maxItems", items.size()}};
}

Json definitions() {
  Json properties = Json::object();
  for (const auto& property : theme::kStyleProperties) {
    properties[property.name] = {{"description", property.description},
                                 {"type", typeOf(property.type)}};
  }
  return {
      {"name", {{"description", "a name, the theme's own or the system's"}, {"type", "string"}}},
      {"colorString",
       {{"description", "red, green, blue and alpha, two hexadecimal digits each"},
        {"type", "string"},
        {"pattern", "^\\s*#?[0-9A-Fa-f]{8}\\s*$"}}},
      {"color", tuple({reference("name"), reference("colorString")}, 2)},
      {"gradient", tuple({reference("name"), reference("name"), reference("name")}, 2)},
      {"condition",
       {{"description", "terms joined by ;, each * or a name, =, and values joined by ,"},
        {"type", "string"},
        {"pattern", conditionPattern()}}},
      {"properties",
       {{"type", "object"}, {"properties", properties}, {"additionalProperties", false}}},
      {"rule", tuple({reference("condition"), reference("properties")}, 2)},
      {"rules", {{"type", "array"}, {"items", reference("rule")}}},
  };
}

/// What a section holds, beyond its type.
Json contentsOf(std::string_view section) {
  if (section == "CustomColor") return {{"items", reference("color")}};
  if (section == "CustomLinearGradient") return {{"items", reference("gradient")}};
  if (section == "BackgroundImages") {
    return {{"patternProperties", {{backgroundKeyPattern(), {{"type", "string"}}}}},
            {"additionalProperties", false}};
  }
  Json styles = Json::object();
  for (const auto& style : theme::kVisualStyles) {
    if (!style.hasRules) continue;
    styles[style.name] = reference("rules");
    styles[style.name]["description"] = style.description;
  }
  return {{"properties", styles}, {"additionalProperties", false}};
}

}  // namespace

Json themeSchema() {
  Json sections = Json::object();
  for (const auto& section : theme::kSections) {
    Json& described = sections[section.name];
    described = {{"description", section.description}, {"type", typeOf(section.type)}};
    described.update(contentsOf(section.name));
  }
  return {{"$schema", "https://json-schema.org/draft/2020-12/schema"},
          {"title", "A Prismal theme in its JSON form"},
          {"type", "object"},
          {"properties", sections},
          {"$defs", definitions()}};
}

}  // namespace tools::format
