#include "shell/frame/keys_frm.h"

#include <QClipboard>
#include <QPushButton>
#include <QTableWidget>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class KeysWindow : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
  }
  /// Runs `act` on the window, opened from the menu.
  template <class Act>
  void InWindow(Act act) {
    bool run = false;
    InNextDialog([&act, &run](QWidget& dialog) {
      run = dialog.objectName() == QStringLiteral("KeysFrm");
      if (run) act(dialog);
      dialog.close();
    });
    Action("mnuKeys").trigger();
    EXPECT_TRUE(run);
  }
  static void Press(QWidget& window, const char* button) {
    QTest::mouseClick(window.findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
  }
  static QString Cell(QWidget& window, int row, int column) {
    return window.findChild<QTableWidget*>()->item(row, column)->text();
  }
};

TEST_F(KeysWindow, ShowsTheKeysAsTheyAreBoundNow) {
  station.ShortcutKeys[2] = 200081;
  InWindow([](QWidget& window) {
    EXPECT_EQ(Cell(window, 2, 0), QStringLiteral("Map"));
    EXPECT_EQ(Cell(window, 2, 1), QStringLiteral("CTRL+Q"));
    EXPECT_EQ(Cell(window, 2, 2), QStringLiteral("Move Left"));
    EXPECT_EQ(Cell(window, 22, 0), QStringLiteral("Every program"));
    EXPECT_GT(window.findChild<QTableWidget*>()->rowCount(), 28);
  });
}

TEST_F(KeysWindow, CopiesTheTableAsText) {
  InWindow([](QWidget& window) { Press(window, "cmdCopy"); });
  const QString text = QGuiApplication::clipboard()->text();
  EXPECT_TRUE(text.startsWith(QStringLiteral("Where\tKey\tWhat it does\nMap\tPAGEUP\tZoom In\n")))
      << text.toStdString();
}

TEST_F(KeysWindow, IsPrintedByTheBrowser) {
  InWindow([](QWidget& window) { Press(window, "cmdPrint"); });
  ASSERT_EQ(desk.Files.size(), 1U);
  EXPECT_EQ(desk.Files[0].File, folder.filePath(QStringLiteral("Keys.html")).toStdString());
  EXPECT_TRUE(Read("Keys.html").contains("<td>PAGEUP</td><td>Zoom In</td>"));
}

TEST_F(KeysWindow, SaysWhyItCannotBePrinted) {
  ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("Keys.html/in the way")));
  InWindow([](QWidget& window) { Press(window, "cmdPrint"); });
  EXPECT_TRUE(desk.Files.empty());
  ASSERT_EQ(desk.Boxes.size(), 1U);
  EXPECT_EQ(desk.Boxes[0].Text.find("The page of keys could not be saved: "), 0U);
}

TEST_F(KeysWindow, AllOfItsColumnsAreSeen) {
  InWindow([](QWidget& window) {
    const auto& table = *window.findChild<QTableWidget*>();
    const QAbstractItemView& view = table;
    for (int column = 0; column < 3; ++column) {
      EXPECT_GE(table.columnWidth(column), view.sizeHintForColumn(column)) << column;
    }
    EXPECT_GE(table.viewport()->width(), table.columnViewportPosition(2) + view.sizeHintForColumn(2));
  });
}

TEST_F(KeysWindow, TheGuideBesideItIsOpenedFromTheProgramFolder) {
  station.ProgramPath = station.AppPath;
  Action("mnuGuide").trigger();
  ASSERT_EQ(desk.Boxes.size(), 1U) << "it is not there";
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("docs")));
  Write("docs/guide.html", "<p>Guide</p>");
  Action("mnuGuide").trigger();
  ASSERT_EQ(desk.Files.size(), 1U);
  EXPECT_EQ(desk.Files[0].File, folder.filePath(QStringLiteral("docs/guide.html")).toStdString());
}

}  // namespace
}  // namespace kestrel::shell
