#include <gtest/gtest.h>

#include <QApplication>

#include "shell/parts/look.h"

namespace {

/// A warning of the toolkit is a slip of the window that caused it, so the running test fails.
void FailOnWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  // What the offscreen platform says about itself.
  if (text.contains(QStringLiteral("plugin does not support"))) return;
  if (testing::UnitTest::GetInstance()->current_test_info() != nullptr) {
    ADD_FAILURE() << "the toolkit warns: " << qPrintable(text);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
  // The platform without a screen looks for fonts only where it is told.
  if (qEnvironmentVariableIsEmpty("QT_QPA_FONTDIR")) qputenv("QT_QPA_FONTDIR", qgetenv("WINDIR") + "\\Fonts");
#endif
  testing::InitGoogleTest(&argc, argv);
  qInstallMessageHandler(FailOnWarning);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  kestrel::shell::ApplyLook(application, false);
  return RUN_ALL_TESTS();
}
