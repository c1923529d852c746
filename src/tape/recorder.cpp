#include "tape/recorder.h"

#include <cmath>
#include <cstddef>
#include <numeric>
#include <span>
#include <utility>

#include "base/clock.h"
#include "base/failure.h"
#include "base/files.h"
#include "base/numbers.h"

namespace kestrel::tape {
namespace {

/// Records over which the cycle is taken: at most, and at least.
constexpr std::size_t RecentRecords = 60, FewestRecords = 10;
constexpr double MillisecondsPerMinute = 60'000;
/// What a cycle adds to the history of each client: a position of two numbers.
constexpr std::size_t GrowthOfClient = 2 * sizeof(double);

}  // namespace

std::string TapeFileName(double now) {
  const base::CalendarTime time = base::CalendarOf(now);
  std::string name;
  const auto twoDigits = [&name](int number) { base::AppendFormat(name, number, "00"); };
  twoDigits(time.Day);
  name += '-';
  twoDigits(time.Month);
  name += '-';
  twoDigits(time.Year % 100);
  name += '_';
  twoDigits(time.Hour);
  twoDigits(time.Minute);
  twoDigits(time.Second);
  return name + ".tap";
}

void Recorder::RecordingStart(const std::filesystem::path& folder, double now, const TapeHeader& start) {
  base::MakeFolder(folder);
  path = folder / TapeFileName(now);
  count = 0;
  size = 0;
  countWritten = false;
  cycles.clear();
  // Two starts in one second share a name: the second writes over the first. This stands.
  base::PositionedFile fresh(path, base::PositionedFile::Mode::Replace);
  TapeHeader header = start;
  header.RecordCount = 0;
  header.StartTime = now;
  try {
    fresh.Write(0, std::as_bytes(std::span(writer.Header(header))));
  } catch (...) {
    fresh = {};
    base::DeleteFile(path);
    throw;
  }
  size = FirstRecordAt;
  file = std::move(fresh);
}

void Recorder::ComputeRecData(const link::Tables& tables, double now, std::int32_t SyncInterval) {
  if (!Recording()) return;
  const std::span<std::span<const std::byte>> pieces = writer.Record(now, tables);
  std::uint64_t bytes = 0;
  for (const auto& piece : pieces) bytes += piece.size();
  try {
    file.Write(size, pieces);
  } catch (const base::RuntimeFailure&) {
    CloseAfterFailure(SyncInterval);
    throw;
  }
  size += bytes;
  ++count;
  lastBytes = bytes;
  lastClients = tables.Clients.UpperBound();
  if (SyncInterval > 0) cycles.push_back(SyncInterval);
  if (cycles.size() > RecentRecords) cycles.pop_front();
}

void Recorder::CloseAfterFailure(std::int32_t SyncInterval) {
  try {
    file.CutTo(size);
  } catch (const base::RuntimeFailure&) {
    // The part of a record that stays is not counted, so nobody reads it.
  }
  try {
    RecordingEnd(SyncInterval);
  } catch (const base::RuntimeFailure&) {
    // The failure that led here is told, and CountWritten tells of this one.
  }
}

void Recorder::RecordingEnd(std::int32_t SyncInterval) {
  if (!Recording()) return;
  // Closed whatever happens.
  base::PositionedFile closing = std::move(file);
  file = {};
  base::BinaryWriter head;
  head.I32(count);
  head.I32(SyncInterval);
  closing.Write(RecordCountAt, std::as_bytes(std::span(head.Bytes())));
  closing.Close();
  countWritten = true;
}

std::optional<double> Recorder::MinutesLeft(std::uint64_t freeBytes) const {
  if (cycles.size() < FewestRecords) return std::nullopt;
  const auto bytes = static_cast<double>(lastBytes);
  const auto growth = static_cast<double>(GrowthOfClient * lastClients);
  const double cycle =
      std::accumulate(cycles.begin(), cycles.end(), 0.0) / static_cast<double>(cycles.size()) / MillisecondsPerMinute;
  // n records more take n * bytes + n * (n + 1) / 2 * growth; the root in the form that knows growth 0.
  const auto room = static_cast<double>(freeBytes);
  const double linear = bytes + growth / 2;
  const double records = 2 * room / (linear + std::sqrt(linear * linear + 2 * growth * room));
  return records * cycle;
}

}  // namespace kestrel::tape
