#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The only place that speaks to sockets. None of them blocks; WaitFor lets the toolkit's events run.
namespace kestrel::sim {

/// One connection; closed when it goes.
class Socket {
 public:
  /// Without delay of small sends.
  explicit Socket(QTcpSocket* accepted);

  /// Bytes taken, 0 when none are taken now, nothing when the connection is gone.
  std::optional<std::size_t> Send(std::string_view bytes);
  bool HasRoom() const;
  /// What has arrived, empty when nothing has; nothing when the peer has closed or the connection is gone.
  std::optional<std::string> Receive();
  /// Closes once all that was taken is sent.
  void EndSending();
  QTcpSocket& Wire() const { return *wire; }

 private:
  std::unique_ptr<QTcpSocket> wire;
};

/// Listens on 127.0.0.1 only.
class Listener {
 public:
  /// 0: any free port. std::runtime_error when that cannot be had.
  explicit Listener(std::uint16_t port);
  std::uint16_t Port() const { return server.serverPort(); }
  /// The next connection that waits; nothing when none does.
  std::optional<Socket> Accept();
  QTcpServer& Wire() { return server; }

 private:
  QTcpServer server;
};

/// Waits until something arrives at one of them, one of them has sent what it had, somebody connects, or the time is
/// over.
void WaitFor(Listener& listener, const std::vector<const Socket*>& sockets, std::chrono::nanoseconds most);

}  // namespace kestrel::sim
