#pragma once

// The words by which the command line calls boards and what they show. Captions, file names and
// reports use the same words, so that what they say can be asked for again.

#include <algorithm>
#include <iterator>
#include <string_view>

#include "host/keyboard/boards/board.h"
#include "host/keyboard/boards/key_state.h"
#include "host/keyboard/boards/system_look.h"

namespace tools::keyboard {

template <class Value>
struct Word {
  std::string_view word;
  Value value;
};

/// A device by the name of its board.
inline constexpr Word<std::string_view> kDevices[] = {{"phone-3.5", "Phone-3.5-Inch"},
                                                      {"phone-4", "Phone-4-Inch"},
                                                      {"tablet", "Tablet"},
                                                      {"tablet-split", "Tablet-Split"}};

inline constexpr Word<host::boards::Orientation> kOrientations[] = {
    {"portrait", host::boards::Orientation::portrait},
    {"landscape", host::boards::Orientation::landscape}};

inline constexpr Word<host::boards::Look> kStyles[] = {{"standard", host::boards::Look::standard},
                                                       {"alert", host::boards::Look::alert}};

inline constexpr Word<host::boards::Plane> kPlanes[] = {
    {"small-letters", host::boards::Plane::small_letters},
    {"capital-letters", host::boards::Plane::capital_letters},
    {"numbers", host::boards::Plane::numbers},
    {"numbers-alternate", host::boards::Plane::numbers_alternate}};

inline constexpr Word<host::boards::Shift> kShifts[] = {{"on", host::boards::Shift::on},
                                                        {"locked", host::boards::Shift::locked}};

/// The visual styles under which a theme lists rules.
inline constexpr std::string_view kVisualStyles[] = {"iPhone-Standard", "iPhone-Alert",
                                                     "iPad-Standard", "iPad-Alert", "iPad-Split"};

/// Pixels a point.
inline constexpr Word<int> kScales[] = {{"1", 1}, {"2", 2}};

inline constexpr Word<bool> kYesOrNo[] = {{"yes", true}, {"no", false}};

/// The word for `value`, which must be in `words`.
template <class Value, std::size_t size>
constexpr std::string_view wordOf(const Word<Value> (&words)[size], const Value& value) {
  return std::ranges::find(words, value, &Word<Value>::value)->word;
}

}  // namespace tools::keyboard
