#pragma once

#include <ostream>
#include <string>

#include "areas/area_tree.h"
#include "areas/golden_areas.h"
#include "core/frequency_files.h"
#include "core/theater_areas.h"
#include "radio/frequency_edits.h"
#include "radio/frequency_file.h"

namespace kestrel::core {

/// Data of theater "korea" that are kept and rescued.
struct KeptKind {
  const KeptFile* Kept;
  std::string What;
  std::string File;                        ///< theirs
  void (*Change)(Station&);                ///< as the person does
  void (*Fill)(Station&);                  ///< with one of each record
  std::string (*Bytes)(const Station&);    ///< of their file
  void (*Grow)(Station&, std::size_t by);  ///< records of more than 1000 bytes each
  std::string Rescue() const { return File.substr(0, File.size() - 4) + ".rescue"; }
  std::string Former() const { return File + ".old"; }

  friend std::ostream& operator<<(std::ostream& out, const KeptKind& kind) { return out << kind.What; }
};

inline const KeptKind keptKinds[] = {
    {.Kept = &KeptAreas,
     .What = "areas",
     .File = "Theaters/korea_Areas.dat",
     .Change = [](Station& station) { areas::NewFolder(station.Areas, station.AreaSteps); },
     .Fill = [](Station& station) { station.Areas = test::SampleAreas(); },
     .Bytes = [](const Station& station) { return test::GoldenFile(station.Areas, test::Golden::V3); },
     .Grow =
         [](Station& station, std::size_t by) {
           station.Areas.AreaFolders.Append({"F", areas::On});
           areas::AreaGroup& group = station.Areas.AreaGroups.Append({.Name = "G", .FolderIndex = 1});
           for (; by > 0; --by) group.Areas.Append({.Name = std::to_string(by)}).Lines.Resize(20);
         }},
    {.Kept = &KeptFrequencies,
     .What = "frequencies",
     .File = "Theaters/korea_Frequencies.dat",
     .Change = [](Station& station) { radio::AddFolder(station.Frequencies, station.FrequencySteps); },
     .Fill =
         [](Station& station) {
           station.Frequencies.CustomUHF[1] = "297500";
           station.Frequencies.FreqFolders.Append({"Package", {}}).Entries.Append({"Tanker", "235100"});
           station.Frequencies.Airfields.Append({}).Name = "Kunsan";
           station.Frequencies.Teams[7] = "Red";
         },
     .Bytes = [](const Station& station) { return radio::WriteFrequencies(station.Frequencies); },
     .Grow =
         [](Station& station, std::size_t by) {
           radio::FreqFolder& folder = station.Frequencies.FreqFolders.Append({"F", {}});
           for (; by > 0; --by) folder.Entries.Append({std::to_string(by) + std::string(1000, 'd'), "243000"});
         }},
};

}  // namespace kestrel::core
