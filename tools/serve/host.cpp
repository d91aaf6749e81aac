#include "serve/host.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <exception>
#include <iterator>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "check/output.h"
#include "check/report.h"
#include "explain/theme_rules.h"
#include "host/files/device_root.h"
#include "host/images/decode.h"
#include "host/system/process.h"
#include "keyboard/confinement.h"
#include "leave.h"
#include "platform/foundation.h"
#include "serve/answers.h"
#include "serve/passed_socket.h"
#include "serve/theme_facts.h"

namespace tools::serve {

using host::files::DeviceRoot;
using host::files::Done;
using host::files::Result;
using keyboard::Dress;
using keyboard::KeyboardProcess;

namespace {

/// `status` as HTTP has it.
Message refusal(const std::string& reason, int status) {
  return {{{"ok", false}, {"reason", reason}, {"status", status}}};
}

constexpr int kWrongQuestion = 400;
constexpr int kOwnFault = 500;
constexpr int kNoKeyboard = 503;

Message messageOf(Result<std::string> made) {
  if (!made) {
    return refusal(made.reason(), made.failure().error == EINVAL ? kWrongQuestion : kOwnFault);
  }
  return {{{"ok", true}}, *std::move(made)};
}

/// What is wrong with the theme: the first error that a check finds. Null when it is nothing of the
/// theme's.
Json findingOf(const Dress& dress) {
  if (dress.theme.empty() || canBeRead(dress.theme)) return {};
  const std::vector<check::Report> reports = {check::checkTheme(dress)};
  const Json findings = Json::parse(check::jsonOf(reports))["findings"];
  return findings.empty() ? Json() : findings.front();
}

Message refusalToStart(const std::string& reason, const Dress& dress) {
  Message told = refusal(reason, kNoKeyboard);
  told.head["finding"] = findingOf(dress);
  return told;
}

/// A picture that can't be drawn is none to begin with, and asked for again to learn why.
std::string firstPicture(const HostTask& task, host::drawing::Fonts& fonts) {
  Question question;
  if (task.first.empty()) return {};
  readQuestion(task.first, namesIn(task.first), question);
  auto drawn = drawPicture(question, fonts);
  return drawn ? *std::move(drawn) : std::string();
}

Question questionOf(const Message& asked) {
  Question question;
  const Parameters parameters = parametersOf(asked.head["parameters"]);
  readQuestion(parameters, namesIn(parameters), question);
  return question;
}

Wish wishOf(const Message& asked) {
  const auto word = asked.head["wish"].get<std::string>();
  return std::ranges::find(kWishes, word, &keyboard::Word<Wish>::word)->value;
}

/// Before the first look into the theme; the keyboard's own start takes more away.
Result<Done> confine(const Dress& dress) {
  const auto device = DeviceRoot::open(*dress.private_device, DeviceRoot::Creation::kNever);
  if (!device) return device.failure();
  return keyboard::confineToTheme(dress, *device);
}

void perform(const HostTask& task, const Dress& dress, host::drawing::Fonts& fonts, int socket) {
  const Json facts = dress.theme.empty() ? Json::object() : factsOf(dress.theme);
  const auto process = KeyboardProcess::start(dress, 2);
  if (!process) {
    send(socket, refusalToStart(process.reason(), dress));
    return;
  }
  send(socket, {{{"ok", true}, {"facts", facts}}, firstPicture(task, fonts)});
  while (const auto asked = receive(socket)) {
    // What was changed on the device before the question is known before the answer.
    host::system::process().runLoop().drain();
    const Question question = questionOf(*asked);
    const bool isPicture = wishOf(*asked) == Wish::picture;
    if (!send(socket,
              messageOf(isPicture ? drawPicture(question, fonts) : reportKeys(question, fonts)))) {
      return;
    }
  }
}

Result<std::string> answer(Wish wish, const Question& question, const explain::ThemeRules& rules) {
  host::drawing::Fonts fonts;
  switch (wish) {
    case Wish::explanation:
      return explainKey(question, rules);
    case Wish::rule:
      return explainRule(question, rules);
    case Wish::sheet:
      return drawSheet(question);
    case Wish::picture:
      return drawPicture(question, fonts);
    case Wish::keys:
      break;
  }
  return reportKeys(question, fonts);
}

/// In a copy of the answerer, which ends with it: at the latest when nobody waits any more.
[[noreturn]] void answerInCopy(const Passed& asked, const explain::ThemeRules& rules) {
  constexpr unsigned kLongest_s = 120;
  alarm(kLongest_s);
  std::signal(SIGCHLD, SIG_DFL);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const Message question{Json::parse(asked.text)};
  // Whoever asks knows by this that the answerer doesn't hang.
  send(asked.socket.get(), {Json::object()});
  try {
    send(asked.socket.get(), messageOf(answer(wishOf(question), questionOf(question), rules)));
  } catch (const std::exception& error) {
    send(asked.socket.get(), refusal(error.what(), kOwnFault));
  }
  leave(0);
}

void answerAll(const Dress& dress, int socket) {
  // Before the start: a process with a keyboard may be shut in.
  const auto rules = explain::ThemeRules::read(dress);
  const Result<KeyboardProcess> process =
      rules ? KeyboardProcess::start(dress, 2) : Result<KeyboardProcess>(rules.failure());
  if (!process) {
    send(socket, refusal(process.reason(), kNoKeyboard));
    return;
  }
  // Nobody here waits for the copies.
  std::signal(SIGCHLD, SIG_IGN);
  send(socket, {{{"ok", true}}});
  while (const auto asked = takePassed(socket)) {
    if (fork() == 0) answerInCopy(*asked, *rules);
  }
}

void decodeOnce(const Dress& dress, int socket) {
  // It has no theme to read before: all is given up at once.
  const auto device = DeviceRoot::open(*dress.private_device, DeviceRoot::Creation::kNever);
  const auto confined =
      device ? keyboard::confineToDevice(dress, *device, true) : Result<Done>(device.failure());
  if (!confined) {
    send(socket, refusal(confined.reason(), kOwnFault));
    return;
  }
  send(socket, {{{"ok", true}}});
  const auto file = receive(socket);
  if (!file) return;
  const auto decoded = host::images::decode(file->bytes);
  send(socket, decoded ? Message{{{"ok", true}}}
                       : refusal("the body is no picture: " + decoded.reason, kWrongQuestion));
}

void checkOnce(const Dress& dress, int socket) {
  constexpr int kInTheBackground = 10;
  setpriority(PRIO_PROCESS, 0, kInTheBackground);
  const std::vector<check::Report> reports = {check::checkTheme(dress)};
  if (!reports.front().trouble.empty()) {
    send(socket, refusal(reports.front().trouble, kOwnFault));
    return;
  }
  send(socket, {{{"ok", true}}, check::jsonOf(reports)});
}

}  // namespace

void runHost(const HostTask& task, const Dress& dress, host::drawing::Fonts& fonts, int socket) {
  if (const auto confined = confine(dress); !confined) {
    send(socket, refusal(confined.reason(), kNoKeyboard));
    return;
  }
  switch (task.role) {
    case Role::performer:
      return perform(task, dress, fonts, socket);
    case Role::answerer:
      return answerAll(dress, socket);
    case Role::checker:
      return checkOnce(dress, socket);
    case Role::decoder:
      return decodeOnce(dress, socket);
  }
}

}  // namespace tools::serve
