#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"
#include "host/files/result.h"
#include "host/render/keyplane.h"
#include "keyboard/view.h"
#include "platform/graphics.h"

namespace tools::keyboard {

/// A view that the keyboard of this process has shown, and what it drew. Another view may be shown
/// since: what this one's picture needs stays.
struct ShownView {
  host::render::LiveKeyplane keyplane;
  host::drawing::KeyboardPicture picture;
  /// The device path of the picture behind the keys or in the panel.
  std::optional<std::string> background;
  /// Owns the images that `picture` points to. Made and dropped on the main thread.
  platform::Retained<platform::UIView> views;
};

/// The scale of the device that shows a picture of `scale` pixels a point: devices have one or two,
/// and what has two is the sharper source for any scale above one. The library asks a device's
/// scale when it first reads a picture of a theme, so that a process shows one device's alone.
double deviceScale(double scale);

/// Makes this process answer for the device that has `board`, at `scale` pixels a point.
void become(const host::boards::Board& board, double scale);

/// Makes the keyboard of this process, a KeyboardProcess, show `view` on a device for `scale`, and
/// asks what it draws at that scale; with
/// `fonts` when the keyboard keeps pictures of its keys. Refuses a key that the keyplane doesn't
/// have. Main thread only.
host::files::Result<ShownView> showView(const View& view, double scale,
                                        host::drawing::Fonts& fonts);

/// Says that `keyplane` has no key called `key`, which stands behind `option`, and what it has.
host::files::Failure noSuchKey(std::string_view option, std::string_view key,
                               const host::render::LiveKeyplane& keyplane);

}  // namespace tools::keyboard
