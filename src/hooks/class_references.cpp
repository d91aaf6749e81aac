#include "hooks/class_references.h"

#include "platform/keyboard.h"

namespace prismal {

constinit ClassReferences classes;

void lookUpKeyboardCacheClass() {
  classes.UIKeyboardCache = platform::objc_getClass("UIKeyboardCache");
  classes.UIKeyboardCacheMetaclass = platform::object_getClass(classes.UIKeyboardCache);
}

void lookUpOtherClasses() {
  classes.UIKeyboardImpl = platform::OBJC_CLASS_UIKeyboardImpl;
  classes.UIKeyboardLayoutStar = platform::objc_getClass("UIKeyboardLayoutStar");
  classes.UIKBRenderFactory = platform::objc_getClass("UIKBRenderFactory");
  classes.UIKBRenderFactoryiPhone = platform::objc_getClass("UIKBRenderFactoryiPhone");
  classes.UIKBGradient = platform::objc_getClass("UIKBGradient");
  classes.UIKBGradientMetaclass = platform::object_getClass(classes.UIKBGradient);
  classes.UIKBEdgeEffect = platform::objc_getClass("UIKBEdgeEffect");
  classes.UIKeyboardDicationBackgroundGradientView =
      platform::objc_getClass("UIKeyboardDicationBackgroundGradientView");
}

}  // namespace prismal
