#include "session-sim/encoder.h"

#include <algorithm>
#include <cmath>

namespace kestrel::sim {
namespace {

constexpr double DegreesPerRadian = 180 / 3.14159265358979323846;

std::string Message(std::string_view word, std::string_view data) {
  std::string message(word);
  message += data;
  message += '\0';
  return message;
}

std::string ClientFields(const Player& player) {
  std::string fields = std::to_string(player.Id);
  for (const std::string& field : {player.Name, player.Info, std::string(1, player.Status)}) {
    fields += RecordSeparator;
    fields += field;
  }
  return fields;
}

/// `value` as a whole number of `digits` digits, held at the largest one that fits.
std::string Digits(double value, int digits) {
  const long most = digits == 2 ? 99 : 999;
  std::string text = std::to_string(std::clamp(std::lround(value), 0L, most));
  return std::string(static_cast<std::size_t>(digits) - text.size(), '0') + text;
}

}  // namespace

std::string NewClt(const Player& player) { return Message("NEWCLT", ClientFields(player)); }
std::string DelClt(std::int16_t id) { return Message("DELCLT", std::to_string(id)); }
std::string PlsUpd(const Player& player) { return Message("PLSUPD", ClientFields(player)); }

std::string InData(const Player& player, char decimalSign) {
  std::string data = std::to_string(player.Id);
  data += RecordSeparator;
  data += WideNumber(player.At.Y * FeetPerUnit, decimalSign);
  data += WideNumber(player.At.X * FeetPerUnit, decimalSign);
  data += WideNumber(player.At.Altitude, decimalSign);
  return Message("INDATA", data);
}

std::string AiLoca(const std::vector<AIAircraft>& aircraft, BullseyePoint bullseye) {
  std::string data;
  for (const AIAircraft& one : aircraft) data += AiRecord(one, bullseye);
  return Message("AILOCA", data);
}

std::string Syncro() { return Message("SYNCRO", ""); }
std::string DisCon() { return Message("DISCON", ""); }

std::string AiRecord(const AIAircraft& aircraft, BullseyePoint bullseye) {
  std::string record = aircraft.Name.substr(0, 10);
  record.resize(10, ' ');
  const double east = aircraft.At.X - bullseye.X;
  const double north = aircraft.At.Y - bullseye.Y;
  const long bearing = std::lround(std::atan2(east, north) * DegreesPerRadian + 360) % 360;
  record += Digits(static_cast<double>(bearing), 3);
  record += Digits(std::sqrt(east * east + north * north) / UnitsPerMile, 3);
  record += Digits(aircraft.At.Altitude / 1000, 2);
  return record;
}

std::string WideNumber(double value, char decimalSign) {
  const long long hundredths = std::llround(value * 100);
  const long long whole = std::llabs(hundredths);
  std::string text = hundredths < 0 ? "-" : "";
  text += std::to_string(whole / 100);
  text += decimalSign;
  text += static_cast<char>('0' + whole / 10 % 10);
  text += static_cast<char>('0' + whole % 10);
  return std::string(text.size() < 12 ? 12 - text.size() : 0, ' ') + text;
}

}  // namespace kestrel::sim
