#include "support/session_maker.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "device/places.h"
#include "host/plist/writer.h"
#include "scenario/host_reader.h"
#include "support/list_maker.h"
#include "support/vocabulary.h"

namespace fuzz {

namespace device = tools::device;
namespace scenario = tools::scenario;
namespace step = tools::scenario::step;

namespace {

constexpr std::string_view kBundles[] = {"com.example.notes", "com.apple.springboard",
                                         "com.apple.backupd"};
constexpr std::string_view kClasses[] = {
    "UIKeyboardCache",         "UIKeyboardImpl",
    "UIKeyboardLayoutStar",    "UIKBRenderFactory",
    "UIKBRenderFactoryiPhone", "UIKBGradient",
    "UIKBEdgeEffect",          "UIKeyboardDicationBackgroundGradientView"};
constexpr std::string_view kEffects[] = {"UIKBEdgeEffect", "UIKBShadowEffect", "Mine"};
constexpr double kScales[] = {2, 1, 3, 0, -1};
constexpr std::string_view kVersions[] = {"7.0.4", "3.9", "4", "", " 12x"};
constexpr std::int32_t kStates[] = {0, 1, 2, 4, 8, 12, 16, 32, 36, -1};
constexpr std::string_view kWritten[] = {
    device::kMergedTheme, device::kSettings, device::kDefaultSettings,
    "/t/a.png",           "/t/a@2x.png",     "/t/b.jpg"};

class SessionMaker {
 public:
  explicit SessionMaker(ByteSource& source) : source_(source) {}

  Session make() {
    session_.scenario.host = host();
    const std::uint8_t files = source_.byte();
    for (std::size_t i = 0; i < std::size(kWritten); ++i) {
      if ((files >> i & 1U) == 0) addFile(kWritten[i]);
    }
    if (!source_.rarely(4)) add("load", step::Load{});
    constexpr std::size_t kMostSteps = 32;
    while (!source_.empty() && session_.scenario.steps.size() < kMostSteps) addStep();
    return std::move(session_);
  }

 private:
  template <class Table>
  std::string word(const Table& table) {
    return source_.rarely(16) ? source_.text() : std::string(source_.pick(table));
  }
  /// A number below `count`, now and then any other.
  std::int32_t number(std::size_t count) {
    return source_.rarely(8) ? source_.integer() : static_cast<std::int32_t>(source_.below(count));
  }
  template <class Table>
  scenario::Nullable<std::string> wordOrNull(const Table& table) {
    if (source_.rarely(8)) return std::nullopt;
    return word(table);
  }

  // ---- The host

  scenario::Host host() {
    scenario::Host host = scenario::defaultHost();
    if (source_.rarely(8)) host.bundleIdentifier = wordOrNull(kBundles);
    if (source_.rarely(8)) host.missingClasses = {std::string(source_.pick(kClasses))};
    if (source_.rarely(8)) host.missingInstanceVariables = {"m_orientation"};
    if (source_.rarely(4)) change(host);
    return host;
  }

  void change(scenario::Host& host) {
    switch (source_.below(14)) {
      case 0:
        host.userInterfaceIdiom = {scenario::Nullable<std::int32_t>(source_.integer())};
        break;
      case 1:
        host.systemVersion = word(kVersions);
        break;
      case 2:
        host.screenScale = source_.pick(kScales);
        break;
      case 3:
        host.sharedKeyboard = source_.flag();
        break;
      case 4:
        host.layout = source_.flag()
                          ? scenario::Nullable<scenario::Layout>()
                          : (source_.flag() ? scenario::Layout::kOther : scenario::Layout::kStar);
        break;
      case 5:
        host.dictationKey = source_.flag();
        break;
      case 6:
        host.internationalKey = source_.flag();
        break;
      case 7:
        host.keyboardCache = scenario::KeyboardCache{source_.flag(), {"a", word(kColorNames)}};
        break;
      case 8:
        host.systemColors = {{word(kColorNames), scenario::Rgba{1, 2, 3, 255}}};
        break;
      case 9:
        host.systemGradients = {word(kGradientNames)};
        break;
      case 10:
        host.rejectedColors = {word(kColorNames)};
        break;
      case 11:
        host.colorCreation = source_.flag();
        break;
      case 12:
        host.displayTypeNames = {{source_.integer(), source_.text()}};
        break;
      default:
        host.orientation = number(6);
        host.backgroundView = source_.flag() ? scenario::Nullable<scenario::View>() : view();
        break;
    }
  }

  scenario::View view(int depth = 0) {
    constexpr int kDeepest = 3;
    constexpr std::string_view kViewClasses[] = {"UIView", "UIImageView", "Other"};
    scenario::View view;
    view.className = source_.pick(kViewClasses);
    view.tag = source_.flag() ? 70927 : source_.integer();
    view.frame = {0, 0, static_cast<double>(source_.integer()), 216.5};
    if (view.className == "UIImageView" && source_.flag()) view.image = scenario::Image{};
    for (std::size_t i = depth < kDeepest ? source_.below(3) : 0; i > 0; --i) {
      view.subviews.push_back(this->view(depth + 1));
    }
    return view;
  }

  // ---- Files

  scenario::File file(std::string_view path) {
    if (source_.rarely(8)) return scenario::BytesFile{std::string(source_.run())};
    if (path.starts_with("/t/")) return picture();
    // Bytes of its own: what changes in a theme leaves the steps as they are.
    ByteSource decisions(source_.run());
    const bool isTheme = path == device::kMergedTheme;
    const auto list = isTheme ? ListMaker(decisions).theme() : ListMaker(decisions).settings();
    return scenario::BytesFile{source_.flag() ? host::plist::writeBinary(list)
                                              : host::plist::writeXml(list)};
  }

  scenario::ImageFile picture() {
    return {.width = static_cast<std::int32_t>(1 + source_.below(4)),
            .height = 1,
            .color = {source_.byte(), 0, 0, 128},
            .format = source_.flag() ? scenario::ImageFormat::kJpeg : scenario::ImageFormat::kPng};
  }

  void addFile(std::string_view path) { session_.scenario.files.emplace_back(path, file(path)); }

  // ---- Steps

  scenario::Nullable<scenario::Keyplane> keyplane() {
    if (source_.rarely(16)) return std::nullopt;
    return scenario::Keyplane{.name = wordOrNull(kKeyplaneNames),
                              .visualStyle = number(14),
                              .type = number(3),
                              .isLetters = source_.flag(),
                              .isShiftKeyplane = source_.flag()};
  }

  scenario::Nullable<scenario::Key> key() {
    if (source_.rarely(16)) return std::nullopt;
    return scenario::Key{.name = wordOrNull(kKeyNames),
                         .displayType = number(12),
                         .displayTypeHint = number(3),
                         .displayRowHint = number(5),
                         .state = source_.pick(kStates)};
  }

  scenario::Nullable<scenario::Gradient> gradient() {
    switch (source_.below(4)) {
      case 0:
        return std::nullopt;
      case 1:
        return scenario::FlatGradient{word(kColorNames)};
      case 2:
        return scenario::LinearGradient{word(kColorNames), word(kColorNames)};
      default:
        return scenario::NamedGradient{word(kGradientNames)};
    }
  }

  scenario::Nullable<scenario::TextStyle> textStyle() {
    if (source_.rarely(4)) return std::nullopt;
    return scenario::TextStyle{wordOrNull(kColorNames), wordOrNull(kColorNames), "Font", {1, 2}};
  }

  scenario::Nullable<scenario::Traits> traits() {
    if (source_.rarely(8)) return std::nullopt;
    scenario::Traits traits;
    if (source_.flag()) {
      traits.renderEffects.emplace();
      for (std::size_t i = source_.below(4); i > 0; --i) {
        traits.renderEffects->push_back({word(kEffects), std::nullopt});
        if (source_.flag()) traits.renderEffects->back().superclass = word(kEffects);
      }
    }
    traits.renderEffectsMutable = source_.flag();
    traits.backgroundGradient = gradient();
    traits.symbolStyle = textStyle();
    traits.secondarySymbolStyle = textStyle();
    return traits;
  }

  step::Traits traitsStep() {
    step::Traits step{key(), keyplane(), std::nullopt};
    if (source_.flag()) step.system = traits();
    return step;
  }

  step::BackgroundTraits backgroundTraitsStep() {
    step::BackgroundTraits step{keyplane(), std::nullopt};
    if (source_.flag()) step.system = scenario::BackgroundTraits{gradient()};
    return step;
  }

  step::Change changeStep() {
    step::Change step{keyplane(), std::nullopt};
    if (source_.rarely(8)) step.current = keyplane();
    return step;
  }

  void add(const char* name, const scenario::Action& action) {
    session_.scenario.steps.push_back({name, action, {}});
    session_.asksAgain.push_back(false);
  }
  /// A question that is asked twice in a row.
  void ask(const char* name, const scenario::Action& action) {
    add(name, action);
    add(name, action);
    session_.asksAgain.back() = true;
  }

  void addStep() {
    switch (source_.below(16)) {
      case 0:
        return add("load", step::Load{});
      case 1:
        return add("finishLaunching", step::FinishLaunching{});
      case 2:
        return add("notify", step::Notify{std::string(device::kReloadThemes)});
      case 3:
        return add("notify",
                   step::Notify{source_.rarely(8) ? source_.text()
                                                  : std::string(device::kReloadSettings)});
      case 4: {
        scenario::Host changes;
        change(changes);
        return add("set", step::Set{changes});
      }
      case 5:
      case 6: {
        const std::string_view path = source_.pick(kWritten);
        return add("write", step::Write{std::string(path), file(path)});
      }
      case 7:
        return add("remove", step::Remove{std::string(source_.pick(kWritten))});
      case 8:
        return ask("color", step::Color{word(kColorNames)});
      case 9:
        return ask("gradient", step::Gradient{word(kGradientNames)});
      case 10:
        return ask("traits", traitsStep());
      case 11:
        return ask("backgroundTraits", backgroundTraitsStep());
      case 12:
        return ask("show", step::Show{keyplane()});
      case 13:
        return ask("change", changeStep());
      case 14:
        return ask("dictation", step::Dictation{source_.text()});
      default:
        ask("returnKey", step::ReturnKey{source_.text()});
        return ask("cacheEnabled", step::CacheEnabled{});
    }
  }

  ByteSource& source_;
  Session session_;
};

}  // namespace

Session makeSession(ByteSource& source) {
  return SessionMaker(source).make();
}

}  // namespace fuzz
