#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/positioned_file.h"

namespace kestrel::base {

/// The bytes of a file in order, through a small window into it: what is stepped over is not read, and what is large is
/// read straight to where it belongs. Every step past the end throws RuntimeFailure.
class RecordStream {
 public:
  /// `what`: the kind of the file, as messages name it: "tape".
  explicit RecordStream(std::string_view what) : noun(what) {}

  /// Starts at `position`; nothing behind the file's present end, or `limit` bytes on, can be read. The window is read
  /// afresh unless the stream stands there already.
  void Start(const PositionedFile& source, std::uint64_t from, std::uint64_t limit);
  /// What the window holds is read again: the file may have changed.
  void Forget() { windowBytes = 0; }
  std::uint64_t Position() const { return position; }
  /// Bytes before the end.
  std::uint64_t Left() const { return end - position; }

  /// The next `count` bytes, at most SmallestWindow of them, good until the next call.
  std::span<const std::byte> Take(std::size_t count) {
    if (!InWindow(count)) Refill(count);
    const std::span<const std::byte> taken(window.data() + (position - windowAt), count);
    position += count;
    return taken;
  }
  void Skip(std::uint64_t count) {
    // Most steps are of a few bytes, and there are thousands in a record.
    if (count > FarStep || count > Left()) return SkipFar(count);
    position += count;
  }
  void ReadTo(std::span<std::byte> into);

  /// RuntimeFailure about `part` ("an array") of the file: "an array of the tape `complaint`".
  [[noreturn]] void Refuse(std::string_view part, std::string_view complaint) const;

  /// Most that Take gives at once.
  static constexpr std::size_t SmallestWindow = 512;

 private:
  /// To read so many bytes takes about as long as to ask for others behind them. What is stepped over in one go is read
  /// when it is less.
  static constexpr std::uint64_t FarStep = 8 << 10;

  bool InWindow(std::size_t count) const {
    return position >= windowAt && position + count <= windowAt + windowBytes && position + count <= end;
  }
  void Refill(std::size_t count);
  void SkipFar(std::uint64_t count);
  void Require(std::uint64_t count) const;
  [[noreturn]] void RefuseEnd() const;

  std::string noun;
  const PositionedFile* file = nullptr;
  std::uint64_t position = 0;
  std::uint64_t end = 0;
  bool limited = false;         ///< `end` is the limit and not the end of the file
  std::uint64_t windowAt = 0;   ///< position of the window's first byte
  std::size_t windowBytes = 0;  ///< how many of it are good
  std::size_t nextWindow = 0;   ///< bytes to be read into it next, unless after a far step
  bool steppedFar = false;      ///< since the window was filled
  std::vector<std::byte> window;
};

}  // namespace kestrel::base
