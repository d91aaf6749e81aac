#pragma once

#include <string_view>
#include <type_traits>

#include "platform/keyboard.h"

namespace prismal {

/// The slot of one hook: the implementation that the hook replaced, called with the type it has.
/// Null until the hook is installed; before that its replacement, the only caller, never runs.
template <class Signature>
class PreviousImplementation;

template <class Result, class... Arguments>
class PreviousImplementation<Result(Arguments...)> {
 public:
  using Function = Result (*)(Arguments...);

  platform::IMP* slot() { return &implementation_; }
  Result operator()(std::type_identity_t<Arguments>... arguments) const {
    return reinterpret_cast<Function>(implementation_)(arguments...);
  }

 private:
  platform::IMP implementation_ = nullptr;
};

/// One slot a hook, written by the hooking engine while the library loads, read-only afterwards.
struct PreviousImplementations {
  PreviousImplementation<platform::CGColorRef(std::string_view name)> UIKBGetNamedColor;
  PreviousImplementation<void(platform::UIKeyboardImpl, platform::SEL, platform::Object)>
      updateReturnKey;
  PreviousImplementation<void(platform::UIKeyboardLayoutStar, platform::SEL, platform::Object,
                              platform::Object, platform::Object)>
      showKeyboard;
  PreviousImplementation<void(platform::UIKeyboardLayoutStar, platform::SEL, platform::UIKBTree)>
      updateKeyboardForKeyplane;
  PreviousImplementation<platform::UIKBRenderTraits(platform::UIKBRenderFactory, platform::SEL,
                                                    platform::UIKBTree, platform::UIKBTree)>
      traitsForKey;
  PreviousImplementation<platform::UIKBRenderTraits(platform::UIKBRenderFactory, platform::SEL,
                                                    platform::UIKBTree)>
      backgroundTraitsForKeyplane;
  PreviousImplementation<void(platform::UIKeyboardDicationBackgroundGradientView, platform::SEL,
                              platform::Object)>
      setRenderConfig;
  PreviousImplementation<platform::UIKBGradient(platform::Class, platform::SEL,
                                                std::string_view name)>
      gradientWithName;
  PreviousImplementation<bool(platform::Class, platform::SEL)> cacheEnabled;
};

extern constinit PreviousImplementations previous;

}  // namespace prismal
