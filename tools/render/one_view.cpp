#include "render/one_view.h"

#include <cerrno>
#include <utility>

#include "host/drawing/draw.h"
#include "keyboard/shown_view.h"
#include "render/keys_report.h"

namespace tools::render {

using host::files::Failure;
using host::files::Result;
using host::images::Bitmap;

Result<Bitmap> drawView(const keyboard::Dress& dress, const keyboard::View& view, double scale,
                        host::drawing::Fonts& fonts, std::string* report) {
  const auto process = keyboard::KeyboardProcess::start(dress, scale);
  if (!process) return process.failure();
  const auto shown = keyboard::showView(view, scale, fonts);
  if (!shown) return shown.failure();
  if (report) *report = keysReport(view, *shown);
  auto bitmap = host::drawing::draw(shown->picture, fonts);
  if (!bitmap) return Failure(ENOMEM, "the picture can't be drawn");
  return *std::move(bitmap);
}

Result<Bitmap> drawView(const keyboard::Dress& dress, const keyboard::View& view, double scale,
                        std::string* report) {
  host::drawing::Fonts fonts;
  return drawView(dress, view, scale, fonts, report);
}

}  // namespace tools::render
