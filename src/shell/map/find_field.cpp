#include "shell/map/find_field.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QVBoxLayout>

#include "shell/parts/guard.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// From the map's upper left corner, pixels.
constexpr QPoint FindPlace(8, 8);
constexpr int FindWidth = 260;
constexpr int FindRows = 8;
constexpr int FindMargin = 8;
/// More than any name or callsign has that somebody types.
constexpr int LongestTyped = 200;

QString CountText(const map::FoundPlots& found) {
  const auto total = static_cast<qulonglong>(found.Total);
  if (found.Total == 0) return QStringLiteral("No aircraft");
  if (found.Total == 1) return QStringLiteral("1 aircraft");
  if (found.Total == found.Shown.size()) return QStringLiteral("%1 aircraft").arg(total);
  return QStringLiteral("The first %1 of %2 aircraft").arg(found.Shown.size()).arg(total);
}

}  // namespace

QVariant FindModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || role != Qt::DisplayRole) return {};
  return FromBytes(At(index).Text);
}

FindField::FindField(core::Program& running, std::function<map::Scene()> scene, QWidget* owner)
    : QFrame(owner),
      program(running),
      makeScene(std::move(scene)),
      txtFind(new QLineEdit(this)),
      lstFind(new QListView(this)),
      lblFound(new QLabel(this)),
      model(new FindModel(this)) {
  setObjectName(QStringLiteral("FindField"));
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setAutoFillBackground(true);
  // What is done in it is not done to the map below.
  setAttribute(Qt::WA_NoMousePropagation);
  txtFind->setObjectName(QStringLiteral("txtFind"));
  txtFind->setPlaceholderText(QStringLiteral("Find: name or callsign"));
  txtFind->setAccessibleName(QStringLiteral("Find an aircraft by name or callsign"));
  txtFind->setToolTip(QStringLiteral("Up and Down choose, Enter shows it on the map, Esc closes"));
  txtFind->setMaxLength(LongestTyped);
  txtFind->installEventFilter(this);
  lstFind->setObjectName(QStringLiteral("lstFind"));
  lstFind->setAccessibleName(QStringLiteral("Aircraft"));
  lstFind->setModel(model);
  lstFind->setFocusPolicy(Qt::NoFocus);
  lstFind->setUniformItemSizes(true);
  lstFind->setEditTriggers(QAbstractItemView::NoEditTriggers);
  lstFind->setTextElideMode(Qt::ElideRight);
  lstFind->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lstFind->setFixedHeight(FindRows * (fontMetrics().height() + 2) + 2 * lstFind->frameWidth());
  lblFound->setObjectName(QStringLiteral("lblFound"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(FindMargin, FindMargin, FindMargin, FindMargin);
  rows->setSpacing(4);
  rows->addWidget(txtFind);
  rows->addWidget(lstFind);
  rows->addWidget(lblFound);
  setFixedWidth(FindWidth);
  follow.setSingleShot(true);
  follow.setInterval(FollowMs);
  connect(&follow, &QTimer::timeout, this, &FindField::Fill);
  connect(txtFind, &QLineEdit::textChanged, this, [this] {
    Fill();
    // The best of what is typed now, whatever was chosen before.
    lstFind->setCurrentIndex(model->index(0));
  });
  connect(lstFind, &QListView::clicked, this, &FindField::Ask);
  hide();
}

void FindField::Open() {
  Fill();
  adjustSize();
  move(FindPlace);
  raise();
  show();
  txtFind->selectAll();
  txtFind->setFocus(Qt::ShortcutFocusReason);
}

void FindField::Follow() {
  if (isVisible() && !follow.isActive()) follow.start();
}

bool FindField::HasKeyboard() const { return txtFind->hasFocus(); }

void FindField::Fill() {
  Guarded(program.Log, "Find", [this] {
    map::FoundPlots found = map::FindPlots(makeScene(), ToBytes(txtFind->text()));
    lblFound->setText(CountText(found));
    std::vector<FindRow> wanted;
    wanted.reserve(found.Shown.size());
    for (map::FoundPlot& plot : found.Shown) wanted.push_back({std::move(plot.Who), std::move(plot.Text)});
    model->Show(std::move(wanted));
    if (!lstFind->currentIndex().isValid()) lstFind->setCurrentIndex(model->index(0));
  });
}

void FindField::Ask() {
  const QModelIndex chosen = lstFind->currentIndex();
  if (!chosen.isValid()) return;
  // The row may go while it is shown.
  const map::Aircraft who = model->At(chosen).Who;
  Q_EMIT Asked(who);
}

void FindField::Close() {
  hide();
  parentWidget()->setFocus(Qt::OtherFocusReason);
}

bool FindField::eventFilter(QObject* watched, QEvent* event) {
  if (watched != txtFind || event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QCoreApplication::sendEvent(lstFind, event);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Ask();
      return true;
    case Qt::Key_Escape:
      Close();
      return true;
    default:
      return false;
  }
}

// Keys that the field has no use for are not the map's either.
void FindField::keyPressEvent(QKeyEvent* event) { event->accept(); }

}  // namespace kestrel::shell
