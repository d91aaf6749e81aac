#include "watch.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <system_error>
#include <utility>

#include "descriptor_io.h"
#include "exit_status.h"
#include "host/drawing/fonts.h"
#include "host/files/result.h"
#include "host/files/temporary_directory.h"
#include "host/images/encode.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/view.h"
#include "library_path.h"
#include "output_file.h"
#include "render/one_view.h"
#include "sandbox/sandbox.h"
#include "watch/drawing.h"
#include "watch/file_watch.h"
#include "watch/signals.h"
#include "watch/theme_files.h"

namespace tools {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using watch::FileWatch;

namespace {

struct WatchOptions {
  keyboard::Dress dress;
  keyboard::ViewOptions view;
  int scale = 2;
  fs::path output;
  bool sandbox = true;
};

/// How long nothing more is saved before a drawing begins: some programs save a file in several
/// steps. A picture that is overtaken by another save while it is drawn is not shown, unless saves
/// have followed each other without end.
constexpr std::chrono::milliseconds kQuiet{10};
constexpr std::chrono::milliseconds kLongest{500};

int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal watch: %s\n", reason.c_str());
  return kTrouble;
}

int refuseToWrite(const WatchOptions& options, const host::files::Failure& failure) {
  return refuse(options.output.string() + ": " + failure.reason);
}

/// In the process of the drawing. The last good picture stays when there is no new one.
int draw(const WatchOptions& options, const keyboard::Dress& dress, const OutputFile& next,
         host::drawing::Fonts& fonts) {
  const auto picture =
      render::drawView(dress, keyboard::viewOf(options.view), options.scale, fonts);
  if (!picture) return refuse(picture.reason());
  const std::string bytes = host::images::encodePng(*picture);
  if (writeAll(next.descriptor(), bytes.data(), bytes.size())) return kDone;
  return refuseToWrite(options, host::files::lastFailure());
}

/// Draws what is there, then again whenever it changes, until a signal asks for the end.
class Watcher {
 public:
  explicit Watcher(const WatchOptions& options) : options_(options) {
    // Looked up once for all drawings: each begins as a copy of this process.
    for (const char* name : {"InterDisplay-Light", "Inter-Regular"}) fonts_.named(name);
  }

  int run() {
    for (;;) {
      if (isDue() && !drawing_.isGoingOn()) {
        if (!startDrawing()) return kTrouble;
        continue;
      }
      wait();
      if (signals_.takeEnd()) break;
      if (watch_->takeChanges()) noteChange();
      if (const auto status = drawing_.takeStatus()) takePicture(*status);
    }
    drawing_.finish();
    return kDone;
  }

 private:
  bool isDue() const { return due_ && Clock::now() >= *due_; }

  void noteChange() {
    const auto now = Clock::now();
    if (!unshownSince_) unshownSince_ = now;
    due_ = std::min(now + kQuiet, *unshownSince_ + kLongest);
  }

  void takePicture(int status) {
    device_.reset();
    if (status == -1) refuse("the process that draws has died");
    const auto since = *unshownSince_;
    const bool isOvertaken = due_ && Clock::now() < since + kLongest;
    if (status == kDone && !isOvertaken) show(since);
    next_.reset();
    if (status == kDone && isOvertaken) return;
    unshownSince_ = due_ ? std::optional(Clock::now()) : std::nullopt;
  }

  void show(Clock::time_point since) {
    if (const auto shown = next_->finish(); !shown) {
      refuseToWrite(options_, shown.failure());
      return;
    }
    if (options_.dress.quiet) return;
    const auto taken = std::chrono::round<std::chrono::milliseconds>(Clock::now() - since);
    std::printf("%s: drawn in %d ms\n", options_.output.c_str(), static_cast<int>(taken.count()));
    std::fflush(stdout);
  }

  /// The watch is there before the drawing reads the theme: whatever is saved later counts.
  bool startDrawing() {
    due_.reset();
    const auto files = watch::filesOfTheme(options_.dress);
    auto watch = FileWatch::start(files);
    if (!watch) {
      refuse("files can't be watched: " + watch.reason());
      return false;
    }
    watch_ = *std::move(watch);
    // Saved between the two, and naming other pictures.
    if (watch::filesOfTheme(options_.dress) != files) noteChange();
    // Before the theme is read, for then nothing can be opened any more.
    auto next = OutputFile::open(options_.output);
    if (!next) {
      refuseToWrite(options_, next.failure());
      unshownSince_ = due_ ? std::optional(Clock::now()) : std::nullopt;
      return true;
    }
    next_.emplace(*std::move(next));
    keyboard::Dress dress = options_.dress;
    dress.private_device = device_.emplace().path();
    if (drawing_.start([&] { return draw(options_, dress, *next_, fonts_); })) return true;
    refuse("no process can be started: " + host::files::lastFailure().reason);
    return false;
  }

  void wait() {
    std::array<pollfd, 2> polled = {
        {{signals_.descriptor(), POLLIN, 0}, {watch_->descriptor(), POLLIN, 0}}};
    int timeout_ms = -1;
    // A drawing that is going on ends with a signal.
    if (due_ && !drawing_.isGoingOn()) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(*due_ - Clock::now());
      timeout_ms = std::max(0, static_cast<int>(left.count()));
    }
    ::poll(polled.data(), polled.size(), timeout_ms);
  }

  const WatchOptions& options_;
  host::drawing::Fonts fonts_;
  watch::Signals signals_;
  std::optional<host::files::TemporaryDirectory> device_;  // goes after the drawing
  std::optional<OutputFile> next_;  // waits until it is known whether it is shown
  watch::Drawing drawing_;
  std::optional<FileWatch> watch_;
  std::optional<Clock::time_point> due_ = Clock::now();
  std::optional<Clock::time_point> unshownSince_ = due_;
};

int run(WatchOptions& options) {
  std::error_code error;
  const auto before = fs::status(options.output, error);
  const bool isNoFile = fs::exists(before) && !fs::is_regular_file(before);
  if (options.output == "-" || isNoFile) {
    return refuse("-o: a file, which is replaced again and again");
  }
  // A mistyped folder would never come.
  const fs::path folder = options.output.parent_path();
  if (!folder.empty() && !fs::is_directory(folder, error)) {
    return refuse(options.output.string() + ": No such file or directory");
  }
  if (!fs::exists(options.dress.theme, error)) {
    return refuse(options.dress.theme + ": No such file or directory");
  }
  options.dress.sandboxed = sandbox::isToBeUsed(options.sandbox, "watch");
  const auto files = watch::filesOfTheme(options.dress);
  if (const auto reason = refusalToReplace(options.output, files)) return refuse(*reason);
  return Watcher(options).run();
}

}  // namespace

void addWatchCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<WatchOptions>();
  options->dress.library = libraryPath();
  options->dress.faultsOnly = true;
  CLI::App* const command =
      app.add_subcommand("watch", "Draw a theme anew whenever it is saved, until interrupted");
  command->add_option("THEME", options->dress.theme, "A theme folder or a property-list file")
      ->required();
  command->add_option("-o,--output", options->output, "The picture to write, a PNG file")
      ->type_name("FILE")
      ->required();
  keyboard::addKeyplaneOptions(*command, options->view);
  keyboard::addStateOptions(*command, options->view);
  command->add_option("--scale", options->scale, "Pixels a point [2]")
      ->check(CLI::IsMember({1, 2}).description(""))
      ->type_name("1|2");
  command
      ->add_option("--library", options->dress.library,
                   "The library to load, in place of the one that came with this program")
      ->type_name("FILE");
  command->add_flag(
      "--quiet", options->dress.quiet,
      "Don't tell of drawings, of faults that the library logs, nor of missing pictures");
  sandbox::addSandboxOption(*command, options->sandbox);
  command->footer(
      "The theme's property list and the pictures that it names are watched; a file counts as "
      "saved\n"
      "once the program that wrote it has closed it. While the theme can't be read, the last good\n"
      "picture stays, and standard error says what is wrong.\n\n"
      "Example: prismal watch Evening.theme -o evening.png --device tablet");
  command->callback([options, &status] { status = run(*options); });
}

}  // namespace tools
