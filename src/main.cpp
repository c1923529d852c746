#include <QApplication>

#include "shell/core/run_station.h"
#include "shell/frame/look.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("KESTREL"));
  kestrel::shell::ApplyLook(application, kestrel::shell::SystemIsDark());
  return kestrel::shell::RunStation(QCoreApplication::applicationDirPath().toStdU16String());
}
