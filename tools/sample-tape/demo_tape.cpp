#include "sample-tape/demo_tape.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "link/line_protocol.h"
#include "link/plot_feed.h"
#include "link/roster.h"
#include "link/tables.h"
#include "sample-theater/facts.h"
#include "session-sim/encoder.h"
#include "session-sim/world.h"
#include "tape/recorder.h"

namespace kestrel::demo {
namespace {

/// 2026-03-14, 19:30.
constexpr double Start = 46095 + 19.5 / 24;
constexpr double SecondsPerDay = 86400;
/// The session has been on for so long when the tape begins, seconds.
constexpr int Before = 600;
constexpr sim::WorldOptions World{.Players = 12, .AI = 60, .Seed = 9};

/// A controller of both sides with the tables that the server's messages fill.
class Controller {
 public:
  Controller() : world(World), bullseye{land::Bullseyes[0].X, land::Bullseyes[0].Y} {}

  void Step(double seconds) { world.Step(seconds); }
  /// One cycle of the server.
  void Cycle() {
    FollowRoster();
    for (const auto& [id, player] : known) {
      if (player.Status == 'O') Handle(sim::InData(player, '.'));
    }
    Handle(sim::AiLoca(world.AI(), bullseye));
  }
  const link::Tables& Tables() const { return tables; }
  sim::BullseyePoint Bullseye() const { return bullseye; }

 private:
  void FollowRoster() {
    std::map<std::int16_t, sim::Player> present;
    for (const sim::Player& player : world.Players()) present.emplace(player.Id, player);
    for (const auto& [id, player] : known) {
      if (!present.contains(id)) Handle(sim::DelClt(id));
    }
    for (const auto& [id, player] : present) {
      const auto before = known.find(id);
      if (before == known.end()) {
        Handle(sim::NewClt(player));
      } else if (before->second.Status != player.Status) {
        Handle(sim::PlsUpd(player));
      }
    }
    known = std::move(present);
  }

  void Handle(const std::string& message) {
    std::vector<link::CommandEntry> commands;
    link::ParseData(message, commands);
    for (const auto& [word, data] : commands) {
      if (word == "NEWCLT") link::AddAWASCClient(data, true, tables);
      if (word == "PLSUPD") link::UpdateClientStatus(data, tables);
      if (word == "DELCLT") link::DelAWACSClient(data, tables);
      if (word == "INDATA") link::GetAWACSPosData(data, PeriodS * 1000, tables);
      if (word == "AILOCA") link::ParseAI(data, {bullseye.X, sim::MapSize - bullseye.Y}, tables);
    }
  }

  sim::World world;
  sim::BullseyePoint bullseye;
  std::map<std::int16_t, sim::Player> known;
  link::Tables tables;
};

}  // namespace

void WriteDemoTape(const std::filesystem::path& file) {
  Controller controller;
  for (int second = 0; second < Before; second += PeriodS) controller.Step(PeriodS);
  controller.Cycle();  // players are shown from their second position on
  tape::TapeHeader header;
  header.SyncInterval = PeriodS * 1000;
  header.BullX = controller.Bullseye().X;
  header.BullY = controller.Bullseye().Y;
  tape::Recorder recorder;
  recorder.RecordingStart(file.parent_path(), Start, header);
  for (int record = 0; record < Records; ++record) {
    controller.Step(PeriodS);
    controller.Cycle();
    recorder.ComputeRecData(controller.Tables(), Start + record * PeriodS / SecondsPerDay, header.SyncInterval);
  }
  recorder.RecordingEnd(header.SyncInterval);
  std::error_code failure;
  std::filesystem::rename(recorder.Path(), file, failure);
  if (failure) throw base::RuntimeFailure("the tape cannot be named: " + failure.message());
}

}  // namespace kestrel::demo
