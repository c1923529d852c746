#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <string>

#include "doubles/station_around.h"
#include "shell/core/station_windows.h"

namespace kestrel::shell {

/// The windows of the program, which host its session too.
struct RealWindows {
  ModalCount Dialogs;
  StationWindows Shown{Dialogs};
  StationWindows& Host = Shown;
};

/// A program folder with two theaters and a phonebook of two, and the whole station over it with its real windows, a
/// socket whose peer is the test and a desktop that answers from a list.
class StationTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder.isValid());
    Write("update.txt", "DOCS=https://docs.invalid/kestrel\r\nMAIL=someone@mail.invalid\r\n");
    Write("common.ini", "[GENERAL]\r\nAUTOUPDATE=0\r\n");
    Write("FriendlyNames.ini", "");
    Write("KESTREL.ini",
          "[MAPS]\r\nTOTALMAPS=2\r\nMAP1=one.ini\r\nMAP2=two.ini\r\nCURRENTMAP=1\r\n"
          "[OPTIONS]\r\nCONNPORT=5556\r\n[CONNLIST]\r\nNUM=2\r\n"
          "[CONNLIST1]\r\nNAME=Home\r\nIP=10.0.0.1\r\n[CONNLIST2]\r\nNAME=Away & far\r\nIP=away.invalid\r\n");
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Theaters")));
    WriteTheater("one", "First theater", "1024");
    WriteTheater("two", "Second theater", "512");
    program.State.AppPath = folder.path().toStdU16String();
    windows.Attach(program);
  }

  void TearDown() override {
    windows.DeleteWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void Start() {
    ASSERT_TRUE(core::Main(program));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&Frame()));
  }

  /// Connects to the first entry of the phonebook; `key` is pressed in the channel dialog before Enter.
  void Connect(Qt::Key key = Qt::Key_B) {
    Action("mnuConnList_1").trigger();
    InNextDialog([key](QWidget& dialog) {
      QTest::keyClick(&dialog, key, Qt::AltModifier);
      QTest::keyClick(&dialog, Qt::Key_Return);
    });
    socket.Accept();
  }

  /// Runs `act` on the modal dialog that the next call opens.
  template <class Act>
  void InNextDialog(Act act) {
    QTimer::singleShot(0, qApp, [act] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      EXPECT_TRUE(QTest::qWaitFor([dialog] { return QApplication::activeWindow() == dialog; }));
      act(*dialog);
    });
  }

  MDIForm1& Frame() { return *windows.Frame(); }
  MapPicture& Picture() { return Frame().Map().Picture(); }
  map::ViewState& View() { return station.View; }
  QAction& Action(const char* name) {
    auto* action = Frame().findChild<QAction*>(QString::fromLatin1(name));
    EXPECT_NE(action, nullptr) << name;
    return *action;
  }
  QString ReadOut(const char* name) { return Frame().findChild<QLabel*>(QString::fromLatin1(name))->text(); }

  void Write(const char* name, const QByteArray& bytes) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }
  QByteArray Read(const char* name) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void WriteTheater(const QByteArray& name, const QByteArray& shown, const QByteArray& size) {
    Write(("Theaters/" + name + ".ini").constData(),
          "[MAP]\r\nNAME=" + name + "\r\nDISPLNAME=" + shown + "\r\nPIC=" + name + ".png\r\nSIZE=" + size +
              "\r\nCURRENTBULL=1\r\nPICSIZE=64\r\nCOORDLAT=34\r\nCOORDLONG=125\r\nBULLSEYES=2\r\n"
              "[BULLS1]\r\nNAME=Alpha\r\nX=100\r\nY=200\r\n[BULLS2]\r\nNAME=Bravo\r\nX=300\r\nY=400\r\n");
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    ASSERT_TRUE(picture.save(
        folder.filePath(QStringLiteral("Theaters/") + QString::fromLatin1(name) + QStringLiteral(".png"))));
  }

  QTemporaryDir folder;
  doubles::StationAround<RealWindows> around;
  core::Station& station = around.State;
  core::Program& program = around.All;
  StationWindows& windows = around.Shown;
  ModalCount& dialogs = around.Dialogs;
  doubles::FakeClock& clock = around.Clock;
  doubles::ScriptedDesktop& desk = around.Desk;
  doubles::FakeSocket& socket = around.WS1;
  link::Session& session = around.Link;
  doubles::FakeGlobalKeys& globalKeys = around.Keys;
  doubles::FakeVoice& voiceWindows = around.VoiceWindows;
};

}  // namespace kestrel::shell
