#pragma once

#include <QFrame>

class QProgressBar;

namespace kestrel::shell {

/// "Loading the requested file..." over a progress bar, in the middle of the window that it is made in. The window can
/// be used meanwhile.
class LoadingBox final : public QFrame {
  Q_OBJECT
 public:
  explicit LoadingBox(QWidget* owner);
  /// Shows it with the bar at `percent`.
  void ShowAt(int percent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Centre();

  QProgressBar* ProgressBar1;
};

}  // namespace kestrel::shell
