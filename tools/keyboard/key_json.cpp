#include "keyboard/key_json.h"

#include <string>

#include "keyboard/words.h"
#include "scenario/json_output.h"
#include "styles/control_state.h"
#include "styles/key_identity.h"

namespace tools::keyboard {

Json keyJson(const host::render::LiveKey& key) {
  const auto& description = *key.placed.key;
  const auto tree = key.tree.get();
  const prismal::KeyIdentity identity(tree);
  const auto& frame = key.placed.frame;
  return {{"name", description.name},
          {"label", description.label},
          {"secondaryLabel",
           description.secondary_label.empty() ? Json(nullptr) : Json(description.secondary_label)},
          {"displayRowHint", tree.displayRowHint()},
          {"displayType", identity.displayType()},
          {"displayTypeHint", tree.displayTypeHint()},
          {"state", tree.state()},
          {"controlState", prismal::PMGetControlState(tree)},
          {"frame", Json::array({scenario::number(frame.x), scenario::number(frame.y),
                                 scenario::number(frame.width), scenario::number(frame.height)})}};
}

Json keyplaneJson(const View& view, const host::render::LiveKeyplane& keyplane) {
  const auto& choice = view.keyplane;
  return {{"device", wordOf(kDevices, choice.board->name)},
          {"orientation", wordOf(kOrientations, choice.orientation)},
          {"style", wordOf(kStyles, choice.look)},
          {"keyplane", keyplane.placed.name},
          {"visualStyle", keyplane.tree->visualStyle()},
          {"type", keyplane.tree->type()}};
}

namespace {

std::string inOneLine(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string keysInLines(const Json& keys) {
  std::string text = "[";
  for (const Json& key : keys) text.append(text.size() > 1 ? ",\n  " : "\n  ") += inOneLine(key);
  return text + "]";
}

}  // namespace

std::string inLines(const Json& object) {
  std::string text = "{";
  for (const auto& [name, value] : object.items()) {
    text += (text.size() > 1 ? ",\n " : "") + inOneLine(name) + ": ";
    text += name == "keys" ? keysInLines(value) : inOneLine(value);
  }
  return text + "}\n";
}

}  // namespace tools::keyboard
