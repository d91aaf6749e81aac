#include "replay.h"

#include <CLI/App.hpp>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <variant>
#include <vector>

#include "exit_status.h"
#include "held_interruptions.h"
#include "host/files/temporary_directory.h"
#include "library_path.h"
#include "replay/player.h"
#include "scenario/expectation.h"
#include "scenario/json_output.h"
#include "scenario/reader.h"
#include "text_file.h"

namespace tools {

namespace fs = std::filesystem;

namespace {

struct ReplayOptions {
  std::vector<std::string> files;
  fs::path library;
  bool quiet = false;
};

void complain(const std::string& message) {
  std::fprintf(stderr, "%s\n", message.c_str());
}

/// Plays one scenario in this process and returns its exit status.
int play(const std::string& file, const scenario::Scenario& scenario, const fs::path& directory,
         const ReplayOptions& options) {
  replay::Player player(scenario, options.library);
  if (const auto failure = player.start(directory)) {
    complain(file + ": the device can't be set up: " + *failure);
    return kTrouble;
  }
  int status = kDone;
  for (std::size_t i = 0; i < scenario.steps.size(); ++i) {
    const auto outcome = player.performStep(i);
    const std::string place =
        file + ": step " + std::to_string(i) + " (" + scenario.steps[i].name + ")";
    if (outcome.failure) {
      complain(place + ": " + *outcome.failure);
      return kTrouble;
    }
    if (!options.quiet) {
      nlohmann::ordered_json output;
      if (options.files.size() > 1) output["scenario"] = file;
      output.update(outcome.output);
      std::printf("%s\n", scenario::line(output).c_str());
      // Whoever reads may have gone; then nothing is gained by playing on.
      if (std::ferror(stdout)) break;
    }
    for (const auto& mismatch : scenario::judge(scenario.steps[i].expect, outcome.output)) {
      complain(place + ": " + mismatch.message());
      status = kFindings;
    }
  }
  return status;
}

/// The exit status of a child process; one that was killed has not met its expectations.
int statusOf(int waitStatus, const std::string& file) {
  if (WIFEXITED(waitStatus)) return WEXITSTATUS(waitStatus);
  complain(file + ": the host process died: " + strsignal(WTERMSIG(waitStatus)));
  return kFindings;
}

/// Plays one file in a process of its own: the library is loaded once a process and never leaves.
int replayFile(const std::string& file, const ReplayOptions& options) {
  const auto text = readTextFile(file);
  if (!text) {
    complain(file + ": " + text.reason());
    return kTrouble;
  }
  const auto read = scenario::read(file, *text);
  if (const auto* const fault = std::get_if<scenario::Fault>(&read)) {
    complain(fault->message());
    return kTrouble;
  }
  const HeldInterruptions held;
  // Made out here, so that it goes even when the host dies.
  const host::files::TemporaryDirectory directory;
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) {
    complain(file + ": no process can be started: " + std::strerror(errno));
    return kTrouble;
  }
  if (child == 0) {
    held.release();
    int status = play(file, std::get<scenario::Scenario>(read), directory.path(), options);
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
      complain(std::string("standard output: ") + std::strerror(errno));
      status = kTrouble;
    }
    // Nothing on the stack is let go: the temporary directory is the parent's.
    std::exit(status);
  }
  int waitStatus = 0;
  while (waitpid(child, &waitStatus, 0) < 0 && errno == EINTR) {
    if (HeldInterruptions::came()) kill(child, SIGKILL);
  }
  if (HeldInterruptions::came()) return kTrouble;
  return statusOf(waitStatus, file);
}

int replayAll(const ReplayOptions& options) {
  int status = kDone;
  for (const std::string& file : options.files) {
    status = std::max(status, replayFile(file, options));
  }
  return status;
}

}  // namespace

void addReplayCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<ReplayOptions>();
  options->library = libraryPath();
  CLI::App* const command =
      app.add_subcommand("replay", "Play scenario files and judge what comes");
  command->add_option("FILE", options->files, "Scenario files, each played in a process of its own")
      ->required();
  command->add_flag("--quiet", options->quiet, "Print no output lines, only what doesn't hold");
  command
      ->add_option("--library", options->library,
                   "The library to load, in place of the one that came with this program")
      ->type_name("FILE");
  command->footer(
      "Prints one JSON object a step on standard output.\n"
      "Exit status: 0 every expectation holds, 1 one doesn't, 2 a malformed scenario or a library\n"
      "that can't be loaded.\n\n"
      "Example: prismal replay --quiet evening.json");
  command->callback([options, &status] { status = replayAll(*options); });
}

}  // namespace tools
