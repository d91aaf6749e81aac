#include "keyboard/shown_view.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "host/keyboard/keyboard.h"
#include "host/render/dictation_panel.h"
#include "host/render/picture.h"
#include "host/system/device.h"
#include "platform/foundation.h"
#include "suggestion.h"
#include "support/characters.h"

namespace tools::keyboard {

namespace render = host::render;
using host::files::Failure;
using host::files::Result;

namespace {

using Change = bool (*)(const render::LiveKeyplane&, std::string_view);

std::optional<Failure> changeKeys(const render::LiveKeyplane& keyplane,
                                  const std::vector<std::string>& keys, Change change,
                                  const char* option) {
  for (const std::string& key : keys) {
    if (!change(keyplane, key)) return noSuchKey(option, key, keyplane);
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

std::string inLowerCase(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), prismal::lowerCase);
  return lower;
}

/// What leads over to the keys that there are: "this", or first the name or label that `key` is
/// most likely to mean. Letter case is no slip, for nobody has to keep to it.
std::string didYouMeanOrThis(std::string_view key, const render::LiveKeyplane& keyplane) {
  constexpr std::size_t kShortestSlip = 3;
  if (key.size() < kShortestSlip) return "this";
  std::vector<std::string_view> names;
  for (const render::LiveKey& each : keyplane.keys) {
    names.insert(names.end(), {each.placed.key->label, each.placed.key->name});
  }
  std::vector<std::string> lower(names.size());
  std::ranges::transform(names, lower.begin(), inLowerCase);
  const std::vector<std::string_view> views(lower.begin(), lower.end());
  const auto meant = nearest(inLowerCase(key), views);
  if (!meant) return "this";
  const auto place = std::ranges::find(views, *meant) - views.begin();
  return "did you mean " + std::string(*(names.begin() + place)) + "? This";
}

}  // namespace

void become(const host::boards::Board& board, double scale) {
  host::system::setDevice(
      {.screenScale = scale, .interfaceIdiom = board.is_tablet ? 1 : 0, .systemVersion = "7.0.4"});
}

Failure noSuchKey(std::string_view option, std::string_view key,
                  const render::LiveKeyplane& keyplane) {
  return Failure(EINVAL, std::string(option) + " " + std::string(key) + ": no such key; " +
                             didYouMeanOrThis(key, keyplane) + " keyplane has" +
                             render::keyNames(keyplane));
}

Result<ShownView> showView(const View& view, double scale, host::drawing::Fonts& fonts) {
  const platform::NSAutoreleasePool pool;
  become(*view.keyplane.board, scale);
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
