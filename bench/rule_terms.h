#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// What a term tests, in the order in which the peers keep a key's values.
enum class Subject { kDisplayTypeHint, kDisplayType, kControlState, kRow, kKeyName };
inline constexpr std::size_t kSubjects = 5;

/// A term taken apart.
struct RuleTerm {
  Subject subject{};
  std::vector<std::string> values;
};

/// The terms of a well-formed condition up to "*".
std::vector<RuleTerm> termsOf(std::string_view condition);

/// What the sample key answers, by subject.
inline constexpr std::array<std::string_view, kSubjects> kSampleKey = {"0", "Letter", "3", "Row1",
                                                                       "Latin-Small-Letter-Q"};
inline constexpr int kSampleControlState = 3;

}  // namespace bench
