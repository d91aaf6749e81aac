#include "check/rule_check.h"

#include <algorithm>
#include <iterator>

#include "check/device_theme.h"
#include "check/did_you_mean.h"
#include "check/font_names.h"
#include "check/words.h"
#include "styles/style_matching.h"
#include "styles/style_properties.h"

namespace tools::check {

using platform::PropertyListEntry;
using platform::PropertyListView;

namespace {

constexpr std::string_view kProperties[] = {
    "BackgroundGradient", "TransparentForeground", "TextColor",   "EtchColor",
    "SecondaryTextColor", "EtchOffsetX",           "EtchOffsetY", "FontName"};

/// What the library logs of one rule, for a key that it holds for if there is any.
std::string logOfRule(PropertyListView rule, const Boards& boards) {
  const auto list = listOf(rule);
  const auto items = rule.items();
  const auto condition = items.size() == 2 ? items[0].string() : std::nullopt;
  const auto cases = boards.cases();
  const auto found = std::ranges::find_if(
      cases, [&](const KeyCase& key) { return condition && holds(*condition, key); });
  const KeyCase& key = found == cases.end() ? cases.front() : *found;
  return logOf([&] { prismal::PMGetMatchingStyles(list, key.identity, key.control_state); });
}

/// A property by another name that says the same.
struct OtherName {
  std::string_view name;
  std::string_view property;
};
constexpr OtherName kOtherNames[] = {{"BackgroundColor", "BackgroundGradient"},
                                     {"Background", "BackgroundGradient"},
                                     {"Color", "TextColor"},
                                     {"Font", "FontName"},
                                     {"Transparent", "TransparentForeground"}};

std::optional<std::string_view> propertyMeantBy(Theme& theme, std::string_view name) {
  const auto* const other = std::ranges::find(kOtherNames, name, &OtherName::name);
  if (other != std::end(kOtherNames)) return other->property;
  return theme.suggestions.nearest(name, kProperties);
}

Parts partsOf(std::string_view property) {
  const Property known = propertyNamed(property);
  return known.as_string | known.as_number;
}

std::string conditionOf(PropertyListView rule) {
  const auto items = rule.items();
  return std::string(items.empty() ? "*" : items[0].string().value_or("*"));
}

/// What a rule would set if it were a pair; anything where it has no dictionary.
Parts partsOfUnsound(PropertyListView rule) {
  for (const PropertyListView item : rule.items()) {
    if (item.isDictionary()) return partsSetBy(item);
  }
  return kAllParts;
}

}  // namespace

bool RuleCheck::check(PropertyListView rule, std::size_t index) {
  const std::string path = itemOf(entryOf(std::string(kStyles), list_), index);
  if (!isSound(rule)) {
    tellUnsound(rule, path);
    dead_.push_back({list_, index, {conditionOf(rule)}, partsOfUnsound(rule)});
    return true;
  }
  const auto items = rule.items();
  const std::string style = itemOf(path, 1);
  ConditionCheck::Outcome outcome{false, std::string(*items[0].string())};
  if (conditions_) {
    outcome = conditions_->check({theme_.source, itemOf(path, 0), items[0]}, *items[0].string());
  }
  Parts missed = 0;
  bool isOdd = false;
  for (const PropertyListEntry& property : items[1].entries()) {
    const auto odd = checkProperty(property, style);
    isOdd |= odd.has_value();
    missed |= odd.value_or(0);
  }
  const Parts parts = partsSetBy(items[1]);
  if (outcome.isExplained) missed |= parts;
  if (missed != 0 && !outcome.meant.empty()) {
    dead_.push_back({list_, index, {outcome.meant}, missed});
  }
  if (!isOdd && parts == 0) tellNothing(items[1], style);
  tellTakenAway(items[1], style);
  return outcome.isExplained;
}

void RuleCheck::tellNothing(PropertyListView style, const std::string& path) {
  const auto entries = style.entries();
  const Rule& rule = "rule-sets-nothing"_rule;
  if (entries.empty()) {
    return theme_.findings.add(rule, theme_.source.at(path, style), "this rule sets nothing");
  }
  theme_.findings.add(rule, theme_.source.atKey(entryOf(path, entries[0].key), entries[0]),
                      "TransparentForeground has an effect only when true");
}

void RuleCheck::tellTakenAway(PropertyListView style, const std::string& path) {
  const auto settings = prismal::styleSettings(style);
  for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
    const auto later =
        std::ranges::find(setting + 1, settings.end(), setting->part, &prismal::StyleSetting::part);
    if (later == settings.end()) continue;
    theme_.findings.add("property-without-effect"_rule,
                        theme_.source.at(entryOf(path, setting->property), setting->value),
                        std::string(later->property) + " of the same rule takes it away again");
  }
}

void RuleCheck::tellUnsound(PropertyListView rule, const std::string& path) {
  const std::string log = logOfRule(rule, boards_);
  const auto items = rule.items();
  if (items.size() != 2) {
    const std::string what =
        rule.isArray() ? counted(items.size(), "item") : std::string(typeOf(rule));
    return theme_.findings.add("rule-pair"_rule, theme_.source.at(path, rule),
                               what + " in place of a pair, a condition and a dictionary", log);
  }
  const bool isString = items[0].isString();
  const std::size_t wrong = isString ? 1 : 0;
  theme_.findings.add(isString ? "rule-value"_rule : "rule-condition"_rule,
                      theme_.source.at(itemOf(path, wrong), items[wrong]),
                      std::string(typeOf(items[wrong])) + " in place of " +
                          (isString ? "a dictionary" : "a condition"),
                      log);
}

std::optional<Parts> RuleCheck::checkProperty(const PropertyListEntry& property,
                                              const std::string& style) {
  const std::string path = entryOf(style, property.key);
  const Property known = propertyNamed(property.key);
  if (known.as_string == 0 && known.as_number == 0) {
    const auto meant = propertyMeantBy(theme_, property.key);
    theme_.findings.add("unknown-property"_rule, theme_.source.atKey(path, property),
                        "nobody reads " + inQuotes(property.key) + asQuestion(meant));
    return meant ? partsOf(*meant) : 0;
  }
  const Place place = theme_.source.at(path, property.value);
  const bool wantsString = known.as_string != 0;
  if (wantsString ? !property.value.isString() : !property.value.isNumber()) {
    theme_.findings.add("property-type"_rule, place,
                        std::string(typeOf(property.value)) + " in place of a " +
                            (wantsString ? "string" : "number"));
    return partsOf(property.key);
  }
  checkName(place, property, known.as_string);
  return std::nullopt;
}

void RuleCheck::checkName(const Place& place, const PropertyListEntry& property, Parts parts) {
  const std::string_view name = property.value.string().value_or("");
  constexpr Parts kColored = only(Part::text) | only(Part::etch) | only(Part::second_text);
  if (parts & only(Part::background)) {
    useName(theme_, Kind::gradient, place, property.key, name);
  }
  if (parts & kColored) useName(theme_, Kind::color, place, property.key, name);
  if (parts & only(Part::font)) checkFont(theme_, place, name);
}

}  // namespace tools::check
