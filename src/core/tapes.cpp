#include "core/tapes.h"

#include <filesystem>

#include "base/clock.h"
#include "base/files.h"
#include "base/numbers.h"
#include "core/connecting.h"
#include "core/healing.h"
#include "core/tell.h"
#include "core/theater_switch.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

using base::Changed;

constexpr const char* RecordingTitle = "Recording";
/// With fewer minutes than this until the disk is full the person is told, once.
constexpr double FewMinutes = 10;
constexpr double MinutesPerDay = 24 * 60;
/// With more than this he may be told again. Far from the other, since the rate of the tape is never quite the same.
constexpr double ManyMinutes = 20;

std::filesystem::path TapesFolder(const Station& station) { return base::FindFile(station.AppPath, "TAPES"); }

/// The station around the player.
class PlayerDesk final : public tape::PlayerHost {
 public:
  explicit PlayerDesk(Program& running) : program(running) {}

  tape::PlayerAround Around() {
    Station& station = program.State;
    return {*this, program.Desk, station.Plots, station.Session, station.LinkOptions};
  }

  void UseBullseye(std::optional<tape::BullseyePlace> place) override {
    Station& station = program.State;
    station.Tapes.Bullseye = place;
    program.Shown.Refresh(ReloadBulls(station) | Changed::Tape);
  }

  void LeaveSession() override {
    StopHealing(program);
    if (!program.Link.Open()) return;
    if (program.State.Session.Connected) program.State.LeftForTape = program.State.LastServer;
    program.Link.Disconnect();
  }

  void ShowLoading(int percent) override { program.Shown.ShowLoading(percent); }
  void HideLoading() override { program.Shown.ShowLoading(std::nullopt); }
  void Refresh(Changed what) override { program.Shown.Refresh(what); }
  void Note(std::string_view text) override { program.Log.LogLine(text); }

 private:
  Program& program;
};

template <class Act>
void OnPlayer(Program& program, Act act) {
  PlayerDesk desk(program);
  act(program.State.Tapes.Player, desk.Around());
}

void TellRecording(Program& program, const std::string& text) {
  program.Log.LogLine(text);
  // From the event loop: the session that is being handled now must not wait for the answer.
  program.Desk.MessageSoon(RecordingTitle, text, base::MessageIcon::Exclamation);
}

std::string CountText(std::int32_t records) {
  return std::to_string(records) + (records == 1 ? " record" : " records");
}

/// What is to be done for a closed tape that does not tell its records; empty for one that does.
std::string LostCount(const tape::Recorder& recorder) {
  if (recorder.CountWritten() || recorder.RecordCount() == 0) return {};
  return " The number of its records could not be written, so that it reads as empty; tape-info --repair saves its " +
         CountText(recorder.RecordCount()) + ".";
}

/// Closes the tape. What to tell the person when that fails.
std::optional<std::string> EndTape(Station& station) {
  try {
    station.Tapes.Recorder.RecordingEnd(station.Session.Sync.SyncInterval);
    return std::nullopt;
  } catch (const base::RuntimeFailure& failure) {
    return std::string("The tape could not be closed properly: ") + failure.what() + "." +
           LostCount(station.Tapes.Recorder);
  }
}

/// The hour and minute of a time.
std::string HourText(double date) { return base::TimeText(date).substr(0, 5); }

/// Takes the free space beside the tape into the state and tells when it will soon be used up.
void FollowSpace(Program& program) {
  Tapes& tapes = program.State.Tapes;
  tapes.FreeBytes = tapes.FreeSpace(tapes.Recorder.Path().parent_path());
  tapes.FullAt.reset();
  if (!tapes.FreeBytes) return;
  const std::optional<double> minutes = tapes.Recorder.MinutesLeft(*tapes.FreeBytes);
  if (!minutes) return;
  if (*minutes < MinutesPerDay) tapes.FullAt = program.Log.Time().Now() + *minutes / MinutesPerDay;
  if (*minutes > ManyMinutes) tapes.SpaceTold = false;
  if (tapes.SpaceTold || *minutes >= FewMinutes) return;
  tapes.SpaceTold = true;
  TellRecording(program, "The disk will be full in less than 10 minutes if the recording goes on as it does: " +
                             SizeText(*tapes.FreeBytes) +
                             " are free, and the tape grows faster the longer it is. It will be full at " +
                             HourText(*tapes.FullAt) + ".");
}

}  // namespace

void RecordingStart(Program& program) {
  Station& station = program.State;
  if (station.Tapes.Recorder.Recording()) return;
  const theaters::Bullseye bull = theaters::CurrentBullseyePlace(station.Catalogue.Current());
  tape::TapeHeader start;
  start.SyncInterval = station.Session.Sync.SyncInterval;
  start.BullX = bull.X;
  start.BullY = bull.Y;
  try {
    station.Tapes.Recorder.RecordingStart(TapesFolder(station), program.Log.Time().Now(), start);
    station.Tapes.SpaceTold = false;
    station.Tapes.FullAt.reset();
    station.Tapes.FreeBytes = station.Tapes.FreeSpace(station.Tapes.Recorder.Path().parent_path());
  } catch (const base::RuntimeFailure& failure) {
    program.Log.LogLine(failure.what());
    Tell(program, std::string("The tape could not be made: ") + failure.what() + ".", RecordingTitle);
  }
  program.Shown.Refresh(Changed::Tape);
}

void RecordingEnd(Program& program) {
  if (!program.State.Tapes.Recorder.Recording()) return;
  const std::optional<std::string> trouble = EndTape(program.State);
  const tape::Recorder& recorder = program.State.Tapes.Recorder;
  const std::string recorded = "Recorded: " + base::NameForMessage(recorder.Path());
  program.Log.LogTimed(recorded + ", " + CountText(recorder.RecordCount()));
  program.Shown.ShowMoment(recorded);
  program.Shown.Refresh(Changed::Tape);
  if (trouble) TellRecording(program, *trouble);
}

void UnloadTapes(Program& program) {
  program.State.Tapes.Player.Unload();
  const std::optional<std::string> trouble = EndTape(program.State);
  if (trouble) Tell(program, *trouble, RecordingTitle);
}

void ComputeRecData(Program& program) {
  Station& station = program.State;
  tape::Recorder& recorder = station.Tapes.Recorder;
  if (!recorder.Recording()) return;
  try {
    recorder.ComputeRecData(station.Plots, program.Log.Time().Now(), station.Session.Sync.SyncInterval);
    FollowSpace(program);
  } catch (const base::RuntimeFailure& failure) {
    const std::string lost = LostCount(recorder);
    const std::string closed = " The tape has been closed with " + CountText(recorder.RecordCount()) + ".";
    TellRecording(program, std::string("The recording has ended: ") + failure.what() + "." +
                               (lost.empty() ? closed : lost) + " The session goes on.");
  }
  program.Shown.Refresh(Changed::Tape);
}

bool MayRecord(const Program& program) {
  return program.State.Session.Connected && program.Link.SocketConnected() && !program.State.Tapes.Recorder.Recording();
}

bool MayLoadTape(const Station& station) {
  return station.Tapes.Player.State().Phase == tape::PlayerPhase::NoFile && !station.Tapes.Recorder.Recording();
}

std::string SizeText(std::uint64_t bytes) {
  constexpr std::string_view units[] = {"bytes", "kB", "MB", "GB", "TB"};
  double size = static_cast<double>(bytes);
  std::size_t unit = 0;
  // Both bounds are those of the rounded number: no "1000 kB" and no "100.0 kB".
  for (; size >= 999.5 && unit + 1 < std::size(units); ++unit) size /= 1000;
  std::string text = base::FormatInvariant(size, unit == 0 || size >= 99.95 ? "0" : "0.0");
  return text.append(" ").append(units[unit]);
}

std::string RecordingTip(const Station& station) {
  if (!station.Tapes.Recorder.Recording()) {
    const std::string last = base::NameForMessage(station.Tapes.Recorder.Path());
    return last.empty() ? "Not recording" : "Not recording; the last tape is " + last;
  }
  std::string tip = "Recording: " + SizeText(station.Tapes.Recorder.Bytes()) + " on the tape";
  if (station.Tapes.FreeBytes) tip += ", " + SizeText(*station.Tapes.FreeBytes) + " free";
  if (station.Tapes.FullAt) tip += ", full at " + HourText(*station.Tapes.FullAt);
  return tip;
}

void LoadTape(Program& program) {
  if (MayLoadTape(program.State) && !MayLeaveSession(program)) return;
  OnPlayer(program, [&program](tape::Player& player, const tape::PlayerAround& around) {
    player.Load(around, TapesFolder(program.State), program.State.Tapes.Recorder.Recording());
  });
}

void PlayTape(Program& program) {
  OnPlayer(program, [](tape::Player& player, const tape::PlayerAround& around) { player.Play(around); });
}

void PauseTape(Program& program) {
  OnPlayer(program, [](tape::Player& player, const tape::PlayerAround& around) { player.Pause(around); });
}

void StopTape(Program& program) {
  OnPlayer(program, [](tape::Player& player, const tape::PlayerAround& around) { player.Stop(around); });
}

void CloseTape(Program& program) {
  OnPlayer(program, [](tape::Player& player, const tape::PlayerAround& around) { player.Close(around); });
}

void TapeTick(Program& program) {
  OnPlayer(program, [](tape::Player& player, const tape::PlayerAround& around) { player.Tick(around); });
}

void MoveTape(Program& program, std::int32_t barValue) {
  OnPlayer(program,
           [barValue](tape::Player& player, const tape::PlayerAround& around) { player.MoveBar(around, barValue); });
}

void ShowTapePoint(Program& program, std::int32_t Point) {
  OnPlayer(program,
           [Point](tape::Player& player, const tape::PlayerAround& around) { player.ShowRecPoint(around, Point); });
}

void SetTapeSpeed(Program& program, std::int32_t step) {
  OnPlayer(program, [step](tape::Player& player, const tape::PlayerAround& around) { player.SetSpeed(around, step); });
}

}  // namespace kestrel::core
