#include <QApplication>

#include "platform/make_seams.h"
#include "shell/core/run_station.h"
#include "shell/parts/look.h"

int main(int argc, char** argv) {
#ifdef Q_OS_LINUX
  // Windows that stand where they were left, above other programs, are X's to give, also within a Wayland desktop.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    qputenv("QT_QPA_PLATFORM", "xcb;wayland");
  }
#endif
#ifdef Q_OS_WIN
  // Qt 6.4 tells whether the system's windows are dark only when it is asked to; 2: frames and palette.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "windows:darkmode=2");
#endif
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("KESTREL"));
  kestrel::shell::ApplyLook(application, kestrel::shell::SystemIsDark());
  const auto keys = kestrel::platform::MakeGlobalKeys();
  const auto voice = kestrel::platform::MakeVoiceWindows();
  return kestrel::shell::RunStation(QCoreApplication::applicationDirPath().toStdU16String(),
                                    {*keys, *voice, kestrel::platform::MakeInstallKeys});
}
