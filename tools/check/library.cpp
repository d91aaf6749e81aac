#include "check/library.h"

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <syslog.h>

#include "colors/color_cache.h"
#include "colors/gradient_cache.h"
#include "hooks/class_references.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/traits.h"
#include "host/plist/builder.h"
#include "host/runtime/object.h"
#include "host/system/log.h"
#include "platform/foundation.h"
#include "styles/style_properties.h"

namespace tools::check {

using host::keyboard::TextStyleObject;
using host::keyboard::TraitsObject;
using host::plist::Builder;
using host::runtime::as;
using platform::PropertyList;
using platform::PropertyListView;

namespace {

/// Nothing that a theme could set.
constexpr std::string_view kUntouched = "\x01";
constexpr double kUntouchedOffset = std::numeric_limits<double>::quiet_NaN();

platform::Retained<platform::UIKBTextStyle> untouchedText() {
  auto style = host::runtime::makeRetained<platform::UIKBTextStyle, TextStyleObject>();
  auto& object = *as<TextStyleObject>(style.get());
  object.textColor = object.etchColor = object.fontName = kUntouched;
  object.etchOffset = {kUntouchedOffset, kUntouchedOffset};
  return style;
}

/// Traits on which it shows what is set.
class UntouchedTraits {
 public:
  UntouchedTraits()
      : traits_(host::runtime::makeRetained<platform::UIKBRenderTraits, TraitsObject>()) {
    auto& object = *as<TraitsObject>(traits_.get());
    object.backgroundGradient = background_;
    object.symbolStyle = untouchedText();
    object.secondarySymbolStyle = untouchedText();
  }

  platform::UIKBRenderTraits traits() const { return traits_.get(); }

  Parts touched() const {
    const auto& object = *as<TraitsObject>(traits_.get());
    const auto& text = *as<TextStyleObject>(object.symbolStyle.get());
    const auto& second = *as<TextStyleObject>(object.secondarySymbolStyle.get());
    return (object.backgroundGradient.get() != background_.get() ? only(Part::background) : 0) |
           (text.textColor != kUntouched ? only(Part::text) : 0) |
           (text.etchColor != kUntouched ? only(Part::etch) : 0) |
           (second.textColor != kUntouched ? only(Part::second_text) : 0) |
           (!std::isnan(text.etchOffset.first) ? only(Part::etch_x) : 0) |
           (!std::isnan(text.etchOffset.second) ? only(Part::etch_y) : 0) |
           (text.fontName != kUntouched ? only(Part::font) : 0);
  }

 private:
  platform::Retained<platform::UIKBGradient> background_ =
      host::runtime::makeRetained<platform::UIKBGradient, host::keyboard::GradientObject>(
          host::keyboard::FlatColors{});
  platform::Retained<platform::UIKBRenderTraits> traits_;
};

/// What a dictionary sets that has one property.
Parts setBy(std::string_view property, PropertyListView (*value)(Builder&)) {
  Builder builder;
  const Builder::Entry entry{builder.keep(property), value(builder)};
  const PropertyList style = builder.finish(builder.dictionary({&entry, 1}));
  return partsSetBy(style);
}

}  // namespace

void prepareLibrary() {
  prismal::lookUpOtherClasses();
  // What is asked for here is no event of this machine's, and each line would cost a connection.
  setlogmask(LOG_MASK(LOG_EMERG));
}

std::string logOf(const std::function<void()>& work) {
  std::string first;
  host::system::setLogEcho([&](std::string_view line) {
    if (first.empty()) first = line;
  });
  work();
  host::system::setLogEcho({});
  return first;
}

std::string logOfSection(PropertyListView section, void (*rebuild)(PropertyListView)) {
  return logOf([&] { rebuild(section); });
}

std::string logOfColor(PropertyListView entry) {
  return logOfSection(listOf(entry), prismal::PMRebuildColorCache);
}

std::string logOfGradient(PropertyListView entry) {
  return logOfSection(listOf(entry), prismal::PMRebuildLinearGradientCache);
}

PropertyList listOf(PropertyListView value) {
  Builder builder;
  const std::array items = {value};
  return builder.finish(builder.array(items));
}

Parts partsSetBy(PropertyListView style) {
  const platform::NSAutoreleasePool pool;
  const UntouchedTraits untouched;
  prismal::applyStyle(style, untouched.traits());
  return untouched.touched();
}

Property propertyNamed(std::string_view name) {
  static std::map<std::string, Property, std::less<>> known;
  if (const auto found = known.find(name); found != known.end()) return found->second;
  const Property property{
      .as_string = setBy(name, [](Builder& builder) { return builder.string("?"); }),
      .as_number = setBy(name, [](Builder& builder) { return builder.integer(1); })};
  return known.emplace(name, property).first->second;
}

}  // namespace tools::check
