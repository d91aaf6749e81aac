#pragma once

// `prismal serve` on a theme whose letters and background are painted in one colour each.

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "device_command.h"
#include "host/images/encode.h"
#include "page_client.h"

class Serve : public DeviceCommand {
 protected:
  Serve() {
    save("#FF0000FF");
    write("T.theme/p.png", png(0, 0, 255));
    write("T.theme/q.png", png(0, 255, 255));
  }
  ~Serve() override {
    if (server_ > 0) end(SIGKILL);
  }

  static std::string png(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return host::images::encodePng(host::images::solid(2, 2, red, green, blue, 255));
  }
  static std::string list(const std::string& color) {
    return colored(color,
                   "<key>BackgroundImages</key><dict><key>Portrait</key><string>p.png</string>"
                   "<key>Landscape</key><string>q.png</string></dict>");
  }
  void save(const std::string& color) const { write("T.theme/theme.plist", list(color)); }

  /// Starts it, and takes its port from the address that it prints.
  void start(std::vector<std::string> more = {}) {
    std::filesystem::create_directories(folder() / "tmp");
    // Of files as new as the program, a second version may follow the first by itself.
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    server_ = fork();
    if (server_ == 0) {
      std::filesystem::current_path(folder());
      ::setenv("TMPDIR", (folder() / "tmp").c_str(), 1);
      ::dup2(ends[1], STDOUT_FILENO);
      ::dup2(::open("said", O_WRONLY | O_CREAT | O_APPEND, 0644), STDERR_FILENO);
      for (const int end : ends) ::close(end);
      std::vector<std::string> arguments = {PRISMAL, "serve", "T.theme", "--port", "0"};
      arguments.insert(arguments.end(), more.begin(), more.end());
      std::vector<char*> pointers;
      pointers.reserve(arguments.size() + 1);
      for (std::string& argument : arguments) pointers.push_back(argument.data());
      pointers.push_back(nullptr);
      ::execv(PRISMAL, pointers.data());
      ::_exit(127);
    }
    ::close(ends[1]);
    std::string address;
    for (char c = 0; ::read(ends[0], &c, 1) == 1 && c != '\n';) address += c;
    ::close(ends[0]);
    constexpr std::string_view kStart = "http://127.0.0.1:";
    ASSERT_TRUE(address.starts_with(kStart) && address.ends_with("/")) << address;
    port_ = static_cast<std::uint16_t>(std::strtoul(address.c_str() + kStart.size(), nullptr, 10));
  }
  /// The exit status; -1 of one that died.
  int end(int signal) {
    kill(server_, signal);
    int status = 0;
    waitpid(server_, &status, 0);
    server_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::uint16_t port() const { return port_; }
  std::string ownHost() const { return "Host: 127.0.0.1:" + std::to_string(port_) + "\r\n"; }

  Answer raw(const std::string& bytes) const {
    Connection connection(port_);
    connection.send(bytes);
    return connection.readAnswer();
  }
  Answer get(const std::string& target, const std::string& headers = "") const {
    return raw("GET " + target + " HTTP/1.1\r\n" + ownHost() + headers + "\r\n");
  }
  Answer post(const std::string& target, const std::string& body = "") const {
    return raw("POST " + target + " HTTP/1.1\r\n" + ownHost() +
               "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
  }
  host::images::Bitmap picture(const std::string& parameters = "") const {
    const Answer answer = get("/picture.png?scale=1" + parameters);
    EXPECT_EQ(answer.status, 200) << answer.body;
    const auto decoded = host::images::decode(answer.body);
    return decoded ? *decoded.bitmap : host::images::Bitmap();
  }
  unsigned key(const std::string& parameters = "") const { return picture(parameters).at(5, 30); }
  unsigned behind(const std::string& parameters = "") const { return picture(parameters).at(0, 0); }

  /// Processes that the program has started, by what they are called.
  std::vector<pid_t> children(const std::string& name) const {
    std::vector<pid_t> found;
    std::ifstream file("/proc/" + std::to_string(server_) + "/task/" + std::to_string(server_) +
                       "/children");
    for (pid_t child = 0; file >> child;) {
      std::string called;
      std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm") >> std::ws, called);
      if (called == name) found.push_back(child);
    }
    return found;
  }

 private:
  pid_t server_ = 0;
  std::uint16_t port_ = 0;
};

inline constexpr unsigned kRed = 0xffff0000U;
inline constexpr unsigned kGreen = 0xff00ff00U;
inline constexpr unsigned kBlue = 0xff0000ffU;
inline constexpr unsigned kCyan = 0xff00ffffU;
