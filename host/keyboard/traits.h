#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

struct TextStyleObject final : objc_object {
  TextStyleObject();
  std::optional<std::string> textColor;
  std::optional<std::string> etchColor;
  std::optional<std::string> fontName;
  platform::EtchOffset etchOffset;
  double fontSize_pt = 0;
};

/// Something drawn around a key; its class says what.
struct EffectObject final : objc_object {
  explicit EffectObject(objc_class* cls) : objc_object(cls) {}
  std::string colorName;
};

struct ArrayObject final : objc_object {
  ArrayObject(std::vector<platform::Retained<platform::Object>> elements, bool canChange);
  std::vector<platform::Retained<platform::Object>> objects;
  bool isMutable;
};

/// How a key or a keyplane is drawn.
struct TraitsObject final : objc_object {
  TraitsObject();
  platform::Retained<platform::NSArray> renderEffects;
  platform::Retained<platform::UIKBGradient> backgroundGradient;
  platform::Retained<platform::UIKBTextStyle> symbolStyle;
  platform::Retained<platform::UIKBTextStyle> secondarySymbolStyle;
};

/// The class of effects with that name. Every effect class that the system has is known; any other
/// name makes a class of its own.
objc_class* effectClass(std::string_view name);

/// Makes a class of effects that derives from `superclass`. A class that has the name already
/// stays: there is one class a name.
objc_class* declareEffectClass(std::string_view name, objc_class* superclass);

/// Defines the classes of effects that the system's own look uses.
void defineEffectClasses();

}  // namespace host::keyboard
