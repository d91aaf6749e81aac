#pragma once

// The texts inside strings of a scenario that mean something else: bytes, dates, colours, paths.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "scenario/model.h"

namespace tools::scenario {

/// The bytes of standard base64 with its padding and without white space; none for other text.
std::optional<std::vector<std::byte>> fromBase64(std::string_view text);

/// The moment that "2013-09-18T00:00:00Z" names; none for text of another form and for a day or
/// time that the calendar does not have; years are 1 to 9999.
std::optional<std::chrono::sys_seconds> fromDate(std::string_view text);

/// The colour written "#RRGGBBAA", in either case; none for other text.
std::optional<Rgba> fromColor(std::string_view text);

/// Whether `text` begins at the root of the device and can be a path at all.
bool isDevicePath(std::string_view text);

/// The integer that `text` is the shortest decimal form of.
std::optional<std::int32_t> fromDecimal(std::string_view text);

}  // namespace tools::scenario
