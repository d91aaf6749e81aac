#include "explain/explanation.h"

#include <algorithm>
#include <utility>

#include "explain/linked_library.h"
#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/traits.h"
#include "host/keyboard/tree.h"
#include "host/runtime/trace.h"
#include "replay/object_output.h"
#include "styles/control_state.h"
#include "styles/visual_style.h"

namespace tools::explain {

namespace render = host::render;
using host::files::Result;
using host::runtime::as;
using keyboard::View;
using prismal::ConditionSubject;

namespace {

/// Finds the key, and the others that have its label.
bool findKey(Explanation& explanation, std::string_view nameOrLabel) {
  for (const auto* key : render::keysCalled(explanation.shown.keyplane, nameOrLabel)) {
    if (explanation.key) {
      explanation.namesakes.push_back(key->placed.key->name);
    } else {
      explanation.key = key;
    }
  }
  return explanation.key != nullptr;
}

bool hasEdge(platform::UIKBRenderTraits traits) {
  const platform::Class edge(host::keyboard::effectClass("UIKBEdgeEffect"));
  const auto effects = traits.renderEffects();
  for (std::size_t i = 0; i < effects.count(); ++i) {
    if (effects.objectAtIndex(i).isKindOfClass(edge)) return true;
  }
  return false;
}

/// Whether the system's own look of the key has an edge.
bool systemHasEdge(const Explanation& explanation) {
  namespace boards = host::boards;
  const auto& key = *explanation.key->placed.key;
  const auto& choice = explanation.view.keyplane;
  const auto family = choice.board->is_tablet ? boards::Family::tablet : boards::Family::phone;
  return !boards::systemKeyLook(boards::kindOf(key), choice.look, family,
                                explanation.key->tree->state())
              .edge_color.empty();
}

BackgroundFill fillBehindKeys(platform::UIKBTree keyplane) {
  const auto factory = host::keyboard::keyboard().factory.get();
  const auto traits = host::keyboard::askBackgroundTraits(factory, keyplane);
  const auto* const object = as<host::keyboard::TraitsObject>(traits);
  if (!object) return {};
  BackgroundFill behind;
  behind.gradient = replay::ObjectOutput().gradient(object->backgroundGradient.get());
  behind.answer = askFill(object->backgroundGradient.get());
  // The system's own gradient has its name; the library's is made of the names of two colours.
  behind.ofTheme = behind.answer.from == Answerer::kTheme ||
                   (behind.gradient.is_object() && !behind.gradient.contains("name"));
  return behind;
}

/// What the loaded library did of the key.
void askTraits(Explanation& explanation) {
  const auto traits =
      host::keyboard::askTraits(host::keyboard::keyboard().factory.get(),
                                explanation.key->tree.get(), explanation.shown.keyplane.tree.get());
  explanation.traits = replay::ObjectOutput().traits(traits, false);
  explanation.edgeRemoved = systemHasEdge(explanation) && !hasEdge(traits);
  explanation.properties = propertiesOf(traits, explanation.outcomes);
  explanation.backgroundFill = fillBehindKeys(explanation.shown.keyplane.tree.get());
}

}  // namespace

Result<Explanation> explainKey(const View& view, double scale, std::string_view nameOrLabel,
                               const ThemeRules& rules) {
  host::runtime::startRecording(host::runtime::Recording::kAllButLog);
  host::drawing::Fonts fonts;
  auto shown = keyboard::showView(view, scale, fonts);
  if (!shown) return shown.failure();
  const auto events = host::runtime::takeEvents();
  Explanation explanation;
  explanation.view = view;
  explanation.shown = *std::move(shown);
  if (!findKey(explanation, nameOrLabel)) {
    return keyboard::noSuchKey("--key", nameOrLabel, explanation.shown.keyplane);
  }
  const auto keyplane = explanation.shown.keyplane.tree.get();
  explanation.visualStyle = prismal::PMGetVisualStyleName(keyplane);
  explanation.list = rules.listFor(explanation.visualStyle);
  explanation.outcomes = outcomesOf(explanation.list.rules, explanation.identity(),
                                    prismal::PMGetControlState(explanation.key->tree.get()));
  askTraits(explanation);
  readyLinkedLibrary();
  explanation.background = backgroundChain(keyplane, events, explanation.shown.background);
  return explanation;
}

bool isThemed(const Explanation& explanation) {
  const auto applies = [](const RuleOutcome& outcome) { return bool(outcome.verdict.style); };
  const auto isTheme = [](const TraitProperty& property) {
    return property.colorFrom == Answerer::kTheme;
  };
  return std::ranges::any_of(explanation.outcomes.rules, applies) ||
         std::ranges::any_of(explanation.properties, isTheme) ||
         std::ranges::any_of(explanation.background, &BackgroundTry::hit) ||
         explanation.backgroundFill.ofTheme;
}

std::optional<std::string> testedText(ConditionSubject subject, const prismal::KeyIdentity& key,
                                      int controlState) {
  switch (subject) {
    case ConditionSubject::kDisplayTypeHint:
      return std::string(key.displayTypeHint());
    case ConditionSubject::kDisplayType:
      return std::string(key.displayType());
    case ConditionSubject::kControlState:
      return std::to_string(controlState);
    case ConditionSubject::kRow:
      return std::string(key.row());
    case ConditionSubject::kKeyName:
      return key.name() ? std::optional<std::string>(*key.name()) : std::nullopt;
    case ConditionSubject::kNothing:
      break;
  }
  return std::nullopt;
}

}  // namespace tools::explain
