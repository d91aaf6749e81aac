#pragma once

// What the library itself makes of single values, asked of its own code, which is linked into this
// program. The process must have a keyboard (keyboard/keyboard_process.h). Main thread only.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/property_list.h"

namespace tools::check {

/// Looks up the keyboard's classes for the library's code in this program, and keeps what it logs
/// out of the system log. To be called once, before anything below.
void prepareLibrary();

/// What the library logs while `work` runs; of several lines the first.
std::string logOf(const std::function<void()>& work);

// What is logged of an entry when it is the only one of its section.
std::string logOfColor(platform::PropertyListView entry);
std::string logOfGradient(platform::PropertyListView entry);
std::string logOfSection(platform::PropertyListView section,
                         void (*rebuild)(platform::PropertyListView));

/// A list that holds `value` and nothing else.
platform::PropertyList listOf(platform::PropertyListView value);

/// The parts of a key's look that a rule can set.
enum class Part : std::uint8_t { background, text, etch, second_text, etch_x, etch_y, font };
inline constexpr int kParts = 7;

/// A set of parts, a bit each.
using Parts = std::uint32_t;
constexpr Parts only(Part part) {
  return Parts{1} << static_cast<unsigned>(part);
}

inline constexpr Parts kAllParts = (Parts{1} << kParts) - 1;

/// What the style dictionary of a rule sets.
Parts partsSetBy(platform::PropertyListView style);

/// What a property of some name sets, as a string or as a number; neither: nobody reads it.
struct Property {
  Parts as_string = 0;
  Parts as_number = 0;
};
Property propertyNamed(std::string_view name);

}  // namespace tools::check
