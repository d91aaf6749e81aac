#include "check/styles.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

#include "check/conditions.h"
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

// A thousand rules is much for a theme. On a device every rule is tried for every key that is
// drawn.
constexpr std::size_t kMostRules = 4000;
constexpr std::size_t kMostConditionBytes = std::size_t{256} << 10U;

constexpr std::string_view kProperties[] = {
    "BackgroundGradient", "TransparentForeground", "TextColor",   "EtchColor",
    "SecondaryTextColor", "EtchOffsetX",           "EtchOffsetY", "FontName"};

std::set<std::string, std::less<>> visualStyles(const Boards& boards) {
  std::set<std::string, std::less<>> names;
  for (const Keyplane& keyplane : boards.keyplanes()) names.emplace(keyplane.style);
  return names;
}

bool isTooMuch(const Theme& theme) {
  std::size_t rules = 0;
  std::size_t bytes = 0;
  for (const PropertyListEntry& list : theme.section(kStyles).entries()) {
    rules += list.value.items().size();
    for (const PropertyListView rule : list.value.items()) {
      if (isSound(rule)) bytes += rule.items()[0].string()->size();
    }
  }
  return rules > kMostRules || bytes > kMostConditionBytes;
}

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

/// Checks the rules of one list, each for itself.
class RuleCheck {
 public:
  RuleCheck(Theme& theme, const Boards& boards, ConditionCheck* conditions, std::string_view list,
            std::vector<DeadRule>& dead)
      : theme_(theme), boards_(boards), conditions_(conditions), list_(list), dead_(dead) {}

  /// Whether something was told that explains why the rule has no effect.
  bool check(PropertyListView rule, std::size_t index) {
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
    if (missed != 0) dead_.push_back({list_, index, {outcome.meant}, missed});
    if (!isOdd && parts == 0) tellNothing(items[1], style);
    tellTakenAway(items[1], style);
    return outcome.isExplained;
  }

 private:
  static std::string conditionOf(PropertyListView rule) {
    const auto items = rule.items();
    return std::string(items.empty() ? "*" : items[0].string().value_or("*"));
  }

  /// What a rule would set if it were a pair; anything where it has no dictionary.
  static Parts partsOfUnsound(PropertyListView rule) {
    for (const PropertyListView item : rule.items()) {
      if (item.isDictionary()) return partsSetBy(item);
    }
    return kAllParts;
  }

  void tellNothing(PropertyListView style, const std::string& path) {
    const auto entries = style.entries();
    const Rule& rule = "rule-sets-nothing"_rule;
    if (entries.empty()) {
      return theme_.findings.add(rule, theme_.source.at(path, style), "this rule sets nothing");
    }
    theme_.findings.add(rule, theme_.source.atKey(entryOf(path, entries[0].key), entries[0]),
                        "TransparentForeground has an effect only when true");
  }

  /// A property that a later one of the same rule takes back.
  void tellTakenAway(PropertyListView style, const std::string& path) {
    const auto settings = prismal::styleSettings(style);
    for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
      const auto later = std::ranges::find(setting + 1, settings.end(), setting->part,
                                           &prismal::StyleSetting::part);
      if (later == settings.end()) continue;
      theme_.findings.add("property-without-effect"_rule,
                          theme_.source.at(entryOf(path, setting->property), setting->value),
                          std::string(later->property) + " of the same rule takes it away again");
    }
  }

  void tellUnsound(PropertyListView rule, const std::string& path) {
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

  /// What was meant to be set and isn't, when something is wrong.
  std::optional<Parts> checkProperty(const PropertyListEntry& property, const std::string& style) {
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

  /// What is set by a string is the name of something.
  void checkName(const Place& place, const PropertyListEntry& property, Parts parts) {
    const std::string_view name = property.value.string().value_or("");
    constexpr Parts kColored = only(Part::text) | only(Part::etch) | only(Part::second_text);
    if (parts & only(Part::background)) {
      useName(theme_, Kind::gradient, place, property.key, name);
    }
    if (parts & kColored) useName(theme_, Kind::color, place, property.key, name);
    if (parts & only(Part::font)) checkFont(theme_, place, name);
  }

  Theme& theme_;
  const Boards& boards_;
  ConditionCheck* conditions_;
  std::string list_;
  std::vector<DeadRule>& dead_;
};

/// Whether some keyplane gets the rules under `name`.
bool isRead(const Boards& boards, std::string_view name) {
  return std::ranges::any_of(boards.keyplanes(),
                             [&](const Keyplane& keyplane) { return keyplane.list == name; });
}

/// The rules of `list`, had they stood under `name`.
void buryList(PropertyListView list, std::string_view name, std::vector<DeadRule>& dead) {
  for (const PropertyListView rule : list.items()) {
    if (!isSound(rule)) continue;
    const auto items = rule.items();
    dead.push_back({std::string(name),
                    DeadRule::kLast,
                    {std::string(*items[0].string())},
                    partsSetBy(items[1])});
  }
}

void tellUnreadList(Theme& theme, const Boards& boards, const PropertyListEntry& entry,
                    std::vector<DeadRule>& dead) {
  const Place place = theme.source.atKey(entryOf(std::string(kStyles), entry.key), entry);
  const auto styles = visualStyles(boards);
  if (styles.contains(entry.key)) {
    return theme.findings.add("unread-style"_rule, place,
                              "rules under " + inQuotes(entry.key) +
                                  " are never read; its keyplanes take those of another style");
  }
  const std::vector<std::string_view> names(styles.begin(), styles.end());
  const auto meant = theme.suggestions.nearest(entry.key, names);
  if (meant) buryList(entry.value, *meant, dead);
  theme.findings.add("unknown-style"_rule, place,
                     inQuotes(entry.key) + " is no visual style" + asQuestion(meant));
}

void checkList(Theme& theme, const Boards& boards, const PropertyListEntry& entry,
               ConditionCheck* conditions, RuleUse& use) {
  // Whatever is wrong with rules that nobody reads, the library never meets it.
  if (!isRead(boards, entry.key)) return tellUnreadList(theme, boards, entry, use.dead);
  const std::string path = entryOf(std::string(kStyles), entry.key);
  if (!entry.value.isArray()) {
    const KeyCase& key = boards.cases().front();
    const std::string log =
        logOf([&] { prismal::PMGetMatchingStyles(entry.value, key.identity, key.control_state); });
    use.dead.push_back({std::string(entry.key), 0, {"*"}, kAllParts});
    return theme.findings.add("style-list"_rule, theme.source.at(path, entry.value),
                              std::string(typeOf(entry.value)) + " in place of an array of rules",
                              log);
  }
  RuleCheck rules(theme, boards, conditions, entry.key, use.dead);
  std::vector<bool> isExplained;
  for (const PropertyListView rule : entry.value.items()) {
    isExplained.push_back(rules.check(rule, isExplained.size()));
  }
  if (conditions) checkUse(theme, boards, entry.key, entry.value, use, isExplained);
}

/// The rules of a section that is lost.
void buryStyles(const Theme& theme, std::vector<DeadRule>& dead) {
  if (!theme.lost.contains(kStyles)) return;
  const PropertyListView section = theme.section(kStyles);
  if (section && !section.isDictionary()) {
    return dead.push_back({"", DeadRule::kLast, {"*"}, kAllParts});
  }
  for (const auto& other : theme.source.list().entries()) {
    if (other.key == kStyles) continue;
    for (const auto& list : other.value.entries()) buryList(list.value, list.key, dead);
  }
}

}  // namespace

bool checkStyles(Theme& theme, const Boards& boards, RuleUse& use) {
  const PropertyListView styles = theme.section(kStyles);
  const bool isTooMany = isTooMuch(theme);
  if (isTooMany) {
    theme.findings.add("too-many-rules"_rule, theme.source.at(std::string(kStyles), styles),
                       "more than " + std::to_string(kMostRules) +
                           " rules, or conditions too long; which keys they match isn't checked");
  }
  LastWord nobody;
  nobody.fill(-1);
  if (!isTooMany) use.words.assign(boards.cases().size(), nobody);
  ConditionCheck conditions(theme, boards);
  for (const PropertyListEntry& entry : styles.entries()) {
    checkList(theme, boards, entry, isTooMany ? nullptr : &conditions, use);
  }
  buryStyles(theme, use.dead);
  return !isTooMany;
}

}  // namespace tools::check
