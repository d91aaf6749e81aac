#include "explain/named_answers.h"

#include <algorithm>
#include <variant>

#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/gradient.h"
#include "host/render/named_look.h"
#include "host/runtime/object.h"
#include "host/runtime/trace.h"

namespace tools::explain {

using host::keyboard::GradientObject;
using host::runtime::Event;

namespace {

/// What `ask` returns, and who answered: the library calls the platform's own implementation when
/// the theme doesn't know.
template <class Ask>
auto answerOf(Ask ask, Answerer& from) {
  host::runtime::takeEvents();
  const auto answer = ask();
  const bool askedSystem = std::ranges::any_of(host::runtime::takeEvents(), [](const Event& event) {
    return event.kind == Event::Kind::kPrevious;
  });
  from = !answer ? Answerer::kNobody : askedSystem ? Answerer::kSystem : Answerer::kTheme;
  return answer;
}

bool isTheme(std::string_view colorName) {
  return askColor(colorName).from == Answerer::kTheme;
}

bool areTheme(std::string_view start, std::string_view end) {
  return isTheme(start) || isTheme(end);
}

/// Whether the theme has a hand in a gradient.
struct IsTheme {
  bool operator()(const host::keyboard::FlatColors& colors) const { return isTheme(colors.color); }
  bool operator()(const host::keyboard::LinearColors& colors) const {
    return areTheme(colors.start, colors.end);
  }
  bool operator()(const host::keyboard::OwnGradient& own) const {
    Answerer from = Answerer::kNobody;
    answerOf([&] { return host::keyboard::askNamedGradient(own.name); }, from);
    const auto* const system = host::boards::systemGradient(own.name);
    return from == Answerer::kTheme || (system && areTheme(system->start, system->end));
  }
};

}  // namespace

ColorAnswer askColor(std::string_view name) {
  ColorAnswer answer;
  answer.color = answerOf([&] { return host::render::colorNamed(name); }, answer.from);
  return answer;
}

FillAnswer askFill(platform::UIKBGradient handle) {
  const auto* const gradient = host::runtime::as<GradientObject>(handle);
  if (!gradient) return {};
  FillAnswer answer{host::render::fillOf(handle), Answerer::kNobody};
  if (!answer.fill) return answer;
  answer.from = std::visit(IsTheme(), gradient->colors) ? Answerer::kTheme : Answerer::kSystem;
  return answer;
}

}  // namespace tools::explain
