#include "shell/link/qt_socket.h"

#include <QDeadlineTimer>
#include <QEvent>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QSocketNotifier>
#include <QTimer>
#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

#include <algorithm>
#include <system_error>

#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// Tells the peer that nothing more comes, while its own bytes can still be taken: closing outright with bytes unread
/// would reset the connection, and the farewell could be lost on the peer's side.
void EndSending(QTcpSocket& socket) {
  if (socket.socketDescriptor() < 0) return;
#ifdef Q_OS_WIN
  ::shutdown(static_cast<SOCKET>(socket.socketDescriptor()), SD_SEND);
#else
  ::shutdown(static_cast<int>(socket.socketDescriptor()), SHUT_WR);
#endif
}

/// Why the connection is broken, 0 when it is not. Takes nothing of what waits to be read.
int BrokenBy(const QTcpSocket& socket) {
#ifdef Q_OS_WIN
  char waiting = 0;
  if (::recv(static_cast<SOCKET>(socket.socketDescriptor()), &waiting, 1, MSG_PEEK) != SOCKET_ERROR) return 0;
  const int code = WSAGetLastError();
  return code == WSAEWOULDBLOCK ? 0 : code;
#else
  // Not by looking at what waits: that would make the system take more and more of it from a peer that nobody reads.
  int code = 0;
  socklen_t size = sizeof code;
  const int descriptor = static_cast<int>(socket.socketDescriptor());
  return ::getsockopt(descriptor, SOL_SOCKET, SO_ERROR, &code, &size) == 0 ? code : 0;
#endif
}

/// Qt tells a connection that was reset as one that the peer has closed. So this looks at it before Qt does, when the
/// system has something to say of it, and keeps what the system calls the fault, which it tells only once.
class FaultWatch final : public QObject {
 public:
  explicit FaultWatch(QTcpSocket& watched) : QObject(&watched), socket(watched) {}
  /// To be called when the connection stands.
  void Begin() {
    // Qt is told through these, which it has made for the connecting.
    for (QSocketNotifier* notifier : socket.findChildren<QSocketNotifier*>()) notifier->installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    const bool told = event->type() == QEvent::SockAct || event->type() == QEvent::SockClose;
    if (told && code == 0 && socket.socketDescriptor() >= 0) code = BrokenBy(socket);
    return false;
  }
  bool Broken() const { return code != 0; }
  QString Description() const { return QString::fromLocal8Bit(std::system_category().message(code)).trimmed(); }

 private:
  QTcpSocket& socket;
  int code = 0;
};

}  // namespace

QtSocket::~QtSocket() {
  Close();
  QDeadlineTimer farewell(FarewellMs);
  for (const QPointer<QTcpSocket>& old : leaving) {
    while (old && old->state() == QAbstractSocket::ConnectedState && !farewell.hasExpired()) {
      const bool moved = old->bytesToWrite() > 0 ? old->waitForBytesWritten(static_cast<int>(farewell.remainingTime()))
                                                 : old->waitForReadyRead(static_cast<int>(farewell.remainingTime()));
      if (!moved) break;
    }
    delete old.data();
  }
}

template <class Tell>
void QtSocket::Told(std::uint64_t connection, std::string_view event, Tell&& tell) {
  if (connection == present && events != nullptr) Guarded(debugLog, event, tell);
}

void QtSocket::Connect(const std::string& host, std::int32_t port) {
  Close();
  tcp = std::make_unique<QTcpSocket>();
  tcp->setProxy(QNetworkProxy::NoProxy);
  tcp->setReadBufferSize(ReadLimit);
  Listen();
  state = link::SocketState::Connecting;
  if (port >= 1 && port <= 65535) {
    tcp->connectToHost(FromBytes(host).trimmed(), static_cast<quint16>(port));
    return;
  }
  // No such port: told as the system tells a failed connect, from the event loop.
  const auto tellBadPort = [this, connection = present] {
    Told(connection, "Socket error", [this] {
      state = link::SocketState::Closing;
      events->OnError("The port is not a number from 1 to 65535.");
    });
  };
  QMetaObject::invokeMethod(tcp.get(), tellBadPort, Qt::QueuedConnection);
}

void QtSocket::Listen() {
  QTcpSocket* socket = tcp.get();
  const std::uint64_t connection = present;
  auto* const watch = new FaultWatch(*socket);
  const auto onConnected = [this, socket, connection] {
    Told(connection, "Socket connect", [this, socket] {
      socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
      socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
      state = link::SocketState::Connected;
      events->OnConnect();
    });
  };
  const auto onReadyRead = [this, connection] {
    Told(connection, "Socket data arrival", [this] { events->OnDataArrival(); });
  };
  const auto onError = [this, socket, watch, connection](QAbstractSocket::SocketError error) {
    if (connection == dropped) {
      dropped = 0;
      Told(present, "Socket end", [this] { events->OnClose(); });
      return;
    }
    Told(connection, "Socket end", [this, socket, watch, error] {
      state = link::SocketState::Closing;
      if (watch->Broken()) {
        events->OnError(ToBytes(watch->Description()));
      } else if (error == QAbstractSocket::RemoteHostClosedError) {
        events->OnClose();
      } else {
        events->OnError(ToBytes(socket->errorString()));
      }
    });
  };
  // At once, so that nothing of the connection is told before.
  QObject::connect(socket, &QTcpSocket::connected, socket, [watch] { watch->Begin(); });
  QObject::connect(socket, &QTcpSocket::connected, socket, onConnected, Qt::QueuedConnection);
  QObject::connect(socket, &QTcpSocket::readyRead, socket, onReadyRead, Qt::QueuedConnection);
  QObject::connect(socket, &QTcpSocket::errorOccurred, socket, onError, Qt::QueuedConnection);
}

void QtSocket::Send(std::string_view bytes) {
  if (state != link::SocketState::Connected || tcp->state() != QAbstractSocket::ConnectedState) return;
  tcp->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::size_t QtSocket::Read(std::string& to, std::size_t limit) {
  if (!tcp) return 0;
  const std::size_t waiting = static_cast<std::size_t>(std::max<qint64>(tcp->bytesAvailable(), 0));
  const std::size_t count = std::min(waiting, limit);
  if (count == 0) return 0;
  const std::size_t before = to.size();
  to.resize(before + count);
  const qint64 got = tcp->read(to.data() + before, static_cast<qint64>(count));
  const std::size_t taken = static_cast<std::size_t>(std::max<qint64>(got, 0));
  to.resize(before + taken);
  return taken;
}

void QtSocket::Drop() {
  const std::uint64_t connection = state == link::SocketState::Connected ? present : 0;
  Close();
  dropped = connection;
}

void QtSocket::Close() {
  state = link::SocketState::Closed;
  ++present;
  dropped = 0;
  std::erase_if(leaving, [](const QPointer<QTcpSocket>& old) { return old.isNull(); });
  if (!tcp) return;
  QTcpSocket* old = tcp.release();
  if (old->state() != QAbstractSocket::ConnectedState) {
    // Not from within its own signal, which may be what runs this.
    old->deleteLater();
    leaving.emplace_back(old);
    return;
  }
  // Queued, so behind the peer's end, which is still told of a dropped connection.
  QObject::connect(old, &QTcpSocket::disconnected, old, &QObject::deleteLater, Qt::QueuedConnection);
  QObject::connect(old, &QTcpSocket::readyRead, old, [old] { old->readAll(); });
  QObject::connect(old, &QTcpSocket::bytesWritten, old, [old] {
    if (old->bytesToWrite() == 0) EndSending(*old);
  });
  QTimer::singleShot(LingerMs, old, [old] {
    old->abort();
    old->deleteLater();
  });
  leaving.emplace_back(old);
  old->flush();
  old->readAll();
  if (old->bytesToWrite() == 0) EndSending(*old);
}

}  // namespace kestrel::shell
