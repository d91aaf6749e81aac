#pragma once

// Several themes as one, so that a later one goes over an earlier one as rules of one theme do.

#include <span>
#include <string>
#include <vector>

#include "platform/property_list.h"

namespace tools::theme {

/// One of several themes that lie over each other.
struct Layer {
  std::string name;
  platform::PropertyList theme;  ///< a dictionary
};

struct Merge {
  /// All four sections, also those that nobody fills: a process that reads the theme again keeps
  /// the colours of before only where there is no section.
  platform::PropertyList theme;
  /// What the library would refuse and has therefore been left out, a line each. In one theme it
  /// would cost that theme a section; in all of them together it would cost everybody theirs.
  std::vector<std::string> leftOut;
};

/// The layers from the lowest to the topmost as one theme.
///
/// 1. Colours: the topmost layer's first, because the first definition of a name counts.
/// 2. Gradients: the topmost layer's last.
/// 3. Rules: the topmost layer's last, visual style by visual style. Where a layer has rules for
///    tablets, those that have none give their phone's rules, as they would alone.
/// 4. Pictures: the topmost layer's, and of those below what is seen where it has none: under no
///    key for which it would answer with an equal or a more general one.
///
/// Entries inside a section are taken as they are; the library judges them.
Merge merge(std::span<const Layer> layers);

}  // namespace tools::theme
