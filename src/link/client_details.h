#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/changed.h"
#include "base/colour.h"
#include "link/link_options.h"
#include "link/tables.h"

// The details of the client selected in the roster, and the edits that are made there. What surprises: a client's
// leaving does not move SelectedPlot, so that it may come to point at the next client, whom an edit changes then, or
// past the last one. This stands; the details follow it, so that they show whom an edit changes. In a replay it goes
// with its client (tape/show_record.h).
namespace kestrel::link {

struct SessionState;

/// What the detail fields show.
struct ClientDetails {
  bool Enabled = false;           ///< the fields can be used
  std::string Caption = "USER:";  ///< Label10's text
  std::int16_t Id = 0;            ///< the client shown
  std::string Label;              ///< callsign
  base::Colour Color = 0;
  bool ShowAllHistory = false;
  bool Hidden = false;  ///< the inverse of PlotVisible
};

/// Key of a client's node in the tree: its Id, then "N".
std::string ClientKey(std::int16_t Id);
/// The picture of a client's node: 1 for "O", 2 for "X", 3 for "-", 0 (none) for any other text.
int StatusPicture(std::string_view Status);

/// Enables the detail fields.
void ShowPlotControl(ClientDetails& details);
/// Disables and empties the detail fields.
void HidePlotControl(ClientDetails& details);

/// A node has been selected: shows its client, or nothing when nobody holds the Id any more. RuntimeFailure, with
/// nothing changed, for a key without an Id.
void SelectPlot(std::string_view key, const Tables& tables, SessionState& session);
/// The mouse has been pressed in the tree: nobody is selected until a node is.
void DeselectPlot(SessionState& session);
/// Brings the details up to date with the client at SelectedPlot, whoever that is by now, and resets them when there is
/// none. Details that are disabled stay so.
void FollowSelectedPlot(const Tables& tables, SessionState& session);

// Edits of the client at SelectedPlot: they do nothing while the fields are disabled or when there is no such client.
base::Changed SetCallsign(std::string_view Label, Tables& tables, SessionState& session);
base::Changed SetColor(base::Colour Color, Tables& tables, SessionState& session);
base::Changed SetShowAllHistory(bool ShowAllHistory, Tables& tables, SessionState& session);
/// By HidePlot or ShowPlot.
base::Changed SetHidden(bool Hidden, Tables& tables, SessionState& session);

/// Shows or hides the plot of Clients(Index); an index that no client has does nothing.
base::Changed ShowPlot(std::size_t Index, Tables& tables);
base::Changed HidePlot(std::size_t Index, Tables& tables);

/// The friendly check of an AI aircraft was changed. `Name` is the text of its item, as received. Hostile of the
/// aircraft in the table is judged anew by the next snapshot.
void CheckFriendly(std::string_view Name, bool checked, Tables& tables);
/// Empties FriendlyList. False, with nothing changed, while AUTOFRIENDS is on.
bool ResetFriends(const Options& options, Tables& tables);

}  // namespace kestrel::link
