#include "render/every_view.h"

#include <cerrno>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/drawing/draw.h"
#include "host/images/encode.h"
#include "keyboard/shown_view.h"
#include "output_file.h"
#include "render/canvas.h"
#include "render/progress_bar.h"
#include "render/sheet.h"
#include "render/workers.h"

namespace tools::render {

namespace fs = std::filesystem;
using host::files::Failure;
using host::files::Result;
using host::images::Bitmap;
using keyboard::ShownView;
using keyboard::View;

namespace {

/// Shows all of `views`, which name no keys that could be missing.
std::vector<ShownView> showAll(std::span<const View> views, double scale) {
  host::drawing::Fonts fonts;
  std::vector<ShownView> shown;
  for (const View& view : views) {
    if (auto one = keyboard::showView(view, scale, fonts)) shown.push_back(*std::move(one));
  }
  return shown;
}

/// Draws each of `shown` and hands it, or none if it can't be drawn, to `take` on the thread that
/// drew it.
void drawAll(const std::vector<ShownView>& shown, bool quiet,
             const std::function<void(std::size_t, const std::optional<Bitmap>&)>& take) {
  ProgressBar bar(shown.size(), quiet);
  inParallel(
      shown.size(),
      [&](std::size_t i, host::drawing::Fonts& fonts) {
        take(i, host::drawing::draw(shown[i].picture, fonts));
      },
      [&](std::size_t done) { bar.show(done); });
}

std::string fileNameOf(const View& view) {
  std::string name;
  for (const auto word : keyboard::wordsOf(view)) name.append(name.empty() ? "" : "-").append(word);
  return name + ".png";
}

}  // namespace

Result<Bitmap> drawSheet(std::span<const View> views, double scale, bool quiet) {
  SheetPlan plan = planSheet(views);
  const auto shown = showAll(views, scale);
  Canvas canvas(plan.size, scale, std::move(plan.cells));
  if (!canvas.bitmap().isValid()) return Failure(ENOMEM, "the sheet is too large to be drawn");
  drawAll(shown, quiet, [&](std::size_t i, const std::optional<Bitmap>& picture) {
    if (picture) canvas.put(i, *picture);
  });
  return canvas.take();
}

std::optional<Failure> drawFiles(std::span<const View> views, double scale,
                                 const fs::path& directory, bool quiet) {
  std::error_code error;
  fs::create_directories(directory, error);
  if (error) return Failure(error.value(), directory.string() + ": " + error.message());
  const auto shown = showAll(views, scale);
  std::vector<std::optional<Failure>> failures(views.size());
  drawAll(shown, quiet, [&](std::size_t i, const std::optional<Bitmap>& picture) {
    const fs::path path = directory / fileNameOf(views[i]);
    const auto written = picture ? writeOutput(path, host::images::encodePng(*picture))
                                 : Result<host::files::Done>(Failure(ENOMEM));
    if (!written) failures[i] = Failure(EIO, path.string() + ": " + written.reason());
  });
  for (auto& failure : failures) {
    if (failure) return std::move(failure);
  }
  return std::nullopt;
}

}  // namespace tools::render
