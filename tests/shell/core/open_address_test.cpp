// What is opened with the system's viewer.

#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QUrl>

#include "shell/core/qt_desktop.h"

namespace kestrel::shell {
namespace {

/// Takes what is opened in place of the system's viewer.
class Viewer : public QTextBrowser {
 public:
  Viewer() {
    for (const char* scheme : Schemes) QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "setSource");
  }
  ~Viewer() override {
    for (const char* scheme : Schemes) QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
  }
  QVariant loadResource(int, const QUrl&) override { return QStringLiteral("page"); }

 private:
  static constexpr const char* Schemes[] = {"file", "https"};
};

TEST(OpenAddress, TakesAFileByItsWholePathWhateverItsName) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("caf\u00e9 #1 \u0416.html"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  ModalCount dialogs;
  const Viewer viewer;
  QtDesktop(dialogs).Open(path.toStdString(), {}, {});
  EXPECT_EQ(viewer.source().toLocalFile(), path);
}

TEST(OpenAddress, TakesAnAddress) {
  ModalCount dialogs;
  const Viewer viewer;
  QtDesktop(dialogs).Open("https://docs.invalid/kestrel", {}, {});
  EXPECT_EQ(viewer.source(), QUrl(QStringLiteral("https://docs.invalid/kestrel")));
}

}  // namespace
}  // namespace kestrel::shell
