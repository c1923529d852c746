#include "link/session.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/program_title.h"
#include "link/plot_feed.h"
#include "link/roster.h"

namespace kestrel::link {
namespace {

using base::Changed;

/// Most bytes that are read before the views are refreshed.
constexpr std::size_t BytesPerTurn = 1 << 20;

constexpr std::string_view TooLongText =
    "The server sent a message that is too long. The connection will be closed. Please check the address and the port.";

}  // namespace

struct Session::Word {
  std::string_view Command;
  void (Session::*Handler)(std::string_view Data);
};

const Session::Word Session::Words[] = {
    {"INDATA", &Session::Position},       {"AILOCA", &Session::Snapshot},     {"SYNCRO", &Session::Synchronise},
    {"NEWCLT", &Session::NewClient},      {"PLSUPD", &Session::ClientStatus}, {"DELCLT", &Session::ClientLeft},
    {"DISCON", &Session::ClosedByServer},
};

Session::Session(Socket& WS1, base::Desktop& desk, SessionHost& host, base::DebugLog& log, Capture& capture,
                 SessionState& state, Tables& tables, const Options& options)
    : socket(WS1),
      desktop(desk),
      owner(host),
      debugLog(log),
      rawCapture(capture),
      session(state),
      plots(tables),
      settings(options) {
  socket.SetEvents(this);
}

Session::~Session() { socket.SetEvents(nullptr); }

void Session::SendCommand(std::string_view Command, std::string_view Data) {
  std::string message(Command);
  message += Data;
  message += Terminator;
  if (socket.State() == SocketState::Connected) socket.Send(message);
  debugLog.LogMessage("Command sent to Server: ", Command, Data);
  pending |= Changed::Activity;
  FlushUnlessBusy();
}

void Session::ConnectionEnd() {
  EndConnection();
  FlushUnlessBusy();
}

void Session::Disconnect() {
  owner.LinkLeft();
  SendCommand("AWAEND", "");
  desktop.LetEventsRun();
  CloseSocket();
  ConnectionEnd();
}

void Session::ConnectToEntry(std::size_t index) {
  if (index < 1 || index > settings.ConnList.UpperBound()) return;
  const std::string host = settings.ConnList[index].Ip;
  owner.LinkLeft();
  if (socket.State() != SocketState::Closed) {
    SendCommand("AWAEND", "");
    CloseSocket();
    ConnectionEnd();
  } else if (session.Connected) {
    // A change of the port has left the former session standing, and from the next connect on its end is not told any
    // more: nothing else would empty the tables before the new session fills them.
    ConnectionEnd();
  }
  Call(host);
}

void Session::ConnectTo(const std::string& host) {
  owner.LinkLeft();
  if (socket.State() != SocketState::Closed) {
    SendCommand("AWAEND", "");
    desktop.LetEventsRun();
    CloseSocket();
    desktop.LetEventsRun();
  }
  ConnectionEnd();
  desktop.LetEventsRun();
  Call(host);
}

bool Session::CallAgain() {
  if (called.empty() || socket.State() != SocketState::Closed) return false;
  // What the server was saying when it was lost would swallow the first word of the new session.
  inData = {};
  Call(called);
  callingAgain = true;
  return true;
}

void Session::DropSocket() {
  if (socket.State() == SocketState::Closed) return;
  dropped = true;
  socket.Drop();
  ForgetEvents();
}

void Session::Leave() {
  owner.LinkLeft();
  if (socket.State() == SocketState::Closed) return;
  SendCommand("AWAEND", "");
  desktop.LetEventsRun();
  CloseSocket();
}

void Session::OnConnect() { Queue({Event::Kind::Connect, {}}); }

void Session::OnDataArrival() {
  // One reading takes all that waits, so a second note behind the first says nothing new.
  if (!waiting.empty() && waiting.back().What == Event::Kind::Data) return;
  Queue({Event::Kind::Data, {}});
}

void Session::OnClose() { Queue({Event::Kind::Close, {}}); }

void Session::OnError(const std::string& description) { Queue({Event::Kind::Error, description}); }

void Session::Queue(Event event) {
  waiting.push_back(std::move(event));
  if (busy) return;
  // Whatever a handler throws, the session must not stay closed to events.
  const struct Guard {
    bool& Flag;
    explicit Guard(bool& flag) : Flag(flag) { Flag = true; }
    ~Guard() { Flag = false; }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
  } handling(busy);
  while (!waiting.empty()) {
    const Event next = std::move(waiting.front());
    waiting.pop_front();
    Handle(next);
    Flush();
  }
}

void Session::Handle(const Event& event) {
  switch (event.What) {
    case Event::Kind::Connect:
      ConnectionStart();
      break;
    case Event::Kind::Data:
      DataArrival();
      break;
    case Event::Kind::Close:
      LinkGone("The server has closed the connection.");
      EndConnection();
      CloseSocket();
      break;
    case Event::Kind::Error: {
      const bool goesOn = LinkGone(event.Description);
      EndConnection();
      if (!goesOn) Box("Connection", event.Description + owner.FailureAdvice(), base::MessageIcon::Exclamation);
      CloseSocket();
      break;
    }
  }
}

void Session::ConnectionStart() {
  endTold = false;
  session.Sync = {};
  session.Connected = true;
  session.Words = 0;
  const std::optional<std::uint8_t> channel =
      std::exchange(callingAgain, false) ? session.Channel : owner.ChooseChannel(session.Channel);
  if (!channel) {
    owner.LinkLeft();
    // As Disconnect, but without a word to a server that was not joined.
    CloseSocket();
    EndConnection();
    return;
  }
  session.Channel = *channel;
  SendCommand("NAWACS", base::FormatInvariant(session.Channel, "0"));
  session.Joined = true;
  pending |= Changed::Connection;
}

void Session::EndConnection() {
  session.Sync = {};
  session.Connected = false;
  session.Joined = false;
  DeselectPlot(session);  // the table that it points into is emptied
  plots.Clear();
  owner.RecordingEnd();
  pending |= Changed::Connection | Changed::Roster | Changed::AIList | Changed::Plots;
}

bool Session::LinkGone(const std::string& why) {
  const bool again = std::exchange(callingAgain, false);
  if (dropped || (!session.Connected && !again)) return false;
  return owner.LinkLost(why);
}

void Session::CloseSocket() {
  socket.Close();
  ForgetEvents();
}

void Session::ForgetEvents() {
  waiting.clear();
  ++closes;
}

void Session::Call(const std::string& host) {
  if (socket.State() != SocketState::Closed) return;
  waiting.clear();  // the end of a dropped connection may wait: it is not the new one's
  called = host;
  callingAgain = false;
  dropped = false;
  socket.Connect(host, settings.CONNPORT);
}

void Session::DataArrival() {
  const std::uint32_t closesBefore = closes;
  bool more = true;
  while (more && closes == closesBefore) {
    arrived.clear();
    more = socket.Read(arrived, BytesPerTurn) == BytesPerTurn;
    if (arrived.empty()) return;
    rawCapture.Arrival(arrived);
    const bool endless = !inData.Append(arrived);
    if (inData.TakeWhole(whole)) HandleWhole();
    if (endless && closes == closesBefore) TailTooLong();
    Flush();
  }
}

void Session::HandleWhole() {
  Commands.clear();
  ParseData(whole, Commands);
  const std::uint32_t closesBefore = closes;
  for (const CommandEntry& entry : Commands) {
    Dispatch(entry);
    if (closes != closesBefore) return;  // the person has left this server meanwhile
  }
}

void Session::Dispatch(const CommandEntry& entry) {
  const auto known = std::find_if(std::begin(Words), std::end(Words),
                                  [&entry](const Word& word) { return word.Command == entry.Command; });
  if (known == std::end(Words)) return;
  debugLog.LogMessage("Command arrived from Server: ", entry.Command, entry.Data);
  pending |= Changed::Activity;
  ++session.Words;
  try {
    (this->*known->Handler)(entry.Data);
  } catch (const base::RuntimeFailure& failure) {
    ++session.DroppedMessages;
    debugLog.LogTimed("Message dropped (" + std::string(entry.Command) + "): ", failure.what());
  }
}

void Session::NewClient(std::string_view Data) {
  AddAWASCClient(Data, settings.BULLSEYEVISIBLE, plots);
  pending |= Changed::Roster | Changed::Plots;
  const std::size_t last = plots.Clients.UpperBound();
  const std::int16_t id = plots.Clients[last].Id;
  if (plots.FindClient(id) == last) return;
  debugLog.LogTimed("A client with this Id was there already, both stay: ", base::FormatInvariant(id, "0"));
}

void Session::ClientStatus(std::string_view Data) {
  if (UpdateClientStatus(Data, plots)) pending |= Changed::Roster | Changed::Plots;
}

void Session::ClientLeft(std::string_view Data) {
  const std::size_t index = DelAWACSClient(Data, plots);
  // The details are reset for the selected client, and also when nobody holds the Id and nobody is selected.
  // SelectedPlot itself is not moved, so it may point at the next client or past the last one: this stands.
  if (index == session.SelectedPlot) {
    HidePlotControl(session.Details);
    pending |= Changed::Roster;
  }
  if (index != 0) pending |= Changed::Roster | Changed::Plots;
}

void Session::Position(std::string_view Data) {
  GetAWACSPosData(Data, session.Sync.SyncInterval, plots);
  pending |= Changed::Plots;
}

void Session::Snapshot(std::string_view Data) {
  IncreasePlotHistories(settings.AICOLOR, plots);
  ParseAI(Data, session.Bull, plots);
  pending |= Changed::AIList | Changed::Plots;
}

void Session::Synchronise(std::string_view) {
  SyncTimes& sync = session.Sync;
  sync.SyncNow = debugLog.Time().TickCount();
  const std::uint32_t passed = sync.SyncLast < 1 ? 0 : sync.SyncNow - sync.SyncLast;
  constexpr std::uint32_t longest = std::numeric_limits<std::int32_t>::max();
  sync.SyncInterval = static_cast<std::int32_t>(std::min(passed, longest));
  sync.SyncLast = debugLog.Time().TickCount();
  owner.ComputeRecData();
}

void Session::ClosedByServer(std::string_view) {
  // An arrival has room for 150,000 of them, and each box would hold the person until it is answered.
  if (std::exchange(endTold, true)) return;
  session.Joined = false;
  owner.LinkLeft();
  // The socket stays open until the peer's close event, and what follows in this arrival is still handled.
  Box("Info", "The connection was closed by the server.", base::MessageIcon::Critical);
  EndConnection();
}

void Session::TailTooLong() {
  debugLog.LogTimed("Connection closed: a message without an end");
  if (!LinkGone(std::string(TooLongText))) Box("Connection", TooLongText, base::MessageIcon::Exclamation);
  EndConnection();
  CloseSocket();
}

void Session::Flush() {
  const Changed what = std::exchange(pending, Changed::Nothing);
  if (what != Changed::Nothing) owner.Refresh(what);
}

void Session::FlushUnlessBusy() {
  if (!busy) Flush();
}

void Session::Box(std::string_view title, std::string_view text, base::MessageIcon icon) {
  Flush();
  desktop.Message(title, text, icon);
}

std::string FrameCaption(const SessionState& state) {
  if (!state.Connected) return base::ProgramTitle();
  switch (state.Channel) {
    case 1:
      return base::ProgramTitle() + " - BLUE CHANNEL";
    case 2:
      return base::ProgramTitle() + " - RED CHANNEL";
    default:
      return base::ProgramTitle() + " - BOTH CHANNELS";
  }
}

}  // namespace kestrel::link
