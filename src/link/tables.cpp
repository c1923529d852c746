#include "link/tables.h"

#include <algorithm>
#include <utility>

namespace kestrel::link {
namespace {

constexpr std::size_t IdCount = 65536;

std::size_t PlaceOf(std::int16_t id) { return static_cast<std::size_t>(id + 32768); }

}  // namespace

std::size_t Tables::FindClient(std::int16_t id) const {
  const std::size_t place = holders.empty() ? 0 : holders[PlaceOf(id)].First;
  return place == 0 ? 0 : Clients.IndexAt(place);
}

Tables::Holders& Tables::HoldersOf(std::int16_t id) {
  if (holders.empty()) holders.resize(IdCount);
  return holders[PlaceOf(id)];
}

void Tables::RebuildIndex() {
  holders.assign(IdCount, {});
  nextHolder.clear();
  for (std::size_t index = 1; index <= Clients.UpperBound(); ++index) IndexClient(index);
  untouched = {};
  ++edition;
}

void Tables::IndexLast() {
  IndexClient(Clients.UpperBound());
  untouched.Back = 0;
}

/// Later ones of an Id come later.
void Tables::IndexClient(std::size_t index) {
  const auto place = static_cast<std::uint32_t>(Clients.PlaceOf(index));
  Holders& same = HoldersOf(Clients[index].Id);
  nextHolder.resize(place + 1);
  (same.First == 0 ? same.First : nextHolder[same.Last]) = place;
  same.Last = place;
}

void Tables::Touch(std::size_t index) {
  untouched.Front = std::min(untouched.Front, index - 1);
  untouched.Back = std::min(untouched.Back, Clients.UpperBound() - index);
}

void Tables::TakeOut(std::size_t index) {
  Touch(index);
  ++edition;
  Holders& same = HoldersOf(Clients[index].Id);
  same.First = nextHolder[same.First];
  if (!Clients.Remove(index)) return;
  const UntouchedClients before = untouched;
  RebuildIndex();  // the places are others, the clients are not
  untouched = before;
}

void Tables::Clear() {
  Clients.Clear();
  AIPlots.Clear();
  AIHistory.Clear();
  std::fill(holders.begin(), holders.end(), Holders());
  nextHolder.clear();
  untouched = {};
  ++edition;
}

UntouchedClients Tables::TakeUntouched() {
  return std::exchange(untouched, {Clients.UpperBound(), Clients.UpperBound()});
}

}  // namespace kestrel::link
