#include "shell/core/qt_desktop.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFontDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cstdlib>
#include <memory>

#include "shell/parts/colour_button.h"

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
      modalWhileShown = dialogs.Open();
      act(*box);
    });
  }

  ModalCount dialogs;
  QtDesktop desktop{dialogs};
  bool modalWhileShown = false;
};

TEST_F(Desktop, QuestionCanBeToldToComeNoMore) {
  for (const bool tick : {true, false}) {
    InBox([tick](QMessageBox& box) {
      auto* never = box.findChild<QCheckBox*>(QStringLiteral("chkNever"));
      ASSERT_NE(never, nullptr);
      EXPECT_EQ(box.windowTitle(), QStringLiteral("Connection"));
      EXPECT_EQ(box.text(), QStringLiteral("Leave <b>it</b>?"));
      EXPECT_EQ(box.defaultButton()->objectName(), QStringLiteral("cmdNo"));
      if (tick) QTest::mouseClick(never, Qt::LeftButton, {}, QPoint(8, never->height() / 2));
      QTest::mouseClick(box.findChild<QPushButton*>(QStringLiteral("cmdYes")), Qt::LeftButton);
    });
    bool never = !tick;
    EXPECT_EQ(desktop.AskUnlessTold("Connection", "Leave <b>it</b>?", never), Answer::Yes);
    EXPECT_EQ(never, tick);
    EXPECT_TRUE(modalWhileShown);
  }
}

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
    EXPECT_EQ(desktop.Ask("Title", "Text", MessageIcon::Question, each.Buttons, each.Expected), each.Expected);
    EXPECT_TRUE(modalWhileShown);
    EXPECT_FALSE(dialogs.Open());
  }
}

TEST_F(Desktop, EscapeIsTheLastAnswerThereIs) {
  for (const auto& [buttons, answer] :
       {std::pair(MessageButtons::Ok, Answer::Ok), std::pair(MessageButtons::YesNo, Answer::No),
        std::pair(MessageButtons::YesNoCancel, Answer::Cancel)}) {
    InBox([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(desktop.Ask("Title", "Text", MessageIcon::None, buttons, Answer::Ok), answer);
  }
}

TEST_F(Desktop, EnterIsTheAnswerThatWasNamedForIt) {
  for (const auto& [buttons, answer] :
       {std::pair(MessageButtons::Ok, Answer::Ok), std::pair(MessageButtons::YesNo, Answer::Yes),
        std::pair(MessageButtons::YesNo, Answer::No), std::pair(MessageButtons::YesNoCancel, Answer::Yes),
        std::pair(MessageButtons::YesNoCancel, Answer::No), std::pair(MessageButtons::YesNoCancel, Answer::Cancel)}) {
    InBox([](QMessageBox& box) {
      ASSERT_NE(box.defaultButton(), nullptr);
      EXPECT_TRUE(box.defaultButton()->hasFocus() || box.focusWidget() == box.defaultButton());
      QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(desktop.Ask("Title", "Text", MessageIcon::Question, buttons, answer), answer);
  }
}

TEST_F(Desktop, BoxIsAsWideAsItsTitle) {
  const std::string title = "The Theater could not be deleted: nothing was changed on the disk";
  int width = 0;
  QFont bold = QApplication::font();
  bold.setBold(true);
  for (const char* text : {"Short.", "A text that is itself a good deal longer than a word or two, on one line."}) {
    InBox([&width](QMessageBox& box) {
      ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
      width = box.width();
      box.close();
    });
    desktop.Message(title, text, MessageIcon::Exclamation);
    // Titles are often bold, and an icon and three buttons stand beside them.
    const int beside = 4 * QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
    EXPECT_GE(width, QFontMetrics(bold).horizontalAdvance(QString::fromStdString(title)) + beside) << text;
  }
}

TEST_F(Desktop, HourglassIsLiftedWhileABoxWaits) {
  const auto shape = [] {
    const QCursor* pointer = QGuiApplication::overrideCursor();
    return pointer == nullptr ? Qt::ArrowCursor : pointer->shape();
  };
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  QGuiApplication::setOverrideCursor(Qt::BusyCursor);
  InBox([&shape](QMessageBox& box) {
    EXPECT_EQ(shape(), Qt::ArrowCursor);
    box.close();
  });
  desktop.Ask("Title", "Text", MessageIcon::None, MessageButtons::Ok, Answer::Ok);
  EXPECT_EQ(shape(), Qt::BusyCursor);
  QTimer::singleShot(0, qApp, [&shape] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(shape(), Qt::ArrowCursor);
    dialog->reject();
  });
  desktop.OpenFile("Title", "All|*", QDir::tempPath().toStdString(), {});
  EXPECT_EQ(shape(), Qt::BusyCursor);
  QGuiApplication::restoreOverrideCursor();
  EXPECT_EQ(shape(), Qt::WaitCursor);
  QGuiApplication::restoreOverrideCursor();
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
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
    EXPECT_TRUE(dialogs.Open());
    outer.close();
  });
  desktop.Message("Outer", "Text", MessageIcon::None);
  EXPECT_FALSE(dialogs.Open());
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
    EXPECT_TRUE(dialogs.Open());
    auto* name = dialog->findChild<QLineEdit*>();
    EXPECT_EQ(name->text(), QStringLiteral("M\u00fcnchen.BMP"));
    QTest::keyClick(name, Qt::Key_Return);
    if (dialog->isVisible()) dialog->reject();
  });
  EXPECT_EQ(
      desktop.OpenFile("Load a picture", "Images |*.bmp;*.jpg|All|*.*", folder.path().toStdString(), "M\xFCnchen.BMP"),
      path.toStdString());
  EXPECT_FALSE(dialogs.Open());
}

TEST_F(Desktop, FileThatIsNotChosenIsNone) {
  QTimer::singleShot(0, qApp, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
  EXPECT_EQ(desktop.OpenFile("Title", "All|*.*", {}, {}), std::nullopt);
}

TEST_F(Desktop, ChosenColourHasRedInItsLowByte) {
  QTimer::singleShot(0, qApp, [this] {
    auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialogs.Open());
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
  EXPECT_FALSE(dialogs.Open()) << "nothing is waited for";
  QString text;
  InBox([&text](QMessageBox& box) {
    text = box.text();
    QTest::keyClick(&box, Qt::Key_Return);
  });
  EXPECT_TRUE(QTest::qWaitFor([&text] { return !text.isEmpty(); }));
  EXPECT_EQ(text, QStringLiteral("The disk is full."));
  EXPECT_FALSE(dialogs.Open());
}

TEST_F(Desktop, ABoxForAFrameThatHasGoneDoesNotCome) {
  auto frame = std::make_unique<QWidget>();
  desktop.SetOwner(frame.get());
  desktop.MessageSoon("Recording", "The disk is full.", MessageIcon::Exclamation);
  frame.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Desktop, ChosenFontComesWithItsStyleAndColor) {
  const base::FontRecord present{.FontName = "DejaVu Sans", .FontSize = 10, .Color = 0x332211};
  QTimer::singleShot(0, qApp, [this] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->objectName(), QStringLiteral("PickFont"));
    EXPECT_TRUE(dialogs.Open());
    auto* fonts = dialog->findChild<QFontDialog*>();
    QFont chosen(QStringLiteral("DejaVu Sans Mono"), 14, QFont::Bold);
    chosen.setStrikeOut(true);
    chosen.setUnderline(true);
    fonts->setCurrentFont(chosen);
    auto* color = dialog->findChild<ColourButton*>(QStringLiteral("cmdColor"));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->Colour(), base::Colour{0x332211});
    QTimer::singleShot(0, qApp, [] {
      auto* colours = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(colours, nullptr);
      colours->setCurrentColor(QColor(0x44, 0x55, 0x66));
      colours->accept();
    });
    QTest::mouseClick(color, Qt::LeftButton);
    dialog->accept();
  });
  const std::optional<base::FontRecord> font = desktop.PickFont(present, true);
  ASSERT_TRUE(font);
  EXPECT_EQ(font->FontName, "DejaVu Sans Mono");
  EXPECT_EQ(font->FontSize, 14);
  EXPECT_TRUE(font->FontBold && font->FontStrike && font->FontUnder);
  EXPECT_FALSE(font->FontItalic);
  EXPECT_EQ(font->Color, base::Colour{0x665544});
  EXPECT_FALSE(dialogs.Open());
}

TEST_F(Desktop, AFontThatTheSystemDoesNotHaveStaysUnlessAnotherIsChosen) {
  const base::FontRecord present{.FontName = "OCR A Extended", .FontSize = 12.5F, .FontBold = true, .Color = 77};
  QTimer::singleShot(0, qApp, [] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->findChild<ColourButton*>(), nullptr) << "no colour was asked for";
    dialog->accept();
  });
  const std::optional<base::FontRecord> font = desktop.PickFont(present, false);
  ASSERT_TRUE(font);
  EXPECT_EQ(font->FontName, "OCR A Extended");
  EXPECT_EQ(font->FontSize, 12.5F);
  EXPECT_TRUE(font->FontBold);
  EXPECT_EQ(font->Color, base::Colour{77});
}

TEST_F(Desktop, FontThatIsNotChosenIsNone) {
  // Also where the keyboard stands in the lists of the inner dialog.
  for (const bool inner : {false, true}) {
    QTimer::singleShot(0, qApp, [inner] {
      QWidget* dialog = QApplication::activeModalWidget();
      QWidget* receiver = inner ? dialog->findChild<QFontDialog*>() : dialog;
      QTest::keyClick(receiver, Qt::Key_Escape);
    });
    EXPECT_EQ(desktop.PickFont({}, true).has_value(), false) << inner;
  }
}

TEST(ColourFace, CaptionCanBeReadOnEveryColor) {
  ColourButton button(QStringLiteral("Enemy"), QStringLiteral("Color"), nullptr);
  button.resize(120, 28);
  for (const base::Colour colour : {0x000000U, 0xFFFFFFU, 0x0000FFU, 0xFF0000U, 0x00FFFFU, 0x808080U}) {
    button.ShowColour(colour);
    const QImage shown = button.grab().toImage();
    int most = 0;
    for (int y = 6; y < shown.height() - 6; ++y) {
      for (int x = 6; x < shown.width() - 6; ++x) {
        most = std::max(most, std::abs(qGray(shown.pixel(x, y)) - qGray(ToQColor(colour).rgb())));
      }
    }
    EXPECT_GT(most, 90) << std::hex << colour;
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Color: ") + ToQColor(colour).name());
  }
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
  EXPECT_FALSE(dialogs.Open());
}

#ifdef Q_OS_WIN
TEST_F(Desktop, ProgramStartsWithItsArgumentInItsFolder) {
  QTemporaryDir folder;
  // A folder whose name no code page of one byte holds whole.
  const QString inside = folder.filePath(QStringLiteral("\u0416\u00e9\u6771"));
  ASSERT_TRUE(QDir().mkdir(inside));
  desktop.Open(qEnvironmentVariable("COMSPEC").toStdString(), "/c echo -s>started.new& ren started.new started",
               inside.toStdString());
  QFile started(inside + QStringLiteral("/started"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return started.exists(); }));
  ASSERT_TRUE(started.open(QIODevice::ReadOnly));
  EXPECT_EQ(started.readAll().trimmed(), QByteArray("-s"));
}
#else
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
