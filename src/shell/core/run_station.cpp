#include "shell/core/run_station.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <memory>

#include "base/clock.h"
#include "base/debug_log.h"
#include "core/execute_shortcut.h"
#include "core/program.h"
#include "link/capture.h"
#include "radio/voice_bridge.h"
#include "shell/core/folder_lock.h"
#include "shell/core/qt_desktop.h"
#include "shell/core/station_windows.h"
#include "shell/link/qt_socket.h"
#include "shell/parts/guard.h"

namespace kestrel::shell {
namespace {

/// Null where the system calls by itself.
std::unique_ptr<QSocketNotifier> NotifierOf(core::GlobalKeys& keys, base::DebugLog& log) {
  if (keys.Descriptor() < 0) return nullptr;
  auto notifier = std::make_unique<QSocketNotifier>(keys.Descriptor(), QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [&keys, &log, own = notifier.get()] {
    Guarded(log, "GlobalKeys", [&keys] { keys.Drain(); });
    if (keys.Descriptor() < 0) own->setEnabled(false);
  });
  return notifier;
}

}  // namespace

int RunStation(const std::filesystem::path& appPath, SystemSeams system, const std::function<void()>& started) {
  base::SystemClock clock;
  base::DebugLog log(clock);
  link::Capture capture(clock);
  core::Station station;
  FolderLock folder;
  station.AppPath = appPath;
  station.OwnFolder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation).toStdU16String();
  ModalCount dialogs;
  QtDesktop desktop(dialogs);
  StationWindows windows(dialogs);
  QtSocket socket(log);
  link::Session session(socket, desktop, windows, log, capture, station.Session, station.Plots, station.LinkOptions);
  radio::VoiceBridge voice(system.Voice, station.VoiceWindowName);
  core::Program program{station,           desktop,
                        windows,           log,
                        capture,           session,
                        system.Keys,       voice,
                        system.Registered, [&folder](const std::filesystem::path& path) { return folder.Take(path); }};
  const std::unique_ptr<QSocketNotifier> keyNotifier = NotifierOf(system.Keys, log);
  windows.Attach(program);

  // The frame alone ends the program: a box before it is shown, or the saving message, must not.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  if (!core::Main(program)) {
    core::StopHook(program);
    windows.DeleteWindows();
    return 1;
  }
  desktop.SetOwner(windows.Frame());
  QObject::connect(windows.Frame(), &MDIForm1::Closed, qApp, &QCoreApplication::quit);
  if (started) {
    QObject::connect(&windows.Frame()->Map().Picture(), &MapPicture::Painted, windows.Frame(), started,
                     static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
  }
  const int code = QCoreApplication::exec();
  windows.DeleteWindows();
  return code;
}

}  // namespace kestrel::shell
