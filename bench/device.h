#pragma once

#include "platform/keyboard.h"

namespace bench {

/// How many rules the theme of the device has; one in twenty holds for the sample key.
inline constexpr int kDeviceRules = 100;

/// Makes this process a host whose keyboard has the library's hooks, on a device with a theme of
/// kDeviceRules rules that name colours and gradients of its own, and a picture. What is logged
/// goes to the system log.
void startDevice();

/// The letter Q of a phone's first row, at rest, and the keyplane that it is on.
platform::UIKBTree sampleKey();
platform::UIKBTree sampleKeyplane();

}  // namespace bench
