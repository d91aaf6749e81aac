#pragma once

#include "platform/keyboard.h"
#include "platform/property_list.h"

namespace prismal {

/// Sets on `traits` what the style dictionary says, property by property in their fixed order. An
/// entry of another type than its property has, or of no property, is passed over.
void applyStyle(platform::PropertyListView style, platform::UIKBRenderTraits traits);

}  // namespace prismal
