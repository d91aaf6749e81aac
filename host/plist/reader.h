#pragma once

// Reading property lists that strangers wrote. Both forms are read in full before anything is
// handed out; nothing is taken in that both writers could not give back.

#include <string>
#include <string_view>

#include "platform/property_list.h"

namespace host::plist {

/// A property list, or why there is none.
struct Reading {
  platform::PropertyList list;
  /// Names the place first: "line 3, column 7: ...", "object 5 at offset 42: ...". One line of
  /// UTF-8; empty when there is a list.
  std::string reason;

  explicit operator bool() const { return static_cast<bool>(list); }
};

// All three keep nothing of `bytes`, never follow a reference out of it and refuse what exceeds
// limits.h. Any thread; they throw nothing but std::bad_alloc.

/// Reads the binary form when `bytes` begin like one, else the XML form.
Reading read(std::string_view bytes);

/// Reads XML, which must be UTF-8. A document type is accepted when it merely names one; it is
/// never fetched, and no entity but the five of every document is known. The <plist> element around
/// the value may be missing.
Reading readXml(std::string_view bytes);

/// Reads the binary form. An object that is referred to from several places becomes one shared
/// value. Objects that nothing refers to are not looked at.
Reading readBinary(std::string_view bytes);

}  // namespace host::plist
