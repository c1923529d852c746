// The campaign folder, with files of the data version of each generation.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "falcon/campaign_writer.h"
#include "falcon/made_files.h"
#include "falcon/made_world.h"
#include "falcon/terrain_writer.h"

namespace kestrel::made {
namespace {

/// The general strings: countries, which campaigns name otherwise, and types of objectives.
const std::vector<std::pair<int, std::string>> GeneralStrings = {
    {40, "Country 0"},    {41, "Country 1"},   {42, "Country 2"}, {43, "Country 3"},
    {44, "Country 4"},    {45, "Country 5"},   {46, "Country 6"}, {47, "Country 7"},
    {501, "Airbase"},     {506, "Bridge"},     {508, "City"},     {511, "Factory"},
    {520, "Power Plant"}, {521, "Radar Site"}, {529, "Village"},  {531, "SAM Site"}};

/// States as they are packed, four in a byte, the first one lowest.
std::string PackedStates(const std::vector<std::uint8_t>& states) {
  std::string bytes((states.size() + 3) / 4, '\0');
  for (std::size_t n = 0; n < states.size(); ++n) {
    bytes[n / 4] = static_cast<char>(static_cast<unsigned char>(bytes[n / 4]) | states[n] << 2 * (n % 4));
  }
  return bytes;
}

/// The number of an objective's name in the theater's strings, where 0 is "Nowhere".
int NameIdOf(std::size_t number) {
  if (Objectives[number].Parent != 0) return 0;
  int id = 1;
  for (std::size_t n = 0; n < number; ++n) id += Objectives[n].Parent == 0 ? 1 : 0;
  return id;
}

test::ObjectivePlan PlanOf(std::size_t number, Generation which) {
  const Objective& one = Objectives[number];
  const int version = DataVersion(which);
  const bool turned = one.Kind == Bridge && which == Generation::Bms438;
  const std::string bytes(one.States.begin(), one.States.end());
  return {.Id = one.Id,
          .Type = Kinds[static_cast<std::size_t>(one.Kind)].Class + 100,
          .X = one.X,
          .Y = one.Y,
          .Owner = one.Owner,
          .CampId = one.CampId,
          .Status = version >= 100 ? bytes : PackedStates(one.States),
          .NameId = version >= 108 ? 0 : NameIdOf(number),
          .Parent = one.Parent,
          .FirstOwner = one.FirstOwner,
          .Links = one.Links,
          .Radar = one.Kind == RadarSite ? 1 : 0,
          .North = (one.Y + 0.5) * FeetPerUnit + (turned ? BridgeNorth : 0),
          .East = (one.X + 0.5) * FeetPerUnit + (turned ? BridgeEast : 0),
          .Heading = turned ? static_cast<float>(BridgeHeading) : 0,
          .Name = one.Name};
}

/// A file without objectives; `name` is its own, `scenario` the one that it is made from.
test::WorldPlan PlanOf(Generation which, const std::string& name, const std::string& scenario) {
  test::WorldPlan plan{
      .Place = {.Version = DataVersion(which), .Width = Size, .Height = Size, .X = BullseyeX, .Y = BullseyeY},
      .Theater = DataName,
      .Scenario = scenario,
      .SaveName = name,
      .ShownName = "Shown " + name,
      .Events = 2,
      .MapBytes = 72,
      .Squadrons = 3};
  for (std::size_t n = 0; n < Countries.size(); ++n) {
    const Country& one = Countries[n];
    plan.Names.push_back(one.Name);
    plan.Teams.push_back({.Number = static_cast<int>(n),
                          .Side = one.Side,
                          .Flags = one.Active ? 7 : 4,
                          .Name = one.Name,
                          .Motto = "Motto of " + one.Name,
                          .Airbases = 1,
                          .Requests = 2});
  }
  return plan;
}

test::WorldPlan WithObjectives(test::WorldPlan plan, Generation which) {
  for (std::size_t n = 0; n < Objectives.size(); ++n) plan.Objectives.push_back(PlanOf(n, which));
  return plan;
}
test::WorldPlan WithChanges(test::WorldPlan plan) {
  for (const Change& one : Changes) {
    plan.Deltas.push_back(
        {.Id = one.Id, .Owner = one.Owner, .Supply = 90, .Fuel = 80, .Losses = 10, .Status = PackedStates(one.States)});
  }
  return plan;
}

/// The pair of files of strings. As in real ones there stand more offsets than the count tells.
void AddStrings(Files& files, const std::string& stem, const std::vector<std::string>& strings) {
  std::string index = test::Bytes2(static_cast<int>(strings.size()) + 1), texts;
  for (const std::string& text : strings) {
    index += test::Bytes2(static_cast<int>(texts.size()));
    texts += text;
  }
  const std::string end = test::Bytes2(static_cast<int>(texts.size()));
  files[stem + ".idx"] = index + end + end + end;
  files[stem + ".wch"] = texts;
}

void AddNames(Files& files, const std::string& folder) {
  std::vector<std::string> names = {"Nowhere"};
  for (const Objective& one : Objectives) {
    if (one.Parent == 0) names.push_back(one.Name);
  }
  AddStrings(files, folder + "/" + DataName, names);
  std::vector<std::string> general(560);
  for (const auto& [number, text] : GeneralStrings) general[static_cast<std::size_t>(number)] = text;
  AddStrings(files, folder + "/Strings", general);
}

std::string StringLines() {
  std::string lines = "0\t0\r\n1\t1\r\n341 WITH A BLANK\r\n";
  for (const auto& [number, text] : GeneralStrings) lines += std::to_string(number) + "\t" + text + "\r\n";
  return lines;
}

std::string StationLines(Generation which) {
  const std::string end = which == Generation::Bms438 ? "\n" : "\r\n";
  std::string lines = "# <campaign ID> <channel> <band> and so on" + end + "#" + end + end;
  for (const std::string& line : Stations) {
    std::size_t length = 0;
    for (int field = 0; field < 12; ++field) length = line.find(' ', length + 1);
    lines += "# " +
             std::string(which == Generation::Bms437 ? "\xC5\x81\xC3\xB3"
                                                       "d\xC5\xBA"
                                                     : "Somewhere") +
             end;
    lines += (which == Generation::Bms433 ? line.substr(0, length) : line) + end;
  }
  return lines;
}

}  // namespace

void AddCampaign(Files& files, const std::string& folder, Generation which) {
  files[folder + "/Save0.cam"] = test::WorldBytes(WithObjectives(PlanOf(which, "save0", "SAVE0"), which));
  files[folder + "/te_new.tac"] = test::WorldBytes(WithObjectives(PlanOf(which, "te_new", "te_new"), which));
  files[folder + "/Mission.tac"] = test::WorldBytes(WithChanges(PlanOf(which, "Mission", "te_new")));
  files[folder + "/Training.trn"] = test::WorldBytes(PlanOf(which, "Training", "TE_NEW"));
  if (which >= Generation::Bms437) {
    files[folder + "/Strings.txt"] = StringLines();
  } else {
    AddNames(files, folder);
  }
  // Falcon 4.0 has another list of stations.
  if (which == Generation::Bms438) {
    files[folder + "/Stations+Ils.dat"] = StationLines(which);
  } else if (which != Generation::Falcon40) {
    files[folder + "/stations+ils.dat"] = StationLines(which);
  }
  if (which == Generation::Bms435) {
    files[folder + "/KOREA.THR"] =
        test::GroundCoverBytes(Size, Size, [](int x, int y) { return IsSea(x, y) ? 0U : 0x13U; });
  }
  if (which >= Generation::Bms435) files[folder + "/CampObjData.XML"] = CampaignObjectsXml(which);
}

}  // namespace kestrel::made
