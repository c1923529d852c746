#include "falcon/campaign_info.h"

#include <optional>
#include <string_view>

#include "base/bytes.h"
#include "base/failure.h"
#include "falcon/foreign_text.h"
#include "falcon/lzss.h"

namespace kestrel::falcon {
namespace {

/// Largest description that is unpacked; the largest known has 64 KB.
constexpr std::size_t MaxDescriptionBytes = 1 << 20;
constexpr std::int16_t SmallestTheater = 64;
constexpr std::int16_t LargestTheater = 8192;
/// All versions that a file without one is known to have share a layout up to the squadrons.
constexpr int UsualVersion = 63;
constexpr std::size_t SmallestSquadron = 68;

/// The unpacked description. The packed size at its head counts differently from version to version, so it is left out.
std::string Description(const CampaignFile& file) {
  const std::optional<std::string_view> piece = file.Piece("cmp");
  if (!piece) throw base::RuntimeFailure("it holds no description of a campaign");
  base::BinaryReader head(*piece);
  head.Skip(4);
  const std::int32_t size = head.I32();
  return ExpandLzss(piece->substr(8), size, MaxDescriptionBytes);
}

/// What stands before the names and mottoes of the countries.
std::size_t NamesOffset(int version) {
  std::size_t offset = 4;            // time
  if (version >= 48) offset += 8;    // start and time limit
  if (version >= 50) offset += 4;    // victory points
  if (version >= 52) offset += 112;  // type, teams, aircraft, points, flags
  return offset;
}

/// What stands between those names, if there are any, and the size of the theater.
std::size_t AfterNames(int version) {
  constexpr std::size_t fromResupply = 26;          // last resupply to brief
  return (version >= 19 ? 4u : 0u) + fromResupply;  // last major event
}

constexpr std::size_t CountryNameBytes = 20;
constexpr std::size_t MottoBytes = 200;
bool HasNames(int version) { return version >= 52; }

bool IsTheaterSize(std::int16_t size) { return size >= SmallestTheater && size <= LargestTheater; }

CampaignPlace TakePlace(base::BinaryReader& block, std::uint8_t& bullseyeName) {
  CampaignPlace place;
  place.Width = block.I16();
  place.Height = block.I16();
  block.Skip(7);  // day, teams, result, experience
  bullseyeName = block.U8();
  place.BullseyeX = block.I16();
  place.BullseyeY = block.I16();
  if (!IsTheaterSize(place.Width) || !IsTheaterSize(place.Height)) {
    throw base::RuntimeFailure("its theater has an impossible size");
  }
  if (place.BullseyeX < 0 || place.BullseyeX >= place.Width || place.BullseyeY < 0 || place.BullseyeY >= place.Height) {
    throw base::RuntimeFailure("its bullseye lies outside the theater");
  }
  return place;
}

std::string TakeName(base::BinaryReader& block, const char* what) {
  constexpr std::size_t width = 40;
  std::string name = Within(what, [&block] { return FieldText(block, width); });
  if (!IsPrintable(name)) throw base::RuntimeFailure(std::string("its ") + what + " is no text");
  return name;
}

std::size_t TakeCount(base::BinaryReader& block) {
  const std::int16_t count = block.I16();
  if (count < 0) throw base::RuntimeFailure("its count is below 0");
  return static_cast<std::size_t>(count);
}

void StepOverEvents(base::BinaryReader& block, const char* what) {
  Within(what, [&block] {
    constexpr std::size_t eventBytes = 20;
    const std::size_t count = TakeCount(block);
    for (std::size_t n = 0; n < count; ++n) {
      block.Skip(eventBytes);
      block.Skip(TakeCount(block));
    }
    return count;
  });
}

/// The size of the squadrons, whose fields differ, follows from what is left.
void TakeSquadrons(base::BinaryReader& block, CampaignInfo& info) {
  info.Squadrons = TakeCount(block);
  const std::size_t behind = (info.DataVersion >= 31 ? 1u : 0u) + (info.DataVersion >= 43 ? 12u : 0u);
  if (block.Left() < behind) throw base::RuntimeFailure("the file ends too early");
  const std::size_t bytes = block.Left() - behind;
  const bool none = info.Squadrons == 0;
  info.SquadronBytes = none ? 0 : bytes / info.Squadrons;
  if (bytes != info.Squadrons * info.SquadronBytes || (!none && info.SquadronBytes < SmallestSquadron)) {
    throw base::RuntimeFailure("they do not end at its end");
  }
}

void TakeRest(base::BinaryReader& block, CampaignInfo& info) {
  block.Skip(8);  // the player's squadron
  StepOverEvents(block, "recent events");
  StepOverEvents(block, "priority events");
  // The bytes of the map of occupation are counted without a sign: a theater of 2048 has 58,140.
  Within("map of occupation", [&block] {
    block.Skip(block.U16());
    block.Skip(2);  // last index
    return 0;
  });
  Within("squadrons", [&] {
    TakeSquadrons(block, info);
    return 0;
  });
}

/// What a file that does not tell its version looks like.
int LikelyVersion(const CampaignInfo& info) {
  if (info.RestTrouble.empty() && info.SquadronBytes <= SmallestSquadron) return UsualVersion;
  constexpr std::size_t largerSquadron = 200;
  return info.SquadronBytes == largerSquadron ? 109 : 103;
}

}  // namespace

CampaignPlace ReadCampaignPlace(const CampaignFile& file) {
  const std::string description = Description(file);
  const int version = file.DataVersion().value_or(UsualVersion);
  base::BinaryReader block(description);
  block.Skip(NamesOffset(version));
  constexpr std::size_t country = 2 + CountryNameBytes + MottoBytes;
  if (HasNames(version)) block.Skip(Countries * country);
  block.Skip(AfterNames(version));
  std::uint8_t bullseyeName = 0;
  return TakePlace(block, bullseyeName);
}

CampaignInfo ReadCampaignInfo(const CampaignFile& file) {
  const std::string description = Description(file);
  const std::optional<int> told = file.DataVersion();
  CampaignInfo info;
  info.DataVersion = told.value_or(UsualVersion);
  base::BinaryReader block(description);
  block.Skip(NamesOffset(info.DataVersion));
  if (HasNames(info.DataVersion)) {
    for (CountryName& country : info.Names) {
      block.Skip(1);  // flag
      country.Colour = block.U8();
      country.Name = FieldText(block, CountryNameBytes);
      country.Motto = FieldText(block, MottoBytes);
    }
  }
  block.Skip(AfterNames(info.DataVersion));
  info.Place = TakePlace(block, info.BullseyeName);
  info.Theater = TakeName(block, "theater name");
  info.Scenario = TakeName(block, "scenario name");
  info.SaveName = TakeName(block, "file name");
  info.ShownName = TakeName(block, "shown name");
  try {
    TakeRest(block, info);
  } catch (const base::RuntimeFailure& failure) {
    info.RestTrouble = failure.what();
    info.Squadrons = info.SquadronBytes = 0;
  }
  if (!told) info.DataVersion = LikelyVersion(info);
  return info;
}

}  // namespace kestrel::falcon
