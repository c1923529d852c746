#include "sample-theater/airfields.h"

#include <array>
#include <charconv>
#include <span>
#include <string_view>
#include <vector>

namespace kestrel::land {
namespace {

/// How a runway lies. Sides of right triangles, so that its ends are the same numbers on every machine.
struct Direction {
  double East, North;            ///< one map unit along it
  std::string_view Out, Back;    ///< degrees from the east to the north, along it and against it
  std::string_view Name, Other;  ///< runways of who lands along it and against it
};
constexpr Direction Northward = {0, 1, "90.00000", "-90.00000", "36", "18"};
constexpr Direction Eastward = {1, 0, "0.00000", "180.00000", "09", "27"};
constexpr Direction NorthEast = {0.6, 0.8, "53.13010", "233.13010", "04", "22"};
constexpr Direction SouthEast = {0.8, -0.6, "-36.86990", "143.13010", "13", "31"};

struct SampleAirfield {
  std::string_view Name;
  int Team;
  double X, Y;  ///< of the TACAN, map units
  std::string_view UHF, VHF, TACAN, Band;
  int Range;  ///< nautical miles
  Direction Runway;
  bool Parallel;                        ///< it has a second runway beside the first
  std::array<std::string_view, 4> ILS;  ///< of the ends in their order: who lands along the first, against it, ...
};

constexpr std::array<std::string_view, 3> Teams = {"Neutral", "Blue", "Red"};

// Level places on the sample theater's land.
constexpr std::array<SampleAirfield, 8> Airfields = {{
    {"Narrow Point",
     1,
     332.5,
     512.5,
     "292300",
     "126500",
     "075",
     "X",
     150,
     Northward,
     true,
     {"11030", "11030", "10990", "-"}},
    {"Westmark", 1, 224.5, 200.5, "273525", "121600", "043", "X", 100, Eastward, true, {"10930", "10870", "-", "-"}},
    {"Cape Solace", 1, 356.5, 204.5, "353100", "122100", "091", "Y", 60, NorthEast, false, {"11110", "-", "-", "-"}},
    {"Old Market",
     2,
     528.5,
     600.5,
     "297200",
     "124350",
     "022",
     "X",
     150,
     SouthEast,
     true,
     {"10950", "10950", "11150", "11150"}},
    {"Far Harbour", 2, 656.5, 348.5, "340200", "118100", "109", "X", 100, Northward, false, {"10910", "-", "-", "-"}},
    {"High Fell", 2, 880.5, 900.5, "262700", "133200", "057", "Y", 60, Eastward, false, {"-", "11070", "-", "-"}},
    {"Saint Brannoc", 0, 608.5, 480.5, "257800", "119100", "118", "X", 40, NorthEast, false, {"-", "-", "-", "-"}},
    {"Northern Light",
     0,
     576.5,
     896.5,
     "236600",
     "122800",
     "034",
     "X",
     40,
     SouthEast,
     false,
     {"11190", "11190", "-", "-"}},
}};

/// Channels 1 and on of the two radios; the others have never been set.
constexpr std::array<std::string_view, 10> ChannelsUHF = {"292300", "273525", "353100", "235100", "317650",
                                                          "391975", "305000", "282550", "243000", "259700"};
constexpr std::array<std::string_view, 6> ChannelsVHF = {"126500", "121600", "122100", "138050", "134925", "121500"};
constexpr std::array<std::string_view, 2> ChannelsUI = {"307300", "309275"};

struct Noted {
  std::string_view Description, Value;
};
struct NotedFolder {
  std::string_view Name;
  std::vector<Noted> Entries;
};

/// `value` with five places behind the point.
std::string Five(double value) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 5);
  return {text.data(), end.ptr};
}

class Text {
 public:
  void Section(const std::string& name) { text += "[" + name + "]\r\n"; }
  void Key(std::string_view name, std::string_view value) {
    text.append(name).append("=").append(value).append("\r\n");
  }
  void Key(std::string_view name, std::size_t number, std::string_view value) {
    Key(std::string(name) + std::to_string(number), value);
  }
  /// `name` with 1, 2 and so on.
  void Keys(std::string_view name, std::span<const std::string_view> values) {
    for (std::size_t i = 0; i < values.size(); ++i) Key(name, i + 1, values[i]);
  }
  std::string Take() { return text + "\r\n"; }

 private:
  std::string text;
};

constexpr double HalfLength = 1.4;  ///< of a runway, map units
constexpr double HalfApart = 0.4;   ///< between parallel runways, map units

void AddRunwayEnds(Text& text, const SampleAirfield& airfield) {
  const Direction& way = airfield.Runway;
  for (std::size_t slot = 0; slot < airfield.ILS.size(); ++slot) {
    const bool there = slot < 2 || airfield.Parallel;
    const bool against = slot % 2 != 0;
    // Who lands along the runway comes in over its near end; the left one of two lies to the left of it.
    const double along = against ? HalfLength : -HalfLength;
    const double left = !airfield.Parallel ? 0 : slot < 2 ? HalfApart : -HalfApart;
    std::string name = there ? std::string(against ? way.Other : way.Name) : "-";
    if (airfield.Parallel) name += (slot < 2) != against ? 'L' : 'R';
    text.Key("ILS_", slot, airfield.ILS[slot]);
    text.Key("ILS_DES_", slot, name);
    text.Key("ILS_RX_", slot, Five(there ? airfield.X + way.East * along - way.North * left : 0));
    text.Key("ILS_RY_", slot, Five(there ? airfield.Y + way.North * along + way.East * left : 0));
    text.Key("ILS_DRAW_HEADING_", slot, !there ? "0.00000" : against ? way.Out : way.Back);
    text.Key("ILS_VIS_", slot, there && airfield.ILS[slot] != "-" && slot % 2 == 0 ? "1" : "0");
  }
}

}  // namespace

std::string FrequencyFileText() {
  const std::array<NotedFolder, 2> folders = {
      {{"Blue support", {{"Texaco1", "235100"}, {"Shell1", "317650"}, {"AWACS", "391975"}}},
       {"Emergency", {{"Guard", "243000"}, {"Guard VHF", "121500"}}}}};
  Text text;
  text.Section("CUS_UHF");
  text.Keys("UHF_", ChannelsUHF);
  text.Section("CUS_VHF");
  text.Keys("VHF_", ChannelsVHF);
  text.Section("CUS_UI");
  text.Keys("F", ChannelsUI);
  text.Section("CUS_FREQ");
  text.Key("NUM", std::to_string(folders.size()));
  for (std::size_t i = 0; i < folders.size(); ++i) {
    text.Section("CUS_FREQ_" + std::to_string(i + 1));
    text.Key("NAME", folders[i].Name);
    text.Key("NUM", std::to_string(folders[i].Entries.size()));
    for (std::size_t j = 0; j < folders[i].Entries.size(); ++j) {
      text.Key("DESC_", j + 1, folders[i].Entries[j].Description);
      text.Key("VAL_", j + 1, folders[i].Entries[j].Value);
    }
  }
  text.Section("AIRFIELDS");
  text.Key("NUM", std::to_string(Airfields.size()));
  for (std::size_t i = 0; i < Airfields.size(); ++i) {
    const SampleAirfield& airfield = Airfields[i];
    text.Section("AIRFIELD_" + std::to_string(i + 1));
    text.Key("NAME", airfield.Name);
    text.Key("UHF", airfield.UHF);
    text.Key("VHF", airfield.VHF);
    text.Key("TACAN", airfield.TACAN);
    text.Key("TACANX", Five(airfield.X));
    text.Key("TACANY", Five(airfield.Y));
    text.Key("TACANR", Five(airfield.Range));
    text.Key("TACAN_BAND", airfield.Band);
    text.Key("TEAM_INDEX", std::to_string(airfield.Team));
    text.Key("TACAN_VIS", "1");
    text.Key("VIS", "1");
    AddRunwayEnds(text, airfield);
  }
  text.Section("TEAMS");
  for (std::size_t i = 0; i < Teams.size(); ++i) text.Key("TEAM_", i, Teams[i]);
  return text.Take();
}

}  // namespace kestrel::land
