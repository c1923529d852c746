#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "link/socket.h"

namespace kestrel::doubles {

/// A socket whose peer is the test.
class FakeSocket final : public link::Socket {
 public:
  // The station's side.
  void SetEvents(link::SocketEvents* receiver) override { events = receiver; }
  link::SocketState State() const override { return state; }
  void Connect(const std::string& host, std::int32_t port) override {
    dropped = false;
    Host = host;
    Port = port;
    ++Connects;
    state = link::SocketState::Connecting;
    Log.push_back("connect " + host + ":" + std::to_string(port));
  }
  void Send(std::string_view bytes) override {
    Sent.append(bytes);
    Log.push_back("send " + std::string(bytes.substr(0, bytes.find('\0'))));
  }
  std::size_t Read(std::string& to, std::size_t limit) override {
    const std::size_t count = std::min(limit, waiting.size() - taken);
    to.append(waiting, taken, count);
    taken += count;
    if (taken == waiting.size()) {
      waiting.clear();
      taken = 0;
    }
    return count;
  }
  void Close() override {
    if (state != link::SocketState::Closed) Log.push_back("close");
    state = link::SocketState::Closed;
    dropped = false;
    waiting.clear();
    taken = 0;
  }
  void Drop() override {
    const bool stood = state == link::SocketState::Connected;
    Close();
    dropped = stood;
  }

  // The peer's side. Nothing reaches a closed socket, but for the peer's end of a dropped connection.
  void Accept() {
    if (state != link::SocketState::Connecting) return;
    state = link::SocketState::Connected;
    if (events) events->OnConnect();
  }
  void Arrive(std::string_view bytes) {
    if (state != link::SocketState::Connected) return;
    waiting.append(bytes);
    if (events) events->OnDataArrival();
  }
  void PeerCloses() {
    if (dropped) {
      dropped = false;
    } else if (state != link::SocketState::Connected) {
      return;
    } else {
      state = link::SocketState::Closing;
    }
    if (events) events->OnClose();
  }
  void Fail(const std::string& description) {
    if (state == link::SocketState::Closed) return;
    state = link::SocketState::Closing;
    if (events) events->OnError(description);
  }
  std::size_t Unread() const { return waiting.size() - taken; }

  std::string Sent;              ///< all bytes handed over
  std::vector<std::string> Log;  ///< "connect host:port", "send WORDdata", "close" in order
  std::string Host;              ///< of the last Connect
  std::int32_t Port = 0;         ///< of the last Connect
  int Connects = 0;              ///< calls of Connect

 private:
  link::SocketEvents* events = nullptr;
  link::SocketState state = link::SocketState::Closed;
  bool dropped = false;  ///< the peer of a dropped connection has not ended it yet
  std::string waiting;
  std::size_t taken = 0;
};

}  // namespace kestrel::doubles
