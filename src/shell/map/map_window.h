#pragma once

#include <QWidget>
#include <optional>

#include "shell/map/loading_box.h"
#include "shell/map/map_picture.h"

namespace kestrel::shell {

/// The map window: one drawing surface that fills it.
class MainFrm final : public QWidget {
  Q_OBJECT
 public:
  /// `running` and `popUp2` outlive the window.
  MainFrm(core::Program& running, QMenu& popUp2, QWidget* owner);
  MapPicture& Picture() { return *Picture1; }
  /// The progress of a load in the middle of the window; nothing hides it.
  void ShowLoading(std::optional<int> percent);

 private:
  MapPicture* Picture1;
  LoadingBox* loading;
};

}  // namespace kestrel::shell
