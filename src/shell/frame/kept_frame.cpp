#include "shell/frame/kept_frame.h"

#include "shell/parts/remembered_place.h"

namespace kestrel::shell {

void TakeFrame(QWidget& frame, const core::WindowExtras& kept) {
  if (!kept.KEEPFRAME || kept.FRAMEWIDTH <= 0 || kept.FRAMEHEIGHT <= 0) return;
  const core::WindowPlace place{kept.FRAMELEFT, kept.FRAMETOP};
  const std::vector<core::WindowArea> screens = ScreenAreas();
  const core::WindowArea& screen = screens[core::NearestScreen(place, {kept.FRAMEWIDTH, kept.FRAMEHEIGHT}, screens)];
  const core::WindowSize size{qMin(kept.FRAMEWIDTH, screen.Right - screen.Left),
                              qMin(kept.FRAMEHEIGHT, screen.Bottom - screen.Top)};
  const QPoint extent = PixelsOf({size.Width, size.Height});
  // Its inside: what a window manager adds is not known yet, and would add up from start to start.
  frame.setGeometry({PixelsOf(core::OnAScreen(place, size, screens)), QSize(extent.x(), extent.y())});
  if (kept.FRAMEMAX) frame.setWindowState(frame.windowState() | Qt::WindowMaximized);
}

void KeepFrame(const QWidget& frame, core::WindowExtras& kept) {
  if (!kept.KEEPFRAME) return;
  const bool plain = !frame.isMaximized() && !frame.isMinimized() && !frame.isFullScreen();
  const QRect normal = plain ? frame.geometry() : frame.normalGeometry();
  kept.FRAMEMAX = frame.isMaximized();
  if (normal.isEmpty()) return;
  kept.FRAMELEFT = Units(normal.left());
  kept.FRAMETOP = Units(normal.top());
  kept.FRAMEWIDTH = Units(normal.width());
  kept.FRAMEHEIGHT = Units(normal.height());
}

}  // namespace kestrel::shell
