#include "shell/map/lost_link.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "core/healing.h"
#include "core/view_options.h"
#include "map/units.h"
#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// From the map's upper edge to the words, pixels.
constexpr int WordsTop = 12;
/// A picture that is moved by less than this has not moved, pixels.
constexpr double NoMove = 0.01;

QImage InGrey(const QImage& picture) {
  QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
  grey.setDevicePixelRatio(picture.devicePixelRatio());
  return grey;
}

}  // namespace

LostLink::LostLink(core::Program& running, MapPicture& shown)
    : QWidget(&shown), program(running), map(shown), words(new QFrame(&shown)) {
  setObjectName(QStringLiteral("LostLink"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  words->setObjectName(QStringLiteral("LinkWords"));
  words->setFrameStyle(QFrame::Box | QFrame::Plain);
  words->setAutoFillBackground(true);
  words->setAttribute(Qt::WA_NoMousePropagation);
  words->setCursor(Qt::ArrowCursor);
  lblLink = new QLabel(words);
  lblLink->setObjectName(QStringLiteral("lblLink"));
  QFont bold = lblLink->font();
  bold.setBold(true);
  lblLink->setFont(bold);
  lblLinkDetail = new QLabel(words);
  lblLinkDetail->setObjectName(QStringLiteral("lblLinkDetail"));
  for (QLabel* label : {lblLink, lblLinkDetail}) {
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
  }
  means = new QWidget(words);
  cmdReconnect = Button("cmdReconnect", "Reconnect", "Call the server now", [this] { core::CallNow(program); });
  cmdStop = Button("cmdStopHealing", "Stop", "Give the session up", [this] { core::StopHealing(program); });
  chkByItself = new QCheckBox(QStringLiteral("By itself from now on"), means);
  chkByItself->setObjectName(QStringLiteral("chkByItself"));
  chkByItself->setToolTip(QStringLiteral("Call a lost server again and again until there is data"));
  chkByItself->setFocusPolicy(Qt::TabFocus);
  connect(chkByItself, &QCheckBox::clicked, this, [this] {
    Guarded(program.Log, "chkByItself", [this] { program.Shown.Refresh(core::ToggleOption(program, "chkReconnect")); });
  });
  auto* row = new QHBoxLayout(means);
  row->setContentsMargins(0, 4, 0, 0);
  row->setSpacing(8);
  for (QWidget* part :
       {static_cast<QWidget*>(cmdReconnect), static_cast<QWidget*>(cmdStop), static_cast<QWidget*>(chkByItself)}) {
    row->addWidget(part);
  }
  auto* rows = new QVBoxLayout(words);
  rows->setContentsMargins(12, 8, 12, 8);
  rows->setSpacing(4);
  for (QWidget* part : {static_cast<QWidget*>(lblLink), static_cast<QWidget*>(lblLinkDetail), means}) {
    rows->addWidget(part);
  }
  hide();
  words->hide();
  look.setInterval(LookMs);
  connect(&look, &QTimer::timeout, this, &LostLink::Look);
  connect(&map, &MapPicture::Drawn, this, &LostLink::FollowMap);
  map.installEventFilter(this);
}

template <class Act>
QPushButton* LostLink::Button(const char* name, const char* caption, const char* meaning, Act act) {
  auto* button = new QPushButton(QString::fromLatin1(caption), means);
  button->setObjectName(QString::fromLatin1(name));
  button->setToolTip(QString::fromLatin1(meaning));
  button->setAutoDefault(false);
  // A press leaves the keyboard with the map.
  button->setFocusPolicy(Qt::TabFocus);
  connect(button, &QPushButton::clicked, this, [this, name, act] {
    Guarded(program.Log, name, act);
    Show();
  });
  return button;
}

void LostLink::KeepPicture() {
  picture = InGrey(map.ShownImage());
  ground = {};
  place = QRectF(QPointF(), picture.deviceIndependentSize());
  const map::ViewState& view = program.State.View;
  corners[0] = map::MapFromSurface(view, {0, 0});
  corners[1] = map::MapFromSurface(view, {place.width() * map::UnitsPerPixelX, place.height() * map::UnitsPerPixelY});
  theater = program.State.Catalogue.CurrentTheater;
}

void LostLink::Follow() {
  core::LookAtLink(program);
  Show();
}

void LostLink::Look() {
  Guarded(program.Log, "LinkTick", [this] { core::LinkTick(program); });
  Show();
}

void LostLink::Show() {
  const core::LinkTrouble trouble = program.State.Healing.Trouble;
  if (!core::LinkWatched(program)) {
    look.stop();
  } else if (!look.isActive()) {
    look.start();
  }
  const bool grey = trouble == core::LinkTrouble::Lost || trouble == core::LinkTrouble::Silent;
  if (!grey && !isHidden()) {
    hide();
    picture = {};
    ground = {};
  } else if (grey && isHidden()) {
    if (picture.isNull()) KeepPicture();
    Fit();
    // What else lies over the map stays above.
    lower();
    show();
  }
  if (trouble == core::LinkTrouble::None) {
    HideWords();
  } else {
    ShowWords();
  }
  const QString said = trouble == core::LinkTrouble::Silent ? FromBytes(core::LinkText(program)) : QString();
  if (silent != said) Q_EMIT Silent(silent = said);
}

void LostLink::ShowWords() {
  const core::Healing& link = program.State.Healing;
  const bool lost = link.Trouble == core::LinkTrouble::Lost;
  lblLink->setText(FromBytes(core::LinkText(program)));
  lblLinkDetail->setText(FromBytes(core::LinkDetail(program)));
  lblLinkDetail->setVisible(lost);
  means->setVisible(lost);
  cmdReconnect->setEnabled(!link.Calling);
  chkByItself->setChecked(program.State.HealingOptions.RECONNECT);
  update();
  Fit();
  if (!words->isHidden()) return;
  words->raise();
  words->show();
}

void LostLink::HideWords() {
  if (words->isHidden()) return;
  if (words->isAncestorOf(words->window()->focusWidget())) map.setFocus();
  words->hide();
}

void LostLink::FollowMap() {
  if (isHidden()) return;
  if (program.State.Healing.Trouble == core::LinkTrouble::Silent || theater != program.State.Catalogue.CurrentTheater) {
    KeepPicture();
  } else {
    ground = InGrey(map.ShownImage());
    const map::ViewState& view = program.State.View;
    const map::SurfacePoint from = map::SurfaceFromMap(view, corners[0]);
    const map::SurfacePoint to = map::SurfaceFromMap(view, corners[1]);
    const QPointF upperLeft(from.X / map::UnitsPerPixelX, from.Y / map::UnitsPerPixelY);
    const QRectF now(upperLeft, QPointF(to.X / map::UnitsPerPixelX, to.Y / map::UnitsPerPixelY));
    const QRectF still(QPointF(), picture.deviceIndependentSize());
    const bool moved = (now.topLeft() - still.topLeft()).manhattanLength() > NoMove ||
                       (now.bottomRight() - still.bottomRight()).manhattanLength() > NoMove;
    place = moved ? now : still;
  }
  update();
}

void LostLink::Fit() {
  setGeometry(map.rect());
  words->adjustSize();
  words->move((map.width() - words->width()) / 2, WordsTop);
}

bool LostLink::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize) Fit();
  return false;
}

void LostLink::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!ground.isNull()) painter.drawImage(QPointF(), ground);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, picture);
  if (program.State.Healing.Trouble == core::LinkTrouble::Lost) {
    painter.fillRect(rect(), QBrush(QColor(0, 0, 0, 110), Qt::BDiagPattern));
  }
  map.PaintLines(painter);
}

}  // namespace kestrel::shell
