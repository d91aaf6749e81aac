#include "scenario/host_reader.h"

#include <algorithm>
#include <iterator>

#include "scenario/notation.h"
#include "scenario/shape_reader.h"

namespace tools::scenario {
namespace {

std::vector<std::string> readMissingVariables(const Node& node) {
  node.forEachElement([](const Node& name) {
    if (name.string() != "m_orientation") name.refuse("expected \"m_orientation\"");
  });
  return node.strings();
}

std::int32_t readIdiom(const Node& node) {
  const auto idiom = node.integer();
  if (idiom != 0 && idiom != 1) node.refuse("expected 0, 1 or null");
  return static_cast<std::int32_t>(idiom);
}

Layout readLayout(const Node& node) {
  if (node.string() == "star") return Layout::kStar;
  if (node.string() == "other") return Layout::kOther;
  node.refuse("expected \"star\", \"other\" or null");
}

KeyboardCache readKeyboardCache(const Node& node) {
  node.requireOnly({"store", "groups"});
  KeyboardCache cache;
  member(node, "store", cache.store, asBoolean);
  member(node, "groups", cache.groups, asStrings);
  return cache;
}

std::vector<std::pair<std::string, Rgba>> readColors(const Node& node) {
  std::vector<std::pair<std::string, Rgba>> colors;
  node.forEachMember([&](std::string_view name, const Node& color) {
    colors.emplace_back(name, readColor(color));
  });
  return colors;
}

std::vector<std::pair<std::int32_t, std::string>> readDisplayTypeNames(const Node& node) {
  std::vector<std::pair<std::int32_t, std::string>> names;
  node.forEachMember([&](std::string_view type, const Node& name) {
    const auto number = fromDecimal(type);
    if (!number) name.refuse("expected a decimal display type as the member's name");
    names.emplace_back(*number, name.string());
  });
  return names;
}

/// Reads `node` into the member, null included where the member can be null.
template <auto field, auto read>
void give(Host& host, const Node& node) {
  host.*field = read(node);
}
template <auto field, auto read>
void giveNullable(Host& host, const Node& node) {
  (host.*field).emplace(nullable(node, read));
}

struct HostMember {
  std::string_view name;
  void (*read)(Host&, const Node&);
  bool changes = true;  // whether the running device can change in this
};

constexpr HostMember kMembers[] = {
    {"bundleIdentifier", giveNullable<&Host::bundleIdentifier, asString>, false},
    {"missingClasses", give<&Host::missingClasses, asStrings>, false},
    {"missingInstanceVariables", give<&Host::missingInstanceVariables, readMissingVariables>,
     false},
    {"userInterfaceIdiom", giveNullable<&Host::userInterfaceIdiom, readIdiom>},
    {"systemVersion", give<&Host::systemVersion, asString>},
    {"screenScale", give<&Host::screenScale, asReal>},
    {"orientation", give<&Host::orientation, asInt32>},
    {"sharedKeyboard", give<&Host::sharedKeyboard, asBoolean>},
    {"layout", giveNullable<&Host::layout, readLayout>},
    {"dictationKey", give<&Host::dictationKey, asBoolean>},
    {"internationalKey", give<&Host::internationalKey, asBoolean>},
    {"keyboardCache", give<&Host::keyboardCache, readKeyboardCache>},
    {"systemColors", give<&Host::systemColors, readColors>},
    {"systemGradients", give<&Host::systemGradients, asStrings>},
    {"rejectedColors", give<&Host::rejectedColors, asStrings>},
    {"colorCreation", give<&Host::colorCreation, asBoolean>},
    {"displayTypeNames", give<&Host::displayTypeNames, readDisplayTypeNames>},
    {"backgroundView", giveNullable<&Host::backgroundView, readView>},
    {"dictationView", give<&Host::dictationView, readView>},
};

void readMember(Host& host, std::string_view name, const Node& node, bool running) {
  const auto found = std::find_if(std::begin(kMembers), std::end(kMembers),
                                  [&](const HostMember& m) { return m.name == name; });
  if (found == std::end(kMembers)) node.refuse("unknown member");
  if (running && !found->changes) node.refuse("can't change in a running process");
  found->read(host, node);
}

View keyboardSizedView() {
  View view;
  view.frame = {0, 0, 320, 216};
  return view;
}

}  // namespace

Host defaultHost() {
  Host host;
  host.bundleIdentifier = "com.example.notes";
  host.missingClasses.emplace();
  host.missingInstanceVariables.emplace();
  host.userInterfaceIdiom = 0;
  host.systemVersion = "7.0.4";
  host.screenScale = 2.0;
  host.orientation = 1;
  host.sharedKeyboard = true;
  host.layout = Layout::kStar;
  host.dictationKey = false;
  host.internationalKey = true;
  host.keyboardCache.emplace();
  host.rejectedColors.emplace();
  host.colorCreation = true;
  host.backgroundView = keyboardSizedView();
  host.dictationView = keyboardSizedView();
  return host;
}

Host readHost(const Node& node) {
  auto host = defaultHost();
  node.forEachMember(
      [&](std::string_view name, const Node& value) { readMember(host, name, value, false); });
  return host;
}

Host readHostChanges(const Node& node) {
  Host changes;
  node.forEachMember([&](std::string_view name, const Node& value) {
    if (name != "do" && name != "expect") readMember(changes, name, value, true);
  });
  return changes;
}

}  // namespace tools::scenario
