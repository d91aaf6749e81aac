#include "backgrounds/orientation.h"

#include <cstring>

#include "hooks/class_references.h"
#include "platform/keyboard.h"

namespace prismal {

namespace {

constexpr std::int32_t kPortrait = 1;

}  // namespace

std::int32_t keyboardOrientation() {
  const auto variable =
      platform::class_getInstanceVariable(classes.UIKeyboardImpl, "m_orientation");
  if (!variable) return kPortrait;
  const auto keyboard = platform::UIKeyboardImpl::sharedInstance();
  if (!keyboard) return kPortrait;
  std::int32_t orientation = 0;
  const auto* const object = reinterpret_cast<const char*>(keyboard.get());
  std::memcpy(&orientation, object + platform::ivar_getOffset(variable), sizeof orientation);
  return orientation;
}

}  // namespace prismal
