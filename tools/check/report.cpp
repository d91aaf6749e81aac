#include "check/report.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "check/boards.h"
#include "check/contrast.h"
#include "check/device_theme.h"
#include "check/library.h"
#include "check/picture_use.h"
#include "check/pictures.h"
#include "check/styles.h"
#include "check/theme.h"
#include "check/words.h"
#include "host/system/process.h"
#include "keyboard/confinement.h"
#include "platform/foundation.h"
#include "settings/theme_data.h"

namespace tools::check {

using host::files::DeviceRoot;

namespace {

/// The device has no theme yet when the keyboard starts.
keyboard::Dress bare(keyboard::Dress dress) {
  dress.theme.clear();
  dress.quiet = true;
  return dress;
}

/// What the library says of a device without a theme: the same as of one with a file that can't be
/// read, or that holds another type. The device must have none.
std::string logOfMissingTheme() {
  return logOf([] { prismal::PMGetThemeData(); });
}

void tellRootType(Theme& theme) {
  theme.findings.add(
      "root-type"_rule, theme.source.at("", theme.source.list()),
      std::string(typeOf(theme.source.list())) + " in place of a dictionary; the theme is empty",
      logOfMissingTheme());
}

/// The same from a keyboard of its own; empty where none starts. `dress.private_device` must be
/// empty.
std::string logOfNoTheme(const keyboard::Dress& dress) {
  const auto process = keyboard::KeyboardProcess::start(bare(dress), 1);
  if (!process) return "";
  const platform::NSAutoreleasePool pool;
  prepareLibrary();
  return logOfMissingTheme();
}

void checkAll(Theme& theme, const Copies& copies) {
  const auto& device = host::system::process().root();
  Boards boards;
  checkSections(theme);
  checkColors(theme);
  checkGradients(theme);
  const auto pictures = checkPictures(theme, boards, copies, device);
  readTellingTheme(theme, pictures, device);
  boards.findCases();
  putTheme(theme, pictures, device);
  RuleUse use;
  const bool canTryRules = checkStyles(theme, boards, use);
  checkNames(theme);
  checkPairs(theme);
  checkPictureUse(theme, boards, pictures);
  if (canTryRules) checkContrast(theme, boards, use, pictures);
}

}  // namespace

bool Report::isUnreadable() const {
  // Such a file has no other finding.
  return findings.size() == 1 && findings.front().rule == &"unreadable"_rule;
}

Report checkTheme(const keyboard::Dress& dress) {
  Report report{fileOfTheme(dress.theme), {}, {}};
  const auto trouble = [&](const std::string& reason) {
    report.trouble = reason;
    return report;
  };
  const auto device = DeviceRoot::open(*dress.private_device, DeviceRoot::Creation::kNever);
  if (!device) return trouble(device.reason());
  if (const auto confined = keyboard::confineToTheme(dress, *device); !confined) {
    return trouble(confined.reason());
  }
  Source::Refusal refusal;
  const auto source = Source::read(dress.theme, refusal);
  if (!source) {
    report.findings.push_back({&"unreadable"_rule,
                               {{}, refusal.position},
                               inOneLine(refusal.reason, 500),
                               logOfNoTheme(dress),
                               refusal.line});
    return report;
  }
  const Copies copies = copyPictures(*source, *device);
  const auto process = keyboard::KeyboardProcess::start(bare(dress), 1);
  if (!process) return trouble(process.reason());
  const platform::NSAutoreleasePool pool;
  prepareLibrary();
  Findings findings;
  Theme theme{*source, findings};
  source->list().isDictionary() ? checkAll(theme, copies) : tellRootType(theme);
  report.findings = std::move(findings).take();
  source->addLines(report.findings);
  return report;
}

namespace {

using Json = nlohmann::json;

Json jsonOf(const Finding& finding) {
  return {finding.rule->name,
          finding.place.path,
          finding.place.position.line,
          finding.place.position.column,
          finding.message,
          finding.log,
          finding.source.text,
          finding.source.mark};
}

/// Throws for what is no finding: it comes from a process that a theme may have led astray.
Finding findingOf(const Json& json) {
  const Rule* const rule = findRule(json[0].get<std::string>());
  if (!rule) throw std::runtime_error("the process that checks tells of an unknown rule");
  return {rule, {json[1], {json[2], json[3]}}, json[4], json[5], {json[6], json[7]}};
}

}  // namespace

std::string packed(const Report& report) {
  Json findings = Json::array();
  for (const Finding& finding : report.findings) findings.push_back(jsonOf(finding));
  const Json json = {report.file, report.trouble, findings};
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Report unpacked(const std::string& text) {
  const Json json = Json::parse(text);
  Report report{json[0], {}, json[1]};
  for (const Json& finding : json[2]) report.findings.push_back(findingOf(finding));
  return report;
}

}  // namespace tools::check
