#include "shell/map/mini_map_frm.h"

#include <QVBoxLayout>

namespace kestrel::shell {

MiniMapFrm::MiniMapFrm(core::Program& running, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::MiniMap, QStringLiteral("MiniMapFrm"), QStringLiteral("MINIMAP"), frame,
              base::Changed::MiniMap) {
  Picture1 = new MiniMapPicture(running, &Body());
  auto* fill = new QVBoxLayout(&Body());
  fill->setContentsMargins(0, 0, 0, 0);
  // A very small mini map stands in the middle: the strip needs the room.
  fill->addWidget(Picture1, 0, Qt::AlignCenter);
  Picture1->Reload();
  FitBody();
}

void MiniMapFrm::ShowChanged(base::Changed) {
  if (Picture1->Reload()) FitBody();
  Picture1->UpdateMiniMap();
}

}  // namespace kestrel::shell
