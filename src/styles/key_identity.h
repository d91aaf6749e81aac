#pragma once

#include <optional>
#include <string_view>

#include "platform/keyboard.h"
#include "support/fixed_text.h"

namespace prismal {

/// What conditions can test of a key, as the texts they compare with. Its texts belong to the key.
class KeyIdentity {
 public:
  struct Values {
    std::optional<std::string_view> name = std::nullopt;
    /// The whole name of the display type, with the prefix that all of them have.
    std::string_view displayTypeName = {};
    int displayTypeHint = 0;
    int displayRowHint = 0;
  };

  explicit KeyIdentity(const Values& values);
  explicit KeyIdentity(platform::UIKBTree key);

  const std::optional<std::string_view>& name() const { return name_; }
  /// Without the prefix; empty when the platform's name is no longer than that.
  std::string_view displayType() const { return displayType_; }
  std::string_view displayTypeHint() const { return displayTypeHint_.view(); }
  /// "Row" and the number.
  std::string_view row() const { return row_.view(); }

 private:
  std::optional<std::string_view> name_;
  std::string_view displayType_;
  FixedText<16> displayTypeHint_;
  FixedText<16> row_;
};

}  // namespace prismal
