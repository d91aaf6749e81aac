#pragma once

#include "platform/runtime.h"

namespace prismal {

/// The keyboard's private classes, looked up once while the library loads; null where the host has
/// no class of that name.
struct ClassReferences {
  platform::Class UIKeyboardCache;
  platform::Class UIKeyboardCacheMetaclass;
  platform::Class UIKeyboardImpl;
  platform::Class UIKeyboardLayoutStar;
  platform::Class UIKBRenderFactory;
  platform::Class UIKBRenderFactoryiPhone;
  platform::Class UIKBGradient;
  platform::Class UIKBGradientMetaclass;
  platform::Class UIKBEdgeEffect;
  platform::Class UIKeyboardDicationBackgroundGradientView;
};

extern constinit ClassReferences classes;

/// The purge needs this class before the others are looked up.
void lookUpKeyboardCacheClass();
void lookUpOtherClasses();

}  // namespace prismal
