#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/table.h"

// What the controller knows of radio frequencies and navigation aids. A frequency is text, never a number: it is kept,
// saved, shown and handed on as it was typed. Six digits are kHz (UHF, VHF), five are tens of kHz (ILS), "000000" is a
// channel that was never set, "0" says that there is none.
namespace kestrel::radio {

inline constexpr std::size_t ChannelCount = 20;
inline constexpr std::size_t TeamCount = 8;
inline constexpr std::size_t RunwayEndCount = 4;

/// Texts of the channels 1 to 20; slot 0 is not used.
using Channels = std::array<std::string, ChannelCount + 1>;

/// What a channel holds that was never set.
inline constexpr std::string_view UnsetChannel = "000000";

/// The channels of the installation, of "DefFreq.ini"; they do not change while the station runs.
struct DefaultFrequencies {
  Channels DefaultUHF, DefaultVHF;
  Channels ChannelNames;  ///< one for the UHF and the VHF channel of a number
  std::string DefaultF1, DefaultF2;
};

/// A frequency of any kind that the controller has noted.
struct FreqEntry {
  std::string Description;
  std::string Value;

  bool operator==(const FreqEntry&) const = default;
};

struct FreqFolder {
  std::string Name;
  base::Table<FreqEntry> Entries;
};

/// Map position of a runway end, map units.
struct RunwayEnd {
  double RX = 0;
  double RY = 0;
};

struct Airfield {
  template <class T>
  using PerRunwayEnd = std::array<T, RunwayEndCount>;

  std::string Name;
  std::string UHF;
  std::string VHF;
  std::string TACAN;                  ///< channel number
  double TACANX = 0;                  ///< of the station, map units
  double TACANY = 0;                  ///< the same, Y to the north
  std::int32_t TACANR = 0;            ///< range, nautical miles
  std::string TACAN_BAND;             ///< "X" or "Y"
  PerRunwayEnd<std::string> ILS;      ///< frequency, or "-"
  PerRunwayEnd<std::string> ILS_DES;  ///< name of the runway, such as "09L", or "-"
  PerRunwayEnd<RunwayEnd> ILS_R;
  PerRunwayEnd<bool> ILS_VIS = {};             ///< the ILS is drawn on the map
  PerRunwayEnd<double> ILS_DRAW_HEADING = {};  ///< degrees, from the east to the north
  bool TACAN_VIS = false;                      ///< the TACAN is drawn on the map
  bool VIS = false;                            ///< the airfield is drawn on the map
  std::uint8_t TEAM_INDEX = 0;                 ///< of Teams; files may hold numbers beyond 7
};

/// The tables of the current theater, as a theater without a file of them has them.
struct Frequencies {
  Frequencies();

  Channels CustomUHF, CustomVHF;
  std::string CustomF1, CustomF2;  ///< the two "UI" frequencies of the teams
  base::Table<FreqFolder> FreqFolders;
  base::Table<Airfield> Airfields;
  std::array<std::string, TeamCount> Teams;
  std::uint64_t Revision = 0;  ///< grows with each change by the person, for what keeps up with it; not in the file
};

/// "Team #3": the name of a team that has none.
std::string DefaultTeam(std::size_t index);

/// The number at the head of `value` is from 225000 to 399975 and the characters 5 and 6 of the text as it stands are
/// 00, 20, 25, 50, 70 or 75; or the text is "0". The same for the others.
bool IsUHF(std::string_view value);
/// From 116000 to 151975, with the same endings; or "0".
bool IsVHF(std::string_view value);
/// From 10810 to 11995, character 5 being 0 or 5; or "0".
bool IsILS(std::string_view value);

/// Images of the trees by their number.
enum class FreqImage : std::int16_t { Folder = 1, UHF, VHF, Airfield, TACAN, ILS, Unknown };

/// The image of a value: of "0", which is of all kinds, that of an ILS.
FreqImage FreqValToIcon(std::string_view value);

}  // namespace kestrel::radio
