#include "shell/parts/empty_hint.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QEvent>

namespace kestrel::shell {
namespace {

/// Pixels around the sentence.
constexpr int Margin = 12;

}  // namespace

EmptyHint::EmptyHint(QAbstractItemView& view, const QString& sentence) : QLabel(sentence, view.viewport()), list(view) {
  setAlignment(Qt::AlignCenter);
  setWordWrap(true);
  setMargin(Margin);
  setForegroundRole(QPalette::PlaceholderText);
  // The list beneath is what is pressed.
  setAttribute(Qt::WA_TransparentForMouseEvents);
  view.viewport()->installEventFilter(this);
  const QAbstractItemModel* model = view.model();
  connect(model, &QAbstractItemModel::modelReset, this, &EmptyHint::Follow);
  connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyHint::Follow);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyHint::Follow);
  Follow();
}

void EmptyHint::Follow() {
  resize(list.viewport()->size());
  setVisible(list.model()->rowCount() == 0);
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) Follow();
  return QLabel::eventFilter(watched, event);
}

}  // namespace kestrel::shell
