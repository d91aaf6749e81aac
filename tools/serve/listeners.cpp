#include "serve/listeners.h"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <utility>

namespace tools::serve {

using host::files::Descriptor;
using host::files::Failure;
using host::files::Result;

namespace {

template <class Address>
Result<Descriptor> listenAt(const Address& address, int family) {
  Descriptor socket(::socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket) return host::files::lastFailure();
  const int one = 1;
  ::setsockopt(socket.get(), SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
  if (family == AF_INET6) ::setsockopt(socket.get(), IPPROTO_IPV6, IPV6_V6ONLY, &one, sizeof one);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as the call wants it
  const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
  if (::bind(socket.get(), generic, sizeof address) != 0 ||
      ::listen(socket.get(), SOMAXCONN) != 0) {
    return host::files::lastFailure();
  }
  return socket;
}

Result<Descriptor> listenOnFour(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return listenAt(address, AF_INET);
}

Result<Descriptor> listenOnSix(std::uint16_t port) {
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  address.sin6_port = htons(port);
  address.sin6_addr = in6addr_loopback;
  return listenAt(address, AF_INET6);
}

std::uint16_t portOf(const Descriptor& socket) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): as the call wants it
  ::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

}  // namespace

Result<Listeners> Listeners::open(std::uint16_t port) {
  // Another program may have the port that is free on one address on the other.
  constexpr int kTries = 8;
  for (int tries = 1;; ++tries) {
    auto four = listenOnFour(port);
    if (!four) return four.failure();
    Listeners listeners;
    listeners.port = portOf(*four);
    listeners.sockets.push_back(*std::move(four));
    auto six = listenOnSix(listeners.port);
    const bool isTaken = !six && six.failure().error == EADDRINUSE;
    if (isTaken && port == 0 && tries < kTries) continue;
    if (isTaken) return Failure(EADDRINUSE, "[::1]: " + six.reason());
    if (six) listeners.sockets.push_back(*std::move(six));
    return listeners;
  }
}

}  // namespace tools::serve
