#include "session-sim/sockets.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <system_error>
#include <utility>

namespace kestrel::sim {
namespace {

[[noreturn]] void Fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

void SetOption(int handle, int level, int option) {
  const int on = 1;
  if (::setsockopt(handle, level, option, &on, sizeof on) != 0) Fail("setsockopt");
}

bool IsForLater(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

}  // namespace

Socket& Socket::operator=(Socket&& other) noexcept {
  std::swap(handle, other.handle);
  return *this;
}

Socket::~Socket() {
  if (handle >= 0) ::close(handle);
}

std::optional<std::size_t> Socket::Send(std::string_view bytes) {
  const ssize_t sent = ::send(handle, bytes.data(), bytes.size(), MSG_NOSIGNAL);
  if (sent >= 0) return static_cast<std::size_t>(sent);
  if (IsForLater(errno)) return 0;
  return std::nullopt;
}

std::optional<std::string> Socket::Receive() {
  std::array<char, 4096> buffer;
  const ssize_t count = ::recv(handle, buffer.data(), buffer.size(), 0);
  if (count > 0) return std::string(buffer.data(), static_cast<std::size_t>(count));
  if (count < 0 && IsForLater(errno)) return std::string();
  return std::nullopt;
}

void Socket::EndSending() { ::shutdown(handle, SHUT_WR); }

Socket Listen(std::uint16_t port) {
  Socket listener(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (listener.Handle() < 0) Fail("socket");
  SetOption(listener.Handle(), SOL_SOCKET, SO_REUSEADDR);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::bind(listener.Handle(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) Fail("bind");
  if (::listen(listener.Handle(), 16) != 0) Fail("listen");
  return listener;
}

std::uint16_t PortOf(const Socket& listener) {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  if (::getsockname(listener.Handle(), reinterpret_cast<sockaddr*>(&address), &size) != 0) Fail("getsockname");
  return ntohs(address.sin_port);
}

std::optional<Socket> Accept(const Socket& listener) {
  const int handle = ::accept4(listener.Handle(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (handle < 0) return std::nullopt;
  Socket socket(handle);
  SetOption(handle, IPPROTO_TCP, TCP_NODELAY);
  return socket;
}

void WaitFor(std::vector<Watch>& watches, std::chrono::nanoseconds most) {
  std::vector<pollfd> polled;
  for (const Watch& watch : watches) {
    polled.push_back({watch.On->Handle(), static_cast<short>(POLLIN | (watch.Writable ? POLLOUT : 0)), 0});
  }
  if (most.count() < 0) most = std::chrono::nanoseconds(0);
  const timespec limit = {static_cast<time_t>(most.count() / 1000000000), static_cast<long>(most.count() % 1000000000)};
  const int ready = ::ppoll(polled.data(), polled.size(), &limit, nullptr);
  for (std::size_t k = 0; k < watches.size(); ++k) {
    watches[k].CanRead = ready > 0 && (polled[k].revents & ~POLLOUT) != 0;
    watches[k].CanWrite = ready > 0 && (polled[k].revents & POLLOUT) != 0;
  }
}

}  // namespace kestrel::sim
