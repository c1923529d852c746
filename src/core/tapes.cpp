#include "core/tapes.h"

#include <exception>
#include <filesystem>

#include "base/files.h"
#include "base/numbers.h"
#include "core/theater_switch.h"
#include "theaters/catalogue.h"

namespace kestrel::core {
namespace {

using base::Changed;

constexpr std::string_view RecordingTitle = "Recording";

std::filesystem::path TapesFolder(const Station& station) { return base::FindFile(station.AppPath, "TAPES"); }

/// The station around the player.
class PlayerDesk final : public tape::PlayerHost {
 public:
  explicit PlayerDesk(Program& owner) : program(owner) {}

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
    if (program.Link.Open()) program.Link.Disconnect();
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

std::string TapeName(const Station& station) { return base::NameForMessage(station.Tapes.Recorder.Path()); }

std::string CountText(std::int32_t records) {
  return std::to_string(records) + (records == 1 ? " record" : " records");
}

/// Closes the tape. What to tell the person when that fails.
std::optional<std::string> EndTape(Station& station) {
  try {
    station.Tapes.Recorder.RecordingEnd(station.Session.Sync.SyncInterval);
    return std::nullopt;
  } catch (const base::RuntimeFailure& failure) {
    return "The tape " + TapeName(station) + " could not be closed properly: " + failure.what() + ".";
  }
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
    station.Tapes.FreeBytes = base::FreeSpace(station.Tapes.Recorder.Path().parent_path());
  } catch (const base::RuntimeFailure& failure) {
    program.Log.LogLine(failure.what());
    program.Desk.Message(RecordingTitle, std::string("The tape could not be made: ") + failure.what() + ".",
                         base::MessageIcon::Exclamation);
  }
  program.Shown.Refresh(Changed::Tape);
}

void RecordingEnd(Program& program) {
  if (!program.State.Tapes.Recorder.Recording()) return;
  const std::optional<std::string> trouble = EndTape(program.State);
  program.Shown.Refresh(Changed::Tape);
  if (trouble) TellRecording(program, *trouble);
}

void UnloadTapes(Program& program) {
  program.State.Tapes.Player.Unload();
  const std::optional<std::string> trouble = EndTape(program.State);
  if (trouble) program.Desk.Message(RecordingTitle, *trouble, base::MessageIcon::Exclamation);
}

void ComputeRecData(Program& program) {
  Station& station = program.State;
  tape::Recorder& recorder = station.Tapes.Recorder;
  if (!recorder.Recording()) return;
  try {
    recorder.ComputeRecData(station.Plots, program.Log.Time().Now(), station.Session.Sync.SyncInterval);
    FollowSpace(program, base::FreeSpace(recorder.Path().parent_path()));
  } catch (const base::RuntimeFailure& failure) {
    TellRecording(program, "The recording has ended, because the tape could not be written: " +
                               std::string(failure.what()) + ". " + TapeName(station) + " has been closed with " +
                               CountText(recorder.RecordCount()) + ". The session goes on.");
  }
  program.Shown.Refresh(Changed::Tape);
}

void FollowSpace(Program& program, std::optional<std::uint64_t> freeBytes) {
  Tapes& tapes = program.State.Tapes;
  tapes.FreeBytes = freeBytes;
  if (!freeBytes || tapes.SpaceTold) return;
  const std::optional<double> minutes = tapes.Recorder.MinutesLeft(*freeBytes);
  if (!minutes || *minutes >= FewMinutes) return;
  tapes.SpaceTold = true;
  TellRecording(program, "The disk will be full in less than 10 minutes if the recording goes on as it does: " +
                             SizeText(*freeBytes) + " are free, and the tape grows faster the longer it is.");
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
  for (; size >= 1000 && unit + 1 < std::size(units); ++unit) size /= 1000;
  std::string text = base::FormatInvariant(size, unit == 0 || size >= 100 ? "0" : "0.0");
  return text.append(" ").append(units[unit]);
}

std::string RecordingTip(const Station& station) {
  if (!station.Tapes.Recorder.Recording()) return "Not recording";
  std::string tip = "Recording: " + SizeText(station.Tapes.Recorder.Bytes()) + " on the tape";
  if (station.Tapes.FreeBytes) tip += ", " + SizeText(*station.Tapes.FreeBytes) + " free";
  return tip;
}

void LoadTape(Program& program) {
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

void SetTapeSpeed(Program& program, std::int32_t step) {
  OnPlayer(program, [step](tape::Player& player, const tape::PlayerAround& around) { player.SetSpeed(around, step); });
}

}  // namespace kestrel::core
