#pragma once

// A theme while it is checked, and the one function for each of its sections. They add to what the
// later ones know, and are called in this order.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "check/did_you_mean.h"
#include "check/finding.h"
#include "check/source.h"

namespace tools::check {

/// A definition that counts.
struct Definition {
  Place name;
  Place value;                           ///< of a colour its string, of a gradient all of it
  std::vector<std::string> colors = {};  ///< of which a gradient is made
};
using Definitions = std::map<std::string, Definition, std::less<>>;

/// What a name stands for.
enum class Kind : std::uint8_t { color, gradient };

/// Where a name stands that neither the theme nor the system defines.
struct UnknownName {
  Kind kind;
  std::string name;
  Place place;
  std::string what;  ///< what takes it: "TextColor"
};

using Names = std::set<std::string, std::less<>>;

struct Theme {
  const Source& source;
  Findings& findings;
  Definitions colors = {};
  Definitions gradients = {};
  /// Names that the theme tries to define, by what they should stand for. What is wrong there has
  /// been told.
  std::map<Kind, Names> tried = {};
  /// Sections that are there under another name or as another type, which has been told.
  Names lost = {};
  /// Definitions of which the name is no string, which has been told.
  std::size_t nameless = 0;
  std::vector<UnknownName> unknown = {};
  /// Names that don't stand for what was meant, of which that has been told.
  Names doubtful = {};
  /// Background keys under which no picture is found where one was meant to be.
  Names doubtfulImages = {};

  Suggestions suggestions = {};
  /// What fonts are called that names of fonts are likely to mean; none: all is well with the name.
  std::map<std::string, std::optional<std::string>, std::less<>> fonts = {};

  bool hasTried(Kind kind, std::string_view name) const {
    const auto found = tried.find(kind);
    return found != tried.end() && found->second.contains(name);
  }
  const Definitions& definitions(Kind kind) const {
    return kind == Kind::color ? colors : gradients;
  }
  platform::PropertyListView section(std::string_view name) const {
    return source.list().objectForKey(name);
  }
};

inline constexpr std::string_view kColors = "CustomColor";
inline constexpr std::string_view kGradients = "CustomLinearGradient";
inline constexpr std::string_view kStyles = "Styles";
inline constexpr std::string_view kImages = "BackgroundImages";

/// What is at the root, and the types of the sections.
void checkSections(Theme& theme);
void checkColors(Theme& theme);
void checkGradients(Theme& theme);
/// Names that are used and not defined, or the other way round. After the styles.
void checkNames(Theme& theme);
/// The pairs of background colours. After the names.
void checkPairs(Theme& theme);

/// Notes a name at `place`, an item or a property of `what` ("TextColor"), that should be that of a
/// colour or of a gradient.
void useName(Theme& theme, Kind kind, const Place& place, std::string_view what,
             std::string_view name);

}  // namespace tools::check
