#pragma once

#include <cmath>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/changed.h"
#include "base/desktop.h"
#include "link/link_options.h"
#include "link/session.h"
#include "link/tables.h"
#include "tape/format.h"
#include "tape/reader.h"

// The tape player without its window: which records come when, and what may be pressed.
namespace kestrel::tape {

/// The bullseye that a tape tells, map units, Y growing north.
struct BullseyePlace {
  double X = 0;
  double Y = 0;
  /// False for numbers that are none: the theater's own bullseye stands for such a one.
  bool IsPlace() const { return std::isfinite(X) && std::isfinite(Y); }
};

/// Seam: what the player asks of the station around it.
class PlayerHost {
 public:
  virtual ~PlayerHost() = default;
  /// The tape's bullseye comes into force (ReloadBulls), if it is a place, and the bullseye actions are disabled; with
  /// nothing, the theater's own comes back and they are enabled.
  virtual void UseBullseye(std::optional<BullseyePlace> place) = 0;
  /// Ends the connection to a server, if there is one, and lets events run.
  virtual void LeaveSession() = 0;
  /// "Loading the requested file..." with the bar at `percent`.
  virtual void ShowLoading(int percent) = 0;
  virtual void HideLoading() = 0;
  /// Refreshes each marked view once, now.
  virtual void Refresh(base::Changed what) = 0;
  /// A line for the log.
  virtual void Note(std::string_view text) = 0;
};

/// What a call of the player may touch; the references outlive the call.
struct PlayerAround {
  PlayerHost& Host;
  base::Desktop& Desk;
  link::Tables& Plots;
  link::SessionState& Session;
  const link::Options& LinkOptions;
};

enum class PlayerPhase { NoFile, Loading, Stopped, Playing, Paused };

/// What RecFrm shows.
struct PlayerState {
  PlayerPhase Phase = PlayerPhase::NoFile;
  std::string FileTitle;         ///< name of the tape, empty when there is none
  std::int32_t CurPoint = 0;     ///< number of the record on show; 0 with no file
  std::int32_t RecordCount = 0;  ///< from the header
  double CurTime = 0;            ///< days since 1899-12-30: Time of the record on show
  std::int32_t SecsBetween = 0;  ///< whole seconds from the record on show to the next one
  std::int16_t Speed = 1;        ///< replay multiplier
  std::int16_t ScrollScale = 1;  ///< records to a step of the position bar
  std::int32_t BarMinimum = 0;   ///< the position bar's least value: where the first record is
  std::int32_t BarMaximum = 0;
  std::int32_t BarValue = 0;
  std::int32_t TimerInterval = 0;  ///< milliseconds from tick to tick while playing; with 0 the timer never fires
  std::uint32_t TimerStarts = 0;   ///< raised by whatever starts the timer anew, a running one too

  bool Loaded() const { return Phase != PlayerPhase::NoFile && Phase != PlayerPhase::Loading; }
};

/// Loads a tape, indexes it and steps through its records. A record that cannot be read is told, and what is on show
/// stays. Every call ends with a Refresh of what it has changed (Changed::Tape among it).
class Player {
 public:
  /// The speed slider goes from 0 to this: x1 to x16.
  static constexpr std::int32_t MaxSpeedStep = 4;
  /// Most that the position bar can name: it counts in 16 bits.
  static constexpr std::int32_t MaxBarPoint = 32767;

  const PlayerState& State() const { return state; }

  /// Asks for a file, beginning in `folder`, and loads it. Only with no file; nothing while `Recording`. Events run
  /// while the tape is indexed. Whatever is wrong with the file is told and leaves everything as it was.
  void Load(const PlayerAround& around, const std::filesystem::path& folder, bool Recording);
  void Play(const PlayerAround& around);
  void Pause(const PlayerAround& around);
  /// Back to the first record; the header is read again.
  void Stop(const PlayerAround& around);
  void Close(const PlayerAround& around);
  /// The timer has fired: the next record, or Stop behind the last one.
  void Tick(const PlayerAround& around);
  /// The person has moved the position bar.
  void MoveBar(const PlayerAround& around, std::int32_t value);
  /// The person has moved the speed slider: 0..MaxSpeedStep.
  void SetSpeed(const PlayerAround& around, std::int32_t step);
  /// Shows record `Point`, 1..RecordCount; 0, where the bar of a long tape begins, is an empty picture. False after the
  /// message that it cannot be read: what is on show stays, and a running tape pauses.
  bool ShowRecPoint(const PlayerAround& around, std::int32_t Point);
  /// At the unload of the windows: lets go of the file, gives up a load that is under way, and touches nothing else.
  void Unload();

 private:
  /// A tape that has been opened and not yet taken into use.
  struct Opened {
    std::unique_ptr<TapeReader> Tape;
    std::vector<std::uint64_t> Offsets;
    TapeRecord First;
    std::int16_t ScrollScale = 1;
  };
  /// A record and when the next one was taken; nothing at the last one.
  struct Snapshot {
    TapeRecord Record;
    std::optional<double> NextTime;
  };

  bool OpenTape(const PlayerAround& around, const std::filesystem::path& file, Opened& opened);
  bool Index(const PlayerAround& around, Opened& opened);
  void TakeIntoUse(const PlayerAround& around, Opened opened);
  void GiveUp(const PlayerAround& around, std::string_view title, std::string_view text, base::MessageIcon icon);
  void TellFailed(const PlayerAround& around, std::string_view text, const std::exception& failure);
  std::uint64_t OffsetOf(std::int32_t Point) const;
  Snapshot ReadPoint(std::int32_t Point);
  void ReadNextTime(std::int32_t Point, Snapshot& snapshot);
  void Install(const PlayerAround& around, std::int32_t Point, Snapshot snapshot);
  void SetInterval();

  PlayerState state;
  std::unique_ptr<TapeReader> tape;
  std::vector<std::uint64_t> Offsets;  ///< position of each record in the file; slot 0 unused
  bool givenUp = false;                ///< the load that is under way is to end
};

}  // namespace kestrel::tape
