#pragma once

#include <string>

#include "host/plist/limits.h"

namespace host::plist {

/// Thrown inside a reader where it finds something wrong; the reader's entry function turns it into
/// the reason that the caller sees.
struct Refusal {
  /// Names the place first.
  std::string reason;
};

/// Why more than kMaxBytes are not looked at.
inline std::string whyTooLong() {
  return "longer than " + std::to_string(kMaxBytes >> 20U) + " MiB";
}

}  // namespace host::plist
