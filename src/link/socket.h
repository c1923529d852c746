#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrel::link {

enum class SocketState { Closed, Connecting, Connected, Closing };

/// What happens on the socket, told to the session. The calls come from the event loop, never from inside a Socket
/// call.
class SocketEvents {
 public:
  virtual ~SocketEvents() = default;
  virtual void OnConnect() = 0;
  /// Bytes wait to be read. Told again after a Read only when more arrive.
  virtual void OnDataArrival() = 0;
  /// The peer has closed; what it sent before can still be read.
  virtual void OnClose() = 0;
  /// A failed connect or a broken connection, with the system's description.
  virtual void OnError(const std::string& description) = 0;
};

/// Seam: one TCP client socket.
class Socket {
 public:
  virtual ~Socket() = default;
  virtual void SetEvents(SocketEvents* receiver) = 0;
  virtual SocketState State() const = 0;
  virtual void Connect(const std::string& host, std::int32_t port) = 0;
  virtual void Send(std::string_view bytes) = 0;
  /// Appends at most `limit` waiting bytes to `to`; returns how many. What is not read waits (the peer is slowed down
  /// by TCP itself), so memory is bounded.
  virtual std::size_t Read(std::string& to, std::size_t limit) = 0;
  /// Sends what has been handed over, then closes. State() is Closed at once and no event of this connection follows.
  virtual void Close() = 0;
  /// Closes as Close does, but when the peer of a connection that stood ends its side later, OnClose tells it, unless
  /// a Connect or Close comes first.
  virtual void Drop() = 0;
};

}  // namespace kestrel::link
