// What the status strip says for a moment, and the tips of its read-outs.

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <vector>

#include "map/geometry.h"
#include "shell/options/view_frm.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class Moment : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    QApplication::setActiveWindow(&Frame());
    Picture().setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().hasFocus(); }));
  }
  QLabel& Word() { return *Frame().Strip().findChild<QLabel*>(QStringLiteral("lblMoment")); }
};

TEST_F(Moment, SaysThatAViewIsSavedAndGoes) {
  EXPECT_FALSE(Word().isVisible());
  QTest::keyClick(&Picture(), Qt::Key_2, Qt::ControlModifier);
  EXPECT_TRUE(Word().isVisible());
  EXPECT_EQ(Word().text(), QStringLiteral("View 2 saved"));
  QElapsedTimer since;
  since.start();
  ASSERT_TRUE(QTest::qWaitFor([this] { return !Word().isVisible(); }, 10000));
  EXPECT_GE(since.elapsed(), 2500) << "three seconds, but for what the key took";
}

TEST_F(Moment, GivesTheNextWordItsWholeTime) {
  Frame().Strip().ShowMoment(QStringLiteral("One"));
  const int first = Frame().Strip().findChild<QLabel*>(QStringLiteral("lblMoment"))->width();
  Frame().Strip().ShowMoment(QStringLiteral("Another word"));
  EXPECT_EQ(Word().text(), QStringLiteral("Another word"));
  EXPECT_GT(Word().width(), first);
}

TEST_F(Moment, IsSaidByTheButtonOfTheOptionsToo) {
  ViewFrm& options = Frame().Tools().The<ViewFrm>();
  options.MaxFrm();
  Frame().Strip().Check(core::ToolWindow::View).setChecked(true);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&options));
  View().Resolution = 4;
  auto* save = options.findChild<QPushButton*>(QStringLiteral("cmdSaveShortcut_3"));
  ASSERT_NE(save, nullptr);
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_EQ(Word().text(), QStringLiteral("View 3 saved"));
  EXPECT_TRUE(Word().isVisible());
  View().Resolution = 1;
  map::SetViewShortcut(View(), 3);
  EXPECT_EQ(View().Resolution, 4) << "and it is";
}

TEST_F(Moment, StandsBehindTheLampsAndMovesNothing) {
  const StatusStrip& strip = Frame().Strip();
  const auto take = [&] {
    std::vector<QRect> all;
    for (const QWidget* part : strip.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (part != &Word() && part->isVisible()) all.push_back(part->geometry());
    }
    return all;
  };
  const auto before = take();
  Frame().Strip().ShowMoment(QStringLiteral("View 1 saved"));
  EXPECT_EQ(take(), before);
  EXPECT_GE(Word().width(), Word().sizeHint().width());
  const auto* guard = strip.findChild<Lamp*>(QStringLiteral("StatPic_Guard"));
  EXPECT_GT(Word().x(), guard->geometry().right());
  EXPECT_LE(Word().geometry().right(), strip.width());
}

TEST_F(Moment, ReadOutsTellWhatTheyAre) {
  for (const char* name : {"lblPosition", "lblZoom", "lblLat", "lblLong", "lblElevation", "lblThreats"}) {
    EXPECT_FALSE(Frame().Strip().findChild<QLabel*>(QString::fromLatin1(name))->toolTip().isEmpty()) << name;
  }
}

}  // namespace
}  // namespace kestrel::shell
