#include <array>
#include <cstdio>
#include <iterator>
#include <nlohmann/json.hpp>

#include "check/output.h"

namespace tools::check {

using Json = nlohmann::ordered_json;

namespace {

std::string textOf(const Json& json) {
  return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json numberOrNull(std::uint32_t number) {
  return number > 0 ? Json(number) : Json(nullptr);
}

Json textOrNull(const std::string& text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

Json jsonOf(const Report& report, const Finding& finding) {
  const auto [line, column] = finding.place.position;
  return {{"file", report.file},
          {"line", numberOrNull(line)},
          {"column", numberOrNull(column)},
          {"path", finding.place.path},
          {"severity", wordOf(finding.rule->severity)},
          {"rule", finding.rule->name},
          {"message", finding.message},
          {"log", textOrNull(finding.log)},
          {"source", textOrNull(finding.source.text)}};
}

std::string levelOf(Severity severity) {
  return std::string(wordOf(severity));
}

/// A path as the relative reference of a URI.
std::string uriOf(const std::string& path) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string uri;
  for (const char c : path) {
    if (kPlain.find(c) != kPlain.npos) {
      uri += c;
      continue;
    }
    std::array<char, 4> escaped{};
    std::snprintf(escaped.data(), escaped.size(), "%%%02X", static_cast<unsigned char>(c));
    uri += escaped.data();
  }
  return uri;
}

Json sarifRules() {
  Json rules = Json::array();
  for (const Rule& rule : kRules) {
    rules.push_back({{"id", rule.name},
                     {"shortDescription", {{"text", rule.summary}}},
                     {"defaultConfiguration", {{"level", levelOf(rule.severity)}}}});
  }
  return rules;
}

Json sarifResult(const Report& report, const Finding& finding) {
  const auto [line, column] = finding.place.position;
  Json physical = {{"artifactLocation", {{"uri", uriOf(report.file)}}}};
  if (line > 0) physical["region"] = {{"startLine", line}, {"startColumn", column}};
  Json location = {{"physicalLocation", physical}};
  if (!finding.place.path.empty()) {
    location["logicalLocations"] = Json::array({{{"fullyQualifiedName", finding.place.path}}});
  }
  return {{"ruleId", finding.rule->name},
          {"ruleIndex", finding.rule - std::begin(kRules)},
          {"level", levelOf(finding.rule->severity)},
          {"message", {{"text", sentenceOf(finding)}}},
          {"locations", Json::array({location})}};
}

}  // namespace

std::string jsonOf(std::span<const Report> reports) {
  Json findings = Json::array();
  for (const Report& report : reports) {
    for (const Finding& finding : report.findings) findings.push_back(jsonOf(report, finding));
  }
  return textOf({{"version", 1},
                 {"findings", findings},
                 {"errors", countOf(reports, Severity::error)},
                 {"warnings", countOf(reports, Severity::warning)}});
}

std::string sarifOf(std::span<const Report> reports) {
  Json results = Json::array();
  for (const Report& report : reports) {
    for (const Finding& finding : report.findings) results.push_back(sarifResult(report, finding));
  }
  const Json driver = {{"name", "prismal"}, {"version", PRISMAL_VERSION}, {"rules", sarifRules()}};
  const Json run = {
      {"tool", {{"driver", driver}}}, {"columnKind", "unicodeCodePoints"}, {"results", results}};
  return textOf({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                 {"version", "2.1.0"},
                 {"runs", Json::array({run})}});
}

}  // namespace tools::check
