#include "render/comparison.h"

#include <cerrno>
#include <utility>

#include "render/canvas.h"
#include "render/difference.h"
#include "render/other_process.h"
#include "theme/theme_source.h"

namespace tools::render {

using host::files::Result;
using host::images::Bitmap;
using keyboard::Dress;
using keyboard::View;

namespace {

struct Pair {
  Bitmap one;
  Bitmap other;
};

/// What to call what is drawn beside `other`: a theme by its name, unless both have the same.
std::string nameOf(const Dress& dress, const Dress& other) {
  if (dress.system) return "system";
  if (dress.theme.empty()) return "installed";
  std::string name = theme::themeName(dress.theme);
  const bool isOthers = !other.theme.empty() && name == theme::themeName(other.theme);
  return isOthers ? dress.theme : name;
}

/// The same view in two dresses, drawn at the same time.
Result<Pair> drawPair(Dress dress, Dress other, const View& view, double scale) {
  dress.told_as = nameOf(dress, other);
  other.told_as = nameOf(other, dress);
  auto first = OtherProcess::start(dress, view, scale);
  if (!first) return first.failure();
  auto second = OtherProcess::start(other, view, scale);
  if (!second) return second.failure();
  auto one = first->picture();
  if (!one) return one.failure();
  auto two = second->picture();
  if (!two) return two.failure();
  if (one->width != two->width || one->height != two->height) {
    return host::files::Failure(EBADMSG, "the two pictures are not of one size");
  }
  return Pair{*std::move(one), *std::move(two)};
}

}  // namespace

Result<Bitmap> drawBesideSystem(const Dress& dress, const View& view, double scale) {
  Dress plain;
  plain.system = true;
  plain.sandboxed = dress.sandboxed;
  plain.quiet = dress.quiet;
  const auto pair = drawPair(dress, plain, view, scale);
  if (!pair) return pair.failure();
  const Bitmap pictures[] = {pair->one, pair->other};
  const std::string captions[] = {nameOf(dress, plain), nameOf(plain, dress)};
  return sideBySide(pictures, captions, scale);
}

Result<Compared> drawDifference(const Dress& dress, const std::string& otherTheme, const View& view,
                                double scale) {
  Dress other = dress;
  other.theme = otherTheme;
  other.system = false;
  other.device_root.reset();
  const auto pair = drawPair(dress, other, view, scale);
  if (!pair) return pair.failure();
  Difference difference = differenceOf(pair->one, pair->other);
  const Bitmap pictures[] = {pair->one, pair->other, std::move(difference.marked)};
  const std::string captions[] = {nameOf(dress, other), nameOf(other, dress), "what differs"};
  return Compared{sideBySide(pictures, captions, scale), difference.pixels};
}

}  // namespace tools::render
