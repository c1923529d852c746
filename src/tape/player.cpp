#include "tape/player.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <new>
#include <utility>

#include "base/failure.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/positioned_file.h"
#include "tape/show_record.h"

namespace kestrel::tape {
namespace {

using base::Changed;

constexpr std::string_view MessageTitle = "Playback";
constexpr double SecondsPerDay = 86400;
/// A difference of two dates is taken for the whole second that it misses by less than this, seconds: the dates of
/// today are rounded to less than a millionth of a second.
constexpr double DateSlack = 1e-5;

/// What the box of a failed load tells of it.
struct NumberedError {
  int Number;
  std::string Text;
};

NumberedError ErrorOf(const std::exception& failure) {
  constexpr int outOfMemory = 7, fileNotFound = 53, pastEndOfFile = 62, permissionDenied = 70, accessError = 75;
  if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr) return {outOfMemory, "Out of memory"};
  const auto* unopened = dynamic_cast<const base::OpenFailure*>(&failure);
  if (unopened == nullptr) return {pastEndOfFile, failure.what()};
  switch (unopened->Reason) {
    case std::errc::no_such_file_or_directory:
      return {fileNotFound, failure.what()};
    case std::errc::permission_denied:
    case std::errc::operation_not_permitted:
      return {permissionDenied, failure.what()};
    default:
      return {accessError, failure.what()};
  }
}

std::string FailureText(const std::exception& failure) {
  const NumberedError error = ErrorOf(failure);
  return "The file you opened is not valid, it is corrupted or another general error occured.\nERROR NUMBER: " +
         std::to_string(error.Number) + "\nERROR DESC: " + error.Text;
}

/// Whole seconds from one date to another, the fraction cut; nothing when they cannot be told.
std::optional<std::int32_t> WholeSeconds(double from, double to) {
  const double seconds = (to - from) * SecondsPerDay;
  const double whole = std::trunc(seconds + std::copysign(DateSlack, seconds));
  if (!(std::abs(whole) <= std::numeric_limits<std::int32_t>::max())) return std::nullopt;
  return static_cast<std::int32_t>(whole);
}

/// Takes the progress away however the load ends.
class LoadingShown {
 public:
  explicit LoadingShown(PlayerHost& shownBy) : host(shownBy) { host.ShowLoading(0); }
  ~LoadingShown() { host.HideLoading(); }
  LoadingShown(const LoadingShown&) = delete;
  LoadingShown& operator=(const LoadingShown&) = delete;

 private:
  PlayerHost& host;
};

void TellUnreadable(const PlayerAround& around, const std::string& what, const std::exception& failure) {
  const std::string unreadable = what + " of the tape cannot be read: " + failure.what();
  around.Host.Note(unreadable);
  around.Desk.Message(MessageTitle,
                      unreadable + ". The file may have been changed since it was loaded. What is on show stays.",
                      base::MessageIcon::Exclamation);
}

}  // namespace

void Player::Load(const PlayerAround& around, const std::filesystem::path& folder, bool Recording) {
  if (state.Phase != PlayerPhase::NoFile || Recording) return;
  const std::optional<std::string> file =
      around.Desk.OpenFile("Load Tape File", "Tape Files (*.tap)|*.tap", base::TextOfPath(folder), {});
  // While the choice was open another tape may have been loaded. A recording that has begun ends with the connection.
  if (!file || state.Phase != PlayerPhase::NoFile) return;
  givenUp = false;
  state.Phase = PlayerPhase::Loading;
  try {
    const std::filesystem::path path = base::PathOfText(*file);
    state.FileTitle = base::NameForMessage(path);
    around.Host.Refresh(Changed::Tape);
    Opened opened;
    if (OpenTape(around, path, opened)) TakeIntoUse(around, std::move(opened));
  } catch (const WrongFormat& failure) {
    TellFailed(around, "The file you opened is not valid or it was created with a previous version of KESTREL.",
               failure);
  } catch (const std::exception& failure) {
    TellFailed(around, FailureText(failure), failure);
  }
}

void Player::TellFailed(const PlayerAround& around, std::string_view text, const std::exception& failure) {
  if (givenUp) return;
  around.Host.Note("The tape " + state.FileTitle + " cannot be loaded: " + failure.what());
  GiveUp(around, "Error: Wrong file format.", text, base::MessageIcon::Exclamation);
}

/// False when there is nothing to be loaded: the tape is empty, which has been told, or the load has been given up.
bool Player::OpenTape(const PlayerAround& around, const std::filesystem::path& file, Opened& opened) {
  opened.Tape = std::make_unique<TapeReader>(file);
  const TapeHeader& header = opened.Tape->Header();
  const BullseyePlace bullseye{header.BullX, header.BullY};
  if (!bullseye.IsPlace()) {
    around.Host.Note("The bullseye of the tape " + state.FileTitle +
                     " is no place on a map; the theater's own stands for it");
  }
  // In force before it is known whether there are records. A load that fails takes it back, though only Close would
  // have to: on purpose, since there is nothing to be closed then.
  around.Host.UseBullseye(bullseye);
  if (header.RecordCount == 0) {
    around.Host.Note("The tape " + state.FileTitle + " is empty");
    opened.Tape.reset();
    GiveUp(around, "Info...", "The tape file is empty...", base::MessageIcon::Information);
    return false;
  }
  opened.Tape->CheckRecordCount();
  // So that the bar stays within 16 bits; a count of exactly 32767 already takes a step of 2: this stands.
  opened.ScrollScale = base::ToInt16(header.RecordCount / MaxBarPoint + 1);
  if (!Index(around, opened)) return false;
  // Before anything is given up for the tape: it begins with a record that can be shown.
  opened.First = opened.Tape->ReadRecord(opened.Offsets[1]);
  around.Host.LeaveSession();
  return !givenUp;
}

bool Player::Index(const PlayerAround& around, Opened& opened) {
  const std::int32_t count = opened.Tape->Header().RecordCount;
  // Grown record by record: the count may promise more than there is.
  opened.Offsets.push_back(0);
  const LoadingShown shown(around.Host);
  std::uint64_t position = FirstRecordAt;
  for (std::int64_t i = 1; i <= count; ++i) {
    opened.Offsets.push_back(position);
    position = opened.Tape->Skip(position).Next;
    around.Host.ShowLoading(static_cast<int>(i * 100 / count));
    around.Desk.LetEventsRun();
    if (givenUp) return false;
  }
  return true;
}

void Player::TakeIntoUse(const PlayerAround& around, Opened opened) {
  const std::int32_t count = opened.Tape->Header().RecordCount;
  tape = std::move(opened.Tape);
  Offsets = std::move(opened.Offsets);
  state.Phase = PlayerPhase::Stopped;
  state.RecordCount = count;
  state.ScrollScale = opened.ScrollScale;
  state.BarMinimum = 1 / opened.ScrollScale;
  state.BarMaximum = count / opened.ScrollScale;
  around.Plots.Clients[0].Label = FirstTime;
  Snapshot first{std::move(opened.First), std::nullopt};
  ReadNextTime(1, first);
  Install(around, 1, std::move(first));
}

/// Tells why nothing is loaded. The name of the file stays on show until the box is answered; what the session under it
/// has to do with does not.
void Player::GiveUp(const PlayerAround& around, std::string_view title, std::string_view text, base::MessageIcon icon) {
  around.Host.UseBullseye(std::nullopt);
  around.Desk.Message(title, text, icon);
  if (givenUp) return;
  state.Phase = PlayerPhase::NoFile;
  state.FileTitle.clear();
  around.Host.Refresh(Changed::Tape);
}

void Player::SetInterval() {
  const std::int64_t interval = std::int64_t{state.SecsBetween} * 1000 / state.Speed;
  state.TimerInterval =
      static_cast<std::int32_t>(std::clamp<std::int64_t>(interval, 0, std::numeric_limits<std::int32_t>::max()));
  ++state.TimerStarts;
}

void Player::Play(const PlayerAround& around) {
  if (state.Phase != PlayerPhase::Stopped && state.Phase != PlayerPhase::Paused) return;
  // Kept until play begins again or the speed changes, whatever the gaps of the records that follow: this stands.
  SetInterval();
  state.Phase = PlayerPhase::Playing;
  around.Host.Refresh(Changed::Tape);
}

void Player::Pause(const PlayerAround& around) {
  if (state.Phase != PlayerPhase::Playing) return;
  state.Phase = PlayerPhase::Paused;
  around.Host.Refresh(Changed::Tape);
}

void Player::Stop(const PlayerAround& around) {
  if (state.Phase != PlayerPhase::Playing && state.Phase != PlayerPhase::Paused) return;
  state.Phase = PlayerPhase::Paused;
  try {
    const TapeHeader& header = tape->ReadHeader();
    if (header.RecordCount < 0) throw base::RuntimeFailure("the number of records is negative");
    // Its time would be on show only until the first record has given its own.
    state.RecordCount = header.RecordCount;
  } catch (const std::exception& failure) {
    around.Host.Refresh(Changed::Tape);
    TellUnreadable(around, "The header", failure);
    return;
  }
  if (ShowRecPoint(around, 1)) state.Phase = PlayerPhase::Stopped;
  around.Host.Refresh(Changed::Tape);
}

void Player::Tick(const PlayerAround& around) {
  if (state.Phase != PlayerPhase::Playing) return;
  if (state.CurPoint < state.RecordCount) {
    ShowRecPoint(around, state.CurPoint + 1);
  } else {
    Stop(around);
  }
}

void Player::MoveBar(const PlayerAround& around, std::int32_t value) {
  if (!state.Loaded()) return;
  const std::int64_t point = std::int64_t{state.ScrollScale} * value;
  if (point < 0 || point > MaxBarPoint) {
    around.Host.Refresh(Changed::Tape);
    around.Desk.Message(
        MessageTitle,
        "The position bar reaches no further than record 32767 of a tape. What is on show stays. To see "
        "what follows, go there by playing.",
        base::MessageIcon::Exclamation);
    return;
  }
  ShowRecPoint(around, static_cast<std::int32_t>(point));
}

void Player::SetSpeed(const PlayerAround& around, std::int32_t step) {
  state.Speed = static_cast<std::int16_t>(1 << std::clamp(step, 0, MaxSpeedStep));
  SetInterval();
  around.Host.Refresh(Changed::Tape);
}

bool Player::ShowRecPoint(const PlayerAround& around, std::int32_t Point) {
  if (!state.Loaded()) return false;
  try {
    Install(around, Point, ReadPoint(Point));
    return true;
  } catch (const std::exception& failure) {
    if (state.Phase == PlayerPhase::Playing) state.Phase = PlayerPhase::Paused;
    around.Host.Refresh(Changed::Tape);
    TellUnreadable(around, "Record " + std::to_string(Point), failure);
    return false;
  }
}

std::uint64_t Player::OffsetOf(std::int32_t Point) const {
  if (Point < 1 || static_cast<std::size_t>(Point) >= Offsets.size()) {
    throw base::RuntimeFailure("it was not on the tape when that was loaded");
  }
  return Offsets[static_cast<std::size_t>(Point)];
}

Player::Snapshot Player::ReadPoint(std::int32_t Point) {
  Snapshot snapshot;
  if (Point != 0) snapshot.Record = tape->ReadRecord(OffsetOf(Point));
  ReadNextTime(Point, snapshot);
  return snapshot;
}

void Player::ReadNextTime(std::int32_t Point, Snapshot& snapshot) {
  if (Point >= state.RecordCount) return;
  try {
    snapshot.NextTime = tape->ReadTime(OffsetOf(Point + 1));
  } catch (const base::RuntimeFailure&) {
    snapshot.NextTime.reset();  // the gap stays as it is, and the record itself can be shown
  }
}

void Player::Install(const PlayerAround& around, std::int32_t Point, Snapshot snapshot) {
  const double time = snapshot.Record.Time;
  if (snapshot.NextTime && time != 0) {
    state.SecsBetween = WholeSeconds(time, *snapshot.NextTime).value_or(state.SecsBetween);
  }
  state.CurPoint = Point;
  state.CurTime = time;
  state.BarValue = Point / state.ScrollScale;
  ShowTapeRecord(std::move(snapshot.Record), around.LinkOptions.AICOLOR, around.Plots, around.Session);
  around.Host.Refresh(Changed::Tape | Changed::Roster | Changed::AIList | Changed::Plots);
}

void Player::Close(const PlayerAround& around) {
  if (!state.Loaded()) return;
  tape.reset();
  Offsets.clear();
  state.Phase = PlayerPhase::NoFile;
  state.FileTitle.clear();
  state.CurPoint = 0;
  state.BarValue = 1;
  link::DeselectPlot(around.Session);
  around.Plots.Clear();
  around.Host.UseBullseye(std::nullopt);
  around.Host.Refresh(Changed::Tape | Changed::Roster | Changed::AIList | Changed::Map);
}

void Player::Unload() {
  givenUp = true;
  tape.reset();
  state.Phase = PlayerPhase::NoFile;
}

}  // namespace kestrel::tape
