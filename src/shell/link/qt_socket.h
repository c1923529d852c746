#pragma once

#include <QPointer>
#include <QTcpSocket>
#include <memory>
#include <vector>

#include "base/debug_log.h"
#include "link/socket.h"

namespace kestrel::shell {

/// The session's TCP socket. Events are told from the event loop only, so that no Socket call is answered from within.
/// A connection that is closed is handed over to finish by itself: what was sent still leaves, nothing of it is told
/// any more, but for the peer's end of one that was dropped.
class QtSocket final : public link::Socket {
 public:
  /// Bytes that wait unread in the program; beyond it TCP slows the peer down.
  static constexpr qint64 ReadLimit = 1 << 20;
  /// A handed-over connection that the peer does not end is cut after this time, milliseconds; the cut is not told.
  static constexpr int LingerMs = 3000;
  /// At the end of the program this long is waited in all for sent bytes to leave, milliseconds.
  static constexpr int FarewellMs = 500;

  /// `log` outlives the socket.
  explicit QtSocket(base::DebugLog& log) : debugLog(log) {}
  ~QtSocket() override;

  void SetEvents(link::SocketEvents* receiver) override { events = receiver; }
  link::SocketState State() const override { return state; }
  void Connect(const std::string& host, std::int32_t port) override;
  void Send(std::string_view bytes) override;
  std::size_t Read(std::string& to, std::size_t limit) override;
  void Close() override;
  void Drop() override;

 private:
  void Listen();
  /// Runs `tell` within the guard, unless `connection` is not the present one any more.
  template <class Tell>
  void Told(std::uint64_t connection, std::string_view event, Tell&& tell);

  base::DebugLog& debugLog;
  link::SocketEvents* events = nullptr;
  link::SocketState state = link::SocketState::Closed;
  std::unique_ptr<QTcpSocket> tcp;
  std::uint64_t present = 0;  ///< number of the present connection: what is still queued of an older one is not told
  std::uint64_t dropped = 0;  ///< number of the connection whose peer's end is still told, 0 for none
  std::vector<QPointer<QTcpSocket>> leaving;
};

}  // namespace kestrel::shell
