#include "check/names.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <vector>

#include "check/did_you_mean.h"
#include "check/theme.h"
#include "check/words.h"
#include "colors/color_string.h"
#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/boards/visual_style.h"
#include "support/characters.h"

namespace tools::check {

using platform::PropertyListView;

namespace boards = host::boards;

namespace {

using Texts = std::vector<std::string_view>;

/// All that the names of a theme are held against.
class NameCheck {
 public:
  explicit NameCheck(Theme& theme) : theme_(theme) {
    for (const UnknownName& use : theme.unknown) uses_[{use.kind, use.name}].push_back(&use);
    for (const auto& entry : theme.source.list().entries()) {
      entry.key == kColors || entry.key == kGradients ? noteColorsOfGradients(entry.value)
                                                      : noteAll(entry.value);
    }
  }

  void check() {
    for (const Kind kind : {Kind::color, Kind::gradient}) {
      for (const auto& [name, definition] : theme_.definitions(kind)) {
        if (!isAskedFor(kind, name)) unused_[kind].push_back(name);
      }
    }
    for (const auto& [use, places] : uses_) checkUse(use.first, use.second, places);
    for (const auto& [kind, names] : unused_) {
      for (const std::string_view name : names) checkDefinition(kind, name);
    }
  }

 private:
  using Use = std::pair<Kind, std::string_view>;
  using Places = std::vector<const UnknownName*>;

  // What is used where.

  void noteAll(PropertyListView value) {
    if (const auto text = value.string()) used_.insert(*text);
    for (const PropertyListView item : value.items()) noteAll(item);
    for (const auto& entry : value.entries()) noteAll(entry.value);
  }

  void noteColorsOfGradients(PropertyListView section) {
    for (const PropertyListView entry : section.items()) {
      for (std::size_t i = 1; i < entry.items().size(); ++i) noteAll(entry.items()[i]);
    }
  }

  bool isAskedFor(Kind kind, std::string_view name) const {
    return used_.contains(name) || isSystemName(kind, name);
  }

  // Names that are used.

  void checkUse(Kind kind, std::string_view name, const Places& places) {
    theme_.doubtful.emplace(name);
    const bool isColorString = name.starts_with('#') && prismal::parseColorString(name);
    const bool isOfRefusedDefinition =
        theme_.hasTried(kind, name) || theme_.nameless >= uses_.size();
    if (isOfRefusedDefinition && !isColorString) return;
    std::string message = whatElse(kind, name, places.front()->what);
    if (message.empty()) {
      if (const auto definition = misspeltDefinition(kind, name, places.size())) {
        return tellDefinition(kind, *definition, name, places);
      }
      const std::string hint = theme_.suggestions.didYouMean(name, definedNames(kind));
      message = "no " + std::string(wordOf(kind)) + " is called " + inQuotes(name) + hint;
    }
    const Rule& rule = kind == Kind::color ? "unknown-color"_rule : "unknown-gradient"_rule;
    for (const UnknownName* use : places) theme_.findings.add(rule, use->place, message);
  }

  /// The definition that misspells a name which is used more than once; nobody uses it by the name
  /// that it has. Of a name that is used once nobody can say which of both is wrong.
  std::optional<std::string_view> misspeltDefinition(Kind kind, std::string_view name,
                                                     std::size_t uses) const {
    const auto unused = unused_.find(kind);
    if (uses < 2 || unused == unused_.end()) return std::nullopt;
    return theme_.suggestions.nearest(name, unused->second);
  }

  void tellDefinition(Kind kind, std::string_view name, std::string_view meant,
                      const Places& places) {
    Places inOrder = places;
    std::ranges::stable_sort(inOrder, {},
                             [](const UnknownName* use) { return use->place.position.line; });
    std::vector<std::string> where;
    for (const UnknownName* use : inOrder) where.push_back(whereIs(use->place));
    where.erase(std::unique(where.begin(), where.end()), where.end());
    theme_.findings.add("unused-name"_rule, placeOf(kind, name),
                        "nothing uses " + inQuotes(name) + "; did you mean " + inQuotes(meant) +
                            ", which is used at " + listed(where) + " and not defined?");
    told_.insert(name);
  }

  /// What an unknown name is in place of the name of a `kind`; empty: nothing known.
  std::string whatElse(Kind kind, std::string_view name, std::string_view what) const {
    const Kind other = otherThan(kind);
    const std::string takes =
        "; " + std::string(what) + " takes the name of a " + std::string(wordOf(kind));
    if (isDefined(theme_, other, name)) {
      return inQuotes(name) + " is a " + std::string(wordOf(other)) + takes;
    }
    if (name.starts_with('#') && prismal::parseColorString(name)) {
      return inQuotes(name) + " is a colour string" + takes;
    }
    return "";
  }

  /// The theme's own names first: of equally near ones the first is meant.
  Texts definedNames(Kind kind) const {
    Texts names;
    for (const auto& [name, definition] : theme_.definitions(kind)) names.push_back(name);
    const Texts system = systemNames(kind);
    names.insert(names.end(), system.begin(), system.end());
    return names;
  }

  // Names that are defined.

  void checkDefinition(Kind kind, std::string_view name) {
    if (told_.contains(name)) return;
    const Kind other = otherThan(kind);
    if (name.empty()) {
      return tell(kind, name, "the name is empty; nothing asks for it");
    }
    if (isSystemName(other, name)) {
      return tell(kind, name,
                  inQuotes(name) + " is the name of a " + std::string(wordOf(other)) +
                      "; what is defined here is a " + std::string(wordOf(kind)));
    }
    const auto meant = nearestSystemName(kind, name);
    if (!meant && !hasSystemPrefix(name)) return;
    if (meant) theme_.doubtful.emplace(*meant);
    tell(kind, name,
         "nothing asks for a " + std::string(wordOf(kind)) + " called " + inQuotes(name) +
             (meant ? "; did you mean " + inQuotes(*meant) + "?" : ""));
  }

  void tell(Kind kind, std::string_view name, std::string_view message) {
    theme_.findings.add("unused-name"_rule, placeOf(kind, name), message);
  }

  /// One that the theme doesn't define is meant rather than one that it does.
  std::optional<std::string_view> nearestSystemName(Kind kind, std::string_view name) const {
    const Texts all = systemNames(kind);
    Texts free = all;
    std::erase_if(
        free, [&](std::string_view system) { return theme_.definitions(kind).contains(system); });
    auto meant = theme_.suggestions.nearest(name, free);
    if (!meant) meant = theme_.suggestions.nearest(name, all);
    // The end of a system's name may well be a theme's own.
    if (meant && !hasSystemPrefix(name) && meant->ends_with(name)) return std::nullopt;
    return meant;
  }

  static bool hasSystemPrefix(std::string_view name) {
    constexpr std::string_view kPrefix = "uikb";
    return std::ranges::equal(name.substr(0, kPrefix.size()), kPrefix, {}, prismal::lowerCase);
  }

  Place placeOf(Kind kind, std::string_view name) const {
    return theme_.definitions(kind).find(name)->second.name;
  }

  Theme& theme_;
  std::map<Use, Places> uses_;
  std::map<Kind, Texts> unused_;
  std::unordered_set<std::string_view> used_;
  std::unordered_set<std::string_view> told_;  // definitions
};

}  // namespace

std::string_view wordOf(Kind kind) {
  return kind == Kind::color ? "colour" : "gradient";
}

const std::vector<prismal::BackgroundColorNames>& backgroundPairs() {
  static const auto all = [] {
    std::vector<prismal::BackgroundColorNames> pairs;
    for (int style = boards::kFirstVisualStyle; style <= boards::kLastVisualStyle; ++style) {
      const auto pair = prismal::backgroundColorNames(style);
      if (std::ranges::find(pairs, pair) == pairs.end()) pairs.push_back(pair);
    }
    return pairs;
  }();
  return all;
}

Texts systemNames(Kind kind) {
  Texts names;
  if (kind == Kind::gradient) {
    for (const auto& gradient : boards::systemGradients()) names.push_back(gradient.name);
    return names;
  }
  for (const auto& color : boards::systemColors()) names.push_back(color.name);
  for (const auto& [start, end] : backgroundPairs()) names.insert(names.end(), {start, end});
  return names;
}

bool isSystemName(Kind kind, std::string_view name) {
  if (kind == Kind::gradient) return boards::systemGradient(name) != nullptr;
  return boards::systemColor(name).has_value() ||
         std::ranges::any_of(backgroundPairs(), [&](const auto& pair) {
           return name == pair.start || name == pair.end;
         });
}

bool isDefined(const Theme& theme, Kind kind, std::string_view name) {
  if (theme.definitions(kind).contains(name)) return true;
  return kind == Kind::color ? boards::systemColor(name).has_value()
                             : boards::systemGradient(name) != nullptr;
}

void useName(Theme& theme, Kind kind, const Place& place, std::string_view what,
             std::string_view name) {
  if (isDefined(theme, kind, name)) return;
  theme.unknown.push_back({kind, std::string(name), place, std::string(what)});
}

void noteAttempts(Theme& theme, Kind kind, PropertyListView value) {
  const auto note = [&](std::string_view name) {
    if (!name.starts_with('#')) theme.tried[kind].emplace(name);
  };
  if (const auto text = value.string()) note(*text);
  for (const auto& entry : value.entries()) {
    note(entry.key);
    if (!entry.value.isString()) noteAttempts(theme, kind, entry.value);
  }
  const auto items = value.items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i == 0 || !items[i].isString()) noteAttempts(theme, kind, items[i]);
  }
}

bool isDoubtful(const Theme& theme, Kind kind, std::string_view name) {
  if (theme.doubtful.contains(name)) return true;
  const auto& definitions = theme.definitions(kind);
  const auto found = definitions.find(name);
  if (found == definitions.end() && (theme.hasTried(kind, name) || theme.nameless > 0)) return true;
  if (kind == Kind::color) return false;
  const auto isDoubtfulColor = [&](std::string_view color) {
    return isDoubtful(theme, Kind::color, color);
  };
  if (found != definitions.end()) {
    return std::ranges::any_of(found->second.colors, isDoubtfulColor);
  }
  const auto* const system = boards::systemGradient(name);
  return system && (isDoubtfulColor(system->start) || isDoubtfulColor(system->end));
}

void checkNames(Theme& theme) {
  NameCheck(theme).check();
}

}  // namespace tools::check
