#include "falcon/made_installation.h"

#include <cstddef>
#include <cstdio>
#include <string_view>

#include "base/temp_folder.h"
#include "falcon/made_files.h"
#include "falcon/made_world.h"

namespace kestrel::made {
namespace {

namespace fs = std::filesystem;

/// Where a generation has its folders, and how its texts are written.
struct Layout {
  Generation Which;
  int DataVersion;
  const char* Key;
  const char* Data;      ///< below the installation; with a slash behind
  const char* List;      ///< of theaters, below the installation
  const char* Told;      ///< the folder of definitions as the list writes it
  const char* Folder;    ///< as it is on the disk, below the data
  const char* Campaign;  ///< these below the data
  const char* Objects;
  const char* Terrain;
  const char* LineEnd;
};

constexpr Layout Layouts[] = {
    {Generation::Falcon40, 63, "4.0", "", "theater.lst", "terrdata\\theaterdefinition", "terrdata/theaterdefinition",
     "campaign", "terrdata/objects", "terrdata/korea", "\r\n"},
    {Generation::Bms433, 73, "Falcon BMS 4.33", "Data/", "Data/Terrdata/theaterdefinition/theater.lst",
     "Terrdata/theaterdefinition", "Terrdata/theaterdefinition", "Campaign", "Terrdata/objects", "Terrdata/korea",
     "\r\n"},
    {Generation::Bms435, 103, "Falcon BMS 4.35", "Data/", "Data/TerrData/TheaterDefinition/theater.lst",
     "Terrdata\\theaterdefinition", "TerrData/TheaterDefinition", "Campaign", "TerrData/Objects", "TerrData/Korea",
     "\r\n"},
    {Generation::Bms437, 108, "Falcon BMS 4.37", "Data/", "Data/TerrData/TheaterDefinition/Theater.lst",
     "Terrdata\\theaterdefinition", "TerrData/TheaterDefinition", "Campaign", "TerrData/Objects", "TerrData/Korea",
     "\r\n"},
    {Generation::Bms438, 109, "Falcon BMS 4.38", "Data/", "Data/TerrData/TheaterDefinition/theater.lst",
     "TerrData\\TheaterDefinition", "TerrData/TheaterDefinition", "Campaign", "TerrData/Objects", "TerrData/Korea",
     "\n"},
};

const Layout& LayoutOf(Generation which) { return Layouts[static_cast<std::size_t>(which)]; }

std::string Lines(const std::vector<std::string>& lines, const std::string& end) {
  std::string text;
  for (const std::string& line : lines) text += line + end;
  return text;
}

/// Not each generation tells each folder: what is not told is the default theater's.
std::string Definition(const Layout& layout) {
  std::vector<std::string> lines = {"#------------------",
                                    "# A theater",
                                    "#------------------",
                                    "",
                                    "# shown in the pick list",
                                    "name " + TheaterName,
                                    "",
                                    "desc A theater - with a warning",
                                    "bitmap Terrdata\\theaterdefinition\\Made.tga",
                                    " ",
                                    "# Where the campaign directory is"};
  if (layout.Which == Generation::Falcon40) {
    lines.insert(lines.end(), {"campaigndir campaign", "terraindir terrdata\\korea", "objectdir terrdata\\objects",
                               "3ddatadir terrdata\\objects"});
  } else if (layout.Which == Generation::Bms433) {
    lines.insert(lines.end(), {"CAMPAIGNDIR Campaign", "terraindir Terrdata/Korea", "objectdir Terrdata\\objects"});
  } else {
    lines.insert(lines.end(), {"campaigndir Campaign", "# terraindir Add-On Other\\Terrdata",
                               "objectdir Terrdata\\objects", " simdatadir Sim"});
  }
  if (layout.Which == Generation::Bms437) lines.emplace_back("tileset MADE");
  lines.insert(lines.end(),
               {"", "# minimum tacan channel", "mintacan 70", "doubleres2dmap 1", "magneticdeclination 0"});
  std::string text = Lines(lines, layout.LineEnd);
  text.erase(text.rfind(layout.LineEnd));  // the last line has no end
  return text;
}

/// It brings a campaign and the classes of buildings; all else is the default theater's.
void AddAddOn(Files& files, const Layout& layout) {
  const std::string folder = std::string(layout.Data) + "Add-On Made";
  AddCampaign(files, folder + "/Campaign", layout.Which);
  const bool isFolders = layout.Which >= Generation::Bms437;
  files[folder + "/TerrData/Objects/" + (isFolders ? "Falcon4_FCD.xml" : "FALCON4_FCD.XML")] = BuildingsXml();
  std::vector<std::string> lines = {"name " + AddOnName, "campaigndir Add-On Made\\Campaign",
                                    "objectdir Add-On Made\\Terrdata\\objects"};
  if (layout.Which == Generation::Bms437) lines.emplace_back("tileset MADE");
  files[folder + "/TerrData/TheaterDefinition/Made.tdf"] = Lines(lines, layout.LineEnd);
}

std::string ListOfTheaters(const Layout& layout) {
  std::vector<std::string> lines = {"# LIST OF ALL KNOWN THEATERS"};
  if (layout.Which == Generation::Bms438) lines.clear();
  const std::string folder = layout.Told;
  lines.push_back(folder + (folder.find('/') == std::string::npos ? "\\" : "/") + "Made Straits.tdf");
  if (layout.Which >= Generation::Bms435) lines.emplace_back("Add-On Made\\Terrdata\\theaterdefinition\\Made.tdf");
  return Lines(lines, "\r\n");
}

std::string PilotFile(int more) {
  std::vector<std::string> lines = {"[EWS]", "Reqctr=1", "[Bullseye]", "BullseyeInfoOnMFD=1", "[Radio]"};
  for (int n = 1; n <= 20; ++n) lines.push_back("UHF_" + std::to_string(n) + "=" + std::to_string(UhfOf(n) + more));
  for (int n = 1; n <= 20; ++n) lines.push_back("UHF_COMMENT_" + std::to_string(n) + "=(open)");
  for (int n = 1; n <= 20; ++n) lines.push_back("VHF_" + std::to_string(n) + "=" + std::to_string(VhfOf(n)));
  for (int n = 1; n <= 20; ++n) lines.push_back("VHF_COMMENT_" + std::to_string(n) + "=(open)");
  lines.insert(lines.end(), {"ILS_1=11030", "ILS_COMMENT_1=Home", "[COMMS]", "Comm1=1", "Comm2=2"});
  return Lines(lines, "\r\n");
}

/// A text of the registry's file.
std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char letter : text) quoted += letter == '\\' ? std::string("\\\\") : std::string(1, letter);
  return quoted + "\"";
}

/// A value of 12 bytes, as the simulator writes the callsign.
std::string HexOf(std::string_view text) {
  std::string hex = "hex:";
  for (std::size_t n = 0; n < 12; ++n) {
    char byte[8];
    std::snprintf(byte, sizeof byte, "%s%02x", n == 0 ? "" : ",",
                  n < text.size() ? static_cast<unsigned>(text[n]) : 0U);
    hex += byte;
  }
  return hex;
}

}  // namespace

int DataVersion(Generation which) { return LayoutOf(which).DataVersion; }
std::string KeyName(Generation which) { return LayoutOf(which).Key; }

void AddConfig(Files& files, const std::string& folder) {
  files[folder + "/Viper.ini"] = PilotFile(0);
  files[folder + "/Viper.lbk"] = "a log book";
  files[folder + "/Ghost.ini"] = PilotFile(50000);
  files[folder + "/Ghost.LBK"] = "a log book";
  files[folder + "/Lost.lbk"] = "a log book";
  files[folder + "/Falcon BMS.cfg"] =
      "// Configuration\r\n\r\nset g_sTileSet \"MADE\"                               // Tileset to use\r\n"
      "set g_nF1TeamUiFreq " +
      F1 +
      "                           // Frequency for F1\r\n"
      "set g_nF2TeamUiFreq " +
      F2 +
      "                           // Frequency for F2\r\n"
      "set g_bOther 1\t// something else\r\n";
  files[folder + "/Falcon BMS User.cfg"] = "// Own lines\r\nset g_bOther 0\r\n";
}

Files InstallationFiles(Generation which) {
  const Layout& layout = LayoutOf(which);
  const std::string data = layout.Data;
  Files files;
  files[layout.List] = ListOfTheaters(layout);
  files[data + layout.Folder + "/Made Straits.tdf"] = Definition(layout);
  const std::string objects = data + layout.Objects;
  if (which >= Generation::Bms437) {
    AddXmlFolders(files, objects);
  } else if (which == Generation::Bms435) {
    AddXmlTables(files, objects);
  } else {
    AddBinaryTables(files, objects, which);
  }
  AddModels(files, objects, which);
  AddTerrain(files, data + layout.Terrain, which);
  AddCampaign(files, data + layout.Campaign, which);
  if (which >= Generation::Bms435) AddAddOn(files, layout);
  if (which != Generation::Falcon40) AddConfig(files, "User/Config");
  return files;
}

Installation WriteInstallation(const fs::path& folder, Generation which) {
  for (const auto& [name, bytes] : InstallationFiles(which)) {
    fs::create_directories((folder / name).parent_path());
    test::WriteBytes(folder / name, bytes);
  }
  const Layout& layout = LayoutOf(which);
  const fs::path data = which == Generation::Falcon40 ? folder : folder / "Data";
  return {which,
          layout.Key,
          folder,
          data,
          data / layout.Campaign,
          data / layout.Objects,
          data / layout.Terrain,
          which == Generation::Falcon40 ? fs::path() : folder / "User/Config"};
}

std::vector<Installation> WriteWinePrefix(const fs::path& prefix, const std::vector<Generation>& which) {
  std::vector<Installation> written;
  std::string registry =
      "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n\n"
      "[Software\\\\Borland\\\\Other] 1795306149\n#time=1db3a1b2c3d4e5f\n\"baseDir\"=\"C:\\\\Other\"\n";
  for (const Generation one : which) {
    const std::string key = KeyName(one);
    const bool isOld = one == Generation::Falcon40;
    const std::string name = isOld ? "Falcon4" : key;
    written.push_back(WriteInstallation(prefix / "drive_c/Games" / name, one));
    registry += "\n[Software\\\\Wow6432Node\\\\";
    registry += isOld ? "Microprose\\\\Falcon\\\\4.0" : "Benchmark Sims\\\\" + key;
    registry += "] 1795306149\n#time=1db3a1b2c3d4e60\n\"baseDir\"=" + Quoted("C:\\Games\\" + name) +
                "\n\"curTheater\"=" + Quoted(TheaterName) + "\n\"PilotCallsign\"=" + HexOf(CurrentPilot) + "\n";
  }
  test::WriteBytes(prefix / "system.reg", registry);
#ifndef _WIN32
  fs::create_directories(prefix / "dosdevices");
  fs::create_directory_symlink("../drive_c", prefix / "dosdevices/c:");
  fs::create_directory_symlink("/", prefix / "dosdevices/z:");
#endif
  return written;
}

}  // namespace kestrel::made
