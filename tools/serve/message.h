#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace tools::serve {

using Json = nlohmann::ordered_json;

/// What the server and a keyboard's process tell each other, one after the other.
struct Message {
  Json head;
  std::string bytes = {};  ///< a picture, or a report as text
};

/// False when the other side is gone, or doesn't read for as long as the socket waits.
bool send(int socket, const Message& message);

/// None when the other side is gone, says nothing for as long as the socket waits, or says what is
/// no message.
std::optional<Message> receive(int socket);

}  // namespace tools::serve
