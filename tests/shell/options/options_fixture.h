#pragma once

#include <QAbstractButton>
#include <QTabBar>

#include "base/profile_file.h"
#include "core/settings.h"
#include "core/theater_switch.h"
#include "link/feed_text.h"
#include "shell/options/view_frm.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {

/// The whole station with its options open, connected to a session of two players and two AI aircraft with trails.
class OptionsTest : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    if (HasFatalFailure()) return;
    Write("FriendlyNames.ini", "Cowboy\r\n");
    Start();
    windows.Refresh(core::SelectBullseye(program, 2));  // it lies within the window
    Fly();
    OpenOptions();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().MapDraws() > 0 && Settled(); }));
  }

  void Fly() {
    using test::Message;
    Connect();
    socket.Arrive(Message("NEWCLT", test::ClientData("10", "Adams")) +
                  Message("NEWCLT", test::ClientData("20", "Baker")));
    for (int step = 0; step < 4; ++step) {
      const std::string north = std::to_string(1600000 + step * 30000);
      clock.Ticks += 5000;
      socket.Arrive(Message("INDATA", test::PositionData("10", north, "1500000", "20000")) +
                    Message("INDATA", test::PositionData("20", north, "1900000", "15000")) +
                    Message("AILOCA", test::AIRecord("Cowboy1", "090", std::to_string(150 + step * 5), "20") +
                                          test::AIRecord("Bandit1", "080", std::to_string(200 + step * 5), "25")) +
                    Message("SYNCRO"));
    }
  }
  void OpenOptions() {
    Window().MaxFrm();
    Frame().Strip().Check(core::ToolWindow::View).setChecked(true);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&Window()));
  }
  /// The window has the keyboard. It counts as active already when the frame is.
  void Activate() {
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Window(); }));
  }
  /// No whole repaint of a new size is due: RedrawPlots draws.
  bool Settled() {
    const std::uint64_t before = Picture().PlotDraws();
    Picture().RedrawPlots();
    return Picture().PlotDraws() == before + 1;
  }

  ViewFrm& Window() { return Frame().Tools().The<ViewFrm>(); }
  QTabBar& Tabs() { return *Window().findChild<QTabBar*>(QStringLiteral("TabStrip1")); }
  QWidget& Panel(int number) { return *Window().findChild<QWidget*>(QStringLiteral("Frame%1").arg(number)); }
  /// A control of the window; its panel is brought up by its tab.
  template <class Widget = QAbstractButton>
  Widget& Part(const std::string& name) {
    auto* part = Window().findChild<Widget*>(QString::fromStdString(name));
    if (part == nullptr) throw std::runtime_error("no control " + name);
    for (int page = 0; page < 5; ++page) {
      if (!Panel(page + 1).isAncestorOf(part) || Tabs().currentIndex() == page) continue;
      QTest::mouseClick(&Tabs(), Qt::LeftButton, {}, Tabs().tabRect(page).center());
    }
    EXPECT_TRUE(part->isVisible()) << name;
    return *part;
  }
  void Press(const std::string& name) {
    auto& button = Part<>(name);
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(10, button.height() / 2));
  }

  /// What the settings file says after a save.
  std::string Saved(const std::string& key, const std::string& section = "OPTIONS") {
    core::SaveVars(station);
    return base::ProfileFile::Load(station.AppPath / "KESTREL.ini").ReadIniValue(section, key, "missing");
  }
  QImage Map() { return Picture().grab().toImage(); }

  struct Draws {
    std::uint64_t Map = 0;
    std::uint64_t Plots = 0;
    bool operator==(const Draws&) const = default;
  };
  Draws DrawsNow() { return {Picture().MapDraws(), Picture().PlotDraws()}; }
  /// The draws that `act` causes.
  template <class Act>
  Draws Drawn(Act act) {
    const Draws before = DrawsNow();
    act();
    const Draws after = DrawsNow();
    return {after.Map - before.Map, after.Plots - before.Plots};
  }

  static constexpr Draws None{0, 0};
  static constexpr Draws Redraw{0, 1};   ///< RedrawPlots
  static constexpr Draws DrawMap{1, 0};  ///< DrawMap
};

}  // namespace kestrel::shell
