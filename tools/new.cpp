#include "new.h"

#include <CLI/App.hpp>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "exit_status.h"
#include "host/files/shell_words.h"
#include "host/plist/description.h"
#include "new/starter.h"
#include "output_file.h"
#include "theme/theme_source.h"

namespace tools {

namespace fs = std::filesystem;

namespace {

int refuse(const std::string& reason) {
  std::fprintf(stderr, "prismal new: %s\n", reason.c_str());
  return kTrouble;
}

/// The folder for a theme of that name; empty when it names none.
fs::path folderFor(const std::string& name) {
  fs::path folder = fs::path(name).lexically_normal();
  if (!folder.has_filename()) folder = folder.parent_path();
  const fs::path last = folder.filename();
  if (last.empty() || last == "." || last == "..") return {};
  if (last.extension() != ".theme" || last.stem() == ".theme") folder += ".theme";
  return theme::isThemeName(theme::themeName(folder.string())) ? folder : fs::path();
}

/// Takes away what there is of a theme that could not be made whole: nothing but its own files.
void takeBack(const fs::path& folder) {
  std::error_code ignored;
  for (const auto& file : starter::files()) fs::remove(folder / file.name, ignored);
  fs::remove(folder, ignored);
}

int make(const std::string& name) {
  const fs::path folder = folderFor(name);
  if (folder.empty()) return refuse(host::plist::escapeControls(name) + ": no name for a theme");
  std::error_code error;
  if (!fs::create_directory(folder, error)) {
    return refuse(folder.string() + ": " + (error ? error.message() : "is there already"));
  }
  for (const auto& file : starter::files()) {
    const auto written = writeOutput(folder / file.name, file.bytes);
    if (written) continue;
    takeBack(folder);
    return refuse((folder / file.name).string() + ": " + written.reason());
  }
  const bool isOption = folder.string().starts_with('-');
  const auto told =
      printResult("Made " + folder.string() + ". Look at it: prismal render " +
                  host::files::wordForShell(isOption ? "./" + folder.string() : folder.string()) +
                  " -o picture.png\n");
  return told ? kDone : refuse("standard output: " + told.reason());
}

}  // namespace

void addNewCommand(CLI::App& app, int& status) {
  auto name = std::make_shared<std::string>();
  CLI::App* const command = app.add_subcommand("new", "Make a theme folder to begin with");
  command->add_option("NAME", *name, "The theme's name; the folder is NAME.theme")->required();
  command->footer(
      "The folder holds theme.plist, with comments, and background pictures at two sizes each. "
      "What\n"
      "is there already is never overwritten.\n\n"
      "Example: prismal new Evening && prismal render Evening.theme -o evening.png");
  command->callback([name, &status] { status = make(*name); });
}

}  // namespace tools
