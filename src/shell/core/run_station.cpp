#include "shell/core/run_station.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include "base/clock.h"
#include "base/debug_log.h"
#include "core/program.h"
#include "link/capture.h"
#include "shell/core/qt_desktop.h"
#include "shell/core/station_windows.h"
#include "shell/link/qt_socket.h"

namespace kestrel::shell {

int RunStation(const std::filesystem::path& appPath, const std::function<void()>& started) {
  base::SystemClock clock;
  base::DebugLog log(clock);
  link::Capture capture(clock);
  core::Station station;
  station.AppPath = appPath;
  ModalCount dialogs;
  QtDesktop desktop(dialogs);
  StationWindows windows(dialogs);
  QtSocket socket(log);
  link::Session session(socket, desktop, windows, log, capture, station.Session, station.Plots, station.LinkOptions);
  core::Program program{station, desktop, windows, log, capture, session};
  windows.Attach(program);

  // The frame alone ends the program: a box before it is shown, or the saving message, must not.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  if (!core::Main(program)) return 1;
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
