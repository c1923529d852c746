// Bytes of a server, cut into arrivals, through the session into the tables.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "link/friendly_index.h"
#include "link/lone_session.h"
#include "link/plot_feed.h"

namespace {

using namespace kestrel;

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckClient(const link::PlotRecord& client) {
  Require(std::isfinite(client.X) && std::isfinite(client.Y));
  for (const link::PlotPoint& point : client.History.Slots()) Require(std::isfinite(point.X) && std::isfinite(point.Y));
  Require(client.History.Empty() == client.PosText.empty());
  Require(client.PosText.empty() || client.PosText.size() >= 16);
  Require(client.Id == client.ClientId);
}

/// Entry by entry, without the index that the program makes.
bool IsFriendly(std::string_view name, const base::Table<std::string>& FriendlyList) {
  const std::string_view text = link::FlightText(name);
  return std::ranges::any_of(FriendlyList.Live(),
                             [text](const std::string& entry) { return entry.find(text) != std::string::npos; });
}

void CheckTables(const link::Tables& tables) {
  for (const link::PlotRecord& client : tables.Clients.Slots()) CheckClient(client);
  for (std::size_t i = 1; i <= tables.Clients.UpperBound(); ++i) {
    const std::size_t found = tables.FindClient(tables.Clients[i].Id);
    Require(found >= 1 && found <= i && tables.Clients[found].Id == tables.Clients[i].Id);
  }
  for (std::size_t i = 1; i <= tables.AIPlots.UpperBound(); ++i) {
    const link::AIPlotRecord& plot = tables.AIPlots[i];
    Require(std::isfinite(plot.X) && std::isfinite(plot.Y) && std::isfinite(plot.Bearing) && std::isfinite(plot.Range));
    Require(plot.Name.size() == 9 || plot.Name.size() == 10);
    Require(plot.Hostile == (IsFriendly(plot.Name, tables.FriendlyList) ? 0 : 1));
    Require(i == 1 || tables.AIPlots[i - 1].Name <= plot.Name);
  }
  std::uint8_t before = link::DroppedAge;
  for (const link::AIHistoryPoint& dot : tables.AIHistory.Live()) {
    Require(dot.Age >= 1 && dot.Age < link::DroppedAge && dot.Age <= before);
    Require(std::isfinite(dot.X) && std::isfinite(dot.Y));
    before = dot.Age;
  }
}

}  // namespace

/// The first byte of each piece says how long the arrival is and what happens behind it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  link::LoneSession around;
  around.state.Bull = {512, 512};
  around.tables.FriendlyList.Append("Viper1");
  around.tables.FriendlyList.Append("");

  std::string_view left(reinterpret_cast<const char*>(data), size);
  while (!left.empty()) {
    const auto head = static_cast<std::uint8_t>(left.front());
    left.remove_prefix(1);
    if (around.socket.State() == link::SocketState::Closed) {
      around.session.ConnectTo("server");
      around.socket.Accept();
    }
    const std::string_view arrival = left.substr(0, head < 128 ? head : 16 * (head - 127U));
    left.remove_prefix(arrival.size());
    around.clock.Ticks += head * 1000U;
    around.socket.Arrive(arrival);
    CheckTables(around.tables);
    if (head % 32 == 31) around.socket.PeerCloses();
    if (head % 64 == 33) around.socket.Fail("broken");
    if (head % 64 == 34) around.session.Disconnect();
    Require(around.state.Connected || around.desktop.Boxes.size() > 0 ||
            around.socket.State() == link::SocketState::Closed);
  }
  CheckTables(around.tables);
  return 0;
}
