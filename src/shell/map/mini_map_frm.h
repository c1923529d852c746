#pragma once

#include "shell/frame/tool_frm.h"
#include "shell/map/mini_map_picture.h"

namespace kestrel::shell {

/// The whole theater in small with a box on what the map shows.
class MiniMapFrm final : public ToolFrm {
  Q_OBJECT
 public:
  MiniMapFrm(core::Program& program, QWidget* frame);

  /// ReloadMiniMap and UpdateMiniMap: the picture's size by theater and MINIMAPSCALE with the window around it, the
  /// present picture and box. What has not changed costs nothing.
  void UpdateMiniMap();
  MiniMapPicture& Picture() { return *Picture1; }

 private:
  MiniMapPicture* Picture1;
};

}  // namespace kestrel::shell
