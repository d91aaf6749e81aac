#pragma once

#include "platform/runtime.h"

namespace prismal {

/// Empties the keyboard's cache of drawn keys: on disk, then its store, then its memory.
void PMPurgeKeyboardCache();

/// Replaces `+[UIKeyboardCache enabled]`: never. A key drawn by one theme must not be shown under
/// the next.
bool PMCacheEnabledReplacement(platform::Class self, platform::SEL selector);

}  // namespace prismal
