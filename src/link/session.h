#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/changed.h"
#include "base/clock.h"
#include "base/debug_log.h"
#include "base/desktop.h"
#include "link/capture.h"
#include "link/client_details.h"
#include "link/line_protocol.h"
#include "link/link_options.h"
#include "link/socket.h"
#include "link/tables.h"
#include "theaters/theater.h"

namespace kestrel::link {

/// State of the session with the server.
struct SessionState {
  bool Connected = false;    ///< from the connect event to ConnectionEnd
  std::uint8_t Channel = 1;  ///< 0 both sides, 1 blue, 2 red
  SyncTimes Sync;
  std::size_t SelectedPlot = 0;       ///< index in Clients of the client selected in the roster, 0 none
  ClientDetails Details;              ///< what the roster shows of that client
  theaters::DownPoint Bull;           ///< what AI records are relative to; set by ReloadBulls
  std::uint64_t DroppedMessages = 0;  ///< since the start
  bool Joined = false;                ///< the server knows the channel, and has not said that it ends
  std::uint64_t Words = 0;            ///< known words that have come on this connection
};

/// Seam: what the session asks of the station around it.
class SessionHost {
 public:
  virtual ~SessionHost() = default;
  /// Shows frmSelectChannel and waits for the choice; `present` is preselected. Nothing when the person wants none:
  /// the connection ends then.
  virtual std::optional<std::uint8_t> ChooseChannel(std::uint8_t present) = 0;
  /// Refreshes each marked view once. Called at the end of an arrival and before a box is shown.
  virtual void Refresh(base::Changed what) = 0;
  /// SYNCRO has come and its times are in the state. A host without tapes does nothing.
  virtual void ComputeRecData() {}
  /// A connect has failed, or a connection: what is told of that below the system's words, with the line end before it.
  virtual std::string FailureAdvice() { return {}; }
  /// The session has ended: its tables are empty and its times 0. Comes again when ConnectionEnd does.
  virtual void RecordingEnd() {}
  /// The link has ended without the person's wish, or calling it again has failed: `why` in a sentence. The tables are
  /// still as they were; ConnectionEnd follows. True when the station goes on by itself: the person is not told in a
  /// box. Not called for DISCON, nor after a change of the port.
  virtual bool LinkLost(const std::string& why) {
    static_cast<void>(why);
    return false;
  }
  /// The person leaves the session or calls a server, or the server ends it with its word: what was lost before is not
  /// waited for any more.
  virtual void LinkLeft() {}
};

/// The session: socket events in, tables and Refresh out. Bytes -> InData -> ParseData -> Commands -> handlers. Not
/// re-entered: what comes while one of its own dialogs is open (channel choice, message of the server's end) waits in
/// order until it closes.
class Session final : public SocketEvents {
 public:
  /// All references outlive the session.
  Session(Socket& WS1, base::Desktop& desk, SessionHost& host, base::DebugLog& log, Capture& capture,
          SessionState& state, Tables& tables, const Options& options);
  ~Session() override;

  /// Sends Command + Data + NUL when the socket is connected; writes the log line and pulses the lamp in any case.
  void SendCommand(std::string_view Command, std::string_view Data);

  /// Safe to call twice; ends the session's tables and state, not the socket.
  void ConnectionEnd();
  /// Menu entry Disconnect: AWAEND, close, ConnectionEnd.
  void Disconnect();
  /// A phonebook item, index into ConnList: leaves the present server, then connects.
  void ConnectToEntry(std::size_t index);
  /// Leaves the present server if any and connects to `host` at CONNPORT.
  void ConnectTo(const std::string& host);
  /// Calls the server of the last call again, at CONNPORT. The channel is the last one, which nobody is asked for.
  /// False when nothing has been called or the socket is not closed yet: nothing is done.
  bool CallAgain();
  /// What CallAgain calls; empty before the first call.
  const std::string& LastHost() const { return called; }
  /// Closes the socket and nothing else, when the port is changed: neither AWAEND nor ConnectionEnd. The tables, the
  /// caption and Disconnect stay as they are until the peer ends its side, or the next connect or Disconnect comes:
  /// this stands.
  void DropSocket();
  /// On the unload of the map window: AWAEND when the socket is not closed, pending events, close.
  void Leave();

  /// True while bytes would go to a server.
  bool SocketConnected() const { return socket.State() == SocketState::Connected; }
  /// True from a connect, also one that is not answered yet, until the socket is closed and the session has ended.
  bool Open() const { return session.Connected || socket.State() != SocketState::Closed; }

  void OnConnect() override;
  void OnDataArrival() override;
  void OnClose() override;
  void OnError(const std::string& description) override;

 private:
  struct Event {
    enum class Kind { Connect, Data, Close, Error } What;
    std::string Description;
  };
  /// A word of the server and what handles it; in session.cpp.
  struct Word;
  static const Word Words[];

  void Queue(Event event);
  void Handle(const Event& event);
  void ConnectionStart();
  void EndConnection();
  bool LinkGone(const std::string& why);
  void CloseSocket();
  void ForgetEvents();
  void Call(const std::string& host);
  void DataArrival();
  void HandleWhole();
  void Dispatch(const CommandEntry& entry);
  void NewClient(std::string_view Data);
  void ClientStatus(std::string_view Data);
  void ClientLeft(std::string_view Data);
  void Position(std::string_view Data);
  void Snapshot(std::string_view Data);
  void Synchronise(std::string_view Data);
  void ClosedByServer(std::string_view Data);
  void TailTooLong();
  void Flush();
  void FlushUnlessBusy();
  void Box(std::string_view title, std::string_view text, base::MessageIcon icon);

  Socket& socket;
  base::Desktop& desktop;
  SessionHost& owner;
  base::DebugLog& debugLog;
  Capture& rawCapture;
  SessionState& session;
  Tables& plots;
  const Options& settings;

  InDataBuffer inData;
  std::string arrived;  ///< the chunk just read
  std::string whole;    ///< the messages being handled; Commands views into it
  std::vector<CommandEntry> Commands;
  std::deque<Event> waiting;  ///< in order of their coming
  bool busy = false;          ///< an event is being handled, possibly with a dialog open
  bool endTold = false;       ///< the server has ended the session of this connection, and the person knows
  std::uint32_t closes = 0;   ///< how often the station itself has closed the socket
  std::string called;         ///< the host of the last call
  bool callingAgain = false;  ///< from CallAgain until its answer
  bool dropped = false;       ///< DropSocket has closed the connection of the session that still stands
  base::Changed pending = base::Changed::Nothing;
};

/// The caption of the frame: base::ProgramTitle, with " - BLUE CHANNEL" and the like while connected.
std::string FrameCaption(const SessionState& state);

}  // namespace kestrel::link
