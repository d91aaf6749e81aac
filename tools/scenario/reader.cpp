#include "scenario/reader.h"

#include <utility>

#include "scenario/document.h"
#include "scenario/file_reader.h"
#include "scenario/host_reader.h"
#include "scenario/node.h"
#include "scenario/notation.h"
#include "scenario/pointer.h"
#include "scenario/step_reader.h"

namespace tools::scenario {
namespace {

std::vector<std::pair<std::string, File>> readFiles(const Node& node) {
  std::vector<std::pair<std::string, File>> files;
  node.forEachMember([&](std::string_view path, const Node& file) {
    if (!isDevicePath(path)) file.refuse("expected an absolute device path as the member's name");
    files.emplace_back(path, readFile(file));
  });
  return files;
}

std::vector<Step> readSteps(const Node& node) {
  std::vector<Step> steps;
  bool loaded = false;
  node.forEachElement([&](const Node& step) {
    steps.push_back(readStep(step));
    const bool loads = std::holds_alternative<step::Load>(steps.back().action);
    if (loads && std::exchange(loaded, true)) step.refuse("a second \"load\"");
  });
  return steps;
}

Scenario readScenario(const Node& root) {
  root.requireOnly({"title", "host", "files", "steps"});
  Scenario scenario;
  scenario.host = defaultHost();
  member(root, "title", scenario.title, asString);
  member(root, "host", scenario.host, readHost);
  member(root, "files", scenario.files, readFiles);
  scenario.steps = readSteps(root.at("steps"));
  return scenario;
}

}  // namespace

std::string Fault::message() const {
  return file + ": " + (place.empty() ? "" : printable(place) + ": ") + reason;
}

ScenarioOrFault read(std::string_view file, std::string_view jsonText) {
  try {
    const auto document = parse(jsonText);
    return readScenario(Node(document));
  } catch (const Malformed& malformed) {
    return Fault{std::string(file), malformed.place, malformed.what()};
  }
}

}  // namespace tools::scenario
