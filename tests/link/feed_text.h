#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/tables.h"

// Messages of a server, for tests.
namespace kestrel::test {

/// `word` + `data` + the terminator.
inline std::string Message(std::string_view word, std::string_view data = {}) {
  std::string text(word);
  text += data;
  text += '\0';
  return text;
}

/// `text` right-aligned in `width` characters.
inline std::string Field(std::string_view text, std::size_t width = 12) {
  return std::string(text.size() < width ? width - text.size() : 0, ' ') + std::string(text);
}

/// The data of an INDATA: north, east and altitude in feet.
inline std::string PositionData(std::string_view id, std::string_view north, std::string_view east,
                                std::string_view altitude) {
  return std::string(id) + '\x1e' + Field(north) + Field(east) + Field(altitude);
}

/// The data of a NEWCLT or PLSUPD.
inline std::string ClientData(std::string_view id, std::string_view name, std::string_view info = "",
                              std::string_view status = "O") {
  return std::string(id) + '\x1e' + std::string(name) + '\x1e' + std::string(info) + '\x1e' + std::string(status);
}

/// One AI record.
inline std::string AIRecord(std::string_view name, std::string_view bearing, std::string_view range,
                            std::string_view altitude) {
  std::string record(name);
  record.resize(10, ' ');
  return record + Field(bearing, 3) + Field(range, 3) + Field(altitude, 2);
}

/// All that the tables hold, as text: equal texts mean equal tables.
inline std::string Describe(const link::Tables& tables) {
  std::string text;
  const auto number = [&text](double value) { text += std::to_string(value) + ","; };
  for (const link::PlotRecord& client : tables.Clients.Slots()) {
    text += client.Status + "|" + client.Info + "|" + client.PosText + "|" + client.Label + "|" + client.Name + "|";
    for (const double value : {1.0 * client.Id, client.X, client.Y, 1.0 * client.Color, 1.0 * client.Altitude,
                               1.0 * client.ShowLabel, 1.0 * client.ClientId, 1.0 * client.Speed}) {
      number(value);
    }
    for (const link::PlotPoint& point : client.History.Slots()) {
      number(point.X);
      number(point.Y);
    }
    text += '\n';
  }
  for (const link::AIPlotRecord& plot : tables.AIPlots.Slots()) {
    text += plot.Name + "|";
    for (const double value :
         {plot.Bearing, plot.Range, 1.0 * plot.Altitude, 1.0 * plot.X, 1.0 * plot.Y, 1.0 * plot.Hostile}) {
      number(value);
    }
    text += '\n';
  }
  for (const link::AIHistoryPoint& dot : tables.AIHistory.Slots()) {
    for (const double value : {1.0 * dot.X, 1.0 * dot.Y, 1.0 * dot.Age, 1.0 * dot.Color}) number(value);
    text += '\n';
  }
  return text;
}

}  // namespace kestrel::test
