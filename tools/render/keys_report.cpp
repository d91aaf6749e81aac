#include "render/keys_report.h"

#include <cmath>

#include "host/keyboard/keyboard.h"
#include "keyboard/key_json.h"
#include "platform/foundation.h"
#include "replay/object_output.h"

namespace tools::render {

using keyboard::Json;

namespace {

Json pixelsOf(const host::drawing::Rect& face, double scale) {
  Json pixels = Json::array();
  for (const double length : {face.x, face.y, face.width, face.height}) {
    pixels.push_back(std::lround(length * scale));
  }
  return pixels;
}

Json keysOf(const keyboard::ShownView& shown) {
  const platform::NSAutoreleasePool pool;
  const replay::ObjectOutput objects;
  const auto factory = host::keyboard::keyboard().factory.get();
  Json keys = Json::array();
  for (const auto& key : shown.keyplane.keys) {
    Json report = keyboard::keyJson(key);
    report["pixels"] = pixelsOf(key.placed.face, shown.picture.scale);
    report["traits"] = objects.traits(
        host::keyboard::askTraits(factory, key.tree.get(), shown.keyplane.tree.get()), false);
    keys.push_back(std::move(report));
  }
  return keys;
}

}  // namespace

std::string keysReport(const keyboard::View& view, const keyboard::ShownView& shown) {
  const auto& picture = shown.picture;
  Json report = {{"size", Json::array({std::lround(picture.size.width * picture.scale),
                                       std::lround(picture.size.height * picture.scale)})},
                 {"scale", std::lround(picture.scale)}};
  report.update(keyboard::keyplaneJson(view, shown.keyplane));
  report["background"] = shown.background ? Json(*shown.background) : Json(nullptr);
  report["keys"] = view.dictation ? Json::array() : keysOf(shown);
  return keyboard::inLines(report);
}

}  // namespace tools::render
