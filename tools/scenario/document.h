#pragma once

// JSON text as a tree, refused early where a tree would lose what the text says.

#include <cstddef>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tools::scenario {

/// What the functions that read a scenario throw to read(), which makes a Fault of it.
struct Malformed : std::runtime_error {
  Malformed(std::string where, const std::string& reason)
      : std::runtime_error(reason), place(std::move(where)) {}
  std::string place;  ///< a JSON pointer, or a line and column
};

/// What is looked at at all: a text's bytes, and how many arrays and objects lie in one another.
inline constexpr std::size_t kMaxTextBytes = std::size_t{64} << 20;
inline constexpr std::size_t kMaxDepth = 1000;

// NOLINTNEXTLINE(bugprone-exception-escape): moving JSON allocates nothing
struct Document {
  nlohmann::ordered_json root;
  /// Where the text has a whole number beyond 64 bits: the tree holds the nearest real, which alone
  /// would look like a number that was written with a point.
  std::set<std::string, std::less<>> hugeIntegers;
};

/// Throws Malformed for text that is no JSON (with line and column, both from 1, the column in
/// bytes), is too large or too deep, or has two members of one name in an object.
Document parse(std::string_view text);

}  // namespace tools::scenario
