#pragma once

#include <cstdint>
#include <optional>
#include <string>

// A link that was lost and comes back, and one that says nothing. Times are tick counts, which wrap as 32-bit counts
// do, unless a date is named.
namespace kestrel::core {

struct Program;

/// Settings, in section [KESTREL]; fields named as their keys.
struct HealingOptions {
  bool RECONNECT = false;    ///< a lost server is called again by itself
  bool RECORDAGAIN = false;  ///< a tape that a lost link has ended is followed by a new one when the session is back
};

/// What is wrong with the link.
enum class LinkTrouble {
  None,
  Lost,       ///< it has ended without the person's wish, and no data has come since
  NoSession,  ///< it is up, and from its beginning no word has come that the protocol knows
  Silent,     ///< it is up, and after such words no more have come for three cycles
};

/// The link as the person is told of it.
struct Healing {
  /// For so long no known word has come when the link has NoSession, milliseconds.
  static constexpr std::uint32_t NoSessionAfter = 10'000;
  /// A cycle while none has been measured: the server has not synchronised twice, milliseconds.
  static constexpr std::uint32_t UnknownCycle = 4'000;
  /// A silence is no shorter than this, however short the cycles are: networks stumble. Milliseconds.
  static constexpr std::uint32_t LeastSilence = 3'000;

  LinkTrouble Trouble = LinkTrouble::None;
  bool Calling = false;                   ///< the lost server has been called again, and no data has come yet
  double LostAt = 0;                      ///< date of the loss
  std::uint32_t LostTick = 0;             ///< its tick count
  std::uint32_t Calls = 0;                ///< since the loss
  std::optional<std::uint32_t> NextCall;  ///< when it is called again by itself
  std::string Why;                        ///< why the link has ended, or the last call has failed; with a full stop
  bool WasRecording = false;              ///< the loss has ended a tape
  bool RecordDue = false;                 ///< the session is back and a new tape is to begin
  // The link that is up.
  bool Watched = false;        ///< the two that follow are of the present connection
  std::uint64_t Words = 0;     ///< known words that had come when it was looked at last
  std::uint32_t HeardAt = 0;   ///< the last of them; with none, its beginning
  std::uint32_t LookedAt = 0;  ///< the last Tick
  std::uint32_t QuietFor = 0;  ///< at the last look, milliseconds
};

/// How long after the loss, or after the call number `calls` has failed, the server is called again by itself,
/// milliseconds: 1, 2, 4, 8, 16 seconds and then 30.
std::uint32_t CallAgainAfter(std::uint32_t calls);

// What the session tells (link::SessionHost).

/// The link has ended without the person's wish, or a call by CallNow has failed. True when nobody is to be told in a
/// box. With RECONNECT the next call is due.
bool LinkLost(Program& program, const std::string& why);
/// The person leaves the session or calls a server, or the server ends it with its word: nothing is waited for any
/// more.
void LinkLeft(Program& program);
/// Looks for what has come. To be called after each arrival: data ends a loss and a silence.
void LookAtLink(Program& program);

/// Calls the lost server when it is due, begins the new tape and finds silences. Whoever shows the link calls it twice
/// a second or so, from the event loop.
void LinkTick(Program& program);
/// True while LinkTick has something to look at.
bool LinkWatched(const Program& program);

// What the person does about a lost link.

/// Calls the server now, with the channel that was in use; nothing while a call is on its way.
void CallNow(Program& program);
/// Gives up: what is lost stays so, and a call that is on its way is ended.
void StopHealing(Program& program);
/// RECONNECT has been changed: while the link is lost the next call is due, or none.
void FollowReconnect(Program& program);

/// What is said of the link, with the times as they are now: "LOST 20:14:03, 35 s ago", "no data for 12 s" or that it
/// has no session; empty while nothing is wrong.
std::string LinkText(const Program& program);
/// What more is said of a lost link: what has happened last or comes next. Empty for another.
std::string LinkDetail(const Program& program);

}  // namespace kestrel::core
