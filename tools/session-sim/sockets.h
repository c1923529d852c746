#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The only place that speaks to the operating system's sockets. All of them are non-blocking.
namespace kestrel::sim {

/// Owns a socket; closes it when it goes.
class Socket {
 public:
  Socket() = default;
  explicit Socket(int opened) : handle(opened) {}
  Socket(Socket&& other) noexcept : handle(other.handle) { other.handle = -1; }
  Socket& operator=(Socket&& other) noexcept;
  ~Socket();
  int Handle() const { return handle; }

  /// Bytes taken by the system, 0 when it takes none now, nothing when the connection is gone.
  std::optional<std::size_t> Send(std::string_view bytes);
  /// What has arrived, empty when nothing has; nothing when the peer has closed or the connection is gone.
  std::optional<std::string> Receive();
  /// Says that nothing more will be sent; what is under way still arrives.
  void EndSending();

 private:
  int handle = -1;
};

/// Listens on 127.0.0.1 only. std::system_error when that fails.
Socket Listen(std::uint16_t port);
std::uint16_t PortOf(const Socket& listener);
/// The next connection that waits, without delay of small sends; nothing when none does.
std::optional<Socket> Accept(const Socket& listener);

/// A socket to wait for.
struct Watch {
  const Socket* On = nullptr;
  bool Writable = false;  ///< wait for room to send, too
  bool CanRead = false;   ///< set by WaitFor; also when the connection is gone
  bool CanWrite = false;  ///< set by WaitFor
};
/// Waits until one of them is ready, a signal comes or the time is over.
void WaitFor(std::vector<Watch>& watches, std::chrono::nanoseconds most);

}  // namespace kestrel::sim
