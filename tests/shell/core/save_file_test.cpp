// The name of a file to write, asked for in the real dialog.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include "base/files.h"
#include "shell/core/qt_desktop.h"

namespace kestrel::shell {
namespace {

class SaveFile : public testing::Test {
 protected:
  using Act = std::function<void(QFileDialog&)>;

  /// Asks for a name, `act` working the dialog; the answer.
  std::optional<std::string> Ask(const Act& act, const char* filter = "Areas|*.dat;*.txt|Frequencies|*.ini|All|*.*") {
    QTimer::singleShot(0, qApp, [&act] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
      act(*dialog);
      // However it went: nothing stays on the screen.
      if (dialog->isVisible()) {
        dialog->reject();
        ADD_FAILURE() << "the dialog is not answered";
      }
    });
    return desktop.SaveFile("Export", filter, folder.path().toStdString(), defaultName);
  }
  /// Types a name and presses Enter.
  static void Type(QFileDialog& dialog, const char* name) {
    auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(field, nullptr);
    field->selectAll();
    QTest::keyClicks(field, QString::fromLatin1(name));
    QTest::keyClick(field, Qt::Key_Return);
  }
  static Act Typing(const char* name) {
    return [name](QFileDialog& dialog) { Type(dialog, name); };
  }
  /// Chooses a filter by its line in the list.
  static void ChooseFilter(QFileDialog& dialog, int line) {
    auto* list = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    ASSERT_NE(list, nullptr);
    list->setFocus();
    for (int step = list->currentIndex(); step < line; ++step) QTest::keyClick(list, Qt::Key_Down);
  }
  std::string PathOf(const char* name) { return folder.filePath(QString::fromLatin1(name)).toStdString(); }
  void Make(const char* name) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("old");
  }

  QTemporaryDir folder;
  ModalCount dialogs;
  QtDesktop desktop{dialogs};
  std::string defaultName;
};

TEST_F(SaveFile, IsAskedUnderItsTitleAndName) {
  defaultName = "mine.dat";
  const auto answer = Ask([this](QFileDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("SaveFile"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Export"));
    EXPECT_EQ(dialog.directory().canonicalPath(), QDir(folder.path()).canonicalPath());
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(), QStringLiteral("mine.dat"));
    EXPECT_TRUE(dialogs.Open());
    dialog.reject();
  });
  EXPECT_FALSE(answer);
  EXPECT_FALSE(dialogs.Open());
}

TEST_F(SaveFile, NameWithoutAnExtensionGetsThatOfTheFilter) { EXPECT_EQ(Ask(Typing("mine")), PathOf("mine.dat")); }

TEST_F(SaveFile, ExtensionOfTwoPartsIsWhole) {
  EXPECT_EQ(Ask(Typing("mine"), "Text|*.txt.acmi|Packed|*.zip.acmi"), PathOf("mine.txt.acmi"));
}

TEST_F(SaveFile, ExtensionThatIsTypedStays) { EXPECT_EQ(Ask(Typing("mine.txt")), PathOf("mine.txt")); }

TEST_F(SaveFile, ExtensionFollowsTheFilterThatIsChosen) {
  EXPECT_EQ(Ask([](QFileDialog& dialog) {
              ChooseFilter(dialog, 1);
              Type(dialog, "mine");
            }),
            PathOf("mine.ini"));
  EXPECT_EQ(Ask([](QFileDialog& dialog) {
              ChooseFilter(dialog, 2);
              Type(dialog, "mine");
            }),
            PathOf("mine"));
}

TEST_F(SaveFile, FilterForEveryFileHasNoExtension) {
  for (const char* filter : {"All|*", "All|*.*", "Some (these)|*.*"}) {
    EXPECT_EQ(Ask(Typing("mine"), filter), PathOf("mine")) << filter;
  }
}

TEST_F(SaveFile, NameKeepsEveryCharacter) {
  const auto answer = Ask([](QFileDialog& dialog) {
    auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    field->setText(QStringLiteral("\u0416\u00e9"));
    QTest::keyClick(field, Qt::Key_Return);
  });
  ASSERT_TRUE(answer);
  EXPECT_EQ(base::PathOfText(*answer).filename().u16string(), u"\u0416\u00e9.dat");
}

TEST_F(SaveFile, FileThatExistsIsReplacedOnlyWhenThePersonAgrees) {
  Make("mine.dat");
  for (const QMessageBox::StandardButton button : {QMessageBox::No, QMessageBox::Yes}) {
    bool asked = false;
    const auto answer = Ask([&asked, button](QFileDialog& dialog) {
      QTimer::singleShot(0, qApp, [&asked, button] {
        auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(question, nullptr);
        asked = question->text().contains(QStringLiteral("mine.dat"));
        QTest::mouseClick(question->button(button), Qt::LeftButton);
      });
      // Without its extension: the question is about the file that would be written.
      Type(dialog, "mine");
      if (button == QMessageBox::No) {
        EXPECT_TRUE(dialog.isVisible()) << "another name can be typed";
        dialog.reject();
      }
    });
    EXPECT_TRUE(asked);
    EXPECT_EQ(answer.has_value(), button == QMessageBox::Yes);
    EXPECT_EQ(answer.value_or(PathOf("mine.dat")), PathOf("mine.dat"));
  }
  QFile file(folder.filePath(QStringLiteral("mine.dat")));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "old") << "asking writes nothing";
}

TEST_F(SaveFile, BeginsWhereOneOfItsKindWasLastChosen) {
  ASSERT_EQ(Ask(Typing("mine")), PathOf("mine.dat"));
  QString begins;
  QTimer::singleShot(0, qApp, [&begins] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    begins = dialog->directory().canonicalPath();
    dialog->reject();
  });
  desktop.SaveFile("Export", "All|*", {}, {});
  EXPECT_EQ(begins, QDir(folder.path()).canonicalPath());
}

}  // namespace
}  // namespace kestrel::shell
