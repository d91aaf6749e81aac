#pragma once

#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "replay/made_objects.h"
#include "replay/object_output.h"
#include "scenario/model.h"

namespace tools::replay {

/// Plays one scenario in this process, which becomes its host; a process plays one.
class Player {
 public:
  using Json = nlohmann::ordered_json;

  /// What one step came to: its output, or why it could not be done at all.
  // NOLINTNEXTLINE(bugprone-exception-escape): moving JSON allocates nothing
  struct Outcome {
    Json output;
    std::optional<std::string> failure;
  };

  /// `scenario` must outlive the player.
  Player(const scenario::Scenario& scenario, std::filesystem::path library);

  /// Starts the host on the device root `directory`. None on success, else why not.
  std::optional<std::string> start(const std::filesystem::path& directory);

  /// Performs the next step; as many calls as there are steps.
  Outcome performStep(std::size_t index);

 private:
  struct Perform;

  const scenario::Scenario& scenario_;
  std::filesystem::path library_;
  ViewMaker views_;
  ObjectOutput output_;
};

}  // namespace tools::replay
