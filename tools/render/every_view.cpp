#include "render/every_view.h"

#include <atomic>
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

/// Shows all of `views`, which name no keys that could be missing, one after the other, then draws
/// all and hands each picture, or none if it can't be drawn, to `take` on the thread that drew it.
Result<host::files::Done> drawAll(
    std::span<const View> views, double scale, bool quiet,
    const std::function<void(std::size_t, const std::optional<Bitmap>&)>& take) {
  ProgressBar bar(2 * views.size(), quiet);
  std::vector<ShownView> shown;
  host::drawing::Fonts fontsOfKeys;
  for (const View& view : views) {
    auto one = keyboard::showView(view, scale, fontsOfKeys);
    if (!one) return one.failure();
    shown.push_back(*std::move(one));
    bar.show(shown.size());
  }
  inParallel(
      shown.size(),
      [&](std::size_t i, host::drawing::Fonts& fonts) {
        take(i, host::drawing::draw(shown[i].picture, fonts));
      },
      [&](std::size_t done) { bar.show(shown.size() + done); });
  return host::files::Done();
}

std::string fileNameOf(const View& view) {
  std::string name;
  for (const auto word : keyboard::wordsOf(view)) name.append(name.empty() ? "" : "-").append(word);
  return name + ".png";
}

}  // namespace

Result<Bitmap> drawSheet(std::span<const View> views, double scale, bool quiet) {
  SheetPlan plan = planSheet(views);
  Canvas canvas(plan.size, scale, std::move(plan.cells));
  if (!canvas.bitmap().isValid()) {
    return Failure(ENOMEM, "the sheet is too large to be drawn; narrow it, or take --scale 1");
  }
  std::atomic<bool> isWhole = true;
  const auto lay = [&](std::size_t i, const std::optional<Bitmap>& picture) {
    picture ? canvas.put(i, *picture) : isWhole.store(false);
  };
  if (const auto drawn = drawAll(views, scale, quiet, lay); !drawn) return drawn.failure();
  if (!isWhole) return Failure(ENOMEM, "a picture of the sheet can't be drawn");
  return canvas.take();
}

Result<std::vector<std::string>> drawEach(std::span<const View> views, double scale, bool quiet) {
  std::vector<std::string> pictures(views.size());
  const auto keep = [&](std::size_t i, const std::optional<Bitmap>& picture) {
    if (picture) pictures[i] = host::images::encodePng(*picture);
  };
  if (const auto drawn = drawAll(views, scale, quiet, keep); !drawn) return drawn.failure();
  return pictures;
}

std::optional<Failure> writeFiles(std::span<const View> views,
                                  std::span<const std::string> pictures,
                                  const fs::path& directory) {
  std::error_code error;
  fs::create_directories(directory, error);
  if (error) return Failure(error.value(), directory.string() + ": " + error.message());
  std::optional<Failure> first;
  for (std::size_t i = 0; i < views.size(); ++i) {
    const fs::path path = directory / fileNameOf(views[i]);
    const auto written = i < pictures.size() && !pictures[i].empty()
                             ? writeOutput(path, pictures[i], Links::kReplaced)
                             : Result<host::files::Done>(Failure(ENOMEM));
    if (!written && !first) first = Failure(EIO, path.string() + ": " + written.reason());
  }
  return first;
}

}  // namespace tools::render
