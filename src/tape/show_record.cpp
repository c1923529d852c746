#include "tape/show_record.h"

#include <cstddef>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "link/client_details.h"
#include "link/plot_feed.h"

namespace kestrel::tape {
namespace {

void TakeLooks(link::PlotRecord& client, link::PlotRecord& before) {
  client.Label = std::move(before.Label);
  client.Color = before.Color;
  client.ShowLabel = before.ShowLabel;
  client.PlotVisible = before.PlotVisible;
  client.ShowAllHistory = before.ShowAllHistory;
}

void ResetLooks(link::PlotRecord& client, std::size_t slot) {
  // No blank before the number, unlike the label of a live client: this stands.
  client.Label = "Airplane";
  base::AppendFormat(client.Label, static_cast<double>(slot), "0");
  client.Color = 0;
  client.ShowLabel = true;
  client.PlotVisible = true;
  client.ShowAllHistory = false;
}

void ShowClients(base::Table<link::PlotRecord> recorded, link::Tables& tables) {
  base::SteadyTable<link::PlotRecord> before = std::exchange(tables.Clients, std::move(recorded));
  const bool first = before[0].Label == FirstTime;
  for (std::size_t slot = 1; slot <= tables.Clients.UpperBound(); ++slot) {
    link::PlotRecord& client = tables.Clients[slot];
    // After a jump the slot may be one that was not there before.
    if (!first && !client.PosText.empty() && slot <= before.UpperBound()) {
      TakeLooks(client, before[slot]);
    } else {
      ResetLooks(client, slot);
    }
  }
  tables.Clients[0] = {};
  tables.RebuildIndex();
}

}  // namespace

void ShowTapeRecord(TapeRecord record, base::Colour AICOLOR, link::Tables& tables, link::SessionState& session) {
  link::IncreasePlotHistories(AICOLOR, tables);
  // Each dot of a replay is there twice: this stands.
  link::AddPlotDots(AICOLOR, tables);
  tables.AIPlots = std::move(record.AI);
  tables.AIPlots[0] = {};
  link::PlaceAIPlots(session.Bull, tables);
  ShowClients(std::move(record.Clients), tables);
  if (!session.Details.Enabled) return;
  // The client stays selected in the tree, so that what is edited must be his slot, which may be another one now.
  session.SelectedPlot = tables.FindClient(session.Details.Id);
  if (session.SelectedPlot == 0) link::HidePlotControl(session.Details);
}

}  // namespace kestrel::tape
