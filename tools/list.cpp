#include "list.h"

#include <CLI/App.hpp>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "device/open_device.h"
#include "device/report.h"
#include "device/settings_file.h"
#include "device/theme_store.h"
#include "exit_status.h"
#include "output_file.h"
#include "text_table.h"

namespace tools {

using device::SettingsFile;
using device::ThemeStore;
using host::files::DeviceRoot;
using host::files::Result;
using platform::PropertyListView;
using Json = nlohmann::ordered_json;

namespace {

struct ListOptions {
  device::Place place;
  bool json = false;
};

std::size_t rulesIn(PropertyListView styles) {
  std::size_t count = 0;
  for (const auto& style : styles.entries()) count += style.value.items().size();
  return count;
}

Json describe(const std::string& name, PropertyListView theme) {
  return {{"name", name},
          {"colors", theme.objectForKey("CustomColor").items().size()},
          {"gradients", theme.objectForKey("CustomLinearGradient").items().size()},
          {"rules", rulesIn(theme.objectForKey("Styles"))},
          {"pictures", theme.objectForKey("BackgroundImages").entries().size()}};
}

/// The topmost theme first. One that can't be read is told and counted as empty.
Json themesOf(const ThemeStore& store) {
  Json themes = Json::array();
  for (auto name = store.names().rbegin(); name != store.names().rend(); ++name) {
    const auto theme = store.theme(*name);
    if (!theme) device::tell({*name + ": " + theme.reason()});
    themes.push_back(describe(*name, theme ? *theme : platform::PropertyList()));
  }
  return themes;
}

Result<Json> report(const std::optional<DeviceRoot>& device) {
  if (!device) return Json{{"usePrismal", true}, {"themes", Json::array()}};
  const auto store = ThemeStore::read(*device);
  if (!store) return store.failure();
  const auto settings = SettingsFile::read(*device);
  if (!settings) return settings.failure();
  return Json{{"usePrismal", settings->usePrismal()}, {"themes", themesOf(*store)}};
}

std::string table(const Json& report) {
  std::vector<std::vector<std::string>> rows = {
      {"THEME", "COLOURS", "GRADIENTS", "RULES", "PICTURES"}};
  for (const Json& theme : report["themes"]) {
    rows.push_back({theme["name"], theme["colors"].dump(), theme["gradients"].dump(),
                    theme["rules"].dump(), theme["pictures"].dump()});
  }
  const bool isEmpty = rows.size() == 1;
  const bool isOne = rows.size() == 2;
  return (isEmpty ? "No theme is installed; `prismal install THEME` does that.\n"
                  : textTable(rows) + (isOne ? "" : "Where themes differ, the upper one wins.\n")) +
         (report["usePrismal"].get<bool>() ? "usePrismal is on.\n" : "usePrismal is off.\n");
}

int list(const ListOptions& options) {
  const auto device = device::openDeviceIfAny(options.place);
  if (!device) return device::refuse("list", device.reason());
  const auto shown = report(*device);
  if (!shown) return device::refuse("list", shown.reason());
  const auto printed = printResult(options.json ? shown->dump(1) + "\n" : table(*shown));
  return printed ? kDone : device::refuse("list", "standard output: " + printed.reason());
}

}  // namespace

void addListCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ListOptions>();
  CLI::App* const command = app.add_subcommand("list", "The themes that are installed");
  device::addDeviceOption(*command, options->place);
  command->add_flag("--json", options->json, "The same as JSON");
  command->footer(
      "The topmost theme comes first: where themes differ, it wins. The numbers are those of what\n"
      "stands in the theme, well formed or not.\n\n"
      "Examples:\n"
      "  prismal list\n"
      "  prismal list --json");
  command->callback([options, &status] { status = list(*options); });
}

}  // namespace tools
