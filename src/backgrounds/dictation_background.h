#pragma once

#include "platform/keyboard.h"

namespace prismal {

/// The theme's image behind the dictation panel in the present orientation, or null. Both images
/// are loaded by the first call and kept until the process ends.
platform::UIImage PMGetiPhoneDictationBG();

/// Replaces `-[UIKeyboardDicationBackgroundGradientView setRenderConfig:]`: the platform's own
/// work, then the theme's image in the panel.
void PMDictationRenderConfigReplacement(platform::UIKeyboardDicationBackgroundGradientView self,
                                        platform::SEL selector, platform::Object config);

}  // namespace prismal
