// What a person does while a theater is being switched waits for its end. The events stand in the queue of the window
// system, as those of a keyboard and of a title bar do; the toolkit exports that queue, but installs no header of it.

#ifdef __linux__

#include <QMenu>
#include <QWindow>

#include "shell/theaters/theater_windows_fixture.h"

class Q_GUI_EXPORT QWindowSystemInterface {
 public:
  class AsynchronousDelivery {};
  template <class Delivery>
  static bool handleCloseEvent(QWindow* window);
  template <class Delivery>
  static bool handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global, Qt::MouseButtons held,
                               Qt::MouseButton button, QEvent::Type type, Qt::KeyboardModifiers modifiers,
                               Qt::MouseEventSource source);
};

namespace kestrel::shell {
namespace {

class SwitchInput : public TheaterWindows {
 protected:
  using Queued = QWindowSystemInterface::AsynchronousDelivery;

  void SetUp() override {
    TheaterWindows::SetUp();
    Frame().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Frame()));
    // As the desktop of the program does.
    desk.WhenEventsRun = [] { QCoreApplication::processEvents(); };
    QObject::connect(&Frame(), &MDIForm1::Closed, qApp, [this] { theaterAtTheEnd = station.Catalogue.CurrentTheater; });
  }
  /// Opens a menu; the click on one of its entries stands in the queue.
  void QueueClick(const char* menuName, const char* entry) {
    auto* menu = Frame().findChild<QMenu*>(QString::fromLatin1(menuName));
    menu->popup(Frame().mapToGlobal(QPoint(50, 50)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    const QPoint place = menu->actionGeometry(&Action(entry)).center();
    const auto queue = [&](Qt::MouseButtons held, QEvent::Type type) {
      QWindowSystemInterface::handleMouseEvent<Queued>(menu->windowHandle(), place, menu->mapToGlobal(place), held,
                                                       Qt::LeftButton, type, {}, Qt::MouseEventNotSynthesized);
    };
    queue(Qt::LeftButton, QEvent::MouseButtonPress);
    queue(Qt::NoButton, QEvent::MouseButtonRelease);
  }
  void ExpectCloseAfterTheSwitch() {
    ASSERT_EQ(theaterAtTheEnd, 0) << "nothing has been handled yet";
    Action("mnuTheatername_2").trigger();
    EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
    EXPECT_FALSE(station.Closing);
    EXPECT_TRUE(QTest::qWaitFor([this] { return theaterAtTheEnd != 0; }));
    EXPECT_EQ(theaterAtTheEnd, 2);
    EXPECT_TRUE(Read("KESTREL.ini").contains("CURRENTMAP=2\r\n"));
  }

  int theaterAtTheEnd = 0;
};

TEST_F(SwitchInput, ClosingWaits) {
  QWindowSystemInterface::handleCloseEvent<Queued>(Frame().windowHandle());
  ExpectCloseAfterTheSwitch();
}

TEST_F(SwitchInput, MenuEntryWaits) {
  QueueClick("mnuFile", "mnuExit");
  ExpectCloseAfterTheSwitch();
}

TEST_F(SwitchInput, AnotherSwitchWaits) {
  QueueClick("mnuTheaters", "mnuTheatername_1");
  Action("mnuTheatername_2").trigger();
  EXPECT_EQ(station.Catalogue.CurrentTheater, 2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return station.Catalogue.CurrentTheater == 1; }));
  EXPECT_EQ(Current().Name, "one");
  EXPECT_EQ(View().Size, 1024);
}

}  // namespace
}  // namespace kestrel::shell

#endif
