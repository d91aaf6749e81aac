#pragma once

#include <cstdint>
#include <string_view>

#include "platform/property_list.h"

namespace fuzz {

/// What another library, libplist, makes of the bytes of a property list.
enum class Opinion : std::uint8_t { kNone, kRefused, kSame, kDifferent };

/// Whether libplist reads `list` from `bytes`, of either form. kNone where this build has no
/// libplist, and for what it is known to read in a way of its own: it keeps moments in 32 bits, the
/// fractions of binary ones without their sign, ends texts at a NUL, and refuses an empty key in
/// XML.
Opinion peerOpinion(std::string_view bytes, platform::PropertyListView list);

}  // namespace fuzz
