#pragma once

// The system keyboard's private classes and functions.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/graphics.h"
#include "platform/object.h"
#include "platform/runtime.h"

namespace platform {

/// A node of the keyboard's tree: a keyplane or a key.
class PLATFORM_API UIKBTree : public Object {
 public:
  using Object::Object;
  std::optional<std::string_view> name() const;

  // Of a keyplane.
  int visualStyle() const;
  int type() const;
  bool isLetters() const;
  bool isShiftKeyplane() const;

  // Of a key.
  int displayType() const;
  int displayTypeHint() const;
  int displayRowHint() const;
  int state() const;
};

/// The name of a display type. Its first 18 characters say only that it is one.
PLATFORM_API std::string_view enumStringForDisplayType(int displayType);

/// A flat colour or a linear gradient. Its colours are names, resolved when it is drawn.
class PLATFORM_API UIKBGradient : public Object {
 public:
  using Object::Object;
  // Each is a message to `receiver`, the class: a null class answers null.
  static UIKBGradient gradientWithName(Class receiver, std::string_view name);
  static UIKBGradient gradientWithFlatColor(Class receiver, std::string_view colorName);
  static UIKBGradient gradientWithStartColor(Class receiver, std::string_view startColorName,
                                             std::string_view endColorName);
};

struct EtchOffset {
  double first = 0;
  double second = 0;
};

/// How a text of a key is drawn.
class PLATFORM_API UIKBTextStyle : public Object {
 public:
  using Object::Object;
  void setTextColor(std::string_view colorName) const;
  void setEtchColor(std::string_view colorName) const;
  void setFontName(std::string_view fontName) const;
  EtchOffset etchOffset() const;
  void setEtchOffset(EtchOffset offset) const;
};

/// An array of objects that its owner may allow to change.
class PLATFORM_API NSArray : public Object {
 public:
  using Object::Object;
  bool isMutable() const;
  std::size_t count() const;
  Object objectAtIndex(std::size_t index) const;
  /// Removes every object that is one of `objects`. A mutable array only.
  void removeObjectsInArray(std::span<const Object> objects) const;
};

/// How a key or a keyplane is drawn.
class PLATFORM_API UIKBRenderTraits : public Object {
 public:
  using Object::Object;
  NSArray renderEffects() const;
  /// The traits keep the gradient; null leaves no background.
  void setBackgroundGradient(UIKBGradient gradient) const;
  UIKBTextStyle symbolStyle() const;
  UIKBTextStyle secondarySymbolStyle() const;
};

class PLATFORM_API UIKBRenderFactory : public Object {
 public:
  using Object::Object;
};

/// Draws the view that lies below the keys of a keyboard and lays the keys out.
class PLATFORM_API UIKeyboardLayoutStar : public Object {
 public:
  using Object::Object;
  UIKBTree currentKeyplane() const;
  bool shouldShowDictationKey() const;
};

/// The keyboard on the screen.
class PLATFORM_API UIKeyboardImpl : public Object {
 public:
  using Object::Object;
  /// Null when no keyboard is shared.
  static UIKeyboardImpl sharedInstance();
};

/// The class `UIKeyboardImpl`, bound when the library loads.
extern "C" PLATFORM_API Class OBJC_CLASS_UIKeyboardImpl;

/// The backing store of the keyboard cache.
class PLATFORM_API UIKBCacheStore : public Object {
 public:
  using Object::Object;
  NSArray allGroups() const;
  void removeImagesInGroups(NSArray groups) const;
  void purge() const;
};

/// The keyboard's cache of drawn keys.
class PLATFORM_API UIKeyboardCache : public Object {
 public:
  using Object::Object;
  /// A message to `receiver`, the class: a null class answers null.
  static UIKeyboardCache sharedInstance(Class receiver);
  void clearNonPersistentCache() const;
};

/// The panel that is shown while the user dictates.
class PLATFORM_API UIKeyboardDicationBackgroundGradientView : public UIView {
 public:
  using UIView::UIView;
};

/// Whether the keyboard must offer a key that changes the language.
PLATFORM_API bool UIKeyboardRequiresInternationalKey();

/// The colour space of all colours of the keyboard.
PLATFORM_API CGColorSpaceRef UIKBColorSpace();

#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
/// The colour that the keyboard knows by that name, or null.
extern "C" PLATFORM_API CGColorRef UIKBGetNamedColor(std::string_view name);
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

}  // namespace platform
