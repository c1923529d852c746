// Where the choice of a file begins.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTimer>

#include "shell/core/qt_desktop.h"

namespace kestrel::shell {
namespace {

class OpenFile : public testing::Test {
 protected:
  /// Asks for a file; the folder that the choice begins in. `choose` is chosen, or the choice cancelled when empty.
  QString Ask(const char* title, const QString& folder, const QString& choose = {}) {
    QString begins;
    QTimer::singleShot(0, qApp, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      begins = dialog->directory().canonicalPath();
      if (choose.isEmpty()) {
        dialog->reject();
      } else {
        dialog->selectFile(choose);
        QMetaObject::invokeMethod(dialog, "accept");
      }
    });
    desktop.OpenFile(title, "All|*", folder.toStdString(), {});
    return begins;
  }
  static QString FileIn(const QTemporaryDir& folder) {
    QFile file(folder.filePath(QStringLiteral("some.bmp")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return file.fileName();
  }
  static QString Canonical(const QTemporaryDir& folder) { return QDir(folder.path()).canonicalPath(); }

  ModalCount dialogs;
  QtDesktop desktop{dialogs};
  QTemporaryDir pictures, tapes;
};

TEST_F(OpenFile, BeginsWhereOneOfItsKindWasLastChosen) {
  Ask("Open Map Image", pictures.path(), FileIn(pictures));
  Ask("Open Tape", tapes.path(), FileIn(tapes));
  EXPECT_EQ(Ask("Open Map Image", {}), Canonical(pictures));
  EXPECT_EQ(Ask("Open Map Image", {}), Canonical(pictures)) << "a choice that is cancelled changes nothing";
  EXPECT_EQ(Ask("Open Tape", {}), Canonical(tapes));
}

TEST_F(OpenFile, BeginsInTheFolderThatIsGiven) {
  Ask("Open Tape", pictures.path(), FileIn(pictures));
  EXPECT_EQ(Ask("Open Tape", tapes.path()), Canonical(tapes));
}

TEST_F(OpenFile, FirstOneOfItsKindBeginsAtHome) {
  Ask("Open Tape", tapes.path(), FileIn(tapes));
  EXPECT_EQ(Ask("Open Map Image", {}), QDir::home().canonicalPath());
}

}  // namespace
}  // namespace kestrel::shell
