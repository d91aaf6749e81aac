#include "check/font_names.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "check/words.h"
#include "host/drawing/font_files.h"
#include "suggestion.h"
#include "support/characters.h"

namespace tools::check {

namespace {

/// A font's name as fonts are looked up: case, spaces and hyphens make no difference between a full
/// name and a family and style joined by a hyphen.
std::string plain(std::string_view name) {
  std::string text;
  for (const char c : name) {
    if (c != ' ' && c != '-') text += prismal::lowerCase(c);
  }
  return text;
}

/// The name of an installed font that `name` differs from by a letter or two; none too when it is
/// one.
std::optional<std::string> nearestFont(std::string_view name) {
  static const auto names = host::drawing::FontFiles().names();
  const std::string written = plain(name);
  const std::size_t most = std::min<std::size_t>(2, written.size() / 5);
  std::optional<std::string> best;
  std::size_t least = most + 1;
  for (const std::string& known : names) {
    const std::size_t distance = editDistance(written, plain(known));
    if (distance == 0) return std::nullopt;
    if (distance >= least) continue;
    least = distance;
    best = known;
  }
  return best;
}

}  // namespace

void checkFont(Theme& theme, const Place& place, std::string_view name) {
  constexpr std::size_t kLongest = 64;
  if (name.empty()) {
    return theme.findings.add("unknown-font"_rule, place,
                              "the name is empty; the system font takes its place");
  }
  if (name.size() > kLongest) return;
  const auto [known, isNew] = theme.fonts.try_emplace(std::string(name));
  if (isNew) known->second = nearestFont(name);
  if (!known->second) return;
  theme.findings.add("unknown-font"_rule, place,
                     "no font is called " + inQuotes(name) + asQuestion(*known->second));
}

}  // namespace tools::check
