#include "serve/keyboards.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "keyboard/shown_view.h"
#include "serve/passed_socket.h"
#include "theme/theme_source.h"

namespace tools::serve {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using watch::FileWatch;

namespace {

/// How long nothing more is saved before a version begins: some programs save a file in several
/// steps. A version that can't be read while more is being saved is passed over, unless saves have
/// followed each other without end.
constexpr auto kQuiet = 8ms;
constexpr auto kLongest = 500ms;

/// The picture of a save comes first, then the check.
constexpr auto kBeforeCheck = 120ms;

constexpr auto kForStart = 20s;
constexpr auto kForAnswer = 20s;
/// A picture takes milliseconds; one behind the keys as large as can be, a second or two.
constexpr auto kForPicture = 5s;
constexpr auto kForSheet = 120s;
constexpr auto kForSuccessor = 3s;

constexpr std::size_t kCacheBytes = std::size_t{64} << 20U;

/// So often a process may die while it starts before that is told.
constexpr std::size_t kMostDeaths = 2;

/// One that dies again and again is not replaced as quickly.
constexpr std::chrono::milliseconds kBeforeReplacing[] = {0ms, 0ms, 0ms, 500ms, 2000ms, 10000ms};

/// Whether a file was saved, or put there, later than `time`; or so close to it that the kernel's
/// clock of files, which ticks more slowly, can't tell.
bool hasChangedSince(const fs::path& path, const timespec& time) {
  constexpr double kTick_s = 0.01;
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return false;
  const auto seconds = [](const timespec& at) {
    return static_cast<double>(at.tv_sec) + 1e-9 * static_cast<double>(at.tv_nsec);
  };
  return seconds(status.st_ctim) > seconds(time) - kTick_s;
}

std::chrono::seconds limitFor(Wish wish) {
  if (wish == Wish::sheet) return kForSheet;
  return wish == Wish::picture || wish == Wish::keys ? kForPicture : kForAnswer;
}

double scaleOf(const Parameters& parameters) {
  Question question;
  readQuestion(parameters, namesIn(parameters), question);
  return question.scale;
}

}  // namespace

Keyboards::Keyboards(const Options& options, HostStarter& starter, UserSettings& settings,
                     Publish publish)
    : starter_(starter),
      settings_(settings),
      publish_(std::move(publish)),
      cache_(kCacheBytes),
      wake_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  const auto add = [&](Look look, const std::string& theme) {
    Kept& kept = all_.emplace_back();
    kept.look = look;
    kept.theme = theme;
    // Of a theme its name alone, until it has been read.
    kept.facts = {{"name", "system"}};
    if (!theme.empty()) {
      kept.facts = {{"name", theme::themeName(theme)},
                    {"styles", Json::array()},
                    {"pictures", Json::array()}};
    }
    kept.due = Clock::now();
  };
  add(Look::theme, options.theme);
  if (!options.other.empty()) add(Look::other, options.other);
  add(Look::system, "");
}

// Following

Keyboards::End Keyboards::run(int channel) {
  for (;;) {
    try {
      for (Kept& kept : all_) doWhatIsDue(kept);
      if (const auto end = wait(channel)) return *end;
    } catch (const Json::exception& error) {
      // A process with a keyboard doesn't talk as it should: somebody else may be in it.
      std::fprintf(stderr, "prismal serve: %s\n", error.what());
    }
  }
}

void Keyboards::doWhatIsDue(Kept& kept) {
  if (kept.due && Clock::now() >= *kept.due) startVersion(kept);
  if (kept.checkDue && Clock::now() >= *kept.checkDue) startCheck(kept);
}

int Keyboards::timeout_ms() const {
  std::optional<Clock::time_point> first;
  for (const Kept& kept : all_) {
    for (const auto& due : {kept.due, kept.checkDue}) {
      if (due) first = first ? std::min(*first, *due) : *due;
    }
  }
  if (!first) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*first - Clock::now());
  return std::max(0, static_cast<int>(left.count()));
}

std::optional<Keyboards::End> Keyboards::wait(int channel) {
  constexpr std::size_t kFirst = 2;
  std::vector<pollfd> polled = {{channel, POLLIN, 0}, {wake_.get(), POLLIN, 0}};
  for (const Kept& kept : all_) {
    polled.push_back({kept.watch ? kept.watch->descriptor() : -1, POLLIN, 0});
    polled.push_back({kept.checker ? kept.checker->descriptor() : -1, POLLIN, 0});
  }
  if (::poll(polled.data(), polled.size(), timeout_ms()) <= 0) return std::nullopt;
  for (std::size_t i = 0; i < all_.size(); ++i) {
    Kept& kept = all_[i];
    if (polled[kFirst + 2 * i].revents != 0 && kept.watch->takeChanges()) noteChange(kept);
    // A change has stopped it.
    if (polled[kFirst + 2 * i + 1].revents != 0 && kept.checker) takeCheck(kept);
  }
  if (polled[1].revents != 0) takeRenewal();
  if (polled[0].revents == 0) return std::nullopt;
  const auto note = takePassed(channel);
  if (!note) return End::kAbandoned;
  const Json told = Json::parse(note->text);
  if (told.contains("end")) return End::kAsked;
  takeNote(told);
  return std::nullopt;
}

void Keyboards::takeRenewal() {
  eventfd_t count = 0;
  ::eventfd_read(wake_.get(), &count);
  if (!renews_.exchange(false)) return;
  for (Kept& kept : all_) {
    if (!kept.theme.empty()) noteChange(kept);
  }
}

void Keyboards::noteChange(Kept& kept) {
  const auto now = Clock::now();
  if (!kept.since) kept.since = now;
  kept.due = std::min(now + kQuiet, *kept.since + kLongest);
  kept.deaths = 0;
  stopCheck(kept);
}

/// Both at the same time: they are to read the same.
Keyboards::Start Keyboards::startHosts(const Kept& kept) {
  Start start;
  HostTask task{.look = kept.look, .settings = settings_.file()};
  {
    const std::scoped_lock lock(mutex_);
    task.first = kept.lastAsked;
  }
  start.first = task.first;
  start.generation = settings_.generation();
  start.performer = starter_.start(task);
  task.role = Role::answerer;
  if (!kept.theme.empty()) start.answerer = starter_.start(task);
  return start;
}

/// What is said once both have read the theme: the performer's word, or that of the one that could
/// not. A theme may be saved between the two.
std::optional<Message> Keyboards::hear(const Start& start) {
  const auto isGood = [](const auto& said) { return said && said->head.value("ok", false); };
  auto said = start.performer ? start.performer->hear(kForStart) : std::nullopt;
  if (!isGood(said) || !start.answerer) return said;
  auto other = start.answerer->hear(kForStart);
  return isGood(other) ? said : other;
}

void Keyboards::startVersion(Kept& kept) {
  kept.due.reset();
  if (!kept.theme.empty()) watchWays(kept);
  timespec time{};
  ::clock_gettime(CLOCK_REALTIME, &time);
  const Start start = startHosts(kept);
  const auto said = hear(start);
  const bool isGood = said && said->head.value("ok", false);
  if (kept.watch && kept.watch->takeChanges()) noteChange(kept);
  if (isGood && !kept.theme.empty() && followFiles(kept, said->head["facts"]["files"], time)) {
    noteChange(kept);
  }
  const bool isHalfSaved =
      !isGood && kept.since && kept.due && Clock::now() < *kept.since + kLongest;
  if (isHalfSaved) return;
  // Somebody may have ended it; a theme of which it dies is told to the page.
  if (!said && kept.deaths < kMostDeaths) return dueAfterDeath(kept);
  kept.since = kept.due ? std::optional(Clock::now()) : std::nullopt;
  isGood ? show(kept, start, *said) : refuse(kept, said);
}

/// Before the theme is read: what is saved from now on is noticed, also in a folder that has taken
/// the place of the one that was watched.
void Keyboards::watchWays(Kept& kept) {
  if (kept.watch && !kept.watch->isStale()) return;
  if (kept.files.empty()) {
    std::error_code error;
    const bool isFolder = fs::is_directory(kept.theme, error);
    kept.files.emplace_back(isFolder ? kept.theme + "/theme.plist" : kept.theme);
  }
  if (auto watch = FileWatch::start(kept.files)) kept.watch = *std::move(watch);
}

/// Watches what the theme is made of now. Whether something was saved since `start` that was not
/// watched then.
bool Keyboards::followFiles(Kept& kept, const Json& files, timespec start) {
  std::vector<fs::path> paths;
  for (const Json& file : files) paths.emplace_back(file.get<std::string>());
  if (paths == kept.files && kept.watch) return false;
  auto watch = FileWatch::start(paths);
  if (!watch) return false;
  bool hasChanged = kept.watch && kept.watch->takeChanges();
  for (const fs::path& path : paths) {
    const bool isNew = std::ranges::find(kept.files, path) == kept.files.end();
    hasChanged = hasChanged || (isNew && hasChangedSince(path, start));
  }
  kept.watch = *std::move(watch);
  kept.files = std::move(paths);
  return hasChanged;
}

void Keyboards::show(Kept& kept, const Start& start, const Message& ready) {
  {
    const std::scoped_lock lock(mutex_);
    if (!ready.bytes.empty()) {
      cache_.keep(cacheKey(*start.performer, Wish::picture, start.first, start.generation),
                  ready.bytes);
    }
    kept.performer = start.performer;
    kept.performersScale = keyboard::deviceScale(scaleOf(start.first));
    kept.answerer = start.answerer;
    kept.shown = ++kept.version;
    kept.finding = {};
    if (!kept.theme.empty()) kept.facts = ready.head["facts"];
  }
  changed_.notify_all();
  publish_("version", version(kept.look));
  // Its settings are those of when it started.
  if (settings_.generation() != start.generation) putSettingsOn(kept);
  dueForCheck(kept);
}

void Keyboards::refuse(Kept& kept, const std::optional<Message>& said) {
  {
    const std::scoped_lock lock(mutex_);
    ++kept.version;
    kept.finding = said ? said->head.value("finding", Json()) : Json();
    if (kept.finding.is_null()) {
      kept.finding = {{"message", said ? said->head.value("reason", "")
                                       : "the keyboard's process died while it started"}};
    }
  }
  changed_.notify_all();
  publish_("version", version(kept.look));
  dueForCheck(kept);
}

// Checks

void Keyboards::dueForCheck(Kept& kept) {
  if (kept.theme.empty()) return;
  kept.checkDue = Clock::now() + kBeforeCheck;
  kept.isCheckedAgain = false;
}

void Keyboards::startCheck(Kept& kept) {
  kept.checkDue.reset();
  kept.checker = starter_.start({.role = Role::checker, .look = kept.look});
}

void Keyboards::stopCheck(Kept& kept) {
  kept.checkDue.reset();
  if (kept.checker) kept.checker->kill();
  kept.checker.reset();
}

void Keyboards::takeCheck(Kept& kept) {
  const auto said = kept.checker->hear(kForAnswer);
  kept.checker.reset();
  // Somebody may have ended it.
  if (!said && !std::exchange(kept.isCheckedAgain, true)) return startCheck(kept);
  Json findings = said ? Json::parse(said->bytes, nullptr, false) : Json();
  if (!findings.is_object()) {
    findings = {{"findings", Json::array()},
                {"trouble", said ? said->head.value("reason", "") : "the check's process died"}};
  }
  tellFindings(kept, std::move(findings));
}

void Keyboards::tellFindings(Kept& kept, Json findings) {
  {
    const std::scoped_lock lock(mutex_);
    findings["look"] = keyboard::wordOf(kLooks, kept.look);
    findings["version"] = kept.version;
    kept.findings = std::move(findings);
  }
  publish_("findings", this->findings(kept.look));
}

// Deaths

void Keyboards::takeNote(const Json& note) {
  for (Kept& kept : all_) {
    for (const auto role : {&Kept::performer, &Kept::answerer}) {
      const bool isIt = kept.*role && (kept.*role)->number() == note["ended"];
      if (isIt) replace(kept, role, note["how"].get<std::string>());
    }
  }
}

/// Both are begun anew, to be of one version. What is left of them answers until then, and longer
/// should the theme be broken.
void Keyboards::replace(Kept& kept, HostHandle Kept::*dead, const std::string& how) {
  {
    const std::scoped_lock lock(mutex_);
    (kept.*dead).reset();
  }
  publish_("host", {{"look", keyboard::wordOf(kLooks, kept.look)}, {"how", how}});
  dueAfterDeath(kept);
}

void Keyboards::dueAfterDeath(Kept& kept) {
  const std::size_t deaths = std::min(kept.deaths++, std::size(kBeforeReplacing) - 1);
  kept.due = Clock::now() + kBeforeReplacing[deaths];
}

// Asking

Keyboards::Kept& Keyboards::keptFor(Look look) {
  return *std::ranges::find(all_, look, &Kept::look);
}

const Keyboards::Kept& Keyboards::keptFor(Look look) const {
  return *std::ranges::find(all_, look, &Kept::look);
}

bool Keyboards::has(Look look) const {
  return std::ranges::find(all_, look, &Kept::look) != all_.end();
}

std::vector<Look> Keyboards::looks() const {
  std::vector<Look> looks;
  for (const Kept& kept : all_) looks.push_back(kept.look);
  return looks;
}

/// Which process answers. A performer shows one device, and answers for pictures of its scale. When
/// it is dead and none can be made of what is there now, the last good version's answerer is left.
const HostHandle& Keyboards::hostFor(const Kept& kept, Wish wish, double scale) {
  const bool isPerformers = wish == Wish::picture || wish == Wish::keys;
  const bool isItsDevice = kept.performersScale == keyboard::deviceScale(scale);
  const bool isBroken = !kept.finding.is_null();
  const bool isLost = !kept.performer && isBroken;
  // The system's look has no pictures, and no answerer.
  if (kept.theme.empty()) return kept.performer;
  return isPerformers && isItsDevice && !isLost ? kept.performer : kept.answerer;
}

/// The process that answers, when it is another than `other`; null when none comes.
HostHandle Keyboards::waitForHost(const Kept& kept, Wish wish, double scale,
                                  const HostHandle& other) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, kForSuccessor, [&] {
    const HostHandle& host = hostFor(kept, wish, scale);
    // Of a theme that can't be read none will come.
    return (host && host != other) || (!host && !kept.finding.is_null());
  });
  const HostHandle& host = hostFor(kept, wish, scale);
  return host == other ? nullptr : host;
}

std::string Keyboards::cacheKey(const KeyboardHost& host, Wish wish, const Parameters& parameters,
                                std::uint64_t generation) const {
  return Json({host.number(), generation, jsonOf(wish, parameters)}).dump();
}

Reply Keyboards::ask(Wish wish, const Question& question, Parameters parameters) {
  std::erase_if(parameters, [](const auto& parameter) {
    return parameter.first == "version" || parameter.first == "look";
  });
  Kept& kept = keptFor(question.look);
  if (wish == Wish::picture) {
    const std::scoped_lock lock(mutex_);
    kept.lastAsked = parameters;
  }
  std::unique_lock sheet(sheet_, std::defer_lock);
  if (wish == Wish::sheet && !sheet.try_lock()) return {503, "another sheet is being drawn"};
  HostHandle host;
  for (int tries = 0; tries < 2; ++tries) {
    host = waitForHost(kept, wish, question.scale, host);
    if (!host) break;
    if (auto reply = askHost(*host, wish, parameters)) return *std::move(reply);
  }
  return {503, "no keyboard answers; the theme can't be read, or its process has died"};
}

/// None when the process has died. What one version has answered stays true for all its time.
std::optional<Reply> Keyboards::askHost(KeyboardHost& host, Wish wish,
                                        const Parameters& parameters) {
  const std::string key = cacheKey(host, wish, parameters, settings_.generation());
  if (auto known = cache_.find(key)) return Reply{200, *std::move(known)};
  const Json question = jsonOf(wish, parameters);
  auto said = host.isAnswerer() ? host.askCopy(question, limitFor(wish))
                                : host.ask({question}, limitFor(wish));
  if (!said) return std::nullopt;
  if (!said->head.value("ok", false)) {
    return Reply{said->head.value("status", 503), said->head.value("reason", "")};
  }
  cache_.keep(key, said->bytes);
  return Reply{200, std::move(said->bytes)};
}

Reply Keyboards::lookAtPicture(std::string file) {
  const auto decoder = starter_.start({.role = Role::decoder, .look = Look::system});
  const auto said =
      decoder ? decoder->ask({Json::object(), std::move(file)}, kForPicture) : std::nullopt;
  if (!said) return {400, "the body is no picture that can be read"};
  return {said->head.value("status", 200), said->head.value("reason", "")};
}

// Telling

void Keyboards::putSettingsOn(const Kept& kept) const {
  std::array<HostHandle, 2> hosts;
  {
    const std::scoped_lock lock(mutex_);
    hosts = {kept.performer, kept.answerer};
  }
  for (const HostHandle& host : hosts) {
    if (!host) continue;
    const auto device = starter_.deviceOf(*host);
    if (device) static_cast<void>(settings_.putOn(*device));
  }
}

void Keyboards::tellSettings() {
  for (const Kept& kept : all_) {
    if (!kept.theme.empty()) putSettingsOn(kept);
  }
  publish_("settings", settings_.json());
}

void Keyboards::renew() {
  renews_ = true;
  ::eventfd_write(wake_.get(), 1);
}

Json Keyboards::facts(Look look) const {
  Json json = version(look);
  const std::scoped_lock lock(mutex_);
  const Kept& kept = keptFor(look);
  for (const char* name : {"name", "styles", "pictures"}) {
    if (kept.facts.contains(name)) json[name] = kept.facts[name];
  }
  return json;
}

Json Keyboards::version(Look look) const {
  const std::scoped_lock lock(mutex_);
  const Kept& kept = keptFor(look);
  return {{"look", keyboard::wordOf(kLooks, look)},
          {"version", kept.version},
          {"shown", kept.shown},
          {"ok", kept.shown > 0 && kept.version == kept.shown},
          {"finding", kept.finding}};
}

Json Keyboards::findings(Look look) const {
  const std::scoped_lock lock(mutex_);
  return keptFor(look).findings;
}

}  // namespace tools::serve
