#include "serve/answers.h"

#include <cerrno>

#include "explain/explanation.h"
#include "explain/explanation_json.h"
#include "explain/rule_hits.h"
#include "explain/rule_report.h"
#include "host/drawing/draw.h"
#include "host/images/encode.h"
#include "keyboard/shown_view.h"
#include "keyboard/view.h"
#include "platform/foundation.h"
#include "render/every_view.h"
#include "render/keys_report.h"

namespace tools::serve {

using host::files::Failure;
using host::files::Result;

namespace {

std::string textOf(const keyboard::Json& json) {
  return json.dump(-1, ' ', false, keyboard::Json::error_handler_t::replace) + "\n";
}

Result<std::string> pngOf(const host::images::Bitmap& bitmap) {
  auto png = host::images::encodePng(bitmap);
  if (png.empty()) return Failure(ENOMEM, "the picture is too large");
  return png;
}

}  // namespace

Result<std::string> drawPicture(const Question& question, host::drawing::Fonts& fonts) {
  const auto shown = keyboard::showView(keyboard::viewOf(question.view), question.scale, fonts);
  if (!shown) return shown.failure();
  const auto bitmap = host::drawing::draw(shown->picture, fonts);
  if (!bitmap) return Failure(ENOMEM, "the picture can't be drawn");
  return pngOf(*bitmap);
}

Result<std::string> reportKeys(const Question& question, host::drawing::Fonts& fonts) {
  const auto view = keyboard::viewOf(question.view);
  const auto shown = keyboard::showView(view, question.scale, fonts);
  if (!shown) return shown.failure();
  return render::keysReport(view, *shown);
}

Result<std::string> explainKey(const Question& question, const explain::ThemeRules& rules) {
  const platform::NSAutoreleasePool pool;
  const auto explanation =
      explain::explainKey(keyboard::viewOf(question.view), question.scale, question.key, rules);
  if (!explanation) return explanation.failure();
  return textOf(explain::explanationJson(*explanation));
}

Result<std::string> explainRule(const Question& question, const explain::ThemeRules& rules) {
  explain::RuleReport report{.number = question.rule.value_or(0),
                             .style = question.visualStyle,
                             .list = rules.listFor(question.visualStyle),
                             .hits = {}};
  const std::size_t count = report.list.rules.items().size();
  if (report.number >= count) {
    return Failure(EINVAL, question.visualStyle + " has " + std::to_string(count) + " rules");
  }
  const auto hits = explain::hitsOf(report.rule(), report.list.name, rules,
                                    explain::searchedViews(question.view));
  report.hits = hits;
  return textOf(explain::ruleJson(report));
}

Result<std::string> drawSheet(const Question& question) {
  const auto sheet = render::drawSheet(keyboard::everyView(question.view), question.scale, true);
  if (!sheet) return sheet.failure();
  return pngOf(*sheet);
}

}  // namespace tools::serve
