#include "base/record_stream.h"

#include <algorithm>

#include "base/failure.h"

namespace kestrel::base {
namespace {

/// What stands at the start of a record is read at once.
constexpr std::size_t FirstWindow = 16 << 10;
constexpr std::size_t LargestWindow = 64 << 10;

}  // namespace

void RecordStream::Start(const PositionedFile& source, std::uint64_t from, std::uint64_t limit) {
  if (&source != file || from != position) windowBytes = 0;
  file = &source;
  position = from;
  const std::uint64_t size = source.Size();
  nextWindow = FirstWindow;
  steppedFar = false;
  limited = from <= size && size - from > limit;
  end = limited ? from + limit : std::max(size, from);
}

void RecordStream::Require(std::uint64_t count) const {
  if (count <= Left()) return;
  if (limited) Refuse("a record", "is larger than it may be");
  RefuseEnd();
}

void RecordStream::Refuse(std::string_view part, std::string_view complaint) const {
  throw RuntimeFailure(std::string(part) + " of the " + noun + " " + std::string(complaint));
}

void RecordStream::RefuseEnd() const { throw RuntimeFailure("the " + noun + " ends within a record"); }

void RecordStream::Refill(std::size_t count) {
  Require(count);
  const std::size_t size = steppedFar ? SmallestWindow : nextWindow;
  nextWindow = std::min(LargestWindow, 4 * size);
  steppedFar = false;
  window.resize(LargestWindow);
  windowAt = position;
  windowBytes = file->Read(position, std::span(window).first(std::min<std::uint64_t>(size, Left())));
  // The file has become shorter since its size was taken.
  if (!InWindow(count)) RefuseEnd();
}

void RecordStream::SkipFar(std::uint64_t count) {
  Require(count);
  position += count;
  if (count > FarStep) steppedFar = true;
}

void RecordStream::ReadTo(std::span<std::byte> into) {
  Require(into.size());
  if (into.size() <= SmallestWindow) {
    const std::span<const std::byte> taken = Take(into.size());
    std::copy(taken.begin(), taken.end(), into.begin());
    return;
  }
  if (file->Read(position, into) != into.size()) RefuseEnd();
  position += into.size();
  steppedFar = true;
}

}  // namespace kestrel::base
