#include "falcon-info/campaigns.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/text.h"
#include "falcon-info/objectives.h"
#include "falcon/campaign.h"
#include "falcon/campaign_file.h"
#include "falcon/campaign_info.h"
#include "falcon/objective_deltas.h"
#include "falcon/string_table.h"
#include "falcon/teams.h"

namespace kestrel::falconinfo {
namespace fs = std::filesystem;
namespace {

using falcon::World;

/// Where a packed piece tells how many bytes it has when it is unpacked.
struct PackedPiece {
  std::string_view Ending;
  std::size_t SizeAt;
};
constexpr PackedPiece PackedPieces[] = {{".cmp", 4}, {".obj", 2}, {".obd", 6}, {".uni", 6}};

std::string EndingOfPart(std::string_view name) {
  const std::size_t point = name.rfind('.');
  return point == std::string_view::npos ? std::string() : base::Lower(name.substr(point));
}

/// The size that a piece tells; nothing for one that is not packed or too short to tell.
std::optional<std::int32_t> UnpackedSize(std::string_view ending, std::string_view piece) {
  for (const PackedPiece& packed : PackedPieces) {
    if (ending != packed.Ending || piece.size() < packed.SizeAt + 4) continue;
    base::BinaryReader reader(piece);
    reader.Skip(packed.SizeAt);
    return reader.I32();
  }
  return std::nullopt;
}

Json ContainerReport(const falcon::CampaignFile& container) {
  Json json;
  json["data_version"] = container.DataVersion();
  std::set<std::string> seen;
  json["parts"] = ListOf(container.Entries(), [&](const falcon::CampaignFile::Entry& entry) {
    const std::string ending = EndingOfPart(entry.Name);
    Json part;
    part["name"] = entry.Name;
    part["position"] = entry.Position;
    part["size"] = entry.Size;
    // Of parts with one ending the first is what is read.
    const bool isRead = !ending.empty() && seen.insert(ending).second;
    const std::string_view piece = isRead ? container.Piece(ending.substr(1)).value_or("") : "";
    part["unpacked_size"] = UnpackedSize(ending, piece);
    return part;
  });
  return json;
}

Json TeamsReport(const World& world) {
  Json list = Json::EmptyList();
  for (std::size_t number = 0; number < world.Teams.size(); ++number) {
    const falcon::Country& country = world.Teams[number];
    Json json;
    json["number"] = number;
    json["name"] = country.Name;
    json["motto"] = country.Motto;
    json["side"] = country.Side;
    json["active"] = country.Active;
    json["in_play"] = falcon::IsInPlay(world.Teams, number);
    json["flag"] = country.Flag;
    json["colour"] = country.Colour;
    json["stance"] = ListOf(country.Stance);
    list.Append(std::move(json));
  }
  return list;
}

Json WorldReport(const World& world) {
  Json json;
  json["data_version"] = world.DataVersion;
  json["theater"] = world.Theater;
  json["scenario"] = world.Scenario;
  json["save_name"] = world.SaveName;
  json["shown_name"] = world.ShownName;
  json["width"] = world.Width;
  json["height"] = world.Height;
  json["bullseye_x"] = world.BullseyeX;
  json["bullseye_y"] = world.BullseyeY;
  return json;
}

/// The names that stand elsewhere than the campaigns do.
void TakeNames(const Companions& companions, World& world) {
  if (companions.Strings == companions.Campaign || companions.Strings.empty()) return;
  if (std::optional<falcon::StringTable> names = falcon::LoadTheaterNames(companions.Strings, world.Theater)) {
    world.Names = std::move(*names);
    world.NamesMissing = false;
  }
}

struct LoadedWorld {
  World After;
  std::vector<falcon::Objective> Before;
};

LoadedWorld LoadWorld(const fs::path& file, const Companions& companions, const Database& database) {
  const auto features = [&database](std::uint16_t index) { return database.FeaturesOf(index); };
  LoadedWorld loaded{falcon::LoadCampaign(file, companions.Campaign, features), {}};
  TakeNames(companions, loaded.After);
  if (!loaded.After.ObjectivesFrom.empty()) loaded.Before = ObjectivesOfFile(loaded.After.ObjectivesFrom, database);
  return loaded;
}

/// What its changes tell, and what becomes of them.
Json ChangesReport(const fs::path& file, const LoadedWorld& world, const Database& database) {
  const falcon::CampaignFile container = OpenContainer(file);
  const std::optional<std::string_view> piece = container.Piece("obd");
  if (!piece || piece->empty()) return {};
  const std::vector<falcon::ObjectiveDelta> deltas = falcon::ReadObjectiveDeltas(*piece, world.After.DataVersion);
  std::vector<falcon::Objective> objectives = world.Before;
  const auto features = [&database](std::uint16_t index) { return database.FeaturesOf(index); };
  const falcon::DeltaTally tally = falcon::ApplyDeltas(deltas, objectives, features);
  Json json;
  json["told"] = deltas.size();
  json["applied"] = tally.Applied;
  json["of_no_objective"] = tally.Unknown;
  json["states_do_not_fit"] = tally.Misfit;
  json["strange_owners"] = tally.StrangeOwners;
  return json;
}

void TellObjectiveCounts(const fs::path& file, const LoadedWorld& world, const Database& database, Json& into) {
  into["objectives_from"] = Json::OfPath(world.After.ObjectivesFrom);
  into["objective_count"] = world.After.Objectives.size();
  into["changes"] = ChangesReport(file, world, database);
  into["names_missing"] = world.After.NamesMissing;
  into["notes"] = ListOf(world.After.Notes);
}

}  // namespace

bool IsCampaignFile(const fs::path& file) {
  const std::string ending = EndingOf(file);
  return ending == ".cam" || ending == ".tac" || ending == ".trn";
}

Json CampaignReport(Context& context, const fs::path& file) {
  const Companions companions = CompanionsOf(context, file);
  const Database database = LoadDatabase(companions.Objects);
  Json json = ReportOf(file, "campaign");
  json["container"] = ContainerReport(OpenContainer(file));
  const LoadedWorld world = LoadWorld(file, companions, database);
  json["campaign"] = WorldReport(world.After);
  json["teams"] = TeamsReport(world.After);
  TellObjectiveCounts(file, world, database, json);
  TellDatabase(context, database, json);
  json["objectives"] = ObjectivesReport(context, world.After, world.Before, database);
  return json;
}

Json CampaignSummary(Context& context, const fs::path& file, const Companions& companions, const Database& database) {
  return Attempt(context, file, [&] {
    const LoadedWorld world = LoadWorld(file, companions, database);
    Json json;
    json["file"] = Json::OfPath(file);
    json["campaign"] = WorldReport(world.After);
    TellObjectiveCounts(file, world, database, json);
    return json;
  });
}

Json CampaignSummaries(Context& context, const Companions& companions, const Database& database) {
  Json list = Json::EmptyList();
  for (const fs::path& file : FilesOf(companions.Campaign)) {
    if (IsCampaignFile(file)) list.Append(CampaignSummary(context, file, companions, database));
  }
  return list;
}

}  // namespace kestrel::falconinfo
