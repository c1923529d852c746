#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/temp_folder.h"
#include "core/healing.h"
#include "core/tapes.h"
#include "core/theater_switch.h"
#include "station_folder.h"
#include "tape/golden_tape.h"
#include "tape/reader.h"

// A station without windows that records and replays, with doubles around it.
namespace kestrel::core {

inline const std::string NewPlayer(
    "NEWCLT5\x1eSmith\x1e"
    "F-16\x1eO\0",
    21);

/// The host of a session that hands the tapes on, as the windows do.
class TapeHost final : public link::SessionHost {
 public:
  std::optional<std::uint8_t> ChooseChannel(std::uint8_t) override { return 0; }
  void Refresh(base::Changed what) override {
    LookAtLink(*Owner);
    Owner->Shown.Refresh(what);
  }
  void ComputeRecData() override { core::ComputeRecData(*Owner); }
  void RecordingEnd() override { core::RecordingEnd(*Owner); }
  bool LinkLost(const std::string& why) override { return core::LinkLost(*Owner, why); }
  void LinkLeft() override { core::LinkLeft(*Owner); }
  Program* Owner = nullptr;
};

struct TapedOutside {
  doubles::RecordingWindows Shown;
  TapeHost Host;
};

class Taping : public testing::Test, protected doubles::StationAround<TapedOutside> {
 protected:
  Taping() {
    WriteInstallation(folder);
    Host.Owner = &All;
    State.AppPath = folder.Path;
    EXPECT_TRUE(Main(All));
    RunSteps(FrameLoadSteps(), All);
    RunSteps(MapLoadSteps(), All);
    Shown.Refreshes.clear();
    Clock.Date = 46347.5;  // 2026-11-21, noon
    Clock.Ticks = 5000;
  }

  void Connect() {
    Link.ConnectToEntry(1);
    WS1.Accept();
    ASSERT_TRUE(State.Session.Connected);
  }
  void Synchronise() {
    Clock.Ticks += 1000;
    Clock.Date += 1.0 / 86400;
    WS1.Arrive(std::string("SYNCRO\0", 7));
  }
  /// A session with one player and a tape of `records` records, closed.
  void RecordTape(int records) {
    Connect();
    WS1.Arrive(NewPlayer);
    RecordingStart(All);
    for (int n = 0; n < records; ++n) Synchronise();
    RecordingEnd(All);
  }
  std::filesystem::path TapePath() const { return folder.Path / "TAPES" / "21-11-26_120000.tap"; }
  tape::TapeHeader Header() { return tape::TapeReader(TapePath()).Header(); }
  void Load() {
    Desk.FileAnswers = {TapePath().string()};
    LoadTape(All);
  }
  /// The boxes about the recording, of all that were shown.
  std::vector<std::string> RecordingBoxes() const {
    std::vector<std::string> texts;
    for (const auto& box : Desk.Boxes) {
      if (box.Title == "Recording") texts.push_back(box.Text);
    }
    return texts;
  }
  base::Changed AllRefreshed() const {
    base::Changed what = base::Changed::Nothing;
    for (const base::Changed each : Shown.Refreshes) what |= each;
    return what;
  }

  ProgramFolder folder;
};

}  // namespace kestrel::core
