// From a theme to what the library keeps of it: colours, gradients, rules, pictures. Bytes that are
// a property list are the theme; others are decisions that make one.

#include <map>
#include <string>
#include <syslog.h>

#include "backgrounds/background_filenames.h"
#include "colors/color_cache.h"
#include "colors/color_string.h"
#include "colors/gradient_cache.h"
#include "explain/rule_outcomes.h"
#include "hooks/class_references.h"
#include "host/files/temporary_directory.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/traits.h"
#include "host/plist/reader.h"
#include "host/system/process.h"
#include "host/views/color.h"
#include "styles/style_properties.h"
#include "styles/style_table.h"
#include "support/list_maker.h"
#include "support/require.h"
#include "support/target.h"
#include "support/vocabulary.h"
#include "support/weight.h"
#include "theme/merge.h"

namespace {

using fuzz::require;
using host::runtime::as;
using platform::PropertyList;
using platform::PropertyListView;

void requireColors(PropertyListView section) {
  prismal::PMRebuildColorCache(section);
  std::map<std::string, prismal::Rgba, std::less<>> expected;
  for (const auto element : section.items()) {
    const auto items = element.items();
    if (items.size() != 2 || !items[0].isString() || !items[1].isString()) continue;
    const auto color = prismal::parseColorString(*items[1].string());
    if (color) expected.emplace(*items[0].string(), *color);
  }
  require(prismal::PMGetColorCache()->size() == expected.size(), "each name has one colour");
  for (const auto& [name, color] : expected) {
    const auto* const made = as<host::views::ColorObject>(prismal::PMGetNamedColor(name));
    require(made && made->components == std::array{color.red / 255.0, color.green / 255.0,
                                                   color.blue / 255.0, color.alpha / 255.0},
            "the first definition of a colour counts", name);
  }
}

struct IsGradientOf {
  std::span<const PropertyListView> colors;
  bool operator()(const host::keyboard::FlatColors& made) const {
    return colors.size() == 1 && made.color == colors[0].string();
  }
  bool operator()(const host::keyboard::LinearColors& made) const {
    return colors.size() > 1 && made.start == colors[0].string() && made.end == colors[1].string();
  }
  bool operator()(const host::keyboard::OwnGradient&) const { return false; }
};

void requireGradients(PropertyListView section) {
  prismal::PMRebuildLinearGradientCache(section);
  std::map<std::string_view, std::span<const PropertyListView>> expected;
  for (const auto element : section.items()) {
    const auto items = element.items();
    if (items.size() < 2 || !items[0].isString() || !items[1].isString()) continue;
    if (items.size() > 2 && !items[2].isString()) continue;
    expected.insert_or_assign(*items[0].string(), items.subspan(1));
  }
  require(prismal::PMGetLinearGradientCache()->size() == expected.size(),
          "each name has one gradient");
  for (const auto& [name, colors] : expected) {
    const auto* const made = as<host::keyboard::GradientObject>(prismal::PMGetNamedGradient(name));
    require(made && std::visit(IsGradientOf{colors}, made->colors),
            "the last definition of a gradient counts", name);
  }
}

/// What a trait is after all styles that hold; texts alone.
std::optional<std::string> traitOf(const host::keyboard::TraitsObject& traits,
                                   prismal::StylePart part) {
  const auto& style = *as<host::keyboard::TextStyleObject>(traits.symbolStyle.get());
  switch (part) {
    case prismal::StylePart::kTextColor:
      return style.textColor;
    case prismal::StylePart::kEtchColor:
      return style.etchColor;
    case prismal::StylePart::kFontName:
      return style.fontName;
    case prismal::StylePart::kSecondaryTextColor:
      return as<host::keyboard::TextStyleObject>(traits.secondarySymbolStyle.get())->textColor;
    default:
      return std::nullopt;
  }
}

/// A key gets what `explain` says that it gets.
void requireExplained(PropertyListView rules, const prismal::KeyIdentity& key, int controlState) {
  const platform::NSAutoreleasePool pool;
  auto traits =
      host::runtime::makeRetained<platform::UIKBRenderTraits, host::keyboard::TraitsObject>();
  auto& object = *as<host::keyboard::TraitsObject>(traits.get());
  for (auto* const style : {&object.symbolStyle, &object.secondarySymbolStyle}) {
    *style =
        host::runtime::makeRetained<platform::UIKBTextStyle, host::keyboard::TextStyleObject>();
  }
  for (const auto style : prismal::PMGetMatchingStyles(rules, key, controlState)) {
    prismal::applyStyle(style, traits.get());
  }
  const auto outcomes = tools::explain::outcomesOf(rules, key, controlState);
  for (const auto part : {prismal::StylePart::kTextColor, prismal::StylePart::kEtchColor,
                          prismal::StylePart::kFontName, prismal::StylePart::kSecondaryTextColor}) {
    const auto& winner = outcomes.winnerOf(part);
    require(
        traitOf(object, part) ==
            (winner ? std::optional<std::string>(winner->setting.value.string()) : std::nullopt),
        "the rule that is said to win is the one that does");
  }
}

void requireStyles(PropertyListView styles) {
  constexpr int kControlStates[] = {1, 3, 6};
  const prismal::KeyIdentity keys[] = {
      prismal::KeyIdentity({.name = "Latin-Small-Letter-G",
                            .displayTypeName = "UIKBKeyDisplayTypeLetter",
                            .displayRowHint = 2}),
      prismal::KeyIdentity({.displayTypeName = "UIKBKeyDisplayTypeShift", .displayTypeHint = 1})};
  for (const auto style : fuzz::kVisualStyles) {
    const auto list = prismal::styleListFor(styles, style);
    for (const auto& key : keys) {
      for (const int state : kControlStates) requireExplained(list.rules, key, state);
    }
  }
}

void requireFilenames(PropertyListView themeImages, PropertyListView userImages) {
  const auto filenames = prismal::buildBackgroundFilenames(themeImages, userImages);
  for (const auto& [key, path] : filenames) {
    if (themeImages.objectForKey(key).string() == path) continue;
    const auto semicolon = key.find(';');
    require(semicolon != key.npos, "a picture is the theme's or the user's", key);
  }
  for (const auto& [key, value] : themeImages.entries()) {
    if (userImages.entries().empty()) {
      require(filenames.contains(key) == value.isString(), "the theme's pictures are all there",
              key);
    }
  }
}

/// Two layers of the same theme are that theme.
void requireMerged(const PropertyList& theme) {
  const tools::theme::Layer layers[] = {{"one", theme}, {"two", theme}};
  const auto merge = tools::theme::merge(layers);
  const auto merged = [&](std::string_view name) { return merge.theme.objectForKey(name); };
  require(merged("CustomColor").isArray() && merged("Styles").isDictionary(),
          "a merged theme has its sections");
  for (const auto& [key, value] : theme.objectForKey("BackgroundImages").entries()) {
    require(merged("BackgroundImages").objectForKey(key).string() == value.string(),
            "a merged theme has its pictures", key);
  }
}

PropertyList themeOf(std::string_view bytes, fuzz::ByteSource& source) {
  const auto reading = host::plist::read(bytes);
  return reading ? reading.list : fuzz::ListMaker(source).theme();
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  // What is malformed is logged, and a system log has better to do.
  ::setlogmask(LOG_MASK(LOG_EMERG));
  static const host::files::TemporaryDirectory directory;
  auto root =
      host::files::DeviceRoot::open(directory.path(), host::files::DeviceRoot::Creation::kNever);
  host::system::startProcess(*std::move(root), "com.example.notes");
  host::keyboard::defineKeyboardClasses({}, {});
  prismal::lookUpOtherClasses();
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const platform::NSAutoreleasePool pool;
  fuzz::ByteSource source(fuzz::textOf(bytes, size));
  const PropertyList theme = themeOf(fuzz::textOf(bytes, size), source);
  if (!fuzz::Weight::isLight(theme)) return 0;
  const PropertyList settings = fuzz::ListMaker(source).settings();
  requireColors(theme.objectForKey("CustomColor"));
  requireGradients(theme.objectForKey("CustomLinearGradient"));
  requireStyles(theme.objectForKey("Styles"));
  requireFilenames(theme.objectForKey("BackgroundImages"),
                   settings.objectForKey("backgroundImages"));
  if (theme.isDictionary()) requireMerged(theme);
  return 0;
}
