// The window Clients made taller by its lower edge.

#include "shell/link/clients_fixture.h"

namespace kestrel::shell {
namespace {

class ClientsHeight : public ClientsWindow {
 protected:
  QWidget& Edge() { return Part<QWidget>("HeightGrip"); }
  /// Drags the edge down by so many pixels. The window does not move, so the edge goes along with the pointer.
  void Drag(int by) {
    const QPoint from = Edge().mapToGlobal(Edge().rect().center());
    const auto send = [this, from](QEvent::Type type, int below, Qt::MouseButtons held) {
      const QPoint at = from + QPoint(0, below);
      QMouseEvent event(type, Edge().mapFromGlobal(QPointF(at)), QPointF(at),
                        type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, Qt::NoModifier);
      QApplication::sendEvent(&Edge(), &event);
    };
    send(QEvent::MouseButtonPress, 0, Qt::LeftButton);
    for (int step = 1; step <= 4; ++step) send(QEvent::MouseMove, by * step / 4, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, by, Qt::NoButton);
  }
  void StandAtTheTop() {
    const QRect room = Window().screen()->availableGeometry();
    Window().MoveTo(room.topLeft());
    ASSERT_LT(Window().geometry().bottom() + 40, room.bottom()) << "there is room below";
  }
};

TEST_F(ClientsHeight, GrowsAtTheLowerEdgeForBothLists) {
  StandAtTheTop();
  const int window = Window().height(), tree = Tree().height(), list = List().height();
  Drag(40);
  EXPECT_EQ(station.WindowOptions.CLIENTSHEIGHT, 40);
  EXPECT_EQ(Window().height(), window + 40);
  EXPECT_EQ(Tree().height(), tree + 20);
  EXPECT_EQ(List().height(), list + 20);
  Drag(-15);
  EXPECT_EQ(Window().height(), window + 25);
  EXPECT_EQ(Tree().height() + List().height(), tree + list + 25);
}

TEST_F(ClientsHeight, IsNeverLessThanItComesNorBeyondTheScreen) {
  StandAtTheTop();
  const int window = Window().height();
  Drag(-30);
  EXPECT_EQ(station.WindowOptions.CLIENTSHEIGHT, 0);
  EXPECT_EQ(Window().height(), window);
  Drag(100'000);
  EXPECT_GT(Window().height(), window);
  EXPECT_LE(Window().geometry().bottom(), Window().screen()->availableGeometry().bottom());
}

TEST_F(ClientsHeight, OtherButtonsDoNotHoldTheEdge) {
  const int window = Window().height();
  const QPoint at = Edge().rect().center();
  QTest::mousePress(&Edge(), Qt::RightButton, Qt::NoModifier, at);
  QTest::mouseMove(&Edge(), at + QPoint(0, 30));
  QTest::mouseRelease(&Edge(), Qt::RightButton, Qt::NoModifier, at);
  EXPECT_EQ(Window().height(), window);
}

}  // namespace
}  // namespace kestrel::shell
