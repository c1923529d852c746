#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/temp_folder.h"
#include "falcon/campaign_writer.h"
#include "falcon/table_writer.h"

// A small installation of BMS: as much of one as the windows and the exchange of channels look at.
namespace kestrel::test {

class SmallInstall {
 public:
  /// A folder of BMS without theaters.
  explicit SmallInstall(std::filesystem::path root) : folder(std::move(root)) { WriteList(""); }

  const std::filesystem::path& Folder() const { return folder; }

  void Write(const std::filesystem::path& name, std::string_view bytes) const {
    std::filesystem::create_directories((folder / name).parent_path());
    WriteBytes(folder / name, bytes);
  }
  std::string Read(const std::filesystem::path& name) const { return ReadBytes(folder / name); }
  void WriteList(std::string_view list) const { Write("Data/Terrdata/theaterdefinition/theater.lst", list); }
  /// Theaters by their names, each with a campaign folder of that name; the object tables are the common ones.
  void AddTheaters(const std::vector<std::string>& names) const {
    std::string list;
    for (std::size_t at = 0; at < names.size(); ++at) {
      const std::string file = "Theater" + std::to_string(at) + ".tdf";
      Write("Data/" + file, "name " + names[at] + "\r\ncampaigndir " + names[at] + "\r\n");
      std::filesystem::create_directories(folder / "Data" / names[at]);
      list += file + "\r\n";
    }
    WriteList(list);
  }

  /// A pilot with these lines in the section of the radio.
  void AddPilot(const std::string& callsign, const std::string& radio) const {
    Write("User/Config/" + callsign + ".lbk", "");
    Write("User/Config/" + callsign + ".ini", "[Radio]\r\n" + radio);
  }

  /// Object tables with an airbase of one runway in the common folder, and for a theater of AddTheaters a campaign
  /// "te_new.tac" with that airbase, "Kunsan" of country 6, and its station.
  void AddAirbase(const std::string& theater) const {
    const std::string objects = "Data/Terrdata/objects/";
    Write(objects + "FALCON4.ct",
          TableOf<ClassPlan>({{.Domain = 0, .Class = 0, .Data = 2}, {.Index = 1}}, ClassRecord));
    Write(objects + "FALCON4.OCD",
          TableOf<ObjectiveClassPlan>({{}, {.Class = 1, .Name = "Airbase", .Header = 1}}, ObjectiveClassRecord));
    Write(objects + "FALCON4.FED", TableOf<FeatureEntryPlan>({{}}, FeatureEntryRecord));
    Write(objects + "FALCON4.PHD",
          TableOf<HeaderPlan>({{}, {.Count = 2, .Data = 180, .First = 0, .Runway = 0}}, HeaderRecord));
    Write(objects + "FALCON4.PD",
          TableOf<PointPlan>({{.North = 3000, .Kind = 2}, {.North = -3000, .Kind = 1}}, PointRecord));
    std::vector<TeamPlan> teams;
    for (int n = 0; n < 8; ++n) teams.push_back({.Number = n, .Side = n, .Name = "Country " + std::to_string(n)});
    const ObjectivePlan airbase{
        .Type = 101, .X = 398, .Y = 236, .Owner = 6, .CampId = 766, .NameId = 0, .Name = "Kunsan"};
    Write("Data/" + theater + "/te_new.tac", WorldBytes({.Place = {.Version = 108},
                                                         .Scenario = "te_new",
                                                         .SaveName = "te_new",
                                                         .Teams = teams,
                                                         .Objectives = {airbase}}));
    Write("Data/" + theater + "/stations+ils.dat", "766 75 X 18 35 1 292300 126500 11030 0 0 0\r\n");
  }

 private:
  std::filesystem::path folder;
};

}  // namespace kestrel::test
