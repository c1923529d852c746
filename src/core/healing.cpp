#include "core/healing.h"

#include <algorithm>

#include "base/clock.h"
#include "core/program.h"
#include "core/tapes.h"

namespace kestrel::core {
namespace {

constexpr std::uint32_t LongestCallWait = 30'000;
/// When a call could not be made because the socket is still being closed, milliseconds.
constexpr std::uint32_t CallSoonAgain = 1'000;
/// After a longer gap between two looks the station itself has stood still, milliseconds: what the server has sent
/// meanwhile is still to be read, and nothing is said of a silence.
constexpr std::uint32_t StationStoodStill = 3'000;

constexpr const char* NoSessionText = "connected, but no session data: is this a session server?";

std::uint32_t LinkTicks(const Program& program) { return program.Log.Time().TickCount(); }

bool CallReached(std::uint32_t due, std::uint32_t now) { return static_cast<std::int32_t>(now - due) >= 0; }

void PlanCall(Program& program) {
  Healing& link = program.State.Healing;
  link.NextCall.reset();
  if (program.State.HealingOptions.RECONNECT) link.NextCall = LinkTicks(program) + CallAgainAfter(link.Calls);
}

std::uint32_t SilenceAfter(const link::SyncTimes& sync) {
  const std::uint32_t cycle =
      sync.SyncInterval > 0 ? static_cast<std::uint32_t>(sync.SyncInterval) : Healing::UnknownCycle;
  constexpr std::uint32_t cycles = 3;
  return std::max(Healing::LeastSilence, std::min(cycle, UINT32_MAX / cycles) * cycles);
}

/// How long the link has said nothing goes into the state.
void LookForWords(Program& program, std::uint32_t now) {
  const link::SessionState& session = program.State.Session;
  Healing& link = program.State.Healing;
  if (!session.Joined || !program.Link.SocketConnected()) {
    link.Watched = false;
    link.QuietFor = 0;
    return;
  }
  if (!link.Watched || session.Words != link.Words) link.HeardAt = now;
  link.Watched = true;
  link.Words = session.Words;
  link.QuietFor = now - link.HeardAt;
}

/// A silence, where there is none the end of one.
void JudgeSilence(Program& program) {
  Healing& link = program.State.Healing;
  if (link.Trouble == LinkTrouble::Lost) return;
  const bool known = link.Words != 0;
  const std::uint32_t after = known ? SilenceAfter(program.State.Session.Sync) : Healing::NoSessionAfter;
  link.Trouble = LinkTrouble::None;
  if (link.Watched && link.QuietFor >= after) link.Trouble = known ? LinkTrouble::Silent : LinkTrouble::NoSession;
}

void Heal(Healing& link, bool recordAgain) {
  link.RecordDue = link.WasRecording && recordAgain;
  link.WasRecording = false;
  link.Trouble = LinkTrouble::None;
  link.Calling = false;
  link.NextCall.reset();
}

/// "35 s", "4 min 5 s" or "1 h 2 min".
std::string Lasting(std::uint32_t milliseconds) {
  const std::uint32_t seconds = milliseconds / 1000;
  if (seconds < 100) return std::to_string(seconds) + " s";
  if (seconds < 3600) return std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
  return std::to_string(seconds / 3600) + " h " + std::to_string(seconds / 60 % 60) + " min";
}

}  // namespace

std::uint32_t CallAgainAfter(std::uint32_t calls) { return calls < 5 ? 1'000U << calls : LongestCallWait; }

bool LinkLost(Program& program, const std::string& why) {
  Healing& link = program.State.Healing;
  if (program.State.Closing) return false;
  const bool goesOn = link.Calling || program.State.HealingOptions.RECONNECT;
  if (link.Trouble != LinkTrouble::Lost) {
    const bool recordDue = link.RecordDue;
    link = {};
    link.Trouble = LinkTrouble::Lost;
    link.WasRecording = recordDue;
    link.LostAt = program.Log.Time().Now();
    link.LostTick = LinkTicks(program);
  }
  link.WasRecording |= program.State.Tapes.Recorder.Recording();
  link.Why = why;
  if (!link.Why.ends_with('.')) link.Why += '.';
  link.Calling = false;
  link.Watched = false;
  PlanCall(program);
  return goesOn;
}

void LinkLeft(Program& program) { program.State.Healing = {}; }

void LookAtLink(Program& program) {
  Healing& link = program.State.Healing;
  LookForWords(program, LinkTicks(program));
  if (!link.Watched || link.Words == 0) return;
  if (link.Calling) Heal(link, program.State.HealingOptions.RECORDAGAIN);
  if (link.QuietFor == 0) JudgeSilence(program);
}

void LinkTick(Program& program) {
  Healing& link = program.State.Healing;
  if (program.State.Closing) return;
  const std::uint32_t now = LinkTicks(program);
  const bool stoodStill = now - link.LookedAt > StationStoodStill;
  link.LookedAt = now;
  LookAtLink(program);
  if (!stoodStill) JudgeSilence(program);
  if (link.Calling && !program.Link.Open()) {
    // Ended by something that is not told as an end, as a change of the port.
    link.Calling = false;
    PlanCall(program);
  }
  if (link.NextCall && CallReached(*link.NextCall, now)) CallNow(program);
  if (link.RecordDue) {
    link.RecordDue = false;
    if (MayRecord(program)) RecordingStart(program);
  }
}

bool LinkWatched(const Program& program) {
  const Station& station = program.State;
  return station.Session.Connected || station.Healing.Trouble != LinkTrouble::None || station.Healing.RecordDue;
}

void CallNow(Program& program) {
  Healing& link = program.State.Healing;
  if (link.Trouble != LinkTrouble::Lost || link.Calling) return;
  link.NextCall.reset();
  if (!program.Link.CallAgain()) {
    // A box about the end may still be open. Whoever has pressed presses again.
    if (program.State.HealingOptions.RECONNECT) link.NextCall = LinkTicks(program) + CallSoonAgain;
    return;
  }
  link.Calling = true;
  ++link.Calls;
  program.Log.LogTimed("Calling the lost server again: ",
                       program.Link.LastHost() + ", call " + std::to_string(link.Calls));
}

void StopHealing(Program& program) {
  const bool calling = program.State.Healing.Calling;
  program.State.Healing = {};
  if (calling && program.Link.Open()) program.Link.Disconnect();
}

void FollowReconnect(Program& program) {
  const Healing& link = program.State.Healing;
  if (link.Trouble == LinkTrouble::Lost && !link.Calling) PlanCall(program);
}

std::string LinkText(const Program& program) {
  const Healing& link = program.State.Healing;
  switch (link.Trouble) {
    case LinkTrouble::None:
      return {};
    case LinkTrouble::Lost:
      return "LOST " + base::TimeText(link.LostAt) + ", " + Lasting(LinkTicks(program) - link.LostTick) + " ago";
    case LinkTrouble::NoSession:
      return NoSessionText;
    case LinkTrouble::Silent:
      return "no data for " + Lasting(link.QuietFor);
  }
  return {};
}

std::string LinkDetail(const Program& program) {
  const Healing& link = program.State.Healing;
  if (link.Trouble != LinkTrouble::Lost) return {};
  if (!link.Calling) {
    if (!link.NextCall) return link.Why;
    const std::uint32_t now = LinkTicks(program);
    const std::uint32_t wait = CallReached(*link.NextCall, now) ? 0 : *link.NextCall - now;
    return link.Why + " Next try in " + std::to_string((wait + 999) / 1000) + " s.";
  }
  if (!link.Watched) return "Calling " + program.Link.LastHost() + "...";
  return link.QuietFor < Healing::NoSessionAfter ? "Connected, waiting for data..." : NoSessionText;
}

}  // namespace kestrel::core
