#include "shell/falcon/import_obj_frm.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QRadioButton>
#include <QShortcut>

#include "core/tell.h"
#include "shell/falcon/import_obj_options_frm.h"
#include "shell/falcon/objective_rows.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/empty_hint.h"
#include "shell/parts/guard.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/unicode_text.h"
#include "ui_import_obj_frm.h"

namespace kestrel::shell {
namespace {

/// Pixels; room for some twenty rows with long names.
constexpr QSize SizeAtStart(960, 560);
constexpr int TeamColumns = 2;
constexpr int TypeColumns = 3;
constexpr int ColumnWidth = 100;

/// Puts an array of options into a group, column by column, the first one chosen.
QButtonGroup* AddArray(QGroupBox& group, const QString& name, const QStringList& captions, int columns) {
  auto* buttons = new QButtonGroup(&group);
  auto* grid = new QGridLayout(&group);
  grid->setHorizontalSpacing(12);
  grid->setVerticalSpacing(2);
  const int perColumn = (static_cast<int>(captions.size()) + columns - 1) / columns;
  for (int n = 0; n < captions.size(); ++n) {
    auto* option = new QRadioButton(AsCaption(captions[n]), &group);
    option->setObjectName(name + u'_' + QString::number(n));
    option->setChecked(n == 0);
    buttons->addButton(option, n);
    grid->addWidget(option, n % perColumn, n / perColumn);
  }
  return buttons;
}

}  // namespace

ImportObjFrm::ImportObjFrm(core::Program& running, const core::CampaignData& campaign, falcon::ModelStore& source,
                           ModalCount& dialogs, QWidget* owner)
    : QDialog(owner),
      program(running),
      data(campaign),
      models(source),
      modal(dialogs),
      list(campaign),
      form(std::make_unique<Ui::ImportObjFrm>()),
      rows(new ObjectiveRows(list, this)) {
  form->setupUi(this);
  Populate();
  AddOptions();
  AddSortKeys();
  Connect();
  ShowSelection();
  resize(SizeAtStart);
  form->ListView1->setFocus();
}

ImportObjFrm::~ImportObjFrm() {
  // The view asks for rows until it goes, when their list is no more.
  delete rows;
}

void ImportObjFrm::Populate() {
  QTreeView& view = *form->ListView1;
  view.setModel(rows);
  QHeaderView& header = *view.header();
  header.setSectionsMovable(false);
  header.setStretchLastSection(false);
  // Not by their contents, which would look at thousands of rows.
  header.setSectionResizeMode(0, QHeaderView::Stretch);
  for (int column = 1; column < rows->columnCount(); ++column) header.resizeSection(column, ColumnWidth);
  // In the campaign's order until a column is asked for.
  header.setSortIndicator(-1, Qt::AscendingOrder);
  view.setSortingEnabled(true);
  view.installEventFilter(this);
  view.setCurrentIndex(rows->index(0, 0));
  new EmptyHint(view, data.World.Objectives.empty() ? QStringLiteral("This campaign has no objectives.")
                                                    : QStringLiteral("No objective is of this team and type."));
}

void ImportObjFrm::AddOptions() {
  QStringList teams{QStringLiteral("All Teams")};
  for (const std::string& name : list.Teams()) teams << FromBytes(name);
  QStringList types;
  for (const core::ObjectiveTypeChoice& choice : core::ObjectiveTypeChoices()) types << FromBytes(choice.Caption);
  QButtonGroup* const team = AddArray(*form->FraTeams, QStringLiteral("OptTeam"), teams, TeamColumns);
  QButtonGroup* const type = AddArray(*form->FraTypes, QStringLiteral("OptTypes"), types, TypeColumns);
  setTabOrder(type->buttons().last(), form->cmdImport);
  setTabOrder(form->cmdImport, form->cmdCancel);
  connect(team, &QButtonGroup::idToggled, this, [this](int option, bool on) {
    if (!on) return;
    Guarded(program.Log, "OptTeam", [&] {
      list.ShowTeam(option == 0 ? std::nullopt : std::optional(static_cast<std::uint8_t>(option - 1)));
      ShowRows();
    });
  });
  connect(type, &QButtonGroup::idToggled, this, [this](int option, bool on) {
    if (!on) return;
    Guarded(program.Log, "OptTypes", [&] {
      list.ShowTypes(static_cast<std::size_t>(option));
      ShowRows();
    });
  });
}

void ImportObjFrm::AddSortKeys() {
  for (int column = 0; column < rows->columnCount(); ++column) {
    auto* key = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + column)), this);
    connect(key, &QShortcut::activated, this, [this, column] {
      const QHeaderView& header = *form->ListView1->header();
      const bool again = header.sortIndicatorSection() == column && header.sortIndicatorOrder() == Qt::AscendingOrder;
      form->ListView1->sortByColumn(column, again ? Qt::DescendingOrder : Qt::AscendingOrder);
    });
  }
}

void ImportObjFrm::Connect() {
  connect(rows, &ObjectiveRows::Marked, this, &ImportObjFrm::ShowSelection);
  connect(form->chkSelectAll, &QCheckBox::clicked, this, [this](bool checked) {
    Guarded(program.Log, "chkSelectAll", [&] {
      list.SelectShown(checked);
      rows->RefreshMarks();
      ShowSelection();
    });
  });
  connect(form->cmdImport, &QPushButton::clicked, this,
          [this] { Guarded(program.Log, "cmdImport", [this] { Next(); }); });
  connect(form->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void ImportObjFrm::ShowRows() {
  rows->Refresh();
  form->ListView1->setCurrentIndex(rows->index(0, 0));
  ShowSelection();
}

void ImportObjFrm::ShowSelection() {
  form->chkSelectAll->setChecked(list.AllShownSelected());
  form->lblObjectivesSelected->setText(QStringLiteral("Objectives Selected: ") + QString::number(list.SelectedCount()));
}

bool ImportObjFrm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space) {
    return QDialog::eventFilter(watched, event);
  }
  // All rows that are highlighted, as the one where the keyboard is.
  const QModelIndex at = form->ListView1->currentIndex();
  if (!at.isValid()) return false;
  const bool marked = at.siblingAtColumn(0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
  QModelIndexList chosen = form->ListView1->selectionModel()->selectedRows();
  if (!chosen.contains(at.siblingAtColumn(0))) chosen = {at.siblingAtColumn(0)};
  rows->Mark(chosen, !marked);
  return true;
}

void ImportObjFrm::Next() {
  if (list.SelectedCount() == 0) {
    core::Tell(program, "You haven't selected any Objective...", "Ooops");
    return;
  }
  ImportObjOptionsFrm options(program, {data, models, list}, how, this);
  const int answer = RunDialog(options, modal);
  how = options.Chosen();
  if (answer == QDialog::Accepted) accept();
  if (answer == ImportObjOptionsFrm::GivenUp) reject();
}

}  // namespace kestrel::shell
