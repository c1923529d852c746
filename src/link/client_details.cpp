#include "link/client_details.h"

#include "base/numbers.h"
#include "link/roster.h"
#include "link/session.h"

namespace kestrel::link {
namespace {

using base::Changed;

bool IsClient(std::size_t Index, const Tables& tables) { return Index >= 1 && Index <= tables.Clients.UpperBound(); }

void Fill(const PlotRecord& client, ClientDetails& details) {
  details.Caption = "USER: " + client.Name;
  details.Id = client.Id;
  details.Label = client.Label;
  details.Color = client.Color;
  details.ShowAllHistory = client.ShowAllHistory;
  details.Hidden = !client.PlotVisible;
}

/// The client that an edit changes, null when there is none.
PlotRecord* EditedClient(Tables& tables, const SessionState& session) {
  if (!session.Details.Enabled || !IsClient(session.SelectedPlot, tables)) return nullptr;
  return &tables.Clients[session.SelectedPlot];
}

Changed SetVisible(std::size_t Index, bool PlotVisible, Tables& tables) {
  if (!IsClient(Index, tables)) return Changed::Nothing;
  tables.Clients[Index].PlotVisible = PlotVisible;
  return Changed::Plots;
}

}  // namespace

std::string ClientKey(std::int16_t Id) { return base::FormatInvariant(Id, "0") + "N"; }

int StatusPicture(std::string_view Status) {
  if (Status == "O") return 1;
  if (Status == "X") return 2;
  return Status == "-" ? 3 : 0;
}

void ShowPlotControl(ClientDetails& details) { details.Enabled = true; }

void HidePlotControl(ClientDetails& details) { details = {}; }

void SelectPlot(std::string_view key, const Tables& tables, SessionState& session) {
  const std::size_t index = tables.FindClient(base::Int16FromText(key.substr(0, key.empty() ? 0 : key.size() - 1)));
  session.SelectedPlot = index;
  if (index == 0) {
    HidePlotControl(session.Details);
    return;
  }
  ShowPlotControl(session.Details);
  Fill(tables.Clients[index], session.Details);
}

void DeselectPlot(SessionState& session) {
  session.SelectedPlot = 0;
  HidePlotControl(session.Details);
}

void FollowSelectedPlot(const Tables& tables, SessionState& session) {
  if (!session.Details.Enabled) return;
  if (IsClient(session.SelectedPlot, tables)) {
    Fill(tables.Clients[session.SelectedPlot], session.Details);
  } else {
    HidePlotControl(session.Details);
  }
}

Changed SetCallsign(std::string_view Label, Tables& tables, SessionState& session) {
  PlotRecord* client = EditedClient(tables, session);
  if (client == nullptr) return Changed::Nothing;
  client->Label = Label;
  tables.Given.GiveLabel(client->Name, Label == IdLabel(client->Id) ? std::string_view() : Label);
  session.Details.Label = Label;
  return Changed::Plots;
}

Changed SetColor(base::Colour Color, Tables& tables, SessionState& session) {
  PlotRecord* client = EditedClient(tables, session);
  if (client == nullptr) return Changed::Nothing;
  client->Color = Color;
  tables.Given.GiveColor(client->Name, Color);
  session.Details.Color = Color;
  return Changed::Plots;
}

Changed SetShowAllHistory(bool ShowAllHistory, Tables& tables, SessionState& session) {
  PlotRecord* client = EditedClient(tables, session);
  if (client == nullptr) return Changed::Nothing;
  client->ShowAllHistory = ShowAllHistory;
  session.Details.ShowAllHistory = ShowAllHistory;
  return Changed::Plots;
}

Changed SetHidden(bool Hidden, Tables& tables, SessionState& session) {
  if (EditedClient(tables, session) == nullptr) return Changed::Nothing;
  session.Details.Hidden = Hidden;
  return Hidden ? HidePlot(session.SelectedPlot, tables) : ShowPlot(session.SelectedPlot, tables);
}

Changed ShowPlot(std::size_t Index, Tables& tables) { return SetVisible(Index, true, tables); }

Changed HidePlot(std::size_t Index, Tables& tables) { return SetVisible(Index, false, tables); }

void CheckFriendly(std::string_view Name, bool checked, Tables& tables) {
  if (checked) {
    AddToFriendlyList(Name, tables);
  } else {
    DeleteFromFriendlyList(Name, tables);
  }
}

bool ResetFriends(const Options& options, Tables& tables) {
  if (options.AUTOFRIENDS) return false;
  tables.FriendlyList.Clear();
  return true;
}

}  // namespace kestrel::link
