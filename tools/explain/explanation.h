#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "explain/background_chain.h"
#include "explain/named_answers.h"
#include "explain/rule_outcomes.h"
#include "explain/theme_rules.h"
#include "explain/trait_properties.h"
#include "host/files/result.h"
#include "keyboard/key_json.h"
#include "keyboard/shown_view.h"
#include "keyboard/view.h"
#include "styles/key_identity.h"

namespace tools::explain {

/// What lies behind the keys where no picture does.
// NOLINTNEXTLINE(bugprone-exception-escape): moving JSON allocates nothing
struct BackgroundFill {
  keyboard::Json gradient;  ///< as the factory returned it
  FillAnswer answer;
  bool ofTheme = false;  ///< the theme has a hand in it
};

/// Why a key looks as it does.
// NOLINTNEXTLINE(bugprone-exception-escape): moving JSON allocates nothing
struct Explanation {
  keyboard::View view;
  keyboard::ShownView shown;
  const host::render::LiveKey* key = nullptr;  ///< in `shown`
  /// Other keys of the keyplane that have the label which was asked for.
  std::vector<std::string_view> namesakes;
  std::string_view visualStyle;
  prismal::StyleList list;
  RuleOutcomes outcomes;
  keyboard::Json traits;
  bool edgeRemoved = false;
  std::vector<TraitProperty> properties;
  std::vector<BackgroundTry> background;
  BackgroundFill backgroundFill;

  prismal::KeyIdentity identity() const { return prismal::KeyIdentity(key->tree.get()); }
};

/// Explains the key of `view` that has `nameOrLabel`. The process has a keyboard with the theme
/// that `rules` are of, and has shown nothing yet. The explanation looks into `rules`. Refuses a
/// key that the keyplane doesn't have. Main thread only, inside an autorelease pool.
host::files::Result<Explanation> explainKey(const keyboard::View& view, double scale,
                                            std::string_view nameOrLabel, const ThemeRules& rules);

/// Whether anything of the theme shows on the key or behind it.
bool isThemed(const Explanation& explanation);

/// What a condition's term was compared with; none for a term that tests nothing, and for the name
/// of a key that has none.
std::optional<std::string> testedText(prismal::ConditionSubject subject,
                                      const prismal::KeyIdentity& key, int controlState);

}  // namespace tools::explain
