// Floating windows that are arranged at the right, put back, and snap to edges.

#include <QScreen>

#include "shell/frame/floating_windows.h"

namespace kestrel::shell {
namespace {

class ArrangedWindows : public FloatingWindows {
 protected:
  std::vector<QPoint> Places() {
    std::vector<QPoint> places;
    for (const ToolEntry& each : ToolEntries()) places.push_back(Window(each.Which).pos());
    return places;
  }
  /// Drags the window by its caption so that its corner comes to `place`, as far as it does not snap.
  void DragTo(ToolWindow which, QPoint place, Qt::KeyboardModifiers modifiers = {}) {
    auto& caption = Part<QLabel>(which, "Label1");
    const QPoint grip(10, 10);
    const QPoint way = place - Window(which).pos();
    QTest::mousePress(&caption, Qt::LeftButton, modifiers, grip);
    const QPoint to = grip + way;
    QMouseEvent move(QEvent::MouseMove, to, caption.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, modifiers);
    QApplication::sendEvent(&caption, &move);
    QTest::mouseRelease(&caption, Qt::LeftButton, modifiers, grip);
  }
};

TEST_F(ArrangedWindows, ThoseThatAreShownStandFirstAtTheRightOfTheFrame) {
  StartWith(
      "CLIENTSFORMX=1500\r\nCLIENTSFORMY=3000\r\nCLIENTSFORMHID=1\r\nBULLFORMX=600\r\nBULLFORMY=600\r\n"
      "RECFORMX=600\r\nRECFORMY=900\r\n");
  Action("mnuArrangeRight").trigger();
  ExpectNoneOverlaps([](const ToolFrm& window) { return window.isVisible(); });
  const QRect frame = Frame().frameGeometry();
  int right = 0;
  for (const ToolEntry& each : ToolEntries()) {
    if (!Window(each.Which).isVisible()) continue;
    right = qMax(right, Placed(each.Which).right());
    EXPECT_TRUE(frame.contains(Placed(each.Which))) << each.Window;
    EXPECT_EQ(State(each.Which).X, Window(each.Which).pos().x() * 15) << "it is kept";
  }
  // 16 pixels stay free at the right of the frame.
  EXPECT_EQ(right, frame.right() - 16);
  EXPECT_FALSE(Window(ToolWindow::Clients).isVisible()) << "a place is not a showing";
}

TEST_F(ArrangedWindows, UndoPutsThemBackAndAgainTakesThatBack) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=3000\r\nRECFORMX=600\r\nRECFORMY=900\r\nVIEWFORMHID=1\r\n");
  EXPECT_FALSE(Action("mnuUndoPositions").isEnabled()) << "nothing has been moved";
  const auto before = Places();
  Action("mnuResetFloating").trigger();
  const auto reset = Places();
  EXPECT_NE(reset, before);
  EXPECT_TRUE(Action("mnuUndoPositions").isEnabled());
  Action("mnuUndoPositions").trigger();
  EXPECT_EQ(Places(), before);
  EXPECT_EQ(State(ToolWindow::Clients).X, 1500);
  Action("mnuUndoPositions").trigger();
  EXPECT_EQ(Places(), reset);
  Action("mnuArrangeRight").trigger();
  EXPECT_NE(Places(), reset);
  Action("mnuUndoPositions").trigger();
  EXPECT_EQ(Places(), reset);
}

TEST_F(ArrangedWindows, AsTheStationShipsADraggedWindowSnapsToNothing) {
  StartWith("CLIENTSFORMX=1500\r\nCLIENTSFORMY=3000\r\nRECFORMX=6000\r\nRECFORMY=6000\r\n");
  const QPoint near = Window(ToolWindow::Clients).geometry().topRight() + QPoint(5, 3);
  DragTo(ToolWindow::Rec, near);
  EXPECT_EQ(Window(ToolWindow::Rec).pos(), near);
}

TEST_F(ArrangedWindows, ADraggedWindowSnapsToAnotherAndAltHoldsThatOff) {
  // Away from the frame's edges, and from the other windows, which are hidden.
  StartWith(
      "CLIENTSFORMX=3000\r\nCLIENTSFORMY=3750\r\nRECFORMX=6000\r\nRECFORMY=6000\r\nBULLFORMHID=1\r\nFREQFORMHID=1\r\n"
      "CURSORFORMHID=1\r\nVIEWFORMHID=1\r\nAREASFORMHID=1\r\nMINIMAPFORMHID=1\r\n[KESTREL]\r\nSNAPWINDOWS=1\r\n");
  const QRect clients = Placed(ToolWindow::Clients);
  const QPoint beside(clients.right() + 1, clients.top());
  DragTo(ToolWindow::Rec, beside + QPoint(8, -8));
  EXPECT_EQ(Window(ToolWindow::Rec).pos(), beside);
  EXPECT_EQ(State(ToolWindow::Rec).X, beside.x() * 15) << "it is kept";
  DragTo(ToolWindow::Rec, beside + QPoint(9, 9));
  EXPECT_EQ(Window(ToolWindow::Rec).pos(), beside + QPoint(9, 9));
  DragTo(ToolWindow::Rec, beside + QPoint(8, 8), Qt::AltModifier);
  EXPECT_EQ(Window(ToolWindow::Rec).pos(), beside + QPoint(8, 8));
  State(ToolWindow::Clients).Hidden = true;
  Window(ToolWindow::Clients).hide();
  DragTo(ToolWindow::Rec, beside + QPoint(7, 7));
  EXPECT_EQ(Window(ToolWindow::Rec).pos(), beside + QPoint(7, 7)) << "a hidden one has no edges";
}

TEST_F(ArrangedWindows, ADraggedWindowSnapsToTheMap) {
  StartWith("[KESTREL]\r\nSNAPWINDOWS=1\r\n");
  for (const ToolEntry& each : ToolEntries()) Check(each.Which).setChecked(each.Which == ToolWindow::Bulls);
  const QWidget& map = *Frame().centralWidget();
  const QRect area(map.mapToGlobal(QPoint()), map.size());
  const QRect bulls = Placed(ToolWindow::Bulls);
  const QPoint corner(area.right() + 1 - bulls.width(), area.bottom() + 1 - bulls.height());
  DragTo(ToolWindow::Bulls, corner + QPoint(-6, 5));
  EXPECT_EQ(Window(ToolWindow::Bulls).pos(), corner);
}

}  // namespace
}  // namespace kestrel::shell
