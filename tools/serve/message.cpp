#include "serve/message.h"

#include <array>
#include <cstdint>

#include "descriptor_io.h"

namespace tools::serve {

namespace {

/// More than the largest picture, or the report of the most careless theme, has.
constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 28U;

using Sizes = std::array<std::uint64_t, 2>;

}  // namespace

bool send(int socket, const Message& message) {
  const std::string head = message.head.dump(-1, ' ', false, Json::error_handler_t::replace);
  const Sizes sizes = {head.size(), message.bytes.size()};
  return writeAll(socket, sizes.data(), sizeof sizes) &&
         writeAll(socket, head.data(), head.size()) &&
         writeAll(socket, message.bytes.data(), message.bytes.size());
}

std::optional<Message> receive(int socket) {
  Sizes sizes{};
  if (!readAll(socket, sizes.data(), sizeof sizes)) return std::nullopt;
  if (sizes[0] > kMostBytes || sizes[1] > kMostBytes) return std::nullopt;
  std::string head(sizes[0], '\0');
  Message message{Json(), std::string(sizes[1], '\0')};
  if (!readAll(socket, head.data(), head.size()) ||
      !readAll(socket, message.bytes.data(), message.bytes.size())) {
    return std::nullopt;
  }
  message.head = Json::parse(head, nullptr, false);
  if (!message.head.is_object()) return std::nullopt;
  return message;
}

}  // namespace tools::serve
