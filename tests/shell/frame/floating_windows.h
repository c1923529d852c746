#pragma once

#include <QSlider>
#include <QToolButton>
#include <functional>

#include "shell/frame/tool_table.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {

using core::ToolWindow;

/// The windows that it watches, in the order in which they are raised.
class RaiseLog final : public QObject {
 public:
  QList<QObject*> InOrder;
  bool eventFilter(QObject* window, QEvent* event) override {
    if (event->type() == QEvent::ZOrderChange) InOrder << window;
    return false;
  }
};

/// Width of the frame at which its status strip has room for everything, whatever the font.
inline constexpr int WideEnough = 2000;

/// The station with settings of the test's own, and hands for its floating windows.
class FloatingWindows : public StationTest {
 protected:
  /// Starts with these keys of the section OPTIONS, "\r\n" after each.
  void StartWith(const QByteArray& options, const QByteArray& debug = "0") {
    Write("KESTREL.ini", "[LOG]\r\nDEBUG=" + debug +
                             "\r\n[MAPS]\r\nTOTALMAPS=1\r\nMAP1=one.ini\r\nCURRENTMAP=1\r\n[OPTIONS]\r\n" + options);
    Start();
  }

  ToolFrm& Window(ToolWindow which) { return Frame().Tools().Window(which); }
  QToolButton& Check(ToolWindow which) { return Frame().Strip().Check(which); }
  core::ToolWindowState& State(ToolWindow which) { return Window(which).State(); }
  template <class Widget = QToolButton>
  Widget& Part(ToolWindow which, const char* name) {
    auto* part = Window(which).findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(part, nullptr) << name;
    return *part;
  }
  QImage IconOf(ToolWindow which, const char* button) {
    return Part(which, button).icon().pixmap(Part(which, button).iconSize()).toImage();
  }
  void FrameHasKeyboard() {
    QApplication::setActiveWindow(&Frame());
    Picture().setFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return Picture().hasFocus(); }));
  }
  /// A key for whoever has the keyboard.
  static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* menu = QApplication::activePopupWidget();
    QTest::keyClick(menu != nullptr ? menu : QApplication::focusWidget(), key, modifiers);
  }
  /// Presses Tab until that control has the keyboard.
  static bool TabTo(const char* name) {
    for (int step = 0; step < 100; ++step) {
      if (QApplication::focusWidget() == nullptr) return false;
      if (QApplication::focusWidget()->objectName() == QString::fromLatin1(name)) return true;
      Key(Qt::Key_Tab);
    }
    return false;
  }
  QRect Placed(ToolWindow which) { return {Window(which).pos(), Window(which).size()}; }
  void ExpectNoneOverlaps(const std::function<bool(const ToolFrm&)>& counts = [](const ToolFrm&) { return true; }) {
    for (const ToolEntry& a : ToolEntries()) {
      for (const ToolEntry& b : ToolEntries()) {
        if (a.Which >= b.Which || !counts(Window(a.Which)) || !counts(Window(b.Which))) continue;
        EXPECT_FALSE(Placed(a.Which).intersects(Placed(b.Which))) << a.Window << " over " << b.Window;
      }
    }
  }
};

}  // namespace kestrel::shell
