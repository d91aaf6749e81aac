#include "backgrounds/keyplane_background.h"

#include "backgrounds/background_image_view.h"
#include "backgrounds/background_lookup.h"
#include "backgrounds/keyplane_index.h"
#include "backgrounds/orientation.h"
#include "styles/visual_style.h"

namespace prismal {

void PMUpdateKeyplaneBackground(platform::UIKeyboardLayoutStar layout,
                                platform::UIKBTree keyplane) {
  const PMKeyplaneIndex index = PMGetKeyplaneIndex(keyplane);
  const auto orientation = orientationName(keyboardOrientation());
  const auto visualStyle = PMGetVisualStyleName(keyplane);
  const platform::UIView backgroundView(layout.valueForKey("_backgroundView").get());
  if (!backgroundView) return;
  showBackgroundImage(backgroundView,
                      PMGetKeyboardBackgroundImage(keyplane, orientation, visualStyle, index));
}

}  // namespace prismal
