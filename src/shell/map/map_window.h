#pragma once

#include <QWidget>

#include "shell/map/map_picture.h"

namespace kestrel::shell {

/// The map window: one drawing surface that fills it.
class MainFrm final : public QWidget {
  Q_OBJECT
 public:
  /// `program` and `popUp2` outlive the window.
  MainFrm(core::Program& program, QMenu& popUp2, QWidget* owner);
  MapPicture& Picture() { return *Picture1; }

 private:
  MapPicture* Picture1;
};

}  // namespace kestrel::shell
