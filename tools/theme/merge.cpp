#include "theme/merge.h"

#include <map>
#include <string_view>
#include <utility>

#include "host/plist/builder.h"
#include "host/plist/description.h"
#include "theme/background_key.h"
#include "theme/limits.h"

namespace tools::theme {

using host::plist::Builder;
using platform::PropertyListView;
using Type = platform::PropertyListView::Type;

namespace {

constexpr std::string_view kColors = "CustomColor";
constexpr std::string_view kGradients = "CustomLinearGradient";
constexpr std::string_view kStyles = "Styles";
constexpr std::string_view kImages = "BackgroundImages";

using Values = std::vector<PropertyListView>;
using ValuesByKey = std::map<std::string_view, Values>;

class Merger {
 public:
  explicit Merger(std::span<const Layer> layers) : layers_(layers) {}

  Merge run() {
    for (const Layer& layer : layers_) builder_.adopt(layer.theme);
    const Builder::Entry sections[] = {
        {kColors, colors()}, {kGradients, gradients()}, {kStyles, styles()}, {kImages, images()}};
    return {builder_.finish(builder_.dictionary(sections)), std::move(leftOut_)};
  }

 private:
  void leaveOut(const Layer& layer, std::string_view place, const char* must) {
    leftOut_.push_back(layer.name + ": " + host::plist::inOneLine(place, kMaxToldName) +
                       " must be " + must + "; it is left out");
  }

  /// Null when the layer doesn't have it in a form that can be used.
  PropertyListView section(const Layer& layer, std::string_view name, Type type) {
    const auto found = layer.theme.objectForKey(name);
    if (!found || found.type() == type) return found;
    leaveOut(layer, name, type == Type::kArray ? "an array" : "a dictionary");
    return {};
  }

  static void append(Values& values, PropertyListView array) {
    values.insert(values.end(), array.items().begin(), array.items().end());
  }

  PropertyListView colors() {
    Values colors;
    for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
      append(colors, section(*layer, kColors, Type::kArray));
    }
    return builder_.array(colors);
  }

  PropertyListView gradients() {
    Values gradients;
    for (const Layer& layer : layers_) append(gradients, section(layer, kGradients, Type::kArray));
    return builder_.array(gradients);
  }

  PropertyListView styles() {
    ValuesByKey rules;
    std::vector<PropertyListView> sections;
    for (const Layer& layer : layers_) {
      sections.push_back(section(layer, kStyles, Type::kDictionary));
      for (const auto& [style, list] : sections.back().entries()) {
        rules[style];
        if (!list.isArray()) {
          leaveOut(layer, std::string(kStyles) + ": " + std::string(style), "an array");
        }
      }
    }
    for (auto& [style, all] : rules) {
      for (const auto& each : sections) append(all, rulesFor(each, style));
    }
    return arrays(rules);
  }

  /// A tablet falls back to a phone's rules only while nobody has any for it. In the merge somebody
  /// has.
  static PropertyListView rulesFor(PropertyListView styles, std::string_view style) {
    const auto own = styles.objectForKey(style);
    return own || style != "iPad-Standard" ? own : styles.objectForKey("iPhone-Standard");
  }

  PropertyListView arrays(const ValuesByKey& values) {
    std::vector<Builder::Entry> entries;
    for (const auto& [key, items] : values) entries.push_back({key, builder_.array(items)});
    return builder_.dictionary(entries);
  }

  PropertyListView images() {
    std::map<std::string_view, PropertyListView> images;
    for (const Layer& layer : layers_) {
      const auto own = section(layer, kImages, Type::kDictionary);
      std::erase_if(images, [&](const auto& image) { return answerFor(own, image.first); });
      for (const auto& [key, path] : own.entries()) {
        if (path.isString()) {
          images.insert_or_assign(key, path);
        } else {
          leaveOut(layer, std::string(kImages) + ": " + std::string(key), "a string");
        }
      }
    }
    std::vector<Builder::Entry> entries;
    entries.reserve(images.size());
    for (const auto& [key, path] : images) entries.push_back({key, path});
    return builder_.dictionary(entries);
  }

  std::span<const Layer> layers_;
  Builder builder_;
  std::vector<std::string> leftOut_;
};

}  // namespace

Merge merge(std::span<const Layer> layers) {
  return Merger(layers).run();
}

}  // namespace tools::theme
