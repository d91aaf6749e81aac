#include "settings.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "choice_option.h"
#include "device/background_picture.h"
#include "device/change.h"
#include "device/open_device.h"
#include "device/places.h"
#include "device/report.h"
#include "device/settings_file.h"
#include "exit_status.h"
#include "held_interruptions.h"
#include "output_file.h"
#include "say_done.h"
#include "text_table.h"

namespace tools {

using device::BackgroundPicture;
using device::SettingsFile;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;
using Json = nlohmann::ordered_json;

namespace {

struct SettingsOptions {
  device::Place place;
  bool json = false;
  bool use = true;
  std::string style;
  std::string_view orientation;
  std::string picture;
  bool remove = false;
};

int refuse(const std::string& reason) {
  return device::refuse("settings", reason);
}

Json report(const SettingsFile& settings) {
  Json backgrounds = Json::array();
  for (const auto& [style, orientations] : settings.backgrounds().entries()) {
    for (const auto& [orientation, picture] : orientations.entries()) {
      if (!picture.isString()) continue;
      backgrounds.push_back(
          {{"style", style}, {"orientation", orientation}, {"picture", *picture.string()}});
    }
  }
  return {{"file", settings.path().empty() ? Json() : Json(settings.path())},
          {"usePrismal", settings.usePrismal()},
          {"backgrounds", backgrounds}};
}

std::string table(const Json& report) {
  std::vector<std::vector<std::string>> rows = {{"SETTING", "VALUE"}};
  rows.push_back({"usePrismal", report["usePrismal"].get<bool>() ? "on" : "off"});
  for (const Json& background : report["backgrounds"]) {
    rows.push_back({"background " + background["style"].get<std::string>() + " " +
                        background["orientation"].get<std::string>(),
                    background["picture"]});
  }
  const Json& file = report["file"];
  return textTable(rows) + (file.is_null() ? "(no settings file: every setting has its default)\n"
                                           : "(from " + file.get<std::string>() + ")\n");
}

void tellFault(const SettingsFile& settings, const char* consequence) {
  if (!settings.fault()) return;
  device::tell({std::string(device::kSettings) + ": " + *settings.fault() + "; " + consequence});
}

int show(const SettingsOptions& options) {
  const auto device = device::openDeviceIfAny(options.place);
  if (!device) return refuse(device.reason());
  const auto settings = *device ? SettingsFile::read(**device) : SettingsFile::defaults();
  if (!settings) return refuse(settings.reason());
  tellFault(*settings, "it is not in force");
  const Json shown = report(*settings);
  const auto printed = printResult(options.json ? shown.dump(1) + "\n" : table(shown));
  return printed ? kDone : refuse("standard output: " + printed.reason());
}

/// Edits settings, and says what is to be done on the device just before they are replaced.
using Edit = std::function<Result<Done>(SettingsFile&)>;
using Step = std::function<Result<Done>()>;

Result<Done> replace(const DeviceRoot& device, const Edit& edit, const Step& before) {
  auto settings = SettingsFile::read(device);
  if (!settings) return settings.failure();
  if (auto edited = edit(*settings); !edited) return edited;
  auto file = settings->prepare(device);
  if (!file) return file.failure();
  // From here on it is done before it is stopped.
  if (HeldInterruptions::came()) return Failure(EINTR, "interrupted; nothing has changed");
  if (auto done = before(); !done) return done;
  const auto put = file->putInPlace();
  if (!put)
    return Failure(put.failure().error, std::string(device::kSettings) + ": " + put.reason());
  tellFault(*settings, "it is replaced");
  return Done();
}

/// Does `change` to the device, the only process to do so, tells running programs, and says what
/// holds now.
int changeDevice(const device::Place& place,
                 const std::function<Result<Done>(const DeviceRoot&)>& change,
                 const std::string& now) {
  const HeldInterruptions held;
  const auto device = device::openDevice(place, DeviceRoot::Creation::kIfMissing);
  if (!device) return refuse(device.reason());
  const auto begun = device::Change::begin(*device);
  if (!begun) return refuse(begun.reason());
  if (const auto changed = change(*device); !changed) return refuse(changed.reason());
  const int status = device::post(*device, device::kReloadSettings, "settings");
  return status == kDone ? sayDone("settings", now) : status;
}

int setUse(const SettingsOptions& options) {
  const Edit edit = [&](SettingsFile& settings) {
    settings.setUsePrismal(options.use);
    return Done();
  };
  return changeDevice(
      options.place,
      [&](const DeviceRoot& device) { return replace(device, edit, [] { return Done(); }); },
      options.use ? "usePrismal is on." : "usePrismal is off.");
}

Result<Done> setBackground(const DeviceRoot& device, const SettingsOptions& options) {
  const auto picture =
      BackgroundPicture::stage(device, options.style, options.orientation, options.picture);
  if (!picture) return picture.failure();
  return replace(
      device,
      [&](SettingsFile& settings) {
        settings.setBackground(options.style, options.orientation, picture->path());
        return Done();
      },
      [&] { return picture->putInPlace(); });
}

Result<Done> removeBackground(const DeviceRoot& device, const SettingsOptions& options) {
  const Edit edit = [&](SettingsFile& settings) -> Result<Done> {
    const auto chosen =
        settings.backgrounds().objectForKey(options.style).objectForKey(options.orientation);
    if (!chosen) {
      return Failure(ENOENT, "background " + options.style + " " +
                                 std::string(options.orientation) + ": no picture was chosen");
    }
    settings.setBackground(options.style, options.orientation, "");
    return Done();
  };
  return replace(device, edit, [] { return Done(); });
}

/// One of the theme format's names; a keyplane and a variant may stand behind it, which the library
/// takes for part of the name.
bool isStyle(std::string_view style) {
  constexpr std::string_view kNames[] = {"iPhone-Standard", "iPhone-Alert", "iPhone-Dictation",
                                         "iPad-Standard",   "iPad-Alert",   "iPad-Split"};
  return std::ranges::find(kNames, style.substr(0, style.find(';'))) != std::end(kNames) &&
         style.find('/') == style.npos;
}

int changeBackground(const SettingsOptions& options) {
  if (!isStyle(options.style)) {
    return refuse("background " + options.style +
                  ": STYLE is iPhone-Standard, iPhone-Alert, iPhone-Dictation, iPad-Standard, "
                  "iPad-Alert or iPad-Split");
  }
  if (options.remove != options.picture.empty()) return refuse("a PICTURE, or --remove");
  const std::string background =
      "background " + options.style + " " + std::string(options.orientation);
  return changeDevice(
      options.place,
      [&](const DeviceRoot& device) {
        return options.remove ? removeBackground(device, options) : setBackground(device, options);
      },
      background + (options.remove ? " is the theme's again." : " is " + options.picture + "."));
}

struct UseChoice {
  std::string_view word;
  bool value;
};
constexpr UseChoice kUseChoices[] = {{"on", true}, {"off", false}};

struct OrientationChoice {
  std::string_view word;
  std::string_view value;
};
constexpr OrientationChoice kOrientationChoices[] = {{"Portrait", "Portrait"},
                                                     {"Landscape", "Landscape"}};

void addUse(CLI::App& settings, SettingsOptions& options, int& status) {
  CLI::App* const command =
      settings.add_subcommand("usePrismal", "Turn the master switch on or off");
  addChoice(*command, "VALUE", options.use, "Whether the theme answers for named colours",
            kUseChoices)
      ->required();
  command->fallthrough();
  command->footer(
      "With `off`, the theme's named colours and gradients are no longer answered: what a theme "
      "made\n"
      "of names of its own has no colour then. --device-root DIR names the device.\n\n"
      "Example: prismal settings usePrismal off");
  command->callback([&options, &status] { status = setUse(options); });
}

void addBackground(CLI::App& settings, SettingsOptions& options, int& status) {
  CLI::App* const command = settings.add_subcommand(
      "background", "Choose a picture that lies behind the keys in place of the theme's");
  command->add_option("STYLE", options.style, "The visual style, such as iPhone-Standard")
      ->required();
  addChoice(*command, "ORIENTATION", options.orientation, "How the device is held",
            kOrientationChoices)
      ->required();
  command->add_option("PICTURE", options.picture,
                      "A PNG or JPEG file; it and its @2x sibling are copied to the device");
  command->add_flag("--remove", options.remove, "Take the choice back");
  command->fallthrough();
  command->footer(
      "--device-root DIR names the device.\n\n"
      "Examples:\n"
      "  prismal settings background iPhone-Standard Portrait holiday.jpg\n"
      "  prismal settings background iPhone-Standard Portrait --remove");
  command->callback([&options, &status] { status = changeBackground(options); });
}

}  // namespace

void addSettingsCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<SettingsOptions>();
  CLI::App* const command =
      app.add_subcommand("settings", "Show the user's settings, or change them");
  device::addDeviceOption(*command, options->place);
  command->add_flag("--json", options->json, "Show them as JSON");
  command->require_subcommand(0, 1);
  addUse(*command, *options, status);
  addBackground(*command, *options, status);
  command->footer(
      "Without a subcommand, shows what is in force. A change goes into the user's settings file;\n"
      "the first one takes over what the default file says. Running programs are told.\n"
      "Exit status: 0 done, 2 wrong usage, or something that can't be read or written.\n\n"
      "Examples:\n"
      "  prismal settings usePrismal off\n"
      "  prismal settings background iPhone-Standard Portrait holiday.jpg\n"
      "  prismal settings background iPhone-Standard Portrait --remove");
  command->callback([options, command, &status] {
    if (command->get_subcommands().empty()) status = show(*options);
  });
}

}  // namespace tools
