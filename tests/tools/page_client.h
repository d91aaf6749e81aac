#pragma once

// A browser's side of a connection, byte by byte: what no browser would say can be said too.

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <cstdint>
#include <netinet/in.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

#include "host/files/descriptor.h"

/// What came back.
struct Answer {
  int status = 0;  ///< 0: nothing
  std::string head;
  std::string body;

  nlohmann::json json() const { return nlohmann::json::parse(body, nullptr, false); }
  bool says(const std::string& header) const { return head.find(header) != head.npos; }
};

/// A connection to this machine; reading gives up after some seconds.
class Connection {
 public:
  explicit Connection(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    const timeval limit{.tv_sec = 20, .tv_usec = 0};
    ::setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    isOpen_ =
        ::connect(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }

  bool isOpen() const { return isOpen_; }
  void send(const std::string& bytes) const {
    ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  }
  void finish() const { ::shutdown(socket_.get(), SHUT_WR); }

  /// Everything up to `mark`, which is taken too; what there was when the other side ends.
  std::string readTo(const std::string& mark) {
    while (read_.find(mark) == read_.npos && readMore()) {
    }
    const auto end = std::min(read_.find(mark), read_.size());
    std::string taken = read_.substr(0, std::min(end + mark.size(), read_.size()));
    read_.erase(0, taken.size());
    return taken;
  }

  Answer readAnswer() {
    Answer answer;
    answer.head = readTo("\r\n\r\n");
    constexpr std::size_t kBeforeStatus = 9;
    if (answer.head.size() > kBeforeStatus) {
      answer.status =
          static_cast<int>(std::strtol(answer.head.c_str() + kBeforeStatus, nullptr, 10));
    }
    const auto said = answer.head.find("Content-Length: ");
    if (said == answer.head.npos) return answer;
    const std::size_t length = std::strtoul(answer.head.c_str() + said + 16, nullptr, 10);
    while (read_.size() < length && readMore()) {
    }
    answer.body = read_.substr(0, length);
    read_.erase(0, length);
    return answer;
  }

 private:
  bool readMore() {
    std::array<char, 65536> bytes{};
    const ssize_t size = ::recv(socket_.get(), bytes.data(), bytes.size(), 0);
    if (size > 0) read_.append(bytes.data(), static_cast<std::size_t>(size));
    return size > 0;
  }

  host::files::Descriptor socket_;
  bool isOpen_ = false;
  std::string read_;
};

/// One page's stream of events.
class EventStream {
 public:
  explicit EventStream(std::uint16_t port) : connection_(port) {
    connection_.send("GET /events HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                     "\r\n\r\n");
    head_ = connection_.readTo("\r\n\r\n");
  }

  const std::string& head() const { return head_; }

  /// The data of the next event of that name that `fits`; null when the stream ends before.
  template <class Fits>
  nlohmann::json next(const std::string& name, const Fits& fits) {
    // Heartbeats come for ever.
    const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::chrono::steady_clock::now() < latest) {
      const std::string text = connection_.readTo("\n\n");
      if (!text.ends_with("\n\n")) return nullptr;
      const std::string start = "event: " + name + "\ndata: ";
      if (!text.starts_with(start)) continue;
      auto data = nlohmann::json::parse(text.substr(start.size()), nullptr, false);
      if (fits(data)) return data;
    }
    return nullptr;
  }
  /// The state of the theme from version `version` on.
  nlohmann::json version(int version) {
    return next("version", [version](const nlohmann::json& data) {
      return data["look"] == "theme" && data["version"] >= version;
    });
  }

 private:
  Connection connection_;
  std::string head_;
};
