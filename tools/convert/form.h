#pragma once

// The forms of a property list, told apart and written without loss.

#include <cstdint>
#include <string>
#include <string_view>

#include "host/plist/reader.h"

namespace tools::convert {

enum class Form : std::uint8_t { kXml, kBinary, kJson };

/// A form by the word that the command line has for it.
struct FormWord {
  std::string_view word;
  Form value;
};
inline constexpr FormWord kForms[] = {
    {"xml", Form::kXml}, {"binary", Form::kBinary}, {"json", Form::kJson}};

/// The form of a file, by its first bytes. What begins like neither of the others counts as JSON.
Form formOf(std::string_view bytes);

/// Reads a list of any form. Any thread.
host::plist::Reading readAnyForm(std::string_view bytes);

/// A file, or why there is none.
struct Writing {
  std::string bytes;
  std::string reason;  ///< one line; empty when there are bytes
};

/// Writes `list`, which comes from a reader. There are no bytes when the form can't hold all of it,
/// to the last character and bit, or when they would be too many to be read again. Any thread.
Writing writeForm(platform::PropertyListView list, Form form);

}  // namespace tools::convert
