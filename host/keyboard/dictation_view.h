#pragma once

#include <string>
#include <string_view>

#include "host/runtime/object.h"
#include "host/views/view.h"
#include "platform/keyboard.h"

namespace host::keyboard {

/// The panel behind the microphone while the user dictates.
struct DictationViewObject final : views::ViewObject {
  /// Any other name than that of the panel's own class is one that derives from it.
  explicit DictationViewObject(std::string_view className);
  std::string renderConfig;  ///< as it last reached the platform
};

/// Defines `UIKeyboardDicationBackgroundGradientView`.
void defineDictationViewClass();

/// Hands the view a render configuration as the platform does: through its method table.
void setRenderConfig(platform::UIKeyboardDicationBackgroundGradientView view,
                     std::string_view config);

}  // namespace host::keyboard
