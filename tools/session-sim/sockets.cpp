#include "session-sim/sockets.h"

#include <QEventLoop>
#include <QHostAddress>
#include <QTimer>
#include <algorithm>
#include <stdexcept>

namespace kestrel::sim {
namespace {

/// Most bytes that the toolkit keeps of a connection until the system takes them; what does not fit waits in its
/// Outbox, which is where a reader that has stopped reading is noticed.
constexpr qint64 MostWaiting = 64 << 10;

}  // namespace

Socket::Socket(QTcpSocket* accepted) : wire(accepted) {
  wire->setParent(nullptr);
  wire->setSocketOption(QAbstractSocket::LowDelayOption, 1);
}

std::optional<std::size_t> Socket::Send(std::string_view bytes) {
  if (wire->state() != QAbstractSocket::ConnectedState) return std::nullopt;
  const qint64 room = MostWaiting - wire->bytesToWrite();
  if (room <= 0) return 0;
  const qint64 taken = wire->write(bytes.data(), std::min<qint64>(room, static_cast<qint64>(bytes.size())));
  if (taken < 0) return std::nullopt;
  // At once, so that pieces that are to arrive apart do.
  wire->flush();
  return static_cast<std::size_t>(taken);
}

bool Socket::HasRoom() const { return wire->bytesToWrite() < MostWaiting; }

std::optional<std::string> Socket::Receive() {
  const QByteArray arrived = wire->readAll();
  if (arrived.isEmpty() && wire->state() == QAbstractSocket::UnconnectedState) return std::nullopt;
  return arrived.toStdString();
}

void Socket::EndSending() { wire->disconnectFromHost(); }

Listener::Listener(std::uint16_t port) {
  if (!server.listen(QHostAddress::LocalHost, port)) throw std::runtime_error(server.errorString().toStdString());
}

std::optional<Socket> Listener::Accept() {
  QTcpSocket* accepted = server.nextPendingConnection();
  if (accepted == nullptr) return std::nullopt;
  return Socket(accepted);
}

void WaitFor(Listener& listener, const std::vector<const Socket*>& sockets, std::chrono::nanoseconds most) {
  QEventLoop loop;
  const auto ready = [&loop] { loop.quit(); };
  QObject::connect(&listener.Wire(), &QTcpServer::newConnection, &loop, ready);
  for (const Socket* socket : sockets) {
    QObject::connect(&socket->Wire(), &QTcpSocket::readyRead, &loop, ready);
    QObject::connect(&socket->Wire(), &QTcpSocket::bytesWritten, &loop, ready);
    QObject::connect(&socket->Wire(), &QTcpSocket::disconnected, &loop, ready);
  }
  QTimer limit;
  limit.setSingleShot(true);
  limit.setTimerType(Qt::PreciseTimer);
  QObject::connect(&limit, &QTimer::timeout, &loop, ready);
  limit.start(std::max(std::chrono::milliseconds(0), std::chrono::duration_cast<std::chrono::milliseconds>(most)));
  loop.exec();
}

}  // namespace kestrel::sim
