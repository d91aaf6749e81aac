#include "render.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "byte_strings.h"
#include "choice_option.h"
#include "descriptor_io.h"
#include "exit_status.h"
#include "host/files/temporary_directory.h"
#include "host/images/encode.h"
#include "keyboard/dress_options.h"
#include "keyboard/keyboard_child.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/view.h"
#include "keyboard/words.h"
#include "leave.h"
#include "library_path.h"
#include "outer_process.h"
#include "output_file.h"
#include "render/comparison.h"
#include "render/every_view.h"
#include "render/one_view.h"
#include "sandbox/sandbox.h"
#include "watch/theme_files.h"

namespace tools {

namespace fs = std::filesystem;

using host::files::Done;
using host::files::Failure;
using host::files::Result;
using host::images::Bitmap;
using keyboard::Dress;

namespace {

struct RenderOptions {
  Dress dress;
  keyboard::ViewOptions view;
  std::optional<int> scale;
  std::optional<std::string> output;
  std::string keys;
  bool sandbox = true;
  bool sheet = false;
  std::string all;
  bool besideSystem = false;
  std::string diff;
};

/// Says in one line why there is no picture.
int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal render: %s\n", reason.c_str());
  return kTrouble;
}

Failure unwritten(const std::string& path, const Failure& failure) {
  return {failure.error, (path == "-" ? "standard output" : path) + ": " + failure.reason};
}

std::string outputOf(const RenderOptions& options) {
  return options.output.value_or("keyboard.png");
}

Links linksOf(const RenderOptions& options) {
  return options.output ? Links::kFollowed : Links::kReplaced;
}

int writePicture(const RenderOptions& options, const Bitmap& picture) {
  const std::string path = outputOf(options);
  const auto written = writeOutput(path, host::images::encodePng(picture), linksOf(options));
  return written ? kDone : refuse(unwritten(path, written.failure()).reason);
}

double scaleOf(const RenderOptions& options) {
  // A sheet at the scale of a device would be ten thousand pixels wide.
  return options.scale.value_or(options.sheet ? 1 : 2);
}

/// What there is of a drawing outside the process that draws.
struct Outside {
  OutputFile picture;
  std::optional<OutputFile> keys;
  std::optional<host::files::TemporaryDirectory> device;
};

Result<OutputFile> openOutput(const std::string& path, Links links = Links::kFollowed) {
  auto output = OutputFile::open(path, links);
  if (!output) return unwritten(path, output.failure());
  return output;
}

Result<Outside> prepare(const RenderOptions& options) {
  auto picture = openOutput(outputOf(options), linksOf(options));
  if (!picture) return picture.failure();
  Outside outside{*std::move(picture), {}, {}};
  if (!options.keys.empty()) {
    auto keys = openOutput(options.keys);
    if (!keys) return keys.failure();
    outside.keys.emplace(*std::move(keys));
  }
  if (hasPrivateDevice(options.dress)) outside.device.emplace();
  return outside;
}

Result<Done> put(OutputFile& output, const std::string& path) {
  const auto done = output.finish();
  return done ? done : unwritten(path, done.failure());
}

Result<Done> finish(Outside& outside, const RenderOptions& options) {
  const auto done = put(outside.picture, outputOf(options));
  return done && outside.keys ? put(*outside.keys, options.keys) : done;
}

Result<Done> fill(const OutputFile& output, const std::string& path, std::string_view bytes) {
  if (writeAll(output.descriptor(), bytes.data(), bytes.size())) return Done();
  return unwritten(path, host::files::lastFailure());
}

using Draw = std::function<Result<Bitmap>(const Dress&, std::string& report)>;

Result<Done> draw(const Outside& outside, const RenderOptions& options, const Draw& draw) {
  Dress worn = options.dress;
  if (outside.device) worn.private_device = outside.device->path();
  std::string report;
  const auto picture = draw(worn, report);
  if (!picture) return picture.failure();
  auto done = fill(outside.picture, outputOf(options), host::images::encodePng(*picture));
  return done && outside.keys ? fill(*outside.keys, options.keys, report) : done;
}

/// Draws in this process, which then can do no more: another puts the files in their places.
Result<Done> drawAndFinish(const RenderOptions& options, const Draw& drawIt) {
  auto outside = prepare(options);
  if (!outside) return outside.failure();
  auto outer = OuterProcess::start({.finish = [&] { return finish(*outside, options); },
                                    .clearAway = [&] { outside->device.reset(); }});
  if (!outer) return outer.failure();
  const auto drawn = draw(*outside, options, drawIt);
  return drawn ? outer->finish() : drawn;
}

int drawOne(const RenderOptions& options, const Draw& draw) {
  const auto done = drawAndFinish(options, draw);
  leave(done ? kDone : refuse(done.reason()));
}

int drawPicture(const RenderOptions& options) {
  return drawOne(options, [&](const Dress& worn, std::string& report) {
    return render::drawView(worn, keyboard::viewOf(options.view), scaleOf(options),
                            options.keys.empty() ? nullptr : &report);
  });
}

int drawBesideSystem(const RenderOptions& options) {
  const auto picture =
      render::drawBesideSystem(options.dress, keyboard::viewOf(options.view), scaleOf(options));
  return picture ? writePicture(options, *picture) : refuse(picture.reason());
}

int drawDifference(const RenderOptions& options) {
  const auto compared = render::drawDifference(options.dress, options.diff,
                                               keyboard::viewOf(options.view), scaleOf(options));
  if (!compared) return refuse(compared.reason());
  const int status = writePicture(options, compared->picture);
  if (status != kDone || compared->pixels == 0) return status;
  if (!options.dress.quiet) std::fprintf(stderr, "%zu pixels differ\n", compared->pixels);
  return kFindings;
}

int drawSheet(const RenderOptions& options) {
  return drawOne(options, [&](const Dress& worn, std::string&) -> Result<Bitmap> {
    const auto process = keyboard::KeyboardProcess::start(worn, scaleOf(options));
    if (!process) return process.failure();
    return render::drawSheet(keyboard::everyView(options.view), scaleOf(options), worn.quiet);
  });
}

/// Many pictures, from a process of its own.
Result<std::string> drawViews(const RenderOptions& options,
                              const std::vector<keyboard::View>& views) {
  const auto draw = [&](const Dress& worn) -> Result<std::string> {
    const auto process = keyboard::KeyboardProcess::start(worn, scaleOf(options));
    if (!process) return process.failure();
    const auto pictures = render::drawEach(views, scaleOf(options), worn.quiet);
    if (!pictures) return pictures.failure();
    return joined(*pictures);
  };
  auto process = keyboard::KeyboardChild::start(options.dress, draw);
  if (!process) return process.failure();
  return process->bytes();
}

int drawFiles(const RenderOptions& options) {
  const auto views = keyboard::everyView(options.view);
  const auto bytes = drawViews(options, views);
  if (!bytes) return refuse(bytes.reason());
  const auto pictures = parted(*bytes).value_or(std::vector<std::string>());
  const auto failure = render::writeFiles(views, pictures, options.all);
  return failure ? refuse(failure->reason) : kDone;
}

/// What makes no sense of several pictures, or of a file for each.
std::optional<std::string> contradictionOfSeveral(const RenderOptions& options) {
  if (keyboard::namesStates(options.view)) {
    return "--press, --disable, --shift and --dictation are for one keyboard, not for all of them";
  }
  if (!options.all.empty() && options.output) {
    return "--all names its files by itself; -o is for one picture";
  }
  return std::nullopt;
}

std::optional<std::string> contradiction(const RenderOptions& options) {
  const std::string output = outputOf(options);
  if (options.all.empty() && isTerminal(output)) {
    return "-o -: a picture is not for a terminal; send it to a file or a program";
  }
  const bool several = options.sheet || !options.all.empty();
  const bool compares = options.besideSystem || !options.diff.empty();
  if (options.sheet + !options.all.empty() + options.besideSystem + !options.diff.empty() > 1) {
    return "one of --sheet, --all, --beside-system and --diff, not several";
  }
  if (!options.keys.empty() && (several || compares)) {
    return "--keys tells of one picture; not with --sheet, --all, --beside-system or --diff";
  }
  if (options.keys == output) return "the picture or --keys in one place, not both";
  if (options.besideSystem && options.dress.system) {
    return "--beside-system has the system's look already; leave --system out";
  }
  return several ? contradictionOfSeveral(options) : keyboard::contradictionOf(options.view);
}

/// Whether a file may be one of the theme's: it lies, or would lie, in the theme's folder, or has
/// other names elsewhere.
bool mayBeOf(const fs::path& theme, const fs::path& file) {
  std::error_code error;
  const auto names = fs::hard_link_count(file, error);
  if (!error && names > 1) return true;
  const fs::path folder = fs::is_directory(theme, error) ? theme : theme.parent_path();
  const fs::path way = fs::weakly_canonical(file, error)
                           .lexically_relative(fs::weakly_canonical(folder / ".", error));
  return !way.empty() && *way.begin() != "..";
}

/// Why what is written would destroy what is read.
std::optional<std::string> refusalToReplaceInputs(const RenderOptions& options) {
  std::vector<fs::path> inputs;
  keyboard::Dress read = options.dress;
  for (const std::string& theme : {options.dress.theme, options.diff}) {
    // To ask a theme for its files takes a process.
    const bool isAsked = mayBeOf(theme, outputOf(options)) || mayBeOf(theme, options.keys);
    if (theme.empty() || !isAsked) continue;
    read.theme = theme;
    std::ranges::move(watch::filesOfTheme(read), std::back_inserter(inputs));
  }
  if (!options.dress.settings.empty()) inputs.emplace_back(options.dress.settings);
  if (options.all.empty()) {
    if (auto refusal = refusalToReplace(outputOf(options), inputs)) return refusal;
  }
  return options.keys.empty() ? std::nullopt : refusalToReplace(options.keys, inputs);
}

int run(RenderOptions& options) {
  if (const auto reason = contradiction(options)) return refuse(*reason);
  options.dress.sandboxed = sandbox::isToBeUsed(options.sandbox, "render");
  if (const auto reason = refusalToReplaceInputs(options)) return refuse(*reason);
  if (options.besideSystem) return drawBesideSystem(options);
  if (!options.diff.empty()) return drawDifference(options);
  if (options.sheet) return drawSheet(options);
  if (!options.all.empty()) return drawFiles(options);
  return drawPicture(options);
}

void addOutputOptions(CLI::App& command, RenderOptions& options) {
  command
      .add_option("-o,--output", options.output,
                  "The picture to write, a PNG file; - is standard output [keyboard.png]")
      ->type_name("FILE");
  addChoice(command, "--scale", options.scale, "Pixels a point [2; a sheet 1]", keyboard::kScales);
  command
      .add_option("--keys", options.keys,
                  "Write what was drawn, key by key, as JSON; - is standard output")
      ->type_name("FILE");
  command.add_flag("--sheet", options.sheet,
                   "One picture of all boards, keyplanes and styles; --device, --orientation, "
                   "--style and --keyplane narrow it");
  command.add_option("--all", options.all, "The same, each as a file of its own in this directory")
      ->type_name("DIR");
  command.add_flag("--beside-system", options.besideSystem,
                   "With and without the theme, side by side");
  command
      .add_option("--diff", options.diff,
                  "Beside another theme, and a third picture that marks what differs; exit status "
                  "1 when anything does")
      ->type_name("OTHER");
}

}  // namespace

void addRenderCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<RenderOptions>();
  options->dress.library = libraryPath();
  CLI::App* const command = app.add_subcommand("render", "Draw the keyboard with a theme");
  command->add_flag("--system", options->dress.system,
                    "The plain system keyboard, the library not loaded");
  keyboard::addDressOptions(*command, options->dress);
  keyboard::addKeyplaneOptions(*command, options->view);
  keyboard::addStateOptions(*command, options->view);
  addOutputOptions(*command, *options);
  sandbox::addSandboxOption(*command, options->sandbox);
  command->footer(
      "What the library logs goes to standard error, each line once. On the device that is drawn\n"
      "the library does what it does on every device: it empties the keyboard's cache.\n"
      "Exit status: 0 done, 1 --diff found differences, 2 wrong usage, or something that can't be\n"
      "read, loaded or written.\n\n"
      "Examples:\n"
      "  prismal render Evening.theme -o evening.png\n"
      "  prismal render Evening.theme --orientation landscape --keyplane numbers\n"
      "  prismal render Evening.theme --sheet -o sheet.png\n"
      "  prismal render --system --device tablet --press a -o plain.png");
  command->callback([options, &status] { status = run(*options); });
}

}  // namespace tools
