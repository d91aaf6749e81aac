#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fuzz {

/// Ends the process, as a finding, unless `holds`: says what should have held, and with what. Also
/// in builds without assertions.
inline void require(bool holds, const char* what, std::string_view with = {}) {
  if (holds) return;
  constexpr std::size_t kGlance = 1000;  // bytes
  std::fprintf(stderr, "does not hold: %s\n%s\n", what,
               std::string(with.substr(0, kGlance)).c_str());
  std::abort();
}

}  // namespace fuzz
