#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace kestrel::sim {

using Clock = std::chrono::steady_clock;

/// What waits to be sent on a connection: pieces, each for a send of its own and not before its time.
class Outbox {
 public:
  void Add(std::string piece, Clock::time_point due) {
    bytes += piece.size();
    pieces.push_back({std::move(piece), due});
  }
  bool Empty() const { return pieces.empty(); }
  std::size_t Bytes() const { return bytes; }
  /// When the first piece may go; there must be one.
  Clock::time_point Due() const { return pieces.front().Due; }
  /// What is left of the first piece; there must be one.
  std::string_view Front() const { return std::string_view(pieces.front().Text).substr(sent); }
  /// Takes `count` bytes off the first piece.
  void Taken(std::size_t count) {
    sent += count;
    bytes -= count;
    if (sent < pieces.front().Text.size()) return;
    pieces.pop_front();
    sent = 0;
  }

 private:
  struct Piece {
    std::string Text;
    Clock::time_point Due;
  };
  std::deque<Piece> pieces;
  std::size_t sent = 0;  ///< bytes of the first piece
  std::size_t bytes = 0;
};

}  // namespace kestrel::sim
