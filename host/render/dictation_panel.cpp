#include "host/render/dictation_panel.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/dictation_view.h"
#include "host/keyboard/keyboard.h"
#include "host/render/named_look.h"
#include "host/render/view_images.h"

namespace host::render {

namespace {

/// What the platform hands the view, by look.
constexpr std::string_view kConfigurations[] = {"standard", "alert"};

/// How loud it was, 0 to 1, `part` of the way from the left: a few words, rising and dying away.
double loudness(double part) {
  const double turn = 2 * std::numbers::pi * part;
  const double words = std::fabs(std::sin(2.5 * turn)) * (0.7 + 0.3 * std::cos(4 * turn));
  const double syllables = 0.6 + 0.4 * std::sin(11 * turn);
  return std::pow(std::sin(turn / 2), 1.5) * words * syllables;
}

/// A round-ended bar with its middle at `center`, at the least as high as it is wide.
drawing::KeyPicture bar(drawing::Point center, double width, double half_height,
                        const drawing::Rgba& color) {
  const double half = std::fmax(std::round(half_height), width / 2);
  drawing::KeyPicture picture;
  picture.frame = {center.x - width / 2, center.y - half, width, 2 * half};
  picture.corner_radius_pt = width / 2;
  picture.background = drawing::Fill::flat(color);
  return picture;
}

/// Bars over the middle of `area`, about sixty where there is room for them.
void addLevel(const boards::PanelLook& look, const drawing::Rect& area,
              std::vector<drawing::KeyPicture>& keys) {
  const auto color = colorNamed(look.level);
  if (!color) return;
  const double length = 0.7 * area.width;
  const double pitch = std::fmax(6, 2 * std::round(length / 120));
  const int count = static_cast<int>(length / pitch);
  const double left = area.x + std::round((area.width - (count - 1) * pitch) / 2);
  const double middle = std::round(area.y + area.height / 2);
  for (int i = 0; i < count; ++i) {
    const double half_height = 0.4 * area.height * loudness((i + 0.5) / count);
    keys.push_back(bar({left + i * pitch, middle}, pitch / 2, half_height, *color));
  }
}

drawing::KeyPicture doneKey(const boards::PanelLook& look, const drawing::Rect& frame,
                            double corner_radius_pt) {
  drawing::KeyPicture key;
  key.frame = frame;
  key.corner_radius_pt = corner_radius_pt;
  key.background = fillNamed(look.done);
  if (const auto edge = colorNamed(look.done_edge)) key.edge = drawing::EdgeEffect{*edge};
  key.symbol = drawing::Symbol{"Done",
                               {.font_name = "Inter-Regular",
                                .size_pt = std::fmax(15, std::round(frame.height * 0.4)),
                                .color = textColorNamed(look.done_text),
                                .etch_color = colorNamed(look.done_etch),
                                .etch_offset_pt = {0, 1}}};
  return key;
}

/// In the middle of the keyplane's lowest row, as high as its keys.
drawing::Rect doneFrame(const LiveKeyplane& keyplane) {
  const drawing::Size size = keyplane.placed.size;
  drawing::Rect lowest;
  for (const LiveKey& key : keyplane.keys) {
    if (key.placed.face.bottom() > lowest.bottom()) lowest = key.placed.face;
  }
  const double width = 2 * std::round(std::fmin(size.width / 3, 4 * lowest.height) / 2);
  return {std::round((size.width - width) / 2), lowest.y, width, lowest.height};
}

platform::UIView panelView() {
  return keyboard::keyboard().dictationView.get();
}

}  // namespace

void showDictation(const LiveKeyplane& keyplane, const KeyplaneChoice& choice) {
  show(keyplane, choice);
  const drawing::Size size = keyplane.placed.size;
  panelView().setFrame({0, 0, size.width, size.height});
  keyboard::setRenderConfig(keyboard::keyboard().dictationView.get(),
                            kConfigurations[static_cast<int>(choice.look)]);
}

drawing::KeyboardPicture pictureOfDictation(const LiveKeyplane& keyplane,
                                            const KeyplaneChoice& choice, double scale) {
  const platform::NSAutoreleasePool pool;
  const boards::PanelLook look = boards::systemPanelLook(choice.look);
  drawing::KeyboardPicture picture;
  picture.size = keyplane.placed.size;
  picture.scale = scale;
  picture.background = fillNamed(look.background);
  picture.background_images = imagesIn(panelView());
  const drawing::Rect done = doneFrame(keyplane);
  addLevel(look, {0, 0, picture.size.width, done.y}, picture.keys);
  picture.keys.push_back(doneKey(look, done, keyplane.cornerRadius_pt));
  return picture;
}

std::optional<std::string> dictationBackgroundPath() {
  return imagePathIn(panelView());
}

}  // namespace host::render
