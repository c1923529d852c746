// The keys of the map window, pressed: what they change in the settings, on the screen and in the files.

#include <QCheckBox>
#include <QMenuBar>

#include "core/settings.h"
#include "core/shortcuts.h"
#include "core/theater_data.h"
#include "map/geometry.h"
#include "shell/frame/lamp.h"
#include "shell/map/map_picture.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class MapKeys : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    QApplication::setActiveWindow(&Frame());
    Picture().setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().hasFocus(); }));
    station.View.ViewCenterX = 500 * 15;
    station.View.ViewCenterY = 400 * 15;
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&Picture(), key, modifiers); }
  QByteArray Saved(const char* name = "KESTREL.ini") {
    core::SaveVars(station);
    return Read(name);
  }
  const Lamp& LampOf(const char* name) { return *Frame().findChild<Lamp*>(QString::fromLatin1(name)); }
};

TEST_F(MapKeys, PageUpAndPageDownZoom) {
  const std::uint64_t draws = Picture().MapDraws();
  Press(Qt::Key_PageUp);
  EXPECT_EQ(View().Resolution, 2);
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
  EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x2.0"));
  Press(Qt::Key_PageDown);
  Press(Qt::Key_PageDown);
  EXPECT_EQ(View().Resolution, 0.5);
  EXPECT_EQ(Picture().MapDraws(), draws + 3);
}

TEST_F(MapKeys, ArrowsMoveHalfAMapAndHomeCentres) {
  const double stepX = View().SurfaceWidth / 2, stepY = View().SurfaceHeight / 2;
  struct {
    Qt::Key Key;
    double X, Y;
  } const rows[] = {{Qt::Key_Left, -1, 0}, {Qt::Key_Right, 1, 0}, {Qt::Key_Up, 0, -1}, {Qt::Key_Down, 0, 1}};
  for (const auto& row : rows) {
    View().ViewCenterX = 500 * 15;
    View().ViewCenterY = 400 * 15;
    const std::uint64_t draws = Picture().MapDraws();
    Press(row.Key);
    EXPECT_EQ(View().ViewCenterX, std::clamp(500 * 15 + row.X * stepX, 0.0, 1024 * 15.0)) << row.Key;
    EXPECT_EQ(View().ViewCenterY, std::clamp(400 * 15 + row.Y * stepY, 0.0, 1024 * 15.0)) << row.Key;
    EXPECT_EQ(Picture().MapDraws(), draws + 1);
  }
  Press(Qt::Key_Home);
  EXPECT_EQ(View().ViewCenterX, 512 * 15);
  EXPECT_EQ(View().ViewCenterY, 512 * 15);
}

struct Toggle {
  Qt::Key Key;
  const char* Setting;
  const char* Box;
  bool DrawsMap;  ///< else the plots alone
};

constexpr Toggle toggles[] = {
    {Qt::Key_Semicolon, "AIVISIBLE", "Check2", false},    {Qt::Key_Apostrophe, "REALVISIBLE", "Check1", false},
    {Qt::Key_Period, "AILABELSVISIBLE", "Check6", false}, {Qt::Key_Slash, "REALLABELSVISIBLE", "Check4", false},
    {Qt::Key_B, "BULLSEYEVISIBLE", "Check3", true},       {Qt::Key_H, "SHOWHISTORY", "Check5", false},
    {Qt::Key_N, "SHOWAREANAMES", "Check9", true},         {Qt::Key_L, "SHOWGRID", "chkShowLat", true},
};

TEST_F(MapKeys, TogglesChangeTheirBoxSettingAndScreen) {
  Frame().Tools().Window(core::ToolWindow::View).MaxFrm();
  for (const Toggle& toggle : toggles) {
    SCOPED_TRACE(toggle.Setting);
    const QByteArray key = QByteArray("\r\n") + toggle.Setting + '=';
    const bool before = Saved().contains(key + "1\r\n");
    for (const bool now : {!before, before}) {
      const std::uint64_t maps = Picture().MapDraws(), plots = Picture().PlotDraws();
      Press(toggle.Key);
      EXPECT_TRUE(Saved().contains(key + (now ? "1\r\n" : "0\r\n")));
      EXPECT_EQ(Picture().MapDraws(), maps + (toggle.DrawsMap ? 1 : 0));
      EXPECT_EQ(Picture().PlotDraws(), plots + (toggle.DrawsMap ? 0 : 1));
      auto* box = Frame().Tools().Window(core::ToolWindow::View).findChild<QCheckBox*>(QString::fromLatin1(toggle.Box));
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->isChecked(), now);
    }
  }
}

TEST_F(MapKeys, TheBullseyeGoesFromTheScreen) {
  Press(Qt::Key_Home);
  Press(Qt::Key_PageDown);
  const bool visible = View().BullseyeVisible;
  const QImage with = Picture().grab().toImage();
  Press(Qt::Key_B);
  EXPECT_EQ(View().BullseyeVisible, !visible);
  EXPECT_NE(Picture().grab().toImage(), with);
  Press(Qt::Key_B);
  EXPECT_EQ(Picture().grab().toImage(), with);
}

TEST_F(MapKeys, CtrlAndADigitSavesAViewAndTheDigitAppliesIt) {
  const Qt::Key digits[] = {Qt::Key_1, Qt::Key_2, Qt::Key_3};
  for (int slot = 0; slot < 3; ++slot) {
    View().ViewCenterX = (100 + slot) * 15;
    View().ViewCenterY = (200 + slot) * 15;
    View().Resolution = 2 << slot;
    const std::uint64_t draws = Picture().MapDraws();
    Press(digits[slot], Qt::ControlModifier);
    EXPECT_EQ(Picture().MapDraws(), draws) << "saving draws nothing";
  }
  core::SaveAll(station);
  const QByteArray file = Read("Theaters/one_ViewShort.dat");
  EXPECT_FALSE(file.isEmpty());
  for (int slot = 0; slot < 3; ++slot) {
    const std::uint64_t draws = Picture().MapDraws();
    Press(digits[slot]);
    EXPECT_EQ(View().ViewCenterX, (100 + slot) * 15);
    EXPECT_EQ(View().ViewCenterY, (200 + slot) * 15);
    EXPECT_EQ(View().Resolution, 2 << slot);
    EXPECT_EQ(Picture().MapDraws(), draws + 1);
    EXPECT_EQ(ReadOut("lblZoom"), QStringLiteral("Zoom: x%1.0").arg(2 << slot));
  }
  View().ViewCenterX = 77 * 15;
  Press(Qt::Key_1, Qt::ControlModifier);
  core::SaveAll(station);
  EXPECT_NE(Read("Theaters/one_ViewShort.dat"), file);
}

TEST_F(MapKeys, CTogglesTheStaticCursor) {
  Frame().Tools().Window(core::ToolWindow::Curs).MaxFrm();
  auto* box = Frame().Tools().Window(core::ToolWindow::Curs).findChild<QCheckBox*>(QStringLiteral("Check1"));
  ASSERT_FALSE(box->isChecked());
  Press(Qt::Key_C);
  EXPECT_TRUE(box->isChecked());
  EXPECT_TRUE(Saved().contains("\r\nSTATICCURSOR=1\r\n"));
  Press(Qt::Key_C);
  EXPECT_FALSE(box->isChecked());
  EXPECT_TRUE(Saved().contains("\r\nSTATICCURSOR=0\r\n"));
}

struct Transmit {
  Qt::Key Key;
  std::int32_t KeyCode;
  const char* Lamp;
  const char* Radio;
};

constexpr Transmit transmits[] = {{Qt::Key_F1, 112, "StatPic_UHF", "UHF"},
                                  {Qt::Key_F2, 113, "StatPic_VHF", "VHF"},
                                  {Qt::Key_F3, 114, "StatPic_Guard", "Guard"}};

TEST_F(MapKeys, TheMapIgnoresTheTransmitKeysAndTheSystemsActs) {
  for (const Transmit& row : transmits) {
    SCOPED_TRACE(row.Radio);
    const QString radioName = QString::fromLatin1(row.Radio);
    Press(row.Key);
    EXPECT_TRUE(voiceWindows.Keys.empty());
    EXPECT_FALSE(LampOf(row.Lamp).Lit());
    globalKeys.Press(row.KeyCode);
    EXPECT_TRUE(LampOf(row.Lamp).Lit());
    EXPECT_EQ(LampOf(row.Lamp).toolTip(), QStringLiteral("Transmitting on ") + radioName);
    const QImage sending = const_cast<Lamp&>(LampOf(row.Lamp)).grab().toImage();
    globalKeys.Release(row.KeyCode);
    EXPECT_FALSE(LampOf(row.Lamp).Lit());
    EXPECT_EQ(LampOf(row.Lamp).toolTip(), QStringLiteral("Not transmitting on ") + radioName);
    const QImage idle = const_cast<Lamp&>(LampOf(row.Lamp)).grab().toImage();
    voiceWindows.Status = "NO CONNECTION";
    globalKeys.Press(row.KeyCode);
    EXPECT_TRUE(LampOf(row.Lamp).Failed());
    EXPECT_EQ(LampOf(row.Lamp).toolTip(), QStringLiteral("Trying to transmit on ") + radioName +
                                              QStringLiteral(": the voice client is not connected or does not answer"));
    EXPECT_EQ(LampOf(row.Lamp).accessibleName(), LampOf(row.Lamp).toolTip());
    const QImage failed = const_cast<Lamp&>(LampOf(row.Lamp)).grab().toImage();
    EXPECT_NE(sending, idle);
    EXPECT_NE(failed, idle);
    EXPECT_NE(failed, sending);
    globalKeys.Release(row.KeyCode);
    EXPECT_FALSE(LampOf(row.Lamp).Failed());
    EXPECT_EQ(const_cast<Lamp&>(LampOf(row.Lamp)).grab().toImage(), idle);
    voiceWindows.Keys.clear();
    voiceWindows.Status = "CONNECTED";
  }
}

TEST_F(MapKeys, EveryKeyIsSwallowed) {
  struct : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) ++Reached;
      return false;
    }
    int Reached = 0;
  } parent;
  Frame().Map().installEventFilter(&parent);
  for (const Qt::Key key : {Qt::Key_Z, Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_F1, Qt::Key_F9,
                            Qt::Key_PageUp, Qt::Key_Escape, Qt::Key_Return}) {
    Press(key);
  }
  EXPECT_EQ(parent.Reached, 0);
}

TEST_F(MapKeys, ModifiersAloneDoNothing) {
  station.ShortcutKeys[0] = 16;
  station.ShortcutKeys[1] = 100016;
  station.ShortcutKeys[2] = 17;
  station.ShortcutKeys[3] = 18;
  const core::Bindings keys = station.ShortcutKeys;
  const std::uint64_t draws = Picture().MapDraws();
  for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt}) {
    Press(key);
    Press(key, Qt::ShiftModifier);
  }
  EXPECT_EQ(Picture().MapDraws(), draws);
  EXPECT_EQ(station.ShortcutKeys, keys);
}

TEST_F(MapKeys, TheyActInTheMapWindowAlone) {
  QWidget& options = Frame().Tools().Window(core::ToolWindow::View);
  QTest::keyClick(&options, Qt::Key_PageUp);
  QTest::keyClick(Frame().menuBar(), Qt::Key_PageUp);
  QTest::keyClick(&Frame(), Qt::Key_PageUp);
  EXPECT_EQ(View().Resolution, 1);
}

TEST_F(MapKeys, ABoundKeyGoesBeforeTheMenuAndTheWalkByTab) {
  station.ShortcutKeys[0] = 400000 + 'F';
  Press(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(View().Resolution, 2);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  station.ShortcutKeys[0] = 9;
  Press(Qt::Key_Tab);
  EXPECT_EQ(View().Resolution, 4);
  EXPECT_TRUE(Picture().hasFocus());
  station.ShortcutKeys[0] = 100009;
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(View().Resolution, 8);
  EXPECT_TRUE(Picture().hasFocus());
}

TEST_F(MapKeys, MenusKeepTheirKeysWhileNoCommandHasThem) {
  Press(Qt::Key_F, Qt::AltModifier);
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->objectName(), QStringLiteral("mnuFile"));
  menu->close();
}

TEST_F(MapKeys, TabLeavesTheMapWhileNoCommandHasIt) {
  Press(Qt::Key_Tab);
  EXPECT_FALSE(Picture().hasFocus());
}

}  // namespace
}  // namespace kestrel::shell
