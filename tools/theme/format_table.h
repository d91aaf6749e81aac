#pragma once

// What a theme and the user's settings may hold, as the library reads it. The command line and the
// schema take it from here; a test holds it against the library, and the format's page against it.

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string_view>

namespace tools::theme {

/// What a value has to be. On the device a boolean is a number as well; a switch is a number that
/// is as a rule written as one.
enum class ValueType : std::uint8_t { kString, kNumber, kSwitch, kArray, kDictionary };

constexpr std::string_view typeName(ValueType type) {
  constexpr std::string_view kNames[] = {"string", "number", "number or boolean", "array",
                                         "dictionary"};
  return kNames[static_cast<std::size_t>(type)];
}

/// A key of a dictionary.
struct FormatKey {
  std::string_view name;
  ValueType type;
  std::string_view description;
};

/// The keys at the root of a theme; others are ignored.
inline constexpr FormatKey kSections[] = {
    {"CustomColor", ValueType::kArray, "colours by name: pairs of a name and #RRGGBBAA"},
    {"CustomLinearGradient", ValueType::kArray,
     "gradients by name: a name, then one colour name or two, from top to bottom"},
    {"Styles", ValueType::kDictionary,
     "for each visual style an array of rules: pairs of a condition and properties"},
    {"BackgroundImages", ValueType::kDictionary, "for each background key the path of a picture"},
};

/// What a rule sets, in the order in which it is applied.
inline constexpr FormatKey kStyleProperties[] = {
    {"BackgroundGradient", ValueType::kString,
     "the name of the gradient that fills the key's face"},
    {"TransparentForeground", ValueType::kSwitch, "when true, the key has no background"},
    {"TextColor", ValueType::kString, "the colour name of the key's text or symbol"},
    {"EtchColor", ValueType::kString, "the colour name of the etch beneath the text"},
    {"SecondaryTextColor", ValueType::kString,
     "the colour name of the second text, where a key has one"},
    {"EtchOffsetX", ValueType::kNumber,
     "how far the etch lies to the right of the text, in points"},
    {"EtchOffsetY", ValueType::kNumber, "how far the etch lies below the text, in points"},
    {"FontName", ValueType::kString, "the font of the key's text"},
};

/// What a condition can ask. All but the star take values: NAME=VALUE,VALUE.
struct ConditionTerm {
  std::string_view name;
  std::string_view example;
  std::string_view description;
};

inline constexpr std::string_view kEveryKey = "*";
inline constexpr ConditionTerm kConditionTerms[] = {
    {"DisplayType", "DisplayType=Shift,Delete", "the key is of one of these display types"},
    {"DisplayTypeHint", "DisplayTypeHint=1", "the key has one of these hints, in decimal"},
    {"KeyName", "KeyName=Latin-Small-Letter-Q,Space-Key", "the key has one of these names"},
    {"Row", "Row=Row1,Row3", "the key stands in one of these rows, counted from the top"},
    {"ControlState", "ControlState=1",
     "the key is 1 pressed, 2 disabled, 3 at rest, 6 shift that is on, 7 shift that is locked"},
};

struct VisualStyle {
  std::string_view name;
  bool hasRules;  ///< else it takes another's, and has nothing but background pictures of its own
  std::string_view description;
};

inline constexpr VisualStyle kVisualStyles[] = {
    {"iPhone-Standard", true, "a phone's keyboard"},
    {"iPhone-Alert", true, "a phone's keyboard over an alert"},
    {"iPad-Standard", true, "a tablet's keyboard, and the rules of its split one"},
    {"iPad-Alert", true, "a tablet's keyboard over an alert"},
    {"iPad-Split", false, "a tablet's split keyboard: background pictures alone"},
};

/// Where a background key has a visual style, the dictation panel has this.
inline constexpr std::string_view kDictationStyle = "iPhone-Dictation";

inline constexpr std::string_view kBackgroundOrientations[] = {"Portrait", "Landscape"};

struct BackgroundKeyForm {
  std::string_view name;
  std::string_view example;
  std::string_view description;
};

/// From the one that goes before all others to the one that is left when there is no other.
inline constexpr BackgroundKeyForm kBackgroundKeyForms[] = {
    {"full key", "Portrait;iPhone-Standard;1;258", "one keyplane in one variant"},
    {"three fields", "Portrait;iPhone-Standard;1", "one keyplane"},
    {"two fields", "Portrait;iPhone-Standard", "one visual style"},
    {"one field", "Portrait", "everything in that orientation"},
};

/// Of the user's settings.
inline constexpr FormatKey kSettings[] = {
    {"usePrismal", ValueType::kSwitch, "the master switch: off when false or zero"},
    {"backgroundImages", ValueType::kDictionary,
     "the user's own pictures: for each visual style a dictionary of orientation and path"},
};

/// Whether no name stands in `table` twice.
template <class Row, std::size_t size>
constexpr bool namesDiffer(const Row (&table)[size]) {
  for (auto row = std::begin(table); row != std::end(table); ++row) {
    const auto sameName = [&](const Row& other) { return other.name == row->name; };
    if (std::any_of(std::next(row), std::end(table), sameName)) return false;
  }
  return true;
}

static_assert(namesDiffer(kSections) && namesDiffer(kStyleProperties) &&
              namesDiffer(kConditionTerms) && namesDiffer(kVisualStyles) &&
              namesDiffer(kBackgroundKeyForms) && namesDiffer(kSettings));
// Each example shows its own term.
static_assert(std::ranges::all_of(kConditionTerms, [](const ConditionTerm& term) {
  return term.example.starts_with(term.name) && term.example[term.name.size()] == '=';
}));

}  // namespace tools::theme
