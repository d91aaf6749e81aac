#include "styles/key_identity.h"

#include "support/characters.h"

namespace prismal {

namespace {

constexpr std::size_t kDisplayTypePrefix = 18;

}  // namespace

KeyIdentity::KeyIdentity(const Values& values)
    : name_(values.name),
      displayType_(withoutFirstCharacters(values.displayTypeName, kDisplayTypePrefix)) {
  displayTypeHint_.append(values.displayTypeHint);
  row_.append(std::string_view("Row"), values.displayRowHint);
}

KeyIdentity::KeyIdentity(platform::UIKBTree key)
    : KeyIdentity(Values{key.name(), platform::enumStringForDisplayType(key.displayType()),
                         key.displayTypeHint(), key.displayRowHint()}) {}

}  // namespace prismal
