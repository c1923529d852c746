#include "shell/map/map_window.h"

#include <QVBoxLayout>

#include "base/program_title.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {

MainFrm::MainFrm(core::Program& running, QMenu& popUp2, QWidget* owner) : QWidget(owner) {
  setObjectName(QStringLiteral("MainFrm"));
  setWindowTitle(FromBytes(base::MapTitle()));
  Picture1 = new MapPicture(running, popUp2, this);
  auto* fill = new QVBoxLayout(this);
  fill->setContentsMargins(0, 0, 0, 0);
  fill->addWidget(Picture1);
  loading = new LoadingBox(this);
}

void MainFrm::ShowLoading(std::optional<int> percent) {
  if (percent) {
    loading->ShowAt(*percent);
  } else {
    loading->hide();
  }
}

}  // namespace kestrel::shell
