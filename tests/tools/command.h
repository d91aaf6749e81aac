#pragma once

// The command as a person runs it: in a folder of its own, through a shell.

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/wait.h>

#include "host/files/temporary_directory.h"
#include "host/images/decode.h"

struct Outcome {
  int status = -1;
  std::string output;
};

class Command : public testing::Test {
 protected:
  const std::filesystem::path& folder() const { return directory_.path(); }

  void write(const std::filesystem::path& path, const std::string& bytes) const {
    std::filesystem::create_directories((folder() / path).parent_path());
    std::ofstream(folder() / path, std::ios::binary) << bytes;
  }

  std::string read(const std::filesystem::path& path) const {
    std::ifstream file(folder() / path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// `redirection` says which streams are looked at; both, unless it is given.
  Outcome prismal(const std::string& arguments, const std::string& redirection = "2>&1") const {
    return script("'" PRISMAL "' " + arguments + " " + redirection);
  }

  /// Several commands; `prismal` is found among them.
  Outcome script(const std::string& commands) const {
    const std::string place = std::filesystem::path(PRISMAL).parent_path().string();
    const std::string command = "cd '" + folder().string() + "' && export XDG_DATA_HOME='" +
                                folder().string() + "' PATH='" + place + "':\"$PATH\" && " +
                                commands;
    FILE* const pipe = popen(command.c_str(), "r");
    Outcome outcome;
    std::array<char, 4096> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
      outcome.output.append(buffer.data(), size);
    }
    outcome.status = WEXITSTATUS(pclose(pipe));
    return outcome;
  }

  host::images::Bitmap picture(const std::string& name) const {
    const auto decoded = host::images::decode(read(name));
    EXPECT_TRUE(decoded) << name << ": " << decoded.reason;
    return decoded ? *decoded.bitmap : host::images::Bitmap();
  }

  nlohmann::json jsonAt(const std::string& name) const { return nlohmann::json::parse(read(name)); }

 private:
  host::files::TemporaryDirectory directory_;
};
