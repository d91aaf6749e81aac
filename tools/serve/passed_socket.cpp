#include "serve/passed_socket.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <sys/socket.h>

namespace tools::serve {

namespace {

constexpr std::size_t kLongest = std::size_t{64} << 10U;

/// Room for one descriptor beside a message.
struct alignas(cmsghdr) Room {
  char bytes[CMSG_SPACE(sizeof(int))];
};

}  // namespace

bool pass(int channel, const std::string& text, int socket) {
  iovec part{const_cast<char*>(text.data()), text.size()};
  Room room{};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  if (socket >= 0) {
    message.msg_control = room.bytes;
    message.msg_controllen = sizeof room.bytes;
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof(int));
    std::memcpy(CMSG_DATA(header), &socket, sizeof socket);
  }
  ssize_t sent = -1;
  do {
    sent = ::sendmsg(channel, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
  } while (sent < 0 && errno == EINTR);
  return sent == static_cast<ssize_t>(text.size());
}

std::optional<Passed> takePassed(int channel) {
  Passed passed{std::string(kLongest, '\0'), {}};
  iovec part{passed.text.data(), passed.text.size()};
  Room room{};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = room.bytes;
  message.msg_controllen = sizeof room.bytes;
  ssize_t size = -1;
  do {
    size = ::recvmsg(channel, &message, MSG_CMSG_CLOEXEC);
  } while (size < 0 && errno == EINTR);
  if (size <= 0) return std::nullopt;
  passed.text.resize(static_cast<std::size_t>(size));
  const cmsghdr* const header = CMSG_FIRSTHDR(&message);
  if (header && header->cmsg_type == SCM_RIGHTS) {
    int socket = -1;
    std::memcpy(&socket, CMSG_DATA(header), sizeof socket);
    passed.socket = host::files::Descriptor(socket);
  }
  return passed;
}

}  // namespace tools::serve
