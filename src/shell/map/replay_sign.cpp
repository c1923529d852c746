#include "shell/map/replay_sign.h"

#include <QEvent>

#include "base/clock.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// From the edges of the map, pixels.
constexpr int SignMargin = 8;

}  // namespace

ReplaySign::ReplaySign(QWidget* picture) : QLabel(picture) {
  setObjectName(QStringLiteral("lblReplay"));
  setAccessibleName(QStringLiteral("Replay of a tape"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAutoFillBackground(true);
  setFrameShape(QFrame::StyledPanel);
  setMargin(4);
  QFont bold = font();
  bold.setBold(true);
  setFont(bold);
  hide();
  picture->installEventFilter(this);
}

void ReplaySign::ShowPlayer(const tape::PlayerState& player) {
  if (player.Loaded()) {
    // Before the first record of a long tape there is no time.
    const QString time = player.CurPoint == 0 ? QString() : u' ' + FromBytes(base::TimeText(player.CurTime));
    const QString words = QStringLiteral("REPLAY") + time;
    if (words != text()) setText(words);
    Place();
  }
  setVisible(player.Loaded());
}

bool ReplaySign::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) Place();
  return QLabel::eventFilter(watched, event);
}

void ReplaySign::Place() {
  resize(sizeHint());
  move(parentWidget()->width() - width() - SignMargin, SignMargin);
}

}  // namespace kestrel::shell
