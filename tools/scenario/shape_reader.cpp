#include "scenario/shape_reader.h"

#include "scenario/json_output.h"
#include "scenario/notation.h"

namespace tools::scenario {
namespace {

Effect readEffect(const Node& node) {
  if (node.json().is_string()) return {node.string(), std::nullopt};
  if (!node.json().is_object()) node.refuseType("a class name or an object");
  node.requireOnly({"class", "superclass"});
  return {node.at("class").string(), node.at("superclass").string()};
}

std::vector<Effect> readEffects(const Node& node) {
  std::vector<Effect> effects;
  node.forEachElement([&](const Node& effect) { effects.push_back(readEffect(effect)); });
  return effects;
}

TextStyle readTextStyle(const Node& node) {
  node.requireOnly({"textColor", "etchColor", "fontName", "etchOffset"});
  TextStyle style;
  nullableMember(node, "textColor", style.textColor, asString);
  nullableMember(node, "etchColor", style.etchColor, asString);
  nullableMember(node, "fontName", style.fontName, asString);
  member(node, "etchOffset", style.etchOffset, [](const Node& n) { return n.reals<2>(); });
  return style;
}

std::array<std::int32_t, 2> readImageSize(const Node& node) {
  node.requireLength(2);
  std::array<std::int32_t, 2> size{};
  std::size_t next = 0;
  node.forEachElement([&](const Node& edge) { size[next++] = edge.int32(); });
  return size;
}

Image readImage(const Node& node) {
  node.requireOnly({"path", "scale", "size", "id"});
  Image image;
  nullableMember(node, "path", image.path, readPath);
  nullableMember(node, "scale", image.scale, asReal);
  nullableMember(node, "size", image.size, readImageSize);
  nullableMember(node, "id", image.id, [](const Node& n) { return n.integer(); });
  return image;
}

}  // namespace

Keyplane readKeyplane(const Node& node) {
  node.requireOnly({"name", "visualStyle", "type", "isLetters", "isShiftKeyplane"});
  Keyplane keyplane;
  nullableMember(node, "name", keyplane.name, asString);
  member(node, "visualStyle", keyplane.visualStyle, asInt32);
  member(node, "type", keyplane.type, asInt32);
  member(node, "isLetters", keyplane.isLetters, asBoolean);
  member(node, "isShiftKeyplane", keyplane.isShiftKeyplane, asBoolean);
  return keyplane;
}

Key readKey(const Node& node) {
  node.requireOnly({"name", "displayType", "displayTypeHint", "displayRowHint", "state"});
  Key key;
  nullableMember(node, "name", key.name, asString);
  member(node, "displayType", key.displayType, asInt32);
  member(node, "displayTypeHint", key.displayTypeHint, asInt32);
  member(node, "displayRowHint", key.displayRowHint, asInt32);
  member(node, "state", key.state, asInt32);
  return key;
}

Gradient readGradient(const Node& node) {
  if (node.has("flatColor")) {
    node.requireOnly({"flatColor"});
    return FlatGradient{node.at("flatColor").string()};
  }
  if (node.has("name")) {
    node.requireOnly({"name"});
    return NamedGradient{node.at("name").string()};
  }
  node.requireOnly({"startColor", "endColor"});
  if (node.json().empty()) {
    node.refuse("expected \"flatColor\", \"startColor\" and \"endColor\", or \"name\"");
  }
  return LinearGradient{node.at("startColor").string(), node.at("endColor").string()};
}

Traits readTraits(const Node& node) {
  node.requireOnly({"renderEffects", "renderEffectsMutable", "backgroundGradient", "symbolStyle",
                    "secondarySymbolStyle"});
  Traits traits;
  nullableMember(node, "renderEffects", traits.renderEffects, readEffects);
  member(node, "renderEffectsMutable", traits.renderEffectsMutable, asBoolean);
  nullableMember(node, "backgroundGradient", traits.backgroundGradient, readGradient);
  nullableMember(node, "symbolStyle", traits.symbolStyle, readTextStyle);
  nullableMember(node, "secondarySymbolStyle", traits.secondarySymbolStyle, readTextStyle);
  return traits;
}

BackgroundTraits readBackgroundTraits(const Node& node) {
  node.requireOnly({"backgroundGradient"});
  BackgroundTraits traits;
  nullableMember(node, "backgroundGradient", traits.backgroundGradient, readGradient);
  return traits;
}

View readView(const Node& node) {
  node.requireOnly({"class", "tag", "frame", "image", "subviews"});
  View view;
  member(node, "class", view.className, asString);
  member(node, "tag", view.tag, asInt32);
  member(node, "frame", view.frame, [](const Node& n) { return n.reals<4>(); });
  if (const auto image = node.find("image"); image && !image->isNull()) {
    if (view.className != "UIImageView") image->refuse("only a \"UIImageView\" has an image");
    view.image = readImage(*image);
  }
  if (const auto subviews = node.find("subviews")) {
    subviews->forEachElement([&](const Node& n) { view.subviews.push_back(readView(n)); });
  }
  return view;
}

Rgba readColor(const Node& node) {
  if (const auto color = fromColor(node.string())) return *color;
  node.refuse("expected a colour \"#RRGGBBAA\", found " + shortLine(node.json()));
}

std::string readPath(const Node& node) {
  if (isDevicePath(node.string())) return node.string();
  node.refuse("expected an absolute device path, found " + shortLine(node.json()));
}

}  // namespace tools::scenario
