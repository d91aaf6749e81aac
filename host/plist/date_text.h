#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/plist/node.h"

namespace host::plist {

/// Whether `date` lies in the years 1 to 9999, the ones that can be written; NaN does not.
bool isWritable(Date date);

/// A date like 2013-09-18T00:00:00Z, white space around it allowed; none when it is none.
std::optional<Date> parseDate(std::string_view text);

/// Appends `date` like 2013-09-18T00:00:00Z. The fraction of its second is dropped; a date that is
/// not writable becomes the nearest that is.
void appendIsoDate(std::string& text, Date date);

/// Appends `date` like 2013-09-18 00:00:00 +0000, otherwise as above.
void appendLogDate(std::string& text, Date date);

}  // namespace host::plist
