#include "keyboard/shown_view.h"

#include <cerrno>
#include <string>
#include <utility>

#include "host/keyboard/keyboard.h"
#include "host/render/dictation_panel.h"
#include "host/render/picture.h"
#include "host/system/device.h"
#include "platform/foundation.h"

namespace tools::keyboard {

namespace render = host::render;
using host::files::Failure;
using host::files::Result;

namespace {

using Change = bool (*)(render::LiveKeyplane&, std::string_view);

std::optional<Failure> changeKeys(render::LiveKeyplane& keyplane,
                                  const std::vector<std::string>& keys, Change change,
                                  const char* option) {
  for (const std::string& key : keys) {
    if (change(keyplane, key)) continue;
    return Failure(EINVAL, option + (" " + key) + ": no such key; this keyplane has" +
                               render::keyNames(keyplane));
  }
  return std::nullopt;
}

void showPanel(ShownView& shown, const View& view, double scale) {
  render::showDictation(shown.keyplane, view.keyplane);
  shown.picture = render::pictureOfDictation(shown.keyplane, view.keyplane, scale);
  shown.background = render::dictationBackgroundPath();
  shown.views =
      platform::Retained<platform::UIView>(host::keyboard::keyboard().dictationView.get());
}

void showKeys(ShownView& shown, const View& view, double scale, host::drawing::Fonts& fonts) {
  render::show(shown.keyplane, view.keyplane);
  shown.picture = render::pictureOf(shown.keyplane, scale, fonts);
  shown.background = render::backgroundPath();
  shown.views = platform::Retained(
      platform::UIView(host::keyboard::keyboard().layoutObject().backgroundView.get().get()));
}

}  // namespace

void become(const host::boards::Board& board, double scale) {
  host::system::setDevice(
      {.screenScale = scale, .interfaceIdiom = board.is_tablet ? 1 : 0, .systemVersion = "7.0.4"});
}

double deviceScale(double scale) {
  return scale > 1 ? 2 : 1;
}

Result<ShownView> showView(const View& view, double scale, host::drawing::Fonts& fonts) {
  const platform::NSAutoreleasePool pool;
  become(*view.keyplane.board, deviceScale(scale));
  ShownView shown;
  shown.keyplane = render::makeKeyplane(view.keyplane);
  if (auto failure = changeKeys(shown.keyplane, view.disabled, render::disable, "--disable")) {
    return *std::move(failure);
  }
  if (auto failure = changeKeys(shown.keyplane, view.pressed, render::press, "--press")) {
    return *std::move(failure);
  }
  view.dictation ? showPanel(shown, view, scale) : showKeys(shown, view, scale, fonts);
  return shown;
}

}  // namespace tools::keyboard
