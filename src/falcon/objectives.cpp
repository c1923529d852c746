#include "falcon/objectives.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "base/bytes.h"
#include "base/failure.h"
#include "falcon/feature_states.h"
#include "falcon/foreign_text.h"
#include "falcon/lzss.h"

namespace kestrel::falcon {
namespace {

constexpr std::uint16_t FirstClassType = 100;
constexpr std::size_t PlaceBytes = 28;
constexpr std::size_t NameBytes = 80;
constexpr std::size_t NamedTail = PlaceBytes + NameBytes;

/// What differs from version to version and can only be told by whether the walk comes out.
struct Layout {
  bool Height = false;   ///< 4 bytes behind the cell
  std::size_t Tail = 0;  ///< bytes behind the radar
  /// Any number but 0 before the radar's ranges means that there are some; else only 1 does.
  bool AnyRadar = false;
};

constexpr Layout Oldest = {false, 0};
constexpr Layout WithHeight = {true, 0};
constexpr Layout WithPlace = {true, PlaceBytes};
constexpr Layout WithName = {true, NamedTail};

/// The layouts to be tried, the likeliest of the version first.
std::vector<Layout> LayoutsOf(int version) {
  std::vector<Layout> layouts;
  if (version < 70) {
    layouts = {Oldest};
  } else if (version < 100) {
    layouts = {WithHeight, WithPlace};
  } else if (version < 104) {
    layouts = {WithPlace};
  } else if (version < 108) {
    layouts = {WithName, WithPlace};
  } else {
    layouts = {WithName};
  }
  for (const Layout& other : {Oldest, WithHeight, WithPlace, WithName}) {
    const auto same = [&other](const Layout& one) { return one.Height == other.Height && one.Tail == other.Tail; };
    if (std::none_of(layouts.begin(), layouts.end(), same)) layouts.push_back(other);
  }
  const std::size_t usual = layouts.size();
  for (std::size_t at = 0; at < usual; ++at) {
    layouts.push_back(layouts[at]);
    layouts.back().AnyRadar = true;
  }
  if (version > 108) {
    // A later version may have appended more.
    for (std::size_t more = 4; more <= 128; more += 4) layouts.push_back({true, NamedTail + more});
  }
  return layouts;
}

bool IsPlace(double feet, std::int16_t cells) {
  return std::isfinite(feet) && feet >= 0 && feet <= cells * FeetPerCell;
}

/// Takes objectives in order, their states as they stand in the file.
class ObjectiveReader {
 public:
  ObjectiveReader(base::BinaryReader& source, int dataVersion, const CampaignPlace& where, const Layout& shape)
      : reader(source), version(dataVersion), place(where), layout(shape) {}

  Objective Take() {
    Objective one;
    reader.Skip(2);  // the type once more
    one.Id = TakeEntityId(reader);
    TakeTypeAndCell(one);
    if (layout.Height) reader.Skip(4);
    reader.Skip(4 + 2 + 2);  // spotted, flags
    one.Owner = reader.U8();
    one.CampId = reader.I16();
    reader.Skip(4);  // last repair
    one.Flags = version > 1 ? reader.U32() : reader.U16();
    one.Supply = reader.U8();
    one.Fuel = reader.U8();
    one.Losses = reader.U8();
    TakeStates(one);
    one.Priority = reader.U8();
    one.NameId = reader.I16();
    one.Parent = TakeEntityId(reader);
    one.FirstOwner = reader.U8();
    TakeLinks(one);
    if (version >= 20) TakeRadar(one);
    TakeTail(one);
    return one;
  }

 private:
  void TakeTypeAndCell(Objective& one) {
    const std::uint16_t type = reader.U16();
    one.CellX = reader.I16();
    one.CellY = reader.I16();
    if (type < FirstClassType) throw base::RuntimeFailure("it has no class");
    if (one.CellX < 0 || one.CellX >= place.Width || one.CellY < 0 || one.CellY >= place.Height) {
      throw base::RuntimeFailure("it lies outside the theater");
    }
    one.ClassIndex = static_cast<std::uint16_t>(type - FirstClassType);
  }

  void TakeStates(Objective& one) {
    const std::size_t count = reader.U8();
    one.States.reserve(std::min(count, reader.Left()));
    for (std::size_t n = 0; n < count; ++n) one.States.push_back(reader.U8());
  }

  void TakeLinks(Objective& one) {
    constexpr std::size_t costs = 8;
    const std::size_t count = reader.U8();
    one.Links.reserve(std::min(count, reader.Left() / (costs + 8)));
    for (std::size_t n = 0; n < count; ++n) {
      reader.Skip(costs);
      one.Links.push_back(TakeEntityId(reader));
    }
  }

  void TakeRadar(Objective& one) {
    const std::uint8_t radar = reader.U8();
    one.HasRadar = layout.AnyRadar ? radar != 0 : radar == 1;
    if (one.HasRadar) reader.Skip(8 * 4);
  }

  void TakeTail(Objective& one) {
    if (layout.Tail < PlaceBytes) return;
    ExactPlace exact;
    exact.North = reader.F64();
    exact.East = reader.F64();
    exact.Height = reader.F64();
    exact.Heading = reader.F32();
    const bool good = IsPlace(exact.North, place.Height) && IsPlace(exact.East, place.Width) &&
                      std::isfinite(exact.Height) && std::isfinite(exact.Heading);
    if (good) one.Exact = exact;
    if (layout.Tail < NamedTail) return;
    one.OwnName = FieldText(reader, NameBytes);
    reader.Skip(layout.Tail - NamedTail);
  }

  base::BinaryReader& reader;
  int version;
  const CampaignPlace& place;
  const Layout& layout;
};

/// The fewest bytes of an objective.
constexpr std::size_t SmallestObjective = 50;

std::vector<Objective> Walk(std::string_view bytes, std::size_t count, int version, const CampaignPlace& place,
                            const Layout& layout) {
  if (count > bytes.size() / SmallestObjective) throw base::RuntimeFailure("it is too small for its objectives");
  base::BinaryReader reader(bytes);
  ObjectiveReader objectives(reader, version, place, layout);
  std::vector<Objective> read;
  read.reserve(count);
  for (std::size_t n = 0; n < count; ++n) {
    try {
      read.push_back(objectives.Take());
    } catch (const base::RuntimeFailure& failure) {
      throw base::RuntimeFailure("objective " + std::to_string(n + 1) + " of " + std::to_string(count) + ": " +
                                 failure.what());
    }
  }
  if (reader.Left() != 0) throw base::RuntimeFailure("bytes follow the last objective");
  return read;
}

ObjectiveList TakeByTrial(std::string_view bytes, std::size_t count, int version, const CampaignPlace& place) {
  std::string trouble;
  for (const Layout& layout : LayoutsOf(version)) {
    try {
      ObjectiveList list;
      list.Objectives = Walk(bytes, count, version, place, layout);
      list.TailBytes = layout.Tail;
      return list;
    } catch (const base::RuntimeFailure& failure) {
      if (trouble.empty()) trouble = failure.what();
    }
  }
  throw base::RuntimeFailure(trouble);
}

}  // namespace

ObjectiveList ReadObjectives(std::string_view piece, int version, const CampaignPlace& place,
                             const FeatureCounts& features) {
  base::BinaryReader head(piece);
  const std::int16_t count = head.I16();
  const std::int32_t size = head.I32();
  head.Skip(4);  // the packed size
  if (count < 0) throw base::RuntimeFailure("its count of objectives is below 0");
  const std::string bytes = ExpandLzss(piece.substr(piece.size() - head.Left()), size, MaxObjectiveBytes);
  ObjectiveList list = TakeByTrial(bytes, static_cast<std::size_t>(count), version, place);
  for (Objective& one : list.Objectives) {
    one.Owner = OwnerOf(one.Owner, list.StrangeOwners);
    if (one.FirstOwner >= Countries) one.FirstOwner = 0;
  }
  list.States = FormOf(list.Objectives, version, features);
  for (Objective& one : list.Objectives) {
    one.States = Unpacked(one.States, list.States, FeaturesOf(one, features));
  }
  return list;
}

std::uint8_t OwnerOf(std::uint8_t told, std::size_t& strange) {
  if (told < Countries) return told;
  ++strange;
  return 0;
}

}  // namespace kestrel::falcon
