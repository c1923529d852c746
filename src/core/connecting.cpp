#include "core/connecting.h"

#include <algorithm>
#include <utility>

#include "core/phonebook_edits.h"
#include "core/tapes.h"
#include "link/phonebook.h"

namespace kestrel::core {
namespace {

/// To be called before a connect, which ends what was before it.
void Remember(Station& station, const link::ConnEntry& entry, bool isNew) {
  station.LastServer = Server{entry.Name, entry.Ip, station.LinkOptions.CONNPORT, isNew};
  station.LeftForTape.reset();
}

void Connect(Program& program, const link::ConnEntry& entry, bool isNew) {
  Remember(program.State, entry, isNew);
  program.Link.ConnectTo(entry.Ip);
}

bool SameEntry(const link::ConnEntry& one, const link::ConnEntry& other) {
  return one.Name == other.Name && one.Ip == other.Ip;
}

}  // namespace

bool MayLeaveSession(Program& program) {
  Station& station = program.State;
  if (!station.SessionExtras.ASKTOLEAVE || !station.Session.Connected || !program.Link.SocketConnected()) return true;
  std::string where = "the server";
  if (station.LastServer)
    where = station.LastServer->Name.empty() ? station.LastServer->Host : station.LastServer->Name;
  bool never = false;
  const base::Answer answer = program.Desk.AskUnlessTold("Connection", "Leave the session on " + where + "?", never);
  if (never) {
    station.SessionExtras.ASKTOLEAVE = false;
    program.Shown.Refresh(base::Changed::Options);
  }
  return answer == base::Answer::Yes;
}

void ConnectToEntry(Program& program, std::size_t index) {
  Station& station = program.State;
  const auto entries = [&station]() -> const auto& { return station.LinkOptions.ConnList; };
  if (index < 1 || index > entries().UpperBound() || !MayLeaveSession(program)) return;
  // The box may have stood for long.
  if (index > entries().UpperBound()) return;
  Remember(station, entries()[index], false);
  program.Link.ConnectToEntry(index);
}

bool ConnectToTyped(Program& program, link::ConnEntry entry) {
  const std::optional<link::HostAndPort> apart = link::SplitPort(entry.Ip);
  if (apart) entry.Ip = apart->Host;
  const std::size_t before = program.State.LinkOptions.ConnList.UpperBound();
  if (!MayLeaveSession(program) || !KeepTypedEntry(program, entry)) return false;
  if (apart && apart->Port != program.State.LinkOptions.CONNPORT) StoreConnPort(program, apart->Port);
  Connect(program, entry, program.State.LinkOptions.ConnList.UpperBound() > before);
  return true;
}

void ServerAnswered(Station& station) {
  if (!station.LastServer) return;
  station.LastServer->HasAnswered = true;
  const link::ConnEntry entry{station.LastServer->Name, station.LastServer->Host};
  std::erase_if(station.FailedEntries, [&](const link::ConnEntry& each) { return SameEntry(each, entry); });
}

std::string FailureAdvice(Program& program) {
  Station& station = program.State;
  if (!station.LastServer || station.LastServer->HasAnswered) return {};
  const Server& server = *station.LastServer;
  std::string advice = "\n" + (server.Name.empty() ? std::string() : server.Name + ": ") + server.Host + ", port " +
                       std::to_string(server.Port) +
                       ". Is the server running, are address and port right, does a firewall let the station through?";
  if (!server.NewEntry) return advice;
  const link::ConnEntry entry{server.Name, server.Host};
  const auto known = [&](const link::ConnEntry& each) { return SameEntry(each, entry); };
  std::vector<link::ConnEntry>& failed = station.FailedEntries;
  if (std::none_of(failed.begin(), failed.end(), known)) failed.push_back(entry);
  program.Shown.Refresh(base::Changed::ConnectionMenus);
  return advice + " The end of the Phonebook menu drops its entry.";
}

void DropFailedEntry(Program& program, std::size_t which) {
  Station& station = program.State;
  if (which >= station.FailedEntries.size()) return;
  const link::ConnEntry entry = station.FailedEntries[which];
  station.FailedEntries.erase(station.FailedEntries.begin() + static_cast<std::ptrdiff_t>(which));
  const base::Table<link::ConnEntry>& entries = station.LinkOptions.ConnList;
  for (std::size_t index = entries.UpperBound(); index >= 1; --index) {
    if (!SameEntry(entries[index], entry)) continue;
    RemoveEntry(program, index);
    return;
  }
  program.Shown.Refresh(base::Changed::ConnectionMenus);
}

bool MayGoBack(const Station& station) {
  return station.LeftForTape && !station.Session.Connected &&
         station.Tapes.Player.State().Phase != tape::PlayerPhase::Loading;
}

void BackToSession(Program& program) {
  if (!MayGoBack(program.State)) return;
  const Server server = *program.State.LeftForTape;
  CloseTape(program);
  Connect(program, {server.Name, server.Host}, server.NewEntry);
}

}  // namespace kestrel::core
