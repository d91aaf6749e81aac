#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "check/rules.h"
#include "host/plist/node.h"

namespace tools::check {

/// Where something stands in a theme.
struct Place {
  std::string path;  ///< Styles.iPhone-Standard[4][1].TextColor; empty: the whole file
  host::plist::Position position;  ///< none in a binary list
};

/// A line of a theme's file, of a long one the part around a place.
struct SourceLine {
  std::string text;        ///< empty: none
  std::uint32_t mark = 0;  ///< which of its characters, from 1, the place is
};

/// Something to be told of a theme.
struct Finding {
  const Rule* rule = nullptr;
  Place place;
  std::string message;  ///< one line, without the path
  std::string log;      ///< what the library logs of it; empty: nothing
  SourceLine source;    ///< at the place
};

/// Takes findings, of one rule as many as anybody mends; the rest is counted.
class Findings {
 public:
  static constexpr std::size_t kMostOfARule = 10'000;

  void add(const Rule& rule, Place place, std::string_view message, std::string_view log = {});

  /// In the order of their places.
  std::vector<Finding> take() &&;

 private:
  std::vector<Finding> findings_;
  std::map<const Rule*, std::size_t> counts_;
};

}  // namespace tools::check
