#pragma once

#include <string_view>

#include "platform/property_list.h"

namespace fuzz {

/// Requires what must hold of every list that a reader of any form has made: it is written in
/// binary and in XML so that it is read again as the very same, but for what XML can't hold;
/// libplist reads the same from what was written; and the description is one line of text.
void requireWritable(const platform::PropertyList& list);

/// Requires that the list is the very same once written as JSON and read again.
void requireWritableAsJson(const platform::PropertyList& list);

/// Requires that a list from a reader is sound, or that there is a reason in one line of text.
void requireReadingOrReason(const platform::PropertyList& list, std::string_view reason);

}  // namespace fuzz
