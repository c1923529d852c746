#include "shell/core/qt_desktop.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QColorDialog>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>
#include <memory>

namespace kestrel::shell {
namespace {

using base::Answer;
using base::MessageButtons;
using base::MessageIcon;

class Desktop : public testing::Test {
 protected:
  /// Runs `act` on the box that the next Ask shows.
  template <class Act>
  void InBox(Act act) {
    QTimer::singleShot(0, qApp, [this, act] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->objectName(), QStringLiteral("MessageBox"));
      modalWhileShown = desktop.ModalOpen();
      act(*box);
    });
  }

  ModalCount dialogs;
  QtDesktop desktop{dialogs};
  bool modalWhileShown = false;
};

TEST_F(Desktop, EachButtonGivesItsAnswer) {
  struct Case {
    MessageButtons Buttons;
    const char* Button;
    Answer Expected;
  };
  for (const Case& each :
       {Case{MessageButtons::Ok, "cmdOk", Answer::Ok}, Case{MessageButtons::YesNo, "cmdYes", Answer::Yes},
        Case{MessageButtons::YesNo, "cmdNo", Answer::No}, Case{MessageButtons::YesNoCancel, "cmdYes", Answer::Yes},
        Case{MessageButtons::YesNoCancel, "cmdNo", Answer::No},
        Case{MessageButtons::YesNoCancel, "cmdCancel", Answer::Cancel}}) {
    SCOPED_TRACE(each.Button);
    InBox([&each](QMessageBox& box) {
      auto* button = box.findChild<QPushButton*>(QString::fromLatin1(each.Button));
      ASSERT_NE(button, nullptr);
      QTest::mouseClick(button, Qt::LeftButton);
    });
    EXPECT_EQ(desktop.Ask("Title", "Text", MessageIcon::Question, each.Buttons), each.Expected);
    EXPECT_TRUE(modalWhileShown);
    EXPECT_FALSE(desktop.ModalOpen());
  }
}

TEST_F(Desktop, EscapeIsTheLastAnswerThereIs) {
  for (const auto& [buttons, answer] :
       {std::pair(MessageButtons::Ok, Answer::Ok), std::pair(MessageButtons::YesNo, Answer::No),
        std::pair(MessageButtons::YesNoCancel, Answer::Cancel)}) {
    InBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(desktop.Ask("Title", "Text", MessageIcon::None, buttons), answer);
  }
}

TEST_F(Desktop, TextStandsWordForWord) {
  InBox([](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Info"));
    EXPECT_EQ(box.text(), QStringLiteral("<b>A & B</b> \u00b0"));
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    box.close();
  });
  desktop.Message("Info", "<b>A & B</b> \xB0", MessageIcon::Critical);
}

TEST_F(Desktop, BoxOnABoxCountsAsOneThatIsOpen) {
  InBox([this](QMessageBox& outer) {
    InBox([](QMessageBox& inner) { inner.close(); });
    desktop.Message("Inner", "Text", MessageIcon::None);
    EXPECT_TRUE(desktop.ModalOpen());
    outer.close();
  });
  desktop.Message("Outer", "Text", MessageIcon::None);
  EXPECT_FALSE(desktop.ModalOpen());
}

TEST_F(Desktop, ChosenFileComesWithItsPath) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("M\u00fcnchen.BMP"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  QTimer::singleShot(0, qApp, [this] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->objectName(), QStringLiteral("OpenFile"));
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Load a picture"));
    EXPECT_EQ(dialog->nameFilters(),
              QStringList({QStringLiteral("Images (*.bmp *.jpg)"), QStringLiteral("All (*.*)")}));
    EXPECT_TRUE(desktop.ModalOpen());
    auto* name = dialog->findChild<QLineEdit*>();
    EXPECT_EQ(name->text(), QStringLiteral("M\u00fcnchen.BMP"));
    QTest::keyClick(name, Qt::Key_Return);
    if (dialog->isVisible()) dialog->reject();
  });
  EXPECT_EQ(
      desktop.OpenFile("Load a picture", "Images |*.bmp;*.jpg|All|*.*", folder.path().toStdString(), "M\xFCnchen.BMP"),
      QFile::encodeName(path).toStdString());
  EXPECT_FALSE(desktop.ModalOpen());
}

TEST_F(Desktop, FileThatIsNotChosenIsNone) {
  QTimer::singleShot(0, qApp, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
  EXPECT_EQ(desktop.OpenFile("Title", "All|*.*", {}, {}), std::nullopt);
}

TEST_F(Desktop, ChosenColourHasRedInItsLowByte) {
  QTimer::singleShot(0, qApp, [this] {
    auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(desktop.ModalOpen());
    EXPECT_EQ(dialog->currentColor(), QColor(0x11, 0x22, 0x33));
    dialog->setCurrentColor(QColor(0x44, 0x55, 0x66));
    dialog->accept();
  });
  EXPECT_EQ(desktop.PickColour(0x332211), base::Colour{0x665544});
}

TEST_F(Desktop, ColourThatIsNotChosenIsNone) {
  QTimer::singleShot(0, qApp, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
  EXPECT_EQ(desktop.PickColour(0), std::nullopt);
}

TEST_F(Desktop, AFilterThatNamesItsPatternIsNotToldTwice) {
  QTimer::singleShot(0, qApp, [] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->nameFilters(), QStringList{QStringLiteral("Tape Files (*.tap)")});
    dialog->reject();
  });
  desktop.OpenFile("Load", "Tape Files (*.tap)|*.tap", {}, {});
}

TEST_F(Desktop, ABoxThatMayComeSoonLetsItsCallerGoOn) {
  QWidget frame;
  desktop.SetOwner(&frame);
  desktop.MessageSoon("Recording", "The disk is full.", MessageIcon::Exclamation);
  EXPECT_FALSE(desktop.ModalOpen()) << "nothing is waited for";
  QString text;
  InBox([&text](QMessageBox& box) {
    text = box.text();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  EXPECT_TRUE(QTest::qWaitFor([&text] { return !text.isEmpty(); }));
  EXPECT_EQ(text, QStringLiteral("The disk is full."));
  EXPECT_FALSE(desktop.ModalOpen());
}

TEST_F(Desktop, ABoxForAFrameThatHasGoneDoesNotCome) {
  auto frame = std::make_unique<QWidget>();
  desktop.SetOwner(frame.get());
  desktop.MessageSoon("Recording", "The disk is full.", MessageIcon::Exclamation);
  frame.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Desktop, EventsRun) {
  bool ran = false;
  QTimer::singleShot(0, qApp, [&ran] { ran = true; });
  desktop.LetEventsRun();
  EXPECT_TRUE(ran);
}

TEST_F(Desktop, PageIsHandedToTheSystem) {
  // Any receiver of a page stands in for the browser.
  QTextBrowser receiver;
  QSignalSpy pages(&receiver, &QTextBrowser::anchorClicked);
  QDesktopServices::setUrlHandler(QStringLiteral("https"), &receiver, "anchorClicked");
  desktop.Open("https://docs.invalid/kestrel", {}, {});
  QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
  ASSERT_EQ(pages.count(), 1);
  EXPECT_EQ(pages[0][0].toUrl(), QUrl(QStringLiteral("https://docs.invalid/kestrel")));
}

TEST_F(Desktop, MissingProgramIsNotNoticed) {
  desktop.Open("ravenfix.exe", "-s", ".");
  EXPECT_FALSE(desktop.ModalOpen());
}

#ifndef Q_OS_WIN
TEST_F(Desktop, ProgramStartsWithItsArgumentInItsFolder) {
  QTemporaryDir folder;
  const QString program = folder.filePath(QStringLiteral("updater"));
  QFile script(program);
  ASSERT_TRUE(script.open(QIODevice::WriteOnly));
  script.write("#!/bin/sh\necho \"$1\" > started.new\nmv started.new started\n");
  script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  script.close();
  desktop.Open(program.toStdString(), "-s", folder.path().toStdString());
  QFile started(folder.filePath(QStringLiteral("started")));
  ASSERT_TRUE(QTest::qWaitFor([&] { return started.exists(); }));
  ASSERT_TRUE(started.open(QIODevice::ReadOnly));
  EXPECT_EQ(started.readAll(), QByteArray("-s\n"));
}
#endif

}  // namespace
}  // namespace kestrel::shell
