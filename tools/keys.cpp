#include "keys.h"

#include <CLI/App.hpp>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "exit_status.h"
#include "keyboard/key_json.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/view.h"
#include "keyboard/words.h"
#include "output_file.h"
#include "text_table.h"

namespace tools {

using keyboard::Json;
using keyboard::View;

namespace {

struct KeysOptions {
  keyboard::ViewOptions view;
  bool json = false;
};

/// The view's keyplane and its keys, as `render --keys` tells them.
Json keysOf(const View& view) {
  const auto keyplane = host::render::makeKeyplane(view.keyplane);
  Json report = keyboard::keyplaneJson(view, keyplane);
  report["keys"] = Json::array();
  for (const auto& key : keyplane.keys) report["keys"].push_back(keyboard::keyJson(key));
  return report;
}

/// The columns are headed by the terms of conditions, and hold the values that fit.
std::string tableOf(const Json& report) {
  std::vector<std::vector<std::string>> rows = {
      {"LABEL", "", "KeyName=", "Row=", "DisplayType=", "DisplayTypeHint=", "ControlState="}};
  for (const Json& key : report["keys"]) {
    const Json& second = key["secondaryLabel"];
    rows.push_back({key["label"], second.is_null() ? "" : second.get<std::string>(), key["name"],
                    "Row" + key["displayRowHint"].dump(), key["displayType"],
                    key["displayTypeHint"].dump(), key["controlState"].dump()});
  }
  return report["keyplane"].get<std::string>() + "  (visual style " + report["visualStyle"].dump() +
         ", type " + report["type"].dump() + ")\n" + textTable(rows);
}

std::vector<View> viewsOf(const KeysOptions& options) {
  if (options.view.plane) return {keyboard::viewOf(options.view)};
  std::vector<View> views;
  for (const auto& [name, plane] : keyboard::kPlanes) {
    keyboard::ViewOptions each = options.view;
    each.plane = plane;
    views.push_back(keyboard::viewOf(each));
  }
  return views;
}

int keys(const KeysOptions& options) {
  keyboard::Dress plain;
  plain.system = true;
  const auto process = keyboard::KeyboardProcess::start(plain, 2);
  if (!process) {
    std::fprintf(stderr, "prismal keys: %s\n", process.reason().c_str());
    return kTrouble;
  }
  Json keyplanes = Json::array();
  for (const View& view : viewsOf(options)) keyplanes.push_back(keysOf(view));
  std::string text;
  for (const Json& keyplane : keyplanes) {
    if (options.json) {
      text += (text.empty() ? "[" : ",\n") + keyboard::inLines(keyplane);
    } else {
      text += (text.empty() ? "" : "\n") + tableOf(keyplane);
    }
  }
  if (options.json) text += "]\n";
  const auto printed = printResult(text);
  if (!printed)
    std::fprintf(stderr, "prismal keys: standard output: %s\n", printed.reason().c_str());
  return printed ? kDone : kTrouble;
}

}  // namespace

void addKeysCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<KeysOptions>();
  CLI::App* const command =
      app.add_subcommand("keys", "What every key is called, and what conditions can test of it");
  keyboard::addKeyplaneOptions(*command, options->view);
  command->add_flag("--json", options->json, "The same as JSON, as render --keys tells it");
  command->footer(
      "Without --keyplane, all four keyplanes of the device.\n\n"
      "Examples:\n"
      "  prismal keys --keyplane numbers\n"
      "  prismal keys --device tablet | grep Shift");
  command->callback([options, &status] { status = keys(*options); });
}

}  // namespace tools
