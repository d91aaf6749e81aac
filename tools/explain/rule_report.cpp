#include "explain/rule_report.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "explain/explanation_json.h"
#include "explain/explanation_text.h"
#include "host/plist/description.h"
#include "host/render/keyplane.h"
#include "keyboard/words.h"
#include "styles/style_properties.h"
#include "text_table.h"

namespace tools::explain {

using keyboard::Json;

namespace {

/// Which views a line of the table is for, a column each, and what it says.
struct Line {
  static constexpr std::size_t kColumns = 4;
  std::array<std::vector<std::string>, kColumns> views;
  std::array<std::string, 2> says;
};

std::string statesText(const KeyHit& hit) {
  if (hit.always) return "any";
  std::string text;
  for (const auto state : hit.states) text.append(text.empty() ? "" : ", ").append(wordOf(state));
  return text;
}

/// What a command line may call it.
std::string_view shortName(const host::boards::Key& key) {
  return key.label.empty() ? key.name : key.label;
}

/// Keys that are hit in the same states.
struct KeyGroup {
  std::string states;
  std::string keys;
  std::size_t count = 0;
};

std::vector<KeyGroup> groupsOf(const ViewHits& hits) {
  std::vector<KeyGroup> groups;
  for (const KeyHit& hit : hits.keys) {
    const std::string states = statesText(hit);
    auto group = std::ranges::find(groups, states, &KeyGroup::states);
    if (group == groups.end()) group = groups.insert(group, KeyGroup{states, ""});
    group->keys.append(group->keys.empty() ? "" : " ").append(shortName(*hit.placed.key));
    ++group->count;
  }
  return groups;
}

/// Names most of the keys of a keyplane only when some are not hit.
std::string keysText(const KeyGroup& group, const ViewHits& hits) {
  if (!hits.everyKey || 2 * group.count <= hits.keys.size()) return group.keys;
  return group.count == hits.keys.size() ? "every key" : "every other key";
}

void addLines(std::vector<Line>& lines, const ViewHits& hits) {
  const auto words = keyboard::wordsOf(hits.view);
  for (const KeyGroup& group : groupsOf(hits)) {
    Line& line = lines.emplace_back();
    for (std::size_t i = 0; i < Line::kColumns; ++i) line.views[i] = {std::string(words[i])};
    line.says = {group.states, keysText(group, hits)};
  }
}

bool differOnlyIn(std::size_t column, const Line& one, const Line& other) {
  if (one.says != other.says) return false;
  for (std::size_t i = 0; i < Line::kColumns; ++i) {
    if (i != column && one.views[i] != other.views[i]) return false;
  }
  return true;
}

/// Makes one line of those that are alike but for `column`.
void merge(std::vector<Line>& lines, std::size_t column) {
  std::vector<Line> merged;
  for (Line& line : lines) {
    const auto same = std::ranges::find_if(
        merged, [&](const Line& other) { return differOnlyIn(column, line, other); });
    if (same == merged.end()) {
      merged.push_back(std::move(line));
    } else {
      same->views[column].push_back(line.views[column].front());
    }
  }
  lines = std::move(merged);
}

std::string cell(const std::vector<std::string>& words, std::size_t all) {
  if (words.size() == all && all > 1) return "all";
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

std::string tableOf(std::span<const ViewHits> hits) {
  std::vector<Line> lines;
  for (const ViewHits& one : hits) addLines(lines, one);
  // Orientations first: they differ least.
  constexpr std::size_t kOrder[] = {1, 3, 0, 2};
  constexpr std::size_t kAll[] = {std::size(keyboard::kDevices), std::size(keyboard::kOrientations),
                                  std::size(keyboard::kStyles), std::size(keyboard::kPlanes)};
  for (const std::size_t column : kOrder) merge(lines, column);
  std::vector<std::vector<std::string>> rows = {
      {"DEVICE", "ORIENTATION", "STYLE", "KEYPLANE", "STATE", "KEYS"}};
  for (const Line& line : lines) {
    std::vector<std::string> row;
    for (std::size_t i = 0; i < Line::kColumns; ++i) row.push_back(cell(line.views[i], kAll[i]));
    row.insert(row.end(), line.says.begin(), line.says.end());
    rows.push_back(std::move(row));
  }
  return textTable(rows);
}

std::string settingsText(platform::PropertyListView rule) {
  const auto items = rule.items();
  if (items.size() != 2) return "nothing";
  std::string text;
  for (const auto& setting : prismal::styleSettings(items[1])) {
    text.append(text.empty() ? "" : ", ").append(setting.property);
  }
  return text.empty() ? "nothing" : text;
}

Json keyJson(const KeyHit& hit) {
  Json states = Json::array();
  for (const auto state : hit.states) states.push_back(static_cast<int>(state));
  return {{"name", hit.placed.key->name},
          {"label", hit.placed.key->label},
          {"displayRowHint", hit.placed.row_hint},
          {"states", std::move(states)}};
}

}  // namespace

std::string ruleText(const RuleReport& report, const ThemeRules& rules) {
  std::string text = "Rule " + std::to_string(report.number) + " of " +
                     std::string(report.list.name) + ", " + placeOf(report.rule(), rules.file()) +
                     "\n";
  const Json condition = conditionJson(report.rule());
  if (condition.is_string()) {
    text += "condition  " + host::plist::escapeControls(condition.get<std::string>()) + "\n";
  }
  text += "sets       " + settingsText(report.rule()) + "\n";
  if (report.list.name != report.style) {
    text +=
        std::string(report.style) + " has its rules from " + std::string(report.list.name) + "\n";
  }
  if (rules.hasUnreadList(report.style)) {
    text += "the theme's rules under " + std::string(report.style) + " are never read\n";
  }
  return text + "\n" + (report.hits.empty() ? "It hits no key.\n" : tableOf(report.hits));
}

Json ruleJson(const RuleReport& report) {
  Json keyplanes = Json::array();
  for (const ViewHits& hits : report.hits) {
    Json keyplane =
        keyboard::keyplaneJson(hits.view, host::render::makeKeyplane(hits.view.keyplane));
    keyplane["keys"] = Json::array();
    for (const KeyHit& hit : hits.keys) keyplane["keys"].push_back(keyJson(hit));
    keyplanes.push_back(std::move(keyplane));
  }
  return {{"rule", report.number},
          {"list", report.list.name},
          {"line", lineJson(report.rule())},
          {"condition", conditionJson(report.rule())},
          {"keyplanes", std::move(keyplanes)}};
}

}  // namespace tools::explain
