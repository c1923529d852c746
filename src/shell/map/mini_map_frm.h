#pragma once

#include "shell/map/mini_map_picture.h"
#include "shell/parts/tool_frm.h"

namespace kestrel::shell {

/// The whole theater in small with a box on what the map shows.
class MiniMapFrm final : public ToolFrm {
  Q_OBJECT
 public:
  MiniMapFrm(core::Program& running, QWidget* frame);

  MiniMapPicture& Picture() { return *Picture1; }

 protected:
  /// ReloadMiniMap and UpdateMiniMap: the picture's size by theater and MINIMAPSCALE with the window around it, the
  /// present picture and box. What has not changed costs nothing.
  void ShowChanged(base::Changed) override;
  /// Its width is seen when it is rolled up.
  bool RefreshesUnseen() const override { return true; }

 private:
  MiniMapPicture* Picture1;
};

}  // namespace kestrel::shell
