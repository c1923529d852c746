#include "shell/core/run_station.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

/// The whole program with its real boxes and socket; only the program folder is the fixture's.
class RunStationTest : public StationTest {
 protected:
  MDIForm1* RunningFrame() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* frame = qobject_cast<MDIForm1*>(window)) return frame;
    }
    return nullptr;
  }
  std::filesystem::path Path() { return folder.path().toStdU16String(); }
};

TEST_F(RunStationTest, ClosingTheFrameEndsItWithZero) {
  bool drawn = false;
  const int code = RunStation(Path(), {globalKeys, voiceWindows}, [&] {
    drawn = RunningFrame()->Map().Picture().MapDraws() == 1;
    RunningFrame()->close();
  });
  EXPECT_EQ(code, 0);
  EXPECT_TRUE(drawn);
  EXPECT_EQ(RunningFrame(), nullptr);
}

TEST_F(RunStationTest, FailedStartEndsItWithOneAfterItsBox) {
  ASSERT_TRUE(QFile::remove(folder.filePath(QStringLiteral("update.txt"))));
  QString text;
  InNextDialog([&text](QWidget& dialog) {
    text = qobject_cast<QMessageBox*>(&dialog)->text();
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOk")), Qt::LeftButton);
  });
  EXPECT_EQ(RunStation(Path(), {globalKeys, voiceWindows}), 1);
  EXPECT_EQ(text,
            QStringLiteral("An error ocurred while loading the initialization files (Main). Please check these files, "
                           "or reinstall the program. The program will exit now..."));
}

TEST_F(RunStationTest, APictureThatCannotBeReadEndsItWithOneAfterItsBoxAlone) {
  Write("Theaters/one.png", "no picture");
  int frames = -1;
  InNextDialog([&](QWidget& dialog) {
    EXPECT_TRUE(qobject_cast<QMessageBox*>(&dialog)->text().contains(QStringLiteral("(Main)")));
    frames = RunningFrame() == nullptr ? 0 : 1;
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOk")), Qt::LeftButton);
  });
  EXPECT_EQ(RunStation(Path(), {globalKeys, voiceWindows}), 1);
  EXPECT_EQ(frames, 0);
}

TEST_F(RunStationTest, SessionRunsFromPhonebookToFarewell) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  QByteArray ini = Read("KESTREL.ini");
  ini.replace("CONNPORT=5556", "CONNPORT=" + QByteArray::number(server.serverPort())).replace("10.0.0.1", "127.0.0.1");
  Write("KESTREL.ini", ini);
  QByteArray received;
  QString box;
  QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
    QTcpSocket* peer = server.nextPendingConnection();
    QObject::connect(peer, &QTcpSocket::readyRead, peer, [&, peer] {
      received += peer->readAll();
      if (received == QByteArray("NAWACS2\0", 8)) peer->write(QByteArray("DISCON\0", 7));
    });
  });
  // The channel dialog, then the box about the server's end, each by its own keys.
  QTimer person;
  QObject::connect(&person, &QTimer::timeout, qApp, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isActiveWindow()) return;
    if (auto* message = qobject_cast<QMessageBox*>(dialog)) {
      box = message->text();
      QTest::mouseClick(message->findChild<QPushButton*>(QStringLiteral("cmdOk")), Qt::LeftButton);
      QTimer::singleShot(0, RunningFrame(), &QWidget::close);
    } else {
      QTest::keyClick(dialog, Qt::Key_R, Qt::AltModifier);
      QTest::keyClick(dialog, Qt::Key_Return);
    }
  });
  person.start(10);
  QTimer::singleShot(30000, qApp, &QCoreApplication::quit);
  EXPECT_EQ(RunStation(Path(), {globalKeys, voiceWindows},
                       [&] { RunningFrame()->findChild<QAction*>(QStringLiteral("mnuConnList_1"))->trigger(); }),
            0);
  EXPECT_EQ(box, QStringLiteral("The connection was closed by the server."));
  ASSERT_TRUE(QTest::qWaitFor([&] { return received == QByteArray("NAWACS2\0AWAEND\0", 15); }))
      << received.toHex().data();
}

}  // namespace
}  // namespace kestrel::shell
