#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/temp_folder.h"
#include "doubles/scripted_desktop.h"
#include "tape/golden_tape.h"
#include "tape/player.h"

// A player over tapes of the golden writer, with doubles around it.
namespace kestrel::tape {

inline constexpr double day = 46000;
inline constexpr double secondsPerDay = 86400;
inline double At(double seconds) { return day + seconds / secondsPerDay; }

/// The station around the player: keeps what was asked of it.
class RecordingAround final : public PlayerHost {
 public:
  explicit RecordingAround(link::SessionState& state) : session(state) {}

  void UseBullseye(std::optional<BullseyePlace> place) override {
    Calls.push_back(place ? "bullseye of the tape" : "bullseye of the theater");
    Bullseye = place;
    session.Bull = place ? theaters::DownPoint{place->X, 1024 - place->Y} : theaters::DownPoint{512, 512};
  }
  void LeaveSession() override {
    Calls.push_back("leave the session");
    if (WhenLeft) WhenLeft();
  }
  void ShowLoading(int percent) override {
    if (Percents.empty()) Calls.push_back("show the progress");
    Percents.push_back(percent);
  }
  void HideLoading() override { Calls.push_back("hide the progress"); }
  void Note(std::string_view text) override { Notes.emplace_back(text); }
  void Refresh(base::Changed what) override {
    if (WhenRefreshed) WhenRefreshed();
    Refreshed |= what;
  }

  std::vector<std::string> Calls;  ///< in order
  std::vector<int> Percents;       ///< of ShowLoading
  std::vector<std::string> Notes;  ///< lines for the log
  std::optional<BullseyePlace> Bullseye;
  base::Changed Refreshed = base::Changed::Nothing;  ///< all together
  std::function<void()> WhenLeft;                    ///< run inside LeaveSession
  std::function<void()> WhenRefreshed;               ///< run inside Refresh

 private:
  link::SessionState& session;
};

class TapePlayer : public testing::Test {
 protected:
  /// A tape of records at these seconds, two players and two AI aircraft in each.
  void WriteTape(const std::vector<double>& seconds) {
    std::string bytes = GoldenTape(static_cast<std::int32_t>(seconds.size()), seconds);
    Write(bytes);
  }
  static std::string GoldenTape(std::int32_t count, const std::vector<double>& seconds) {
    std::string bytes = test::GoldenHeader(count, 1000, At(-5), 100, 200);
    for (std::size_t n = 0; n < seconds.size(); ++n) {
      bytes += test::GoldenRecord(At(seconds[n]), test::SampleTables(2, 2, static_cast<int>(n) + 1));
    }
    return bytes;
  }
  /// A new file each time: some file systems bring one that is written over to the disk when it is closed.
  void Write(const std::string& bytes) {
    std::filesystem::remove(path);
    WriteOver(bytes);
  }
  void WriteOver(const std::string& bytes) { test::WriteBytes(path, bytes); }

  void Load() {
    desk.FileAnswers = {path.string()};
    player.Load(around, folder.Path(), false);
  }
  void LoadTape(const std::vector<double>& seconds) {
    WriteTape(seconds);
    Load();
    ASSERT_THAT(desk.Boxes, testing::IsEmpty()) << desk.Boxes[0].Text;
    ASSERT_EQ(State().Phase, PlayerPhase::Stopped);
  }
  const PlayerState& State() const { return player.State(); }

  /// The tables of a session that is on when a load begins.
  void FillTables() {
    plots = test::SampleTables(3, 4, 2);
    plots.RebuildIndex();
    session.Connected = true;
  }
  void ExpectEverythingAsItWas(const std::string& title, const std::string& text) {
    ASSERT_THAT(desk.Boxes, testing::SizeIs(1));
    EXPECT_EQ(desk.Boxes[0].Title, title);
    EXPECT_THAT(desk.Boxes[0].Text, testing::StartsWith(text));
    ASSERT_THAT(host.Notes, testing::SizeIs(1));
    EXPECT_THAT(host.Notes[0], testing::StartsWith("The tape 21-11-26_120000.tap "));
    EXPECT_EQ(State().Phase, PlayerPhase::NoFile);
    EXPECT_EQ(State().FileTitle, "");
    EXPECT_EQ(State().CurPoint, 0);
    EXPECT_EQ(plots.Clients.UpperBound(), 3u);
    EXPECT_EQ(plots.AIPlots.UpperBound(), 4u);
    EXPECT_EQ(plots.Clients[0].Label, "slot 0");
    EXPECT_FALSE(host.Bullseye);
    EXPECT_THAT(host.Calls, testing::Not(testing::Contains("leave the session")));
  }

  test::TempFolder folder;
  std::filesystem::path path = folder / "21-11-26_120000.tap";
  link::Tables plots;
  link::SessionState session;
  link::Options options;
  doubles::ScriptedDesktop desk;
  RecordingAround host{session};
  PlayerAround around{host, desk, plots, session, options};
  Player player;
};

}  // namespace kestrel::tape
