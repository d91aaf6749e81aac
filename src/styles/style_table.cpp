#include "styles/style_table.h"

#include "settings/theme_data.h"
#include "support/process_lifetime.h"

namespace prismal {

using platform::PropertyList;
using platform::PropertyListView;

namespace {

PropertyList captureStyles() {
  const PropertyList& theme = PMGetThemeData();
  const PropertyListView styles = theme.objectForKey("Styles");
  // Anything but a dictionary has no rule lists in it, like a theme without the section.
  return styles.isDictionary() ? theme.retained(styles) : PropertyList();
}

/// The theme's "Styles", captured once, also when several threads arrive together.
PropertyListView stylesTable() {
  static ProcessLifetime<PropertyList> stylesDic;
  static const bool captured = [] {
    *stylesDic = captureStyles();
    return true;
  }();
  static_cast<void>(captured);
  return *stylesDic;
}

}  // namespace

StyleList styleListFor(PropertyListView styles, std::string_view visualStyleName) {
  const std::string_view name = visualStyleName == "iPad-Split" ? "iPad-Standard" : visualStyleName;
  const PropertyListView rules = styles.objectForKey(name);
  if (rules || name != "iPad-Standard") return {name, rules};
  constexpr std::string_view kPhone = "iPhone-Standard";
  return {kPhone, styles.objectForKey(kPhone)};
}

PropertyListView PMGetStyles(std::string_view visualStyleName) {
  return styleListFor(stylesTable(), visualStyleName).rules;
}

}  // namespace prismal
