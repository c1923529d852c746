#include "link/roster.h"

#include <string>
#include <utility>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "link/fields.h"

namespace kestrel::link {
namespace {

/// What NEWCLT and PLSUPD carry.
struct ClientFields {
  std::int16_t Id;
  std::string_view Name;
  std::string_view Info;
  std::string_view Status;
};

ClientFields ReadClient(std::string_view Data) {
  const auto [id, name, info, status] = FirstFields<4>(Data);
  return {base::Int16FromText(id), base::Trim(name), info, status};
}

void Store(const ClientFields& fields, const Callsigns& given, PlotRecord& client) {
  // A player's colour goes with his record until somebody of another name has it.
  const bool another = client.Name != fields.Name;
  client.Label = IdLabel(fields.Id);
  client.Id = fields.Id;
  client.ClientId = fields.Id;
  client.Name = fields.Name;
  client.Info = fields.Info;
  client.Status = fields.Status;
  const GivenLook* look = given.Recall(fields.Name);
  if (look == nullptr) return;
  if (!look->Label.empty()) client.Label = look->Label;
  if (another && look->Color != 0) client.Color = look->Color;
}

/// True when `name` is `entry` followed by one digit.
bool IsEntryWithDigit(std::string_view name, std::string_view entry) {
  return name.size() == entry.size() + 1 && name.substr(0, entry.size()) == entry && name.back() >= '0' &&
         name.back() <= '9';
}

}  // namespace

std::string IdLabel(std::int16_t Id) {
  std::string label = "Airplane ";
  base::AppendFormat(label, Id, "0");
  return label;
}

void AddAWASCClient(std::string_view Data, bool showLabel, Tables& tables) {
  if (tables.Clients.UpperBound() >= MaxClients) throw base::RuntimeFailure("the table of clients is full");
  PlotRecord client;
  Store(ReadClient(Data), tables.Given, client);
  client.ShowLabel = showLabel;
  client.PlotVisible = true;
  tables.Clients.Append(std::move(client));
  tables.IndexLast();
}

bool UpdateClientStatus(std::string_view Data, Tables& tables) {
  const ClientFields fields = ReadClient(Data);
  const std::size_t index = tables.FindClient(fields.Id);
  if (index == 0) return false;
  Store(fields, tables.Given, tables.Clients[index]);
  tables.Touch(index);
  return true;
}

std::size_t DelAWACSClient(std::string_view Data, Tables& tables) {
  if (Data.find(FieldSeparator) != std::string_view::npos) throw base::RuntimeFailure("fields behind the Id");
  const std::size_t index = tables.FindClient(base::Int16FromText(Data));
  if (index == 0) return 0;
  tables.TakeOut(index);
  return index;
}

void RecallLooks(Tables& tables) {
  for (PlotRecord& client : tables.Clients.Live()) {
    const GivenLook* look = tables.Given.Recall(client.Name);
    if (look == nullptr) continue;
    if (!look->Label.empty()) client.Label = look->Label;
    // Another than black has come to him since.
    if (client.Color == 0) client.Color = look->Color;
  }
}

void ShowLabels(bool shown, Tables& tables) {
  for (PlotRecord& client : tables.Clients.Live()) {
    if (client.ClientId != 0) client.ShowLabel = shown;
  }
}

void AddToFriendlyList(std::string_view Name, Tables& tables) { tables.FriendlyList.Append(std::string(Name)); }

void DeleteFromFriendlyList(std::string_view Name, Tables& tables) {
  const std::string_view trimmed = base::Trim(Name);
  base::Table<std::string> kept;
  for (std::string& entry : tables.FriendlyList.Live()) {
    if (entry != Name && !IsEntryWithDigit(trimmed, entry)) kept.Append(std::move(entry));
  }
  tables.FriendlyList = std::move(kept);
}

}  // namespace kestrel::link
