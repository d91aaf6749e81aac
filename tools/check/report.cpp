#include "check/report.h"

#include "check/boards.h"
#include "check/contrast.h"
#include "check/device_theme.h"
#include "check/library.h"
#include "check/picture_use.h"
#include "check/pictures.h"
#include "check/styles.h"
#include "check/theme.h"
#include "check/words.h"
#include "host/files/temporary_directory.h"
#include "host/system/process.h"
#include "keyboard/keyboard_process.h"
#include "platform/foundation.h"
#include "settings/theme_data.h"

namespace tools::check {

namespace {

keyboard::Dress bare(const host::files::TemporaryDirectory& device,
                     const std::filesystem::path& library) {
  keyboard::Dress dress;
  dress.device_root = device.path();
  dress.library = library;
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

/// The same on a device that is made for it; empty where none can be.
std::string logOfNoTheme(const std::filesystem::path& library) {
  const host::files::TemporaryDirectory device;
  const auto process = keyboard::KeyboardProcess::start(bare(device, library), 1);
  if (!process) return "";
  const platform::NSAutoreleasePool pool;
  prepareLibrary();
  return logOfMissingTheme();
}

void checkAll(Theme& theme) {
  const auto& device = host::system::process().root();
  Boards boards;
  checkSections(theme);
  checkColors(theme);
  checkGradients(theme);
  const auto pictures = checkPictures(theme, boards, device);
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

Report checkTheme(const std::string& path, const std::filesystem::path& library) {
  Report report{fileOfTheme(path), {}, {}};
  Source::Refusal refusal;
  const auto source = Source::read(path, refusal);
  if (!source) {
    report.findings.push_back({&"unreadable"_rule,
                               {{}, refusal.position},
                               inOneLine(refusal.reason, 500),
                               logOfNoTheme(library),
                               refusal.line});
    return report;
  }
  const host::files::TemporaryDirectory device;
  const auto process = keyboard::KeyboardProcess::start(bare(device, library), 1);
  if (!process) {
    report.trouble = process.reason();
    return report;
  }
  const platform::NSAutoreleasePool pool;
  prepareLibrary();
  Findings findings;
  Theme theme{*source, findings};
  source->list().isDictionary() ? checkAll(theme) : tellRootType(theme);
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

Finding findingOf(const Json& json) {
  return {findRule(json[0].get<std::string>()),
          {json[1], {json[2], json[3]}},
          json[4],
          json[5],
          {json[6], json[7]}};
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
