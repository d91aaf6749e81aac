#include "scenario/step_reader.h"

#include <iterator>
#include <variant>

#include "scenario/file_reader.h"
#include "scenario/host_reader.h"
#include "scenario/json_output.h"
#include "scenario/pattern.h"
#include "scenario/shape_reader.h"

namespace tools::scenario {
namespace {

/// Throws when the object at `node` has a member that is neither among `names` nor any step's.
template <class... Names>
void allow(const Node& node, Names... names) {
  node.requireOnly({"do", "expect", names...});
}

/// A step without members of its own.
template <class T>
Action readBare(const Node& node) {
  allow(node);
  return T{};
}

Action readNotify(const Node& node) {
  allow(node, "name");
  return step::Notify{node.at("name").string()};
}

Action readSet(const Node& node) {
  return step::Set{readHostChanges(node)};
}

Action readWrite(const Node& node) {
  allow(node, "path", "file");
  return step::Write{readPath(node.at("path")), readFile(node.at("file"))};
}

Action readRemove(const Node& node) {
  allow(node, "path");
  return step::Remove{readPath(node.at("path"))};
}

Action readList(const Node& node) {
  allow(node, "path");
  return step::List{readPath(node.at("path"))};
}

Action readColorStep(const Node& node) {
  allow(node, "name");
  return step::Color{node.at("name").string()};
}

Action readGradientStep(const Node& node) {
  allow(node, "name");
  return step::Gradient{node.at("name").string()};
}

template <auto read>
auto readMaybe(const Node& step, std::string_view name) {
  std::optional<decltype(nullable(step, read))> value;
  if (const auto node = step.find(name)) value.emplace(nullable(*node, read));
  return value;
}

Action readTraitsStep(const Node& node) {
  allow(node, "key", "keyplane", "system");
  return step::Traits{nullable(node.at("key"), readKey),
                      nullable(node.at("keyplane"), readKeyplane),
                      readMaybe<readTraits>(node, "system")};
}

Action readBackgroundTraitsStep(const Node& node) {
  allow(node, "keyplane", "system");
  return step::BackgroundTraits{nullable(node.at("keyplane"), readKeyplane),
                                readMaybe<readBackgroundTraits>(node, "system")};
}

Action readShow(const Node& node) {
  allow(node, "keyplane");
  return step::Show{nullable(node.at("keyplane"), readKeyplane)};
}

Action readChange(const Node& node) {
  allow(node, "keyplane", "current");
  return step::Change{nullable(node.at("keyplane"), readKeyplane),
                      readMaybe<readKeyplane>(node, "current")};
}

Action readReturnKey(const Node& node) {
  allow(node, "argument");
  return step::ReturnKey{node.at("argument").string()};
}

Action readDictation(const Node& node) {
  allow(node, "config");
  return step::Dictation{node.at("config").string()};
}

struct Kind {
  std::string_view name;
  Action (*read)(const Node&);
};

constexpr Kind kKinds[] = {
    {"load", readBare<step::Load>},
    {"finishLaunching", readBare<step::FinishLaunching>},
    {"notify", readNotify},
    {"set", readSet},
    {"write", readWrite},
    {"remove", readRemove},
    {"list", readList},
    {"color", readColorStep},
    {"gradient", readGradientStep},
    {"traits", readTraitsStep},
    {"backgroundTraits", readBackgroundTraitsStep},
    {"show", readShow},
    {"change", readChange},
    {"returnKey", readReturnKey},
    {"dictation", readDictation},
    {"cacheEnabled", readBare<step::CacheEnabled>},
};
static_assert(std::size(kKinds) == std::variant_size_v<Action>);

Action readAction(const Node& node) {
  const auto name = node.at("do");
  for (const auto& kind : kKinds) {
    if (kind.name == name.string()) return kind.read(node);
  }
  name.refuse("no such step: " + shortLine(name.json()));
}

void checkPatterns(const Node& node) {
  const auto& json = node.json();
  if (json.is_array()) return node.forEachElement(checkPatterns);
  if (json.is_object()) {
    return node.forEachMember([](std::string_view, const Node& value) { checkPatterns(value); });
  }
  if (!json.is_string() || !node.string().starts_with('~')) return;
  if (const auto fault = patternFault(std::string_view(node.string()).substr(1))) {
    node.refuse("not a regular expression: " + *fault);
  }
}

Expectation readExpectation(const Node& node) {
  node.requireOnly({"result", "log", "reads", "events"});
  checkPatterns(node);
  const auto asJson = [](const Node& n) { return n.json(); };
  Expectation expectation;
  // member(), not nullableMember(): a null is what is expected, not the lack of an expectation.
  member(node, "result", expectation.result, asJson);
  member(node, "log", expectation.log, asJson);
  member(node, "reads", expectation.reads, asJson);
  member(node, "events", expectation.events, asJson);
  return expectation;
}

}  // namespace

Step readStep(const Node& node) {
  Step step{node.at("do").string(), readAction(node), {}};
  member(node, "expect", step.expect, readExpectation);
  return step;
}

}  // namespace tools::scenario
