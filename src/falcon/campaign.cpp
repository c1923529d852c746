#include "falcon/campaign.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/text.h"
#include "falcon/camp_objects.h"
#include "falcon/campaign_info.h"
#include "falcon/foreign_text.h"
#include "falcon/objective_deltas.h"
#include "falcon/objectives.h"
#include "falcon/string_table.h"
#include "falcon/teams.h"

namespace kestrel::falcon {
namespace fs = std::filesystem;
namespace {

CampaignFile Open(const fs::path& file) {
  std::string bytes = base::ReadWholeFile(file, MaxCampaignFileBytes);
  return Within(base::NameForMessage(file), [&bytes] { return CampaignFile(std::move(bytes)); });
}

/// The piece "obj" when there are objectives in it: missions have an empty one or none.
std::optional<std::string_view> ObjectivePiece(const CampaignFile& file) {
  const std::optional<std::string_view> piece = file.Piece("obj");
  constexpr std::size_t headBytes = 10;
  const auto isZero = [](char byte) { return byte == 0; };
  if (!piece || (piece->size() <= headBytes && std::all_of(piece->begin(), piece->end(), isZero))) return std::nullopt;
  return piece;
}

/// The files that a mission can be made from, the likeliest first. One that names itself is not left out: it is asked
/// only when it holds no objectives, and they are not asked for theirs in turn.
std::vector<fs::path> ScenarioFiles(const fs::path& mission, const fs::path& folder, const std::string& scenario) {
  if (scenario.empty() || scenario.find_first_of("/\\:") != std::string::npos) return {};
  std::array<const char*, 2> suffixes = {".tac", ".cam"};
  if (base::SameNoCase(base::NameForMessage(mission.extension()), ".cam")) std::swap(suffixes[0], suffixes[1]);
  std::vector<fs::path> files;
  for (const char* const suffix : suffixes) {
    fs::path file = base::FindFile(folder, scenario + suffix);
    if (base::FileExists(file)) files.push_back(std::move(file));
  }
  return files;
}

/// A file with what all of its pieces need to be read.
struct Source {
  explicit Source(const fs::path& file) : Path(file), Name(base::NameForMessage(file)), File(Open(file)) {
    Info = Within(Name + ", description", [this] { return ReadCampaignInfo(File); });
  }
  fs::path Path;
  std::string Name;
  CampaignFile File;
  CampaignInfo Info;
};

void Note(World& world, const std::string& what) { world.Notes.push_back(what); }
void NoteCount(World& world, std::size_t count, const std::string& what) {
  if (count > 0) Note(world, std::to_string(count) + " " + what);
}

void TakeDescription(const Source& source, World& world) {
  const CampaignInfo& info = source.Info;
  world.DataVersion = info.DataVersion;
  world.Theater = info.Theater;
  world.Scenario = info.Scenario;
  world.SaveName = info.SaveName;
  world.ShownName = info.ShownName;
  world.Width = info.Place.Width;
  world.Height = info.Place.Height;
  world.BullseyeX = info.Place.BullseyeX;
  world.BullseyeY = info.Place.BullseyeY;
  if (!source.File.DataVersion()) {
    Note(world, "the file does not tell its data version; it looks like " + std::to_string(info.DataVersion));
  }
  if (!info.RestTrouble.empty()) Note(world, "description, " + info.RestTrouble);
  TeamList teams = ReadTeams(source.File.Piece("tea"), info);
  world.Teams = std::move(teams.Teams);
  if (!teams.Trouble.empty()) Note(world, teams.Trouble);
}

void TakeObjectives(const Source& source, std::string_view piece, const FeatureCounts& features, World& world) {
  ObjectiveList list = Within(source.Name + ", objectives", [&] {
    return ReadObjectives(piece, source.Info.DataVersion, source.Info.Place, features);
  });
  world.Objectives = std::move(list.Objectives);
  world.ObjectivesFrom = source.Path;
  NoteCount(world, list.StrangeOwners, "objectives are of a country that there is not; they are neutral");
}

void TakeScenario(const Source& mission, const fs::path& folder, const FeatureCounts& features, World& world) {
  for (const fs::path& file : ScenarioFiles(mission.Path, folder, world.Scenario)) {
    const Source scenario(file);
    if (const std::optional<std::string_view> piece = ObjectivePiece(scenario.File)) {
      TakeObjectives(scenario, *piece, features, world);
      return;
    }
  }
  Note(world, "the file holds no objectives and its scenario \"" + world.Scenario + "\" was not found");
}

void TakeDeltas(const Source& source, const FeatureCounts& features, World& world) {
  const std::optional<std::string_view> piece = source.File.Piece("obd");
  if (!piece || piece->empty()) return;
  const std::vector<ObjectiveDelta> deltas = Within(
      source.Name + ", changes of objectives", [&] { return ReadObjectiveDeltas(*piece, source.Info.DataVersion); });
  const DeltaTally tally = ApplyDeltas(deltas, world.Objectives, features);
  NoteCount(world, tally.Unknown, "changes are of no objective");
  NoteCount(world, tally.Misfit, "changes do not fit the features of their objectives, whose states stayed");
  NoteCount(world, tally.StrangeOwners, "changes name a country that there is not; those objectives are neutral");
}

/// Since the objectives have names of their own there are no files of names any more.
bool NeedsNames(const World& world) {
  return std::any_of(world.Objectives.begin(), world.Objectives.end(),
                     [](const Objective& one) { return one.OwnName.empty() && one.NameId != 0; });
}

void TakeNames(const fs::path& folder, World& world) {
  if (!NeedsNames(world)) return;
  try {
    if (std::optional<StringTable> names = LoadTheaterNames(folder, world.Theater)) {
      world.Names = std::move(*names);
      NoteCount(world, world.Names.Damaged(), "names of the theater are damaged");
      return;
    }
    Note(world, "the theater \"" + world.Theater + "\" has no file of names");
  } catch (const base::RuntimeFailure& failure) {
    Note(world, failure.what());
  }
  world.NamesMissing = true;
}

}  // namespace

World LoadCampaign(const fs::path& file, const fs::path& campaignFolder, const FeatureCounts& features) {
  const Source source(file);
  World world;
  TakeDescription(source, world);
  if (const std::optional<std::string_view> own = ObjectivePiece(source.File)) {
    TakeObjectives(source, *own, features, world);
  } else {
    TakeScenario(source, campaignFolder, features, world);
  }
  TakeDeltas(source, features, world);
  TakeCampObjects(campaignFolder, world);
  TakeNames(campaignFolder, world);
  return world;
}

}  // namespace kestrel::falcon
