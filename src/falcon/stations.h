#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// "stations+ils.dat": the radio aids and frequencies of a campaign's airfields.
namespace kestrel::falcon {

/// The fields of a line, in their order.
enum class StationField : std::uint8_t {
  CampId,  ///< of the objective
  TacanChannel,
  TacanBand,   ///< X or Y
  Callsign,    ///< number; 32766: none
  TacanRange,  ///< nautical miles; 0: no TACAN that can be used
  TacanType,
  TowerUhf,  ///< this and all UHF and VHF: kHz, 0 none
  TowerVhf,
  Ils1,  ///< of the four ends of runways: units of 10 kHz, 0 none
  Ils2,
  Ils3,
  Ils4,
  OpsUhf,
  GroundUhf,
  ApproachUhf,
  LsoUhf,
  AtisVhf,
  TowerVoice,  ///< of the simulator's voices
  GroundVoice,
  ApproachVoice,
  AtisVoice,  ///< may be -1
};
inline constexpr std::size_t StationFields = 21;

struct Station {
  std::int16_t CampId = 0;  ///< of the objective
  /// The fields as they are written; empty when the line is too short to have them.
  std::array<std::string, StationFields> Texts;
  /// Fields of the line, those beyond the known ones too.
  std::size_t Told = 0;

  const std::string& Text(StationField field) const { return Texts[static_cast<std::size_t>(field)]; }
  /// A field as a number; 0 when it is none or the line is too short.
  double Number(StationField field) const;
};

struct StationList {
  std::vector<Station> Stations;  ///< in the order of the file; one objective may have several
  std::string Trouble;            ///< why the list goes no further, naming the line; empty when it is whole
};

/// The file in the folder of campaigns.
inline constexpr std::string_view StationsFile = "stations+ils.dat";

inline constexpr std::size_t MaxStationFileBytes = std::size_t{4} << 20;

/// As many as there are numbers for objectives; a station takes much more memory than its shortest line.
inline constexpr std::size_t MaxStations = 32767;

/// Reads the lines. Empty ones and comments ("#") are skipped; a line may have one field or all. One that does not
/// begin with a whole number of 16 bits ends the list there, and so does the one beyond MaxStations.
StationList ReadStations(std::string_view text);

/// ReadStations of the file in the campaign's folder. RuntimeFailure when there is none or it cannot be read.
StationList LoadStations(const std::filesystem::path& campaignFolder);

}  // namespace kestrel::falcon
