#include "falcon/teams.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "base/failure.h"
#include "falcon/foreign_text.h"

namespace kestrel::falcon {
namespace {

/// A team as it stands in the piece.
struct Record {
  std::uint8_t Number = 0;
  Country Team;
  bool UsualVehicles = false;  ///< the groups before the name are those of every known file
};

/// The type of a team in known files; it is only looked for where nothing better tells where a team begins.
constexpr std::uint16_t TeamType = 885;
constexpr std::string_view UsualVehicles = "\x10\x10\x10\x10";
constexpr std::size_t TeamNameBytes = 20;
constexpr std::size_t MottoBytes = 200;

/// Number, side, flags, members and stances of a team, behind which versions begin to differ.
Record TakeHead(base::BinaryReader& piece, int version) {
  Record record;
  piece.Skip(8);  // id
  piece.Skip(2);  // type
  record.Number = piece.U8();
  record.Team.Side = piece.U8();
  record.Team.Active = (piece.I16() & 1) != 0;
  const std::size_t others = version <= 2 ? 7 : Countries;
  piece.Skip(others);  // members
  for (std::size_t other = 0; other < others; ++other) record.Team.Stance[other] = piece.I16();
  return record;
}

std::size_t GroundActionBytes(int version) {
  if (version > 50) return 19;
  if (version >= 42) return 27;
  return version >= 34 ? 23 : 0;
}

Record TakeTeam(base::BinaryReader& piece, int version, std::size_t missions) {
  Record record = TakeHead(piece, version);
  piece.Skip(8 + 4 + 2 + 4);  // pilots, experience, initiative, supplies
  if (version > 53) piece.Skip(10);
  if (version < 40) piece.Skip(4);
  piece.Skip(32 + 2 + 240);        // statistics, reinforcement, bonuses
  piece.Skip(36 + 20 + missions);  // priorities
  if (version < 34) piece.Skip(5);
  record.UsualVehicles = piece.Text(UsualVehicles.size()) == UsualVehicles;
  if (version > 4) record.Team.Flag = piece.U8();
  if (version > 32) record.Team.Colour = piece.U8();
  if (version > 4) {
    piece.Skip(1);  // equipment
    record.Team.Name = FieldText(piece, TeamNameBytes);
  }
  if (version > 32) record.Team.Motto = FieldText(piece, MottoBytes);
  piece.Skip(GroundActionBytes(version));
  if (version > 33) piece.Skip(56);  // air actions
  return record;
}

void StepOverManagers(base::BinaryReader& piece, int version) {
  constexpr std::size_t head = 13;
  piece.Skip(head + 2);
  if (version >= 63) piece.Skip(2);
  if (version >= 28) piece.Skip(3);
  piece.Skip(std::size_t{piece.U8()} * 40);  // airbases
  piece.Skip(1);
  const std::int16_t requests = piece.I16();
  if (requests < 0) throw base::RuntimeFailure("its count of missions is below 0");
  piece.Skip(static_cast<std::size_t>(requests) * (version < 35 ? 64 : 76));
  piece.Skip(2 * (head + 2));  // ground and naval
}

/// All teams, when the piece ends exactly behind the last.
std::vector<Record> WalkTeams(std::string_view bytes, int version, std::size_t missions) {
  base::BinaryReader piece(bytes);
  const std::int16_t count = piece.I16();
  if (count < 0) throw base::RuntimeFailure("the count of teams is below 0");
  std::vector<Record> teams;
  for (std::int16_t n = 0; n < count; ++n) {
    Within("team " + std::to_string(n), [&] {
      teams.push_back(TakeTeam(piece, version, missions));
      StepOverManagers(piece, version);
      return 0;
    });
  }
  if (piece.Left() != 0) throw base::RuntimeFailure("bytes follow the last team");
  return teams;
}

bool IsNamed(const Record& team) { return IsPrintable(team.Team.Name) && IsPrintable(team.Team.Motto); }

/// The counts to be tried, the likeliest of the version first.
std::vector<std::size_t> MissionCounts(int version) {
  std::vector<std::size_t> counts = {41, 50, 40};
  if (version >= 100) counts = {50, 41};
  if (version < 30) counts = {40, 41};
  for (std::size_t count = 40; count <= 64; ++count) counts.push_back(count);
  return counts;
}

struct Walked {
  std::vector<Record> Teams;
  std::size_t Missions = 0;
};

/// The exact end alone is not enough, as two wrong sizes can make a right sum: the groups of vehicles must be the usual
/// ones, or at least the names be text. RuntimeFailure of the likeliest size when none fits.
Walked FindTeams(std::string_view bytes, int version) {
  const std::vector<std::size_t> counts = MissionCounts(version);
  std::vector<Walked> exact;
  std::string trouble;
  for (const std::size_t missions : counts) {
    try {
      Walked walked = {WalkTeams(bytes, version, missions), missions};
      const auto usual = [](const Record& team) { return team.UsualVehicles && IsNamed(team); };
      if (std::all_of(walked.Teams.begin(), walked.Teams.end(), usual)) return walked;
      exact.push_back(std::move(walked));
    } catch (const base::RuntimeFailure& failure) {
      if (trouble.empty()) trouble = failure.what();
    }
  }
  for (Walked& walked : exact) {
    if (std::all_of(walked.Teams.begin(), walked.Teams.end(), IsNamed)) return std::move(walked);
  }
  throw base::RuntimeFailure(exact.empty() ? trouble : "its names are no text");
}

/// The teams that can be recognised in a piece that cannot be walked: their heads, and the groups of vehicles at about
/// the right distance with a name behind.
std::vector<Record> SearchTeams(std::string_view bytes, int version) {
  constexpr std::size_t headBytes = 38;
  constexpr std::size_t nearest = 430;
  constexpr std::size_t farthest = 480;
  constexpr std::size_t nameBehind = 7;
  std::vector<Record> teams;
  for (std::size_t at = 0; at + nearest + nameBehind + TeamNameBytes <= bytes.size() && teams.size() < Countries;
       ++at) {
    base::BinaryReader type(bytes.substr(at + 8, 2));
    if (type.U16() != TeamType) continue;
    const std::string_view window = bytes.substr(at + nearest, farthest - nearest + UsualVehicles.size());
    const std::size_t found = window.find(UsualVehicles);
    const std::size_t name = at + nearest + found + nameBehind;
    if (found == std::string_view::npos || name + TeamNameBytes > bytes.size()) continue;
    base::BinaryReader head(bytes.substr(at, headBytes));
    Record record = TakeHead(head, version);
    base::BinaryReader text(bytes.substr(name, TeamNameBytes));
    record.Team.Name = FieldText(text, TeamNameBytes);
    if (record.Number < Countries && IsNamed(record)) teams.push_back(std::move(record));
  }
  return teams;
}

/// Puts the first eight at their places; one that says that it plays for a side that is none plays for itself.
void Take(std::vector<Record> records, TeamList& list) {
  list.Told = records.size();
  records.resize(std::min(records.size(), Countries));
  for (Record& record : records) {
    if (record.Number >= Countries) continue;
    if (record.Team.Side >= Countries) record.Team.Side = record.Number;
    list.Teams[record.Number] = std::move(record.Team);
  }
}

/// Countries of whom nothing is known but what the description calls them.
void NameByDescription(const CampaignInfo& info, TeamList& list) {
  for (std::size_t n = 0; n < Countries; ++n) {
    Country& country = list.Teams[n];
    country.Colour = info.Names[n].Colour;
    if (!IsPrintable(info.Names[n].Name)) continue;
    country.Name = info.Names[n].Name;
    country.Motto = info.Names[n].Motto;
  }
}

}  // namespace

TeamList ReadTeams(std::optional<std::string_view> piece, const CampaignInfo& info) {
  TeamList list;
  for (std::size_t n = 0; n < Countries; ++n) list.Teams[n].Side = static_cast<std::uint8_t>(n);
  if (!piece) {
    NameByDescription(info, list);
    list.Trouble = "it holds no teams";
    return list;
  }
  try {
    Walked walked = FindTeams(*piece, info.DataVersion);
    list.Missions = walked.Missions;
    Take(std::move(walked.Teams), list);
  } catch (const base::RuntimeFailure& failure) {
    NameByDescription(info, list);
    Take(SearchTeams(*piece, info.DataVersion), list);
    list.Trouble = "teams: " + std::string(failure.what()) + "; " + std::to_string(list.Told) + " were recognised";
  }
  return list;
}

bool IsInPlay(const std::array<Country, Countries>& teams, std::size_t country) {
  const std::size_t side = teams[country].Side;
  return teams[country].Active || (side != country && teams[side].Active);
}

}  // namespace kestrel::falcon
