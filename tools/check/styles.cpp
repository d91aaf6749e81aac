#include "check/styles.h"

#include <algorithm>
#include <set>

#include "check/conditions.h"
#include "check/device_theme.h"
#include "check/did_you_mean.h"
#include "check/words.h"
#include "styles/style_matching.h"

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

/// Checks the rules of one list, each for itself.
class RuleCheck {
 public:
  RuleCheck(Theme& theme, const Boards& boards, ConditionCheck* conditions)
      : theme_(theme), boards_(boards), conditions_(conditions) {}

  /// Whether something was told that explains why the rule has no effect.
  bool check(PropertyListView rule, const std::string& path) {
    if (!isSound(rule)) {
      tellUnsound(rule, path);
      return true;
    }
    const auto items = rule.items();
    const std::string style = itemOf(path, 1);
    const bool isExplained =
        conditions_ &&
        conditions_->check(theme_.source.at(itemOf(path, 0), items[0]), *items[0].string());
    bool isOdd = false;
    for (const PropertyListEntry& property : items[1].entries())
      isOdd |= checkProperty(property, style);
    if (!isOdd && partsSetBy(items[1]) == 0) {
      theme_.findings.add("rule-sets-nothing"_rule, theme_.source.at(style, items[1]),
                          items[1].entries().empty()
                              ? "this rule sets nothing"
                              : "TransparentForeground has an effect only when true");
    }
    return isExplained;
  }

 private:
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

  /// Whether there is something wrong with it.
  bool checkProperty(const PropertyListEntry& property, const std::string& style) {
    const std::string path = entryOf(style, property.key);
    const Property known = propertyNamed(property.key);
    if (known.as_string == 0 && known.as_number == 0) {
      theme_.findings.add(
          "unknown-property"_rule, theme_.source.atKey(path, property),
          "nobody reads " + inQuotes(property.key) + didYouMean(property.key, kProperties));
      return true;
    }
    const Place place = theme_.source.at(path, property.value);
    const bool wantsString = known.as_string != 0;
    if (wantsString ? !property.value.isString() : !property.value.isNumber()) {
      theme_.findings.add("property-type"_rule, place,
                          std::string(typeOf(property.value)) + " in place of a " +
                              (wantsString ? "string" : "number"));
      return true;
    }
    checkName(place, property, known.as_string);
    return false;
  }

  /// What is set by a string is the name of something, but for the font.
  void checkName(const Place& place, const PropertyListEntry& property, Parts parts) {
    const std::string_view name = property.value.string().value_or("");
    constexpr Parts kColored = only(Part::text) | only(Part::etch) | only(Part::second_text);
    if (parts & only(Part::background)) checkGradientName(theme_, place, property.key, name);
    if (parts & kColored) checkColorName(theme_, place, property.key, name);
  }

  Theme& theme_;
  const Boards& boards_;
  ConditionCheck* conditions_;
};

/// Whether some keyplane gets the rules under `name`.
bool isRead(const Boards& boards, std::string_view name) {
  return std::ranges::any_of(boards.keyplanes(),
                             [&](const Keyplane& keyplane) { return keyplane.list == name; });
}

void checkStyleName(Theme& theme, const Boards& boards, const PropertyListEntry& entry) {
  if (isRead(boards, entry.key)) return;
  const Place place = theme.source.atKey(entryOf(std::string(kStyles), entry.key), entry);
  const auto styles = visualStyles(boards);
  if (styles.contains(entry.key)) {
    return theme.findings.add("unread-style"_rule, place,
                              "rules under " + inQuotes(entry.key) +
                                  " are never read; its keyplanes take those of another style");
  }
  const std::vector<std::string_view> names(styles.begin(), styles.end());
  theme.findings.add("unknown-style"_rule, place,
                     inQuotes(entry.key) + " is no visual style" + didYouMean(entry.key, names));
}

void checkList(Theme& theme, const Boards& boards, const PropertyListEntry& entry,
               ConditionCheck* conditions, LastWords& words) {
  checkStyleName(theme, boards, entry);
  const std::string path = entryOf(std::string(kStyles), entry.key);
  if (!entry.value.isArray()) {
    const KeyCase& key = boards.cases().front();
    const std::string log =
        logOf([&] { prismal::PMGetMatchingStyles(entry.value, key.identity, key.control_state); });
    return theme.findings.add("style-list"_rule, theme.source.at(path, entry.value),
                              std::string(typeOf(entry.value)) + " in place of an array of rules",
                              log);
  }
  RuleCheck rules(theme, boards, conditions);
  std::vector<bool> isExplained;
  for (const PropertyListView rule : entry.value.items()) {
    isExplained.push_back(rules.check(rule, itemOf(path, isExplained.size())));
  }
  if (conditions) checkUse(theme, boards, entry.key, entry.value, words, isExplained);
}

}  // namespace

bool checkStyles(Theme& theme, const Boards& boards, LastWords& words) {
  const PropertyListView styles = theme.section(kStyles);
  const bool isTooMany = isTooMuch(theme);
  if (isTooMany) {
    theme.findings.add("too-many-rules"_rule, theme.source.at(std::string(kStyles), styles),
                       "more than " + std::to_string(kMostRules) +
                           " rules, or conditions too long; which keys they match isn't checked");
  }
  LastWord nobody;
  nobody.fill(-1);
  if (!isTooMany) words.assign(boards.cases().size(), nobody);
  ConditionCheck conditions(theme, boards);
  for (const PropertyListEntry& entry : styles.entries()) {
    checkList(theme, boards, entry, isTooMany ? nullptr : &conditions, words);
  }
  return !isTooMany;
}

}  // namespace tools::check
