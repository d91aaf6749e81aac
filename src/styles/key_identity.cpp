#include "styles/key_identity.h"

#include <cstdint>

#include "support/characters.h"

namespace prismal {

namespace {

constexpr std::size_t kDisplayTypePrefix = 18;

}  // namespace

KeyIdentity::KeyIdentity(const Values& values)
    : name_(values.name),
      displayType_(withoutFirstCharacters(values.displayTypeName, kDisplayTypePrefix)) {
  displayTypeHint_ << std::int64_t{values.displayTypeHint};
  row_ << "Row" << std::int64_t{values.displayRowHint};
}

KeyIdentity::KeyIdentity(platform::UIKBTree key)
    : KeyIdentity(Values{key.name(), platform::enumStringForDisplayType(key.displayType()),
                         key.displayTypeHint(), key.displayRowHint()}) {}

}  // namespace prismal
