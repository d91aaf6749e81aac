#include "backgrounds/dictation_background.h"

#include "backgrounds/background_image.h"
#include "backgrounds/background_image_view.h"
#include "backgrounds/orientation.h"
#include "hooks/previous_implementations.h"
#include "support/no_throw.h"
#include "support/process_lifetime.h"

namespace prismal {

using platform::Retained;
using platform::UIImage;

UIImage PMGetiPhoneDictationBG() {
  static constinit ProcessLifetime<Retained<UIImage>> _dictationBG_Portrait;
  static constinit ProcessLifetime<Retained<UIImage>> _dictationBG_Landscape;
  static constinit bool _initialized = false;
  if (!_initialized) {
    *_dictationBG_Portrait = loadBackgroundImage("Portrait;iPhone-Dictation");
    *_dictationBG_Landscape = loadBackgroundImage("Landscape;iPhone-Dictation");
    _initialized = true;
  }
  return isLandscape(keyboardOrientation()) ? _dictationBG_Landscape->get()
                                            : _dictationBG_Portrait->get();
}

void PMDictationRenderConfigReplacement(platform::UIKeyboardDicationBackgroundGradientView self,
                                        platform::SEL selector, platform::Object config) {
  previous.setRenderConfig(self, selector, config);
  withoutThrowing([&] { showBackgroundImage(self, PMGetiPhoneDictationBG()); });
}

}  // namespace prismal
