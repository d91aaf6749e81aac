#include "names.h"

#include <CLI/App.hpp>
#include <cmath>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "colors/keyplane_gradient.h"
#include "exit_status.h"
#include "host/keyboard/boards/name_uses.h"
#include "host/keyboard/boards/system_look.h"
#include "output_file.h"
#include "text_table.h"

namespace tools {

namespace boards = host::boards;

namespace {

struct NamesOptions {
  bool json = false;
};

struct SystemName {
  std::string kind;
  std::string name;
  std::string value;
  std::vector<std::string> uses;
};

unsigned byteOf(double component) {
  return static_cast<unsigned>(std::lround(component * 255));
}

/// As a theme writes it.
std::string colorString(const host::drawing::Rgba& color) {
  char text[10];
  std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", byteOf(color.red), byteOf(color.green),
                byteOf(color.blue), byteOf(color.alpha));
  return text;
}

/// The library has a use of its own for four names, which the keyboard doesn't ask for by itself.
std::vector<std::string> usesOf(std::string_view name) {
  auto uses = boards::usesOf(name);
  for (const int visualStyle : {1, 3}) {
    const auto pair = prismal::backgroundColorNames(visualStyle);
    if (name != pair.start && name != pair.end) continue;
    uses.push_back(std::string("behind the keys, once a theme defines both ends") +
                   (visualStyle == 3 ? ", alert" : ""));
  }
  return uses;
}

std::vector<SystemName> systemNames() {
  std::vector<SystemName> names;
  for (const auto& color : boards::systemColors()) {
    names.push_back(
        {"color", std::string(color.name), colorString(color.color), usesOf(color.name)});
  }
  for (const auto& gradient : boards::systemGradients()) {
    std::string value(gradient.start);
    if (gradient.end != gradient.start) value.append(" ").append(gradient.end);
    names.push_back({"gradient", std::string(gradient.name), value, usesOf(gradient.name)});
  }
  return names;
}

std::string joined(const std::vector<std::string>& uses) {
  std::string text;
  for (const std::string& use : uses) text += (text.empty() ? "" : "; ") + use;
  return text;
}

std::string table(const std::vector<SystemName>& names) {
  std::vector<std::vector<std::string>> rows = {{"NAME", "THE SYSTEM'S", "WHERE"}};
  for (const SystemName& name : names) rows.push_back({name.name, name.value, joined(name.uses)});
  return textTable(rows);
}

std::string json(const std::vector<SystemName>& names) {
  auto all = nlohmann::ordered_json::array();
  for (const SystemName& name : names) {
    all.push_back(
        {{"kind", name.kind}, {"name", name.name}, {"value", name.value}, {"uses", name.uses}});
  }
  return all.dump(1) + "\n";
}

int run(const NamesOptions& options) {
  const auto names = systemNames();
  const auto printed = printResult(options.json ? json(names) : table(names));
  if (printed) return kDone;
  std::fprintf(stderr, "prismal names: standard output: %s\n", printed.reason().c_str());
  return kTrouble;
}

}  // namespace

void addNamesCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<NamesOptions>();
  CLI::App* const command = app.add_subcommand(
      "names", "Every colour and gradient that the system's keyboard asks for by name");
  command->add_flag("--json", options->json, "The same as JSON");
  command->footer(
      "A theme that defines one of these names recolours what uses it. Of lower edges the library\n"
      "leaves that of the dictation panel's Done key; the others show without it alone.\n\n"
      "Examples:\n"
      "  prismal names | grep Return\n"
      "  prismal names --json");
  command->callback([options, &status] { status = run(*options); });
}

}  // namespace tools
