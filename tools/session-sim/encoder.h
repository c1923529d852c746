#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session-sim/world.h"

// The server's messages as bytes, each with its terminator.
namespace kestrel::sim {

inline constexpr char RecordSeparator = '\x1e';

/// A place that AI records are relative to; map units, Y grows north.
struct BullseyePoint {
  double X = 0;
  double Y = 0;
};

std::string NewClt(const Player& player);
std::string DelClt(std::int16_t id);
std::string PlsUpd(const Player& player);
/// The position as three numbers of 12 characters: north, east and altitude in feet, with `decimalSign`.
std::string InData(const Player& player, char decimalSign);
/// One snapshot of all of `aircraft`.
std::string AiLoca(const std::vector<AIAircraft>& aircraft, BullseyePoint bullseye);
std::string Syncro();
std::string DisCon();

/// The 18 characters of one AI aircraft: name, whole degrees 000-359, whole nautical miles, thousands of feet.
std::string AiRecord(const AIAircraft& aircraft, BullseyePoint bullseye);
/// A number with two decimals in 12 characters, blanks in front.
std::string WideNumber(double value, char decimalSign);

}  // namespace kestrel::sim
