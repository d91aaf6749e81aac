#include "host/keyboard/dictation_view.h"

#include "host/keyboard/text_object.h"
#include "host/runtime/class_table.h"
#include "host/runtime/hooking.h"

namespace host::keyboard {

using platform::Object;
using platform::SEL;
using platform::UIKeyboardDicationBackgroundGradientView;

namespace {

constexpr std::string_view kClassName = "UIKeyboardDicationBackgroundGradientView";

objc_class* dictationViewClass() {
  return runtime::defineClass(kClassName, views::viewClass());
}

void systemSetRenderConfig(UIKeyboardDicationBackgroundGradientView self, SEL, Object config) {
  runtime::platformImplementationRuns(
      "-[UIKeyboardDicationBackgroundGradientView setRenderConfig:]");
  auto* const view = runtime::as<DictationViewObject>(self);
  const auto* const text = runtime::as<TextObject>(config);
  if (view && text) view->renderConfig = text->text;
}

}  // namespace

DictationViewObject::DictationViewObject(std::string_view className)
    : ViewObject(className == kClassName
                     ? dictationViewClass()
                     : runtime::makeAnonymousClass(className, dictationViewClass())) {}

void defineDictationViewClass() {
  runtime::addMethod(dictationViewClass(),
                     "setRenderConfig:", reinterpret_cast<platform::IMP>(&systemSetRenderConfig));
}

void setRenderConfig(UIKeyboardDicationBackgroundGradientView view, std::string_view config) {
  const auto text = runtime::makeRetained<Object, TextObject>(std::string(config));
  runtime::send<void>(view, platform::sel_registerName("setRenderConfig:"), text.get());
}

}  // namespace host::keyboard
