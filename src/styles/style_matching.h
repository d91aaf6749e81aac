#pragma once

#include <vector>

#include "platform/property_list.h"
#include "styles/key_identity.h"

namespace prismal {

/// The style dictionaries of all rules of `rules` whose condition holds for the key, in the order
/// of the list. Malformed rules are logged, each time anew, and skipped. The dictionaries live as
/// long as the list.
std::vector<platform::PropertyListView> PMGetMatchingStyles(platform::PropertyListView rules,
                                                            const KeyIdentity& key,
                                                            int controlState);

}  // namespace prismal
