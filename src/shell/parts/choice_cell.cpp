#include "shell/parts/choice_cell.h"

#include <QApplication>
#include <QComboBox>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTreeView>

namespace kestrel::shell {
namespace {

class ChoiceCell final : public QStyledItemDelegate {
 public:
  ChoiceCell(int choicesRole, QObject* owner) : QStyledItemDelegate(owner), role(choicesRole) {}

  bool Has(const QModelIndex& at) const { return Choices(at).size() > 1; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& at) const override {
    QStyledItemDelegate::paint(painter, option, at);
    if (!Has(at)) return;
    const QStyle& style = option.widget != nullptr ? *option.widget->style() : *QApplication::style();
    QStyleOptionComboBox box;
    box.rect = option.rect;
    box.state = option.state;
    box.palette = option.palette;
    box.fontMetrics = option.fontMetrics;
    box.currentText = at.data().toString();
    style.drawComplexControl(QStyle::CC_ComboBox, &box, painter, option.widget);
    style.drawControl(QStyle::CE_ComboBoxLabel, &box, painter, option.widget);
  }

  QWidget* createEditor(QWidget* owner, const QStyleOptionViewItem&, const QModelIndex& at) const override {
    auto* box = new QComboBox(owner);
    box->addItems(Choices(at));
    auto* self = const_cast<ChoiceCell*>(this);
    connect(box, &QComboBox::activated, self, [self, box] {
      Q_EMIT self->commitData(box);
      Q_EMIT self->closeEditor(box);
    });
    return box;
  }
  void setEditorData(QWidget* editor, const QModelIndex& at) const override {
    auto* box = static_cast<QComboBox*>(editor);
    box->setCurrentIndex(box->findText(at.data().toString()));
  }
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& at) const override {
    const auto* box = static_cast<QComboBox*>(editor);
    // Left as it was, it chooses nothing.
    if (box->currentIndex() < 0 || box->currentText() == at.data().toString()) return;
    model->setData(at, box->currentIndex(), Qt::EditRole);
  }

 private:
  QStringList Choices(const QModelIndex& at) const { return at.data(role).toStringList(); }

  int role;
};

}  // namespace

void ShowChoices(QTreeView& view, int column, int choicesRole) {
  auto* cell = new ChoiceCell(choicesRole, &view);
  view.setItemDelegateForColumn(column, cell);
  view.setEditTriggers(QAbstractItemView::EditKeyPressed);
  QObject::connect(&view, &QTreeView::clicked, cell, [&view, cell, column](const QModelIndex& at) {
    if (at.column() != column || !cell->Has(at)) return;
    view.edit(at);
    if (auto* box = qobject_cast<QComboBox*>(view.indexWidget(at))) box->showPopup();
  });
}

}  // namespace kestrel::shell
