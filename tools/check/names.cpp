#include <vector>

#include "check/did_you_mean.h"
#include "check/theme.h"
#include "check/words.h"
#include "colors/color_string.h"
#include "host/keyboard/boards/system_look.h"

namespace tools::check {

namespace boards = host::boards;

namespace {

enum class Kind { color, gradient };

bool isKnown(const Theme& theme, Kind kind, std::string_view name) {
  if (kind == Kind::color) {
    return theme.colors.contains(name) || boards::systemColor(name).has_value();
  }
  return theme.gradients.contains(name) || boards::systemGradient(name) != nullptr;
}

std::vector<std::string_view> namesOf(const Theme& theme, Kind kind) {
  std::vector<std::string_view> names;
  for (const auto& [name, place] : kind == Kind::color ? theme.colors : theme.gradients) {
    names.push_back(name);
  }
  if (kind == Kind::color) {
    for (const auto& color : boards::systemColors()) names.push_back(color.name);
  } else {
    for (const auto& gradient : boards::systemGradients()) names.push_back(gradient.name);
  }
  return names;
}

std::string_view wordOf(Kind kind) {
  return kind == Kind::color ? "colour" : "gradient";
}

std::string whyUnknown(const Theme& theme, Kind kind, std::string_view what,
                       std::string_view name) {
  const Kind other = kind == Kind::color ? Kind::gradient : Kind::color;
  const std::string takes =
      "; " + std::string(what) + " takes the name of a " + std::string(wordOf(kind));
  if (isKnown(theme, other, name)) {
    return inQuotes(name) + " is a " + std::string(wordOf(other)) + takes;
  }
  if (name.starts_with('#') && prismal::parseColorString(name)) {
    return inQuotes(name) + " is a colour string" + takes;
  }
  return "no " + std::string(wordOf(kind)) + " is called " + inQuotes(name) +
         didYouMean(name, namesOf(theme, kind));
}

void check(Theme& theme, Kind kind, const Place& place, std::string_view what,
           std::string_view name) {
  if (isKnown(theme, kind, name)) return;
  const bool isKnownOtherwise =
      isKnown(theme, kind == Kind::color ? Kind::gradient : Kind::color, name);
  if (theme.tried.contains(name) && !isKnownOtherwise) return;
  const Rule& rule = kind == Kind::color ? "unknown-color"_rule : "unknown-gradient"_rule;
  const bool isFull = theme.findings.isFull(rule);
  theme.findings.add(rule, place, isFull ? "" : whyUnknown(theme, kind, what, name));
}

}  // namespace

void checkColorName(Theme& theme, const Place& place, std::string_view what,
                    std::string_view name) {
  check(theme, Kind::color, place, what, name);
}

void checkGradientName(Theme& theme, const Place& place, std::string_view what,
                       std::string_view name) {
  check(theme, Kind::gradient, place, what, name);
}

}  // namespace tools::check
