#include "shell/tape/export_tape_frm.h"

#include <QDialog>
#include <QDir>
#include <QProgressBar>
#include <QPushButton>
#include <QStringList>
#include <functional>

#include "shell/station_fixture.h"
#include "tape/golden_tape.h"

namespace kestrel::shell {
namespace {

constexpr int Records = 4000;

class ExportedTape : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("TAPES")));
    std::string bytes = test::GoldenHeader(Records, 1000, 46347.5, 512, 512);
    const std::string tables = test::GoldenRecord(0, test::SampleTables(2, 30, 0)).substr(8);
    for (int n = 0; n < Records; ++n) bytes += test::BytesF64(46347.5 + n / 86400.0) + tables;
    Write("TAPES/a.tap", QByteArray::fromStdString(bytes));
  }

  QString Tape() { return folder.filePath(QStringLiteral("TAPES/a.tap")); }
  QString Text() { return folder.filePath(QStringLiteral("out/a.txt.acmi")); }
  QStringList Written() { return QDir(folder.filePath(QStringLiteral("out"))).entryList(QDir::Files); }

  /// Picks the menu entry; `act` works the window that shows the progress.
  void Export(const std::function<void(QDialog&)>& act) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("out")));
    desk.FileAnswers = {Tape().toStdString()};
    desk.SaveAnswers = {Text().toStdString()};
    QTimer::singleShot(0, qApp, [&act] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->objectName(), QStringLiteral("ExportTapeFrm"));
      act(*dialog);
    });
    Action("mnuExportTape").trigger();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_FALSE(dialogs.Open());
  }
};

TEST_F(ExportedTape, GoesOnUntilTheFileIsThere) {
  Export([this](QDialog& dialog) {
    EXPECT_TRUE(dialogs.Open());
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblTape"))->text(), QStringLiteral("a.tap"));
    auto* bar = dialog.findChild<QProgressBar*>();
    EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->value() > 0; }));
    EXPECT_LT(bar->value(), 100);
    EXPECT_TRUE(Written().filter(QStringLiteral("a.txt.acmi")).contains(QStringLiteral("a.txt.acmi.new")));
  });
  EXPECT_EQ(Written(), QStringList{QStringLiteral("a.txt.acmi")});
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(Read("out/a.txt.acmi").count('#'), Records);
}

TEST_F(ExportedTape, CancelLeavesNoFile) {
  Export([](QDialog& dialog) {
    auto* bar = dialog.findChild<QProgressBar*>();
    EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->value() > 0; }));
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")), Qt::LeftButton);
  });
  EXPECT_EQ(Written(), QStringList());
  EXPECT_TRUE(desk.Boxes.empty());
  Export([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(Written(), QStringList());
}

TEST_F(ExportedTape, ATapeThatBecomesShorterIsToldAndLeavesNoFile) {
  Export([this](QDialog& dialog) {
    auto* bar = dialog.findChild<QProgressBar*>();
    EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->value() > 0; }));
    ASSERT_TRUE(QFile(Tape()).resize(1000));
  });
  ASSERT_EQ(desk.Boxes.size(), 1U);
  EXPECT_TRUE(desk.Boxes[0].Text.starts_with("The tape could not be exported: ")) << desk.Boxes[0].Text;
  EXPECT_EQ(Written(), QStringList());
}

TEST_F(ExportedTape, NothingOpensWhenTheChoiceIsCancelled) {
  Action("mnuExportTape").trigger();
  EXPECT_EQ(desk.FileQuestions.size(), 1U);
  EXPECT_TRUE(desk.Boxes.empty());
}

}  // namespace
}  // namespace kestrel::shell
