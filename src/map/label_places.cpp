#include "map/label_places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <utility>

#include "base/numbers.h"

namespace kestrel::map {
namespace {

/// Between a label and what it stands above or below, surface units.
constexpr double PlaceMargin = 30;
/// So much around two labels must be free before they come apart. Less than a label has to its own symbol.
constexpr double ApartRoom = 29;
/// Between the redraws at which a two-ship tries to come apart, and a label that covers something looks for a place.
constexpr std::uint32_t LookTurns = 8;

enum class Across : std::uint8_t { Left, Middle, Right };
enum class Down : std::uint8_t { Above, Level, Below };
struct PlaceAround {
  Across X;
  Down Y;
};
/// The nearest to the plot first; a label beside it needs no line to it.
constexpr std::array<PlaceAround, LabelPlaceCount> Around = {{{Across::Left, Down::Level},
                                                              {Across::Right, Down::Level},
                                                              {Across::Middle, Down::Above},
                                                              {Across::Middle, Down::Below},
                                                              {Across::Left, Down::Above},
                                                              {Across::Left, Down::Below},
                                                              {Across::Right, Down::Above},
                                                              {Across::Right, Down::Below}}};

/// All eight of labels of one size are clear of each other and of the symbol.
Box AreaAt(const Label& label, std::uint8_t place) {
  const PlaceAround& around = Around[place];
  double left = label.At.X - label.Width / 2;
  double top = label.At.Y - label.Rise;
  // Above and below it need not leave room for the way that the plot flies, but for the label in the middle.
  const double aside = around.Y == Down::Level ? label.Gap : label.Width / 2 + PlaceMargin;
  if (around.X == Across::Left) left = label.At.X - aside - label.Width;
  if (around.X == Across::Right) left = label.At.X + aside;
  if (around.Y == Down::Above) {
    top = label.At.Y - std::max(label.Rise, SymbolRadius) - PlaceMargin - label.Height;
  } else if (around.Y == Down::Below) {
    top = label.At.Y + std::max(label.Height - label.Rise, SymbolRadius) + PlaceMargin;
  }
  return {left, top, left + label.Width, top + label.Height};
}

std::uint64_t Mixed(std::uint64_t number) {
  number = (number ^ (number >> 32)) * 0x9e3779b97f4a7c15U;
  return (number ^ (number >> 29)) | 1;  // 0 is no key
}

bool IsLeader(int digit) { return digit % 2 == 1; }

}  // namespace

double Label::Alignment() const {
  const Across across = Around[Place].X;
  return across == Across::Left ? 1 : across == Across::Middle ? 0.5 : 0;
}

bool Label::IsBeside() const { return Around[Place].Y == Down::Level; }

void AppendJoinedText(const Label& leader, const Label& wing, std::string& text) {
  if (leader.TellsName) {
    text += leader.Name;
    text += '-';
    text += wing.Name.back();
  }
  if (!leader.TellsAltitude) return;
  if (leader.TellsName) text += ", ";
  base::AppendFormat(text, leader.Altitude, "000");
  if (wing.Altitude == leader.Altitude) return;
  text += '/';
  base::AppendFormat(text, wing.Altitude, "000");
}

void LabelPlaces::KnownTable::Clear(std::size_t count) {
  std::size_t size = 16;
  while (size < 2 * count) size *= 2;
  slots.assign(std::max(size, slots.size()), {});
}

LabelPlaces::Known* LabelPlaces::KnownTable::Find(std::uint64_t key) {
  if (slots.empty()) return nullptr;
  for (std::size_t slot = key >> 1;; ++slot) {
    Known& known = slots[slot & (slots.size() - 1)];
    if (known.Key == key) return &known;
    if (known.Key == 0) return nullptr;
  }
}

LabelPlaces::Known& LabelPlaces::KnownTable::Add(std::uint64_t key) {
  std::size_t slot = key >> 1;
  while (slots[slot & (slots.size() - 1)].Key != 0) ++slot;
  Known& known = slots[slot & (slots.size() - 1)];
  known.Key = key;
  return known;
}

void LabelPlaces::Begin(double surfaceWidth, double surfaceHeight, double resolution) {
  if (resolution != zoom) Forget();
  zoom = resolution;
  grid.Begin(surfaceWidth, surfaceHeight);
  labels.clear();
}

void LabelPlaces::AddSymbol(SurfacePoint at) {
  grid.Add({at.X - SymbolRadius, at.Y - SymbolRadius, at.X + SymbolRadius, at.Y + SymbolRadius});
}

void LabelPlaces::Arrange(Surface& surface, const TextFont& font) {
  NameAll();
  PlaceFixed();
  KeepHeld(surface, font);
  PlaceNew();
  PlaceRest(surface, font);
  TryApart();
  Remember();
}

void LabelPlaces::NameAll() {
  present.Clear(labels.size());
  works.assign(labels.size(), {});
  for (std::size_t index = 0; index < labels.size(); ++index) {
    const std::string_view name = labels[index].Name;
    Work& work = works[index];
    const bool numbered = !name.empty() && name.back() >= '1' && name.back() <= '9';
    work.Digit = numbered ? name.back() - '0' : 0;
    const std::size_t stem = std::hash<std::string_view>()(name.substr(0, name.size() - (numbered ? 1 : 0)));
    work.Stem = Mixed(stem + (labels[index].Real ? 1 : 0));
    work.Key = Mixed(work.Stem + static_cast<std::uint64_t>(work.Digit));
    // Of several with one name the second is known by its count, and so on.
    if (Known* const same = present.Find(work.Key)) work.Key = Mixed(work.Key + 16 * ++same->Count);
    while (present.Find(work.Key) != nullptr) work.Key = Mixed(work.Key + 1);
    present.Add(work.Key).Index = static_cast<std::uint32_t>(index);
    work.Was = former.Find(work.Key);
  }
}

bool LabelPlaces::IsFreeAt(const Box& area, std::uint8_t place) const {
  // At the first place a label is cut off at the edge, as it would be by itself.
  return (place == 0 || grid.Holds(area)) && grid.IsFree(area);
}

std::uint8_t LabelPlaces::FreePlace(const Label& label, double room) const {
  std::uint8_t place = 0;
  for (; place < LabelPlaceCount; ++place) {
    Box area = AreaAt(label, place);
    area = {area.Left - room, area.Top - room, area.Right + room, area.Bottom + room};
    if (IsFreeAt(area, place)) break;
  }
  return place;
}

void LabelPlaces::Put(std::size_t index, std::uint8_t place) {
  Label& label = labels[index];
  label.Place = place;
  label.Area = AreaAt(label, place);
  label.Partner = Label::Alone;
  label.Leads = label.Crowded = false;
  works[index].Number = grid.Add(label.Area);
  works[index].Placed = true;
}

void LabelPlaces::Unplace(std::size_t index) {
  if (works[index].Placed && labels[index].HasArea()) grid.Take(works[index].Number);
  works[index].Placed = false;
}

void LabelPlaces::PlaceFixed() {
  for (std::size_t index = 0; index < labels.size(); ++index) {
    if (labels[index].Fixed) Put(index, 0);
  }
}

void LabelPlaces::KeepHeld(Surface& surface, const TextFont& font) {
  for (std::size_t index = 0; index < labels.size(); ++index) {
    const Known* const was = works[index].Was;
    if (works[index].Placed || was == nullptr || was->Crowded) continue;
    if (!was->Joined) {
      if (IsFreeAt(AreaAt(labels[index], was->Place), was->Place)) Put(index, was->Place);
      continue;
    }
    const std::size_t partner = PartnerOf(index, PartDistance);
    if (partner == Label::Alone || works[partner].Placed) continue;
    const std::size_t leader = IsLeader(works[index].Digit) ? index : partner;
    const std::size_t wing = leader == index ? partner : index;
    const Known* const lead = works[leader].Was;
    if (lead == nullptr || !lead->Joined) continue;
    const Label joined = JoinedLabel(leader, wing, surface, font);
    if (IsFreeAt(AreaAt(joined, lead->Place), lead->Place)) Join(leader, wing, joined, lead->Place, false);
  }
}

void LabelPlaces::PlaceNew() {
  for (std::size_t index = 0; index < labels.size(); ++index) {
    if (!works[index].Placed && works[index].Was == nullptr && IsFreeAt(AreaAt(labels[index], 0), 0)) Put(index, 0);
  }
}

void LabelPlaces::PlaceRest(Surface& surface, const TextFont& font) {
  for (std::size_t index = 0; index < labels.size(); ++index) {
    Work& work = works[index];
    if (work.Placed) continue;
    const bool joined = work.Was != nullptr && work.Was->Joined;
    if (joined && JoinSomewhere(index, PartDistance, surface, font)) continue;
    const std::uint8_t held = work.Was != nullptr && !joined ? work.Was->Place : 0;
    std::uint8_t place = held;
    if (!IsFreeAt(AreaAt(labels[index], held), held)) {
      const bool waits = work.Was != nullptr && work.Was->Crowded && (turn + index) % LookTurns != 0;
      place = waits ? LabelPlaceCount : FreePlace(labels[index]);
    }
    if (place < LabelPlaceCount) {
      Put(index, place);
    } else if (!JoinSomewhere(index, JoinDistance, surface, font)) {
      Put(index, 0);
      labels[index].Crowded = true;
    }
  }
}

std::size_t LabelPlaces::PartnerOf(std::size_t index, double distance) {
  const Work& work = works[index];
  const Label& label = labels[index];
  if (work.Digit == 0 || work.Digit == 9 || label.Fixed) return Label::Alone;
  const int digit = IsLeader(work.Digit) ? work.Digit + 1 : work.Digit - 1;
  const Known* const known = present.Find(Mixed(work.Stem + static_cast<std::uint64_t>(digit)));
  if (known == nullptr) return Label::Alone;
  const std::size_t found = known->Index;
  const Label& other = labels[found];
  const bool fits = works[found].Digit == digit && other.Real == label.Real && other.Color == label.Color &&
                    !other.Fixed && (label.TellsName || label.TellsAltitude) &&
                    other.Name.size() == label.Name.size() &&
                    other.Name.substr(0, other.Name.size() - 1) == label.Name.substr(0, label.Name.size() - 1) &&
                    std::hypot(other.At.X - label.At.X, other.At.Y - label.At.Y) <= distance;
  // One that is joined already is so with another one of this name.
  const bool taken = works[found].Placed && other.Partner != Label::Alone && other.Partner != index;
  return fits && !taken ? found : Label::Alone;
}

Label LabelPlaces::JoinedLabel(std::size_t leader, std::size_t wing, Surface& surface, const TextFont& font) {
  text.clear();
  AppendJoinedText(labels[leader], labels[wing], text);
  const TextSize size = surface.Measure(text, font);
  Label joined = labels[leader];
  joined.Width = size.Width;
  joined.Height = size.Height;
  joined.Rise = size.Height / 2;
  return joined;
}

void LabelPlaces::Join(std::size_t leader, std::size_t wing, const Label& joined, std::uint8_t place, bool crowded) {
  Label& first = labels[leader];
  Label& second = labels[wing];
  first.Place = second.Place = place;
  first.Area = second.Area = AreaAt(joined, place);
  first.Crowded = second.Crowded = crowded;
  first.Partner = wing;
  second.Partner = leader;
  first.Leads = true;
  second.Leads = false;
  works[leader].Number = grid.Add(first.Area);
  works[leader].Placed = works[wing].Placed = true;
}

bool LabelPlaces::JoinSomewhere(std::size_t index, double distance, Surface& surface, const TextFont& font) {
  const std::size_t partner = PartnerOf(index, distance);
  if (partner == Label::Alone) return false;
  const std::size_t leader = IsLeader(works[index].Digit) ? index : partner;
  const std::size_t wing = leader == index ? partner : index;
  Unplace(leader);
  Unplace(wing);
  const Known* const was = works[leader].Was;
  const std::uint8_t held = was != nullptr ? was->Place : 0;
  const Label joined = JoinedLabel(leader, wing, surface, font);
  std::uint8_t place = held;
  if (!IsFreeAt(AreaAt(joined, held), held)) place = FreePlace(joined);
  const bool crowded = place == LabelPlaceCount;
  Join(leader, wing, joined, crowded ? 0 : place, crowded);
  return true;
}

void LabelPlaces::TryApart() {
  ++turn;
  for (std::size_t leader = 0; leader < labels.size(); ++leader) {
    if (!labels[leader].Leads || (turn + leader) % LookTurns != 0) continue;
    const std::size_t wing = labels[leader].Partner;
    const Work& work = works[leader];
    if (work.Was == nullptr || !work.Was->Joined) continue;  // they have come together now
    grid.Take(work.Number);
    // With some room, or the next redraw would join them again.
    const Label together = labels[leader];
    const std::uint8_t first = FreePlace(labels[leader], ApartRoom);
    if (first < LabelPlaceCount) {
      const std::size_t number = work.Number;
      Put(leader, first);
      const std::uint8_t second = FreePlace(labels[wing], ApartRoom);
      if (second < LabelPlaceCount) return Put(wing, second);

      grid.Take(work.Number);
      works[leader].Number = number;
      labels[leader] = together;
    }
    grid.PutBack(work.Number, together.Area);
  }
}

void LabelPlaces::Remember() {
  for (std::size_t index = 0; index < labels.size(); ++index) {
    Known& known = *present.Find(works[index].Key);
    known.Place = labels[index].Place;
    known.Joined = labels[index].Partner != Label::Alone;
    known.Crowded = labels[index].Crowded;
  }
  std::swap(former, present);
}

}  // namespace kestrel::map
