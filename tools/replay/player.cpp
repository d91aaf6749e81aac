#include "replay/player.h"

#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "host/files/darwin_notify.h"
#include "host/keyboard/cache.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/keyboard.h"
#include "host/runtime/class_table.h"
#include "host/runtime/trace.h"
#include "host/system/library_loader.h"
#include "host/system/notification_center.h"
#include "host/system/process.h"
#include "platform/foundation.h"
#include "replay/device_files.h"
#include "replay/host_set_up.h"

namespace tools::replay {

using host::keyboard::keyboard;
using host::runtime::Event;
using host::system::process;
using Json = Player::Json;
namespace step = scenario::step;

namespace {

/// Files of the host's own, which no scenario put there.
constexpr std::string_view kNotificationFiles = "/var/run/notify/";

/// In the order of Event::Kind.
constexpr std::string_view kKindNames[] = {"log",   "read",    "exists", "shell",
                                           "cache", "observe", "hook",   "previous"};
static_assert(std::size(kKindNames) == static_cast<std::size_t>(Event::Kind::kPrevious) + 1);

Json textsOf(const std::vector<Event>& events, Event::Kind kind) {
  Json texts = Json::array();
  for (const Event& event : events) {
    if (event.kind == kind) texts.push_back(event.text);
  }
  return texts;
}

Json allEvents(const std::vector<Event>& events) {
  Json told = Json::array();
  for (const Event& event : events) {
    told.push_back({{kKindNames[static_cast<std::size_t>(event.kind)], event.text}});
  }
  return told;
}

}  // namespace

/// Does what a step says and returns its result. A step that can't be done sets `failure`; one that
/// needs a class which the host lacks does nothing.
struct Player::Perform {
  Player& player;
  std::optional<std::string>& failure;

  Json operator()(const step::Load&) const {
    failure = host::system::loadLibrary(player.library_);
    return nullptr;
  }
  Json operator()(const step::FinishLaunching&) const {
    host::system::postNotification(platform::UIApplicationDidFinishLaunchingNotification);
    process().runLoop().drain();
    return nullptr;
  }
  Json operator()(const step::Notify& step) const {
    // A name that no file can have is one that nobody could observe.
    host::files::postNotification(process().root(), step.name);
    process().runLoop().drain();
    return nullptr;
  }
  Json operator()(const step::Set& step) const {
    applyHost(step.host, player.views_);
    return nullptr;
  }
  Json operator()(const step::Write& step) const {
    failure = writeDeviceFile(process().root(), step.path, step.file);
    return nullptr;
  }
  Json operator()(const step::Remove& step) const {
    if (const auto done = process().root().remove(step.path); !done) {
      failure = step.path + ": " + done.reason();
    }
    return nullptr;
  }
  Json operator()(const step::List& step) const {
    const auto files = process().root().list(step.path);
    Json paths = Json::array();
    if (!files) return paths;
    for (const std::string& file : *files) {
      if (!file.starts_with(kNotificationFiles)) paths.push_back(file);
    }
    return paths;
  }
  Json operator()(const step::Color& step) const {
    return player.output_.color(platform::UIKBGetNamedColor(step.name));
  }
  Json operator()(const step::Gradient& step) const {
    return player.output_.gradient(host::keyboard::askNamedGradient(step.name));
  }
  Json operator()(const step::Traits& step) const {
    if (!host::runtime::hasClass("UIKBRenderFactory")) return nullptr;
    auto& factory = keyboard().factoryObject();
    factory.forcedTraits = std::nullopt;
    if (step.system) factory.forcedTraits = makeTraits(*step.system);
    const bool effectsMutable =
        !step.system || !*step.system || (*step.system)->renderEffectsMutable;
    const auto key = makeKey(step.key);
    const auto keyplane = makeKeyplane(step.keyplane);
    return player.output_.traits(
        host::keyboard::askTraits(keyboard().factory.get(), key.get(), keyplane.get()),
        effectsMutable);
  }
  Json operator()(const step::BackgroundTraits& step) const {
    if (!host::runtime::hasClass("UIKBRenderFactoryiPhone")) return nullptr;
    auto& factory = keyboard().factoryObject();
    factory.forcedBackgroundTraits = std::nullopt;
    if (step.system) factory.forcedBackgroundTraits = makeBackgroundTraits(*step.system);
    const auto keyplane = makeKeyplane(step.keyplane);
    return player.output_.backgroundTraits(
        host::keyboard::askBackgroundTraits(keyboard().factory.get(), keyplane.get()));
  }
  Json operator()(const step::Show& step) const {
    if (!host::runtime::hasClass("UIKeyboardLayoutStar")) return nullptr;
    host::keyboard::showKeyboard(keyboard().layout.get(), makeKeyplane(step.keyplane).get());
    return backgroundView();
  }
  Json operator()(const step::Change& step) const {
    if (!host::runtime::hasClass("UIKeyboardLayoutStar")) return nullptr;
    const auto keyplane = makeKeyplane(step.keyplane);
    const auto current = step.current ? makeKeyplane(*step.current) : keyplane;
    host::keyboard::changeKeyplane(keyboard().layout.get(), keyplane.get(), current.get());
    return backgroundView();
  }
  Json operator()(const step::ReturnKey& step) const {
    if (!host::runtime::hasClass("UIKeyboardImpl")) return nullptr;
    host::keyboard::updateReturnKey(keyboard().input.get(), step.argument);
    return {{"argument", keyboard().inputObject().returnKey}};
  }
  Json operator()(const step::Dictation& step) const {
    if (!host::runtime::hasClass("UIKeyboardDicationBackgroundGradientView")) return nullptr;
    host::keyboard::setRenderConfig(keyboard().dictationView.get(), step.config);
    return {{"config", keyboard().dictationViewObject().renderConfig},
            {"dictationView", player.output_.view(keyboard().dictationView.get())}};
  }
  Json operator()(const step::CacheEnabled&) const {
    if (!host::runtime::hasClass("UIKeyboardCache")) return nullptr;
    return host::keyboard::askCacheEnabled();
  }

  Json backgroundView() const {
    const platform::UIView view(keyboard().layoutObject().backgroundView.get().get());
    return {{"backgroundView", player.output_.view(view)}};
  }
};

Player::Player(const scenario::Scenario& scenario, std::filesystem::path library)
    : scenario_(scenario), library_(std::move(library)) {}

std::optional<std::string> Player::start(const std::filesystem::path& directory) {
  auto root = host::files::DeviceRoot::open(directory, host::files::DeviceRoot::Creation::kNever);
  if (!root) return directory.string() + ": " + root.reason();
  for (const auto& [path, file] : scenario_.files) {
    if (auto failure = writeDeviceFile(*root, path, file)) return failure;
  }
  host::system::startProcess(*std::move(root), *scenario_.host.bundleIdentifier);
  host::keyboard::defineKeyboardClasses(*scenario_.host.missingClasses,
                                        *scenario_.host.missingInstanceVariables);
  const platform::NSAutoreleasePool pool;
  applyHost(scenario_.host, views_);
  host::runtime::startRecording();
  return std::nullopt;
}

Player::Outcome Player::performStep(std::size_t index) {
  const platform::NSAutoreleasePool pool;
  const scenario::Step& step = scenario_.steps[index];
  Outcome outcome;
  Json result = std::visit(Perform{*this, outcome.failure}, step.action);
  const auto events = host::runtime::takeEvents();
  if (std::holds_alternative<step::Load>(step.action)) result = textsOf(events, Event::Kind::kHook);
  outcome.output = {{"step", index},
                    {"do", step.name},
                    {"result", std::move(result)},
                    {"log", textsOf(events, Event::Kind::kLog)},
                    {"reads", textsOf(events, Event::Kind::kRead)},
                    {"events", allEvents(events)}};
  return outcome;
}

}  // namespace tools::replay
