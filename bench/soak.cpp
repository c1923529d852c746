// A session of four hours at a cycle a second, 64 players and 400 AI aircraft, as fast as the station takes it: the
// whole station on the offscreen platform, its log on, against a server on a socket. Prints how memory grows for each
// position kept, the longest time in which no event was handled, and whether the log holds every command. With the
// argument all-history the trails of all players are shown whole, with extras what the station ships without is on.

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "base/profile_file.h"
#include "link/tables.h"
#include "platform/make_seams.h"
#include "project_paths.h"
#include "session-sim/encoder.h"
#include "shell/core/run_station.h"
#include "shell/parts/look.h"
#include "shell/parts/tool_frm.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;

constexpr int Cycles = 4 * 3600;
constexpr int Players = 64;
constexpr int AIAircraft = 400;
/// Memory is read after this many cycles, when all caches are full, and at the end.
constexpr int Settled = Cycles / 10;

/// Resident memory of this process, bytes.
double ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  double size = 0, resident = 0;
  statm >> size >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

/// What the server sends, and how often each command.
class Server {
 public:
  Server() {
    listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), length) != 0 || listen(listener, 1) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
      std::perror("server");
      std::exit(1);
    }
    Port = ntohs(address.sin_port);
    worker = std::thread([this] { Serve(); });
  }
  ~Server() {
    worker.join();
    close(listener);
  }

  int Port = 0;
  std::atomic<int> Sent = 0;  ///< cycles
  std::map<std::string, int> Commands;

 private:
  void Serve() {
    const int peer = accept(listener, nullptr, nullptr);
    char hello[16];
    if (recv(peer, hello, sizeof hello, 0) <= 0) return;
    sim::World world({.Players = 0, .AI = AIAircraft, .Seed = 3});
    std::vector<sim::Player> players(Players);
    for (int i = 0; i < Players; ++i) {
      players[static_cast<std::size_t>(i)].Id = static_cast<std::int16_t>(i + 1);
      players[static_cast<std::size_t>(i)].Name = "Pilot " + std::to_string(i + 1);
      Send(peer, "NEWCLT", sim::NewClt(players[static_cast<std::size_t>(i)]));
    }
    for (int cycle = 0; cycle < Cycles; ++cycle) {
      world.Step(1);
      for (int i = 0; i < Players; ++i) {
        sim::Player& player = players[static_cast<std::size_t>(i)];
        const double angle = 0.002 * cycle + i;
        player.At.X = 512 + (100 + 5 * i) * std::cos(angle);
        player.At.Y = 512 + (100 + 5 * i) * std::sin(angle);
        Send(peer, "INDATA", sim::InData(player, '.'));
      }
      Send(peer, "AILOCA", sim::AiLoca(world.AI(), {512, 512}));
      Send(peer, "SYNCRO", sim::Syncro());
      Sent = cycle + 1;
    }
    // The station reads what is on the way; then it leaves.
    shutdown(peer, SHUT_WR);
    while (recv(peer, hello, sizeof hello, 0) > 0) {
    }
    close(peer);
  }

  void Send(int peer, const char* command, const std::string& message) {
    ++Commands[command];
    for (std::size_t at = 0; at < message.size();) {
      const ssize_t sent = send(peer, message.data() + at, message.size() - at, MSG_NOSIGNAL);
      if (sent <= 0) return;
      at += static_cast<std::size_t>(sent);
    }
  }

  int listener = -1;
  std::thread worker;
};

/// What is on with the argument extras: section [KESTREL].
constexpr std::pair<const char*, const char*> Extras[] = {
    {"THREATRING", "1"},        {"THREATRANGE", "60"}, {"LABELSAPART", "1"},
    {"PLOTCARD", "1"},          {"GRIDDEGREES", "1"},  {"MAPBRIGHTNESS", "60"},
    {"REMEMBERCALLSIGNS", "1"}, {"RECONNECT", "1"},    {"WHEELATPOINTER", "1"}};

/// Lines of the log by command word, as far as they tell of an arrival.
std::map<std::string, int> Arrivals(const fs::path& log) {
  std::map<std::string, int> found;
  std::ifstream file(log, std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    const std::size_t word = line.find("Command arrived from Server: (");
    if (word != std::string::npos) ++found[line.substr(word + 30, 6)];
  }
  return found;
}

template <class Widget>
Widget* FindTop(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == QLatin1String(name)) return qobject_cast<Widget*>(window);
  }
  return nullptr;
}

/// "Show All History Points" of every player, as a person sets it. False while they are not all there.
bool ShowAllHistory() {
  auto* clients = FindTop<shell::ToolFrm>("ClientsFrm");
  auto* tree = clients->findChild<QTreeView*>(QStringLiteral("TreeView1"));
  auto* button = FindTop<QWidget>("MDIForm1")->findChild<QAbstractButton*>(QStringLiteral("chkClients"));
  if (!clients->Expanded()) clients->MaxFrm();
  button->setChecked(true);
  if (tree->model()->rowCount() < Players) return false;
  for (int row = 0; row < Players; ++row) {
    tree->setCurrentIndex(tree->model()->index(row, 0));
    auto* box = clients->findChild<QAbstractButton*>(QStringLiteral("Check1"));
    if (!box->isChecked()) box->click();
  }
  button->setChecked(false);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  shell::ApplyLook(application, false);
  QTemporaryDir place;
  const fs::path folder = fs::path(place.path().toStdString()) / "station";
  fs::copy(fs::path(KESTREL_BINARY_DIR) / "station", folder, fs::copy_options::recursive);
  Server server;
  base::ProfileFile ini = base::ProfileFile::Load(folder / "KESTREL.ini");
  ini.WriteIniValue("OPTIONS", "CONNPORT", std::to_string(server.Port));
  ini.WriteIniValue("LOG", "DEBUG", "1");
  const std::string_view argument = argc > 1 ? argv[1] : "";
  const bool extras = argument == "extras";
  if (extras) {
    for (const auto& [key, value] : Extras) ini.WriteIniValue("KESTREL", key, value);
  }
  ini.Save(folder / "KESTREL.ini");

  bool historyDue = argument == "all-history";
  const bool allHistory = historyDue;
  double settledBytes = 0, endBytes = 0, longest = 0;
  QTimer watch;
  QElapsedTimer turn, whole;
  const auto step = [&] {
    longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) / 1e6);
    turn.start();
    if (auto* choice = FindTop<QDialog>("frmSelectChannel"); choice != nullptr && choice->isVisible()) choice->accept();
    if (historyDue && server.Sent > 0 && ShowAllHistory()) {
      historyDue = false;
      turn.start();
    }
    if (settledBytes == 0 && server.Sent >= Settled) settledBytes = ResidentBytes();
    if (endBytes == 0 && server.Sent == Cycles) endBytes = ResidentBytes();
    // The peer's close has reached the station: every command before it has been handled.
    auto* frame = FindTop<QWidget>("MDIForm1");
    if (endBytes != 0 && !frame->findChild<QAction*>(QStringLiteral("mnuDisconnect"))->isEnabled()) {
      watch.stop();
      frame->close();
    }
  };
  QObject::connect(&watch, &QTimer::timeout, step);
  const auto keys = platform::MakeGlobalKeys();
  const auto voice = platform::MakeVoiceWindows();
  const int code = shell::RunStation(folder, {*keys, *voice}, [&] {
    FindTop<QWidget>("MDIForm1")->findChild<QAction*>(QStringLiteral("mnuConnList_1"))->trigger();
    whole.start();
    turn.start();
    watch.start(0);
  });

  const std::map<std::string, int> logged = Arrivals(folder / "KESTRELLog.txt");
  const double positions = static_cast<double>(Players) * (Cycles - Settled);
  std::printf("a session of %d cycles, %d players, %d AI aircraft%s, in %.1f s\n", Cycles, Players, AIAircraft,
              extras                      ? ", extras on"
              : allHistory && !historyDue ? ", all history shown"
                                          : "",
              static_cast<double>(whole.elapsed()) / 1000);
  std::printf("memory          %.1f MiB after %d cycles, %.1f MiB at the end\n", settledBytes / 1048576, Settled,
              endBytes / 1048576);
  std::printf("for a position  %.1f bytes (a position is %zu)\n", (endBytes - settledBytes) / positions,
              sizeof(link::PlotPoint));
  std::printf("longest turn    %.1f ms without handling events\n", longest);
  std::printf("the log         %s\n", logged == server.Commands ? "holds every command" : "IS NOT COMPLETE");
  return code == 0 && logged == server.Commands ? 0 : 1;
}
