#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/temp_folder.h"
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
  void Refresh(base::Changed what) override { Owner->Shown.Refresh(what); }
  void ComputeRecData() override { core::ComputeRecData(*Owner); }
  void RecordingEnd() override { core::RecordingEnd(*Owner); }
  Program* Owner = nullptr;
};

class Taping : public testing::Test {
 protected:
  Taping() {
    WriteInstallation(folder);
    host.Owner = &all;
    station.AppPath = folder.Path;
    EXPECT_TRUE(Main(all));
    RunSteps(FrameLoadSteps(), all);
    RunSteps(MapLoadSteps(), all);
    shown.Refreshes.clear();
    clock.Date = 46347.5;  // 2026-11-21, noon
    clock.Ticks = 5000;
  }

  void Connect() {
    session.ConnectToEntry(1);
    WS1.Accept();
    ASSERT_TRUE(station.Session.Connected);
  }
  void Synchronise() {
    clock.Ticks += 1000;
    clock.Date += 1.0 / 86400;
    WS1.Arrive(std::string("SYNCRO\0", 7));
  }
  /// A session with one player and a tape of `records` records, closed.
  void RecordTape(int records) {
    Connect();
    WS1.Arrive(NewPlayer);
    RecordingStart(all);
    for (int n = 0; n < records; ++n) Synchronise();
    RecordingEnd(all);
  }
  std::filesystem::path TapePath() const { return folder.Path / "TAPES" / "21-11-26_120000.tap"; }
  tape::TapeHeader Header() { return tape::TapeReader(TapePath()).Header(); }
  void Load() {
    desk.FileAnswers = {TapePath().string()};
    LoadTape(all);
  }
  /// The boxes about the recording, of all that were shown.
  std::vector<std::string> RecordingBoxes() const {
    std::vector<std::string> texts;
    for (const auto& box : desk.Boxes) {
      if (box.Title == "Recording") texts.push_back(box.Text);
    }
    return texts;
  }
  base::Changed AllRefreshed() const {
    base::Changed what = base::Changed::Nothing;
    for (const base::Changed each : shown.Refreshes) what |= each;
    return what;
  }

  ProgramFolder folder;
  Station station;
  doubles::FakeClock clock;
  doubles::ScriptedDesktop desk;
  doubles::RecordingWindows shown;
  base::DebugLog log{clock};
  link::Capture raw{clock};
  doubles::FakeSocket WS1;
  TapeHost host;
  link::Session session{WS1, desk, host, log, raw, station.Session, station.Plots, station.LinkOptions};
  doubles::FakeGlobalKeys keys;
  doubles::FakeVoice voiceWindows;
  radio::VoiceBridge voice{voiceWindows, station.VoiceWindowName};
  Program all{station, desk, shown, log, raw, session, keys, voice};
};

}  // namespace kestrel::core
