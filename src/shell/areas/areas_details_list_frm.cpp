#include "shell/areas/areas_details_list_frm.h"

#include <QKeyEvent>
#include <algorithm>
#include <initializer_list>
#include <span>
#include <utility>

#include "areas/area_list.h"
#include "core/tell.h"
#include "shell/areas/select_area_group_frm.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/empty_hint.h"
#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"
#include "ui_areas_details_list_frm.h"

namespace kestrel::shell {
namespace {

using base::Changed;

/// Pixels; room for about a dozen rows.
constexpr QSize SizeAtStart(520, 400);

/// Of the types 1 to 5; others have none.
std::vector<QIcon> TypeImages() {
  return {LineIcon(IconKind::Region), LineIcon(IconKind::Circle), LineIcon(IconKind::MapIcon), LineIcon(IconKind::Text),
          LineIcon(IconKind::FlightPlan)};
}

}  // namespace

AreasDetailsListFrm::AreasDetailsListFrm(core::Program& running, ModalCount& dialogs, QWidget* frame)
    : QDialog(frame),
      program(running),
      modal(dialogs),
      form(std::make_unique<Ui::AreasDetailsListFrm>()),
      list(new KeyedTree(this)) {
  form->setupUi(this);
  form->cmdMoveUp->setIcon(LineIcon(IconKind::RollUp));
  form->cmdMoveDown->setIcon(LineIcon(IconKind::RollDown));
  form->cmdMoveAllUp->setIcon(LineIcon(IconKind::ToTop));
  form->cmdMoveAllDown->setIcon(LineIcon(IconKind::ToBottom));
  form->ListView1->setFocus();
  resize(SizeAtStart);
  LoadList();
  Connect();
  RefreshList();
}

AreasDetailsListFrm::~AreasDetailsListFrm() {
  // A field that has the keyboard tells of its end when only the dialog is left.
  form->Text1->disconnect(this);
}

void AreasDetailsListFrm::LoadList() {
  list->SetImages(TypeImages());
  list->SetCheck([this](const QString& key, bool on) {
    bool done = false;
    Guarded(program.Log, "ListView1", [&] {
      areas::CheckArea(program.State.Areas, program.State.AreaSteps, groupIndex, key.mid(1).toULongLong(), on);
      done = true;
      ShowEnabled();
      program.Shown.Refresh(Changed::Map);
    });
    return done;
  });
  list->ShowIn(*form->ListView1);
  new EmptyHint(*form->ListView1, QStringLiteral("This group has no areas yet. New Area... draws one."));
}

std::function<void()> AreasDetailsListFrm::Handler(const char* control, void (AreasDetailsListFrm::*act)()) {
  return [this, control, act] { Guarded(program.Log, control, [&] { (this->*act)(); }); };
}

void AreasDetailsListFrm::Connect() {
  using Me = AreasDetailsListFrm;
  connect(form->Command1, &QPushButton::clicked, this, [this] { Q_EMIT AreaAsked(0); });
  const std::pair<QPushButton*, void (Me::*)()> buttons[] = {
      {form->Command2, &Me::EditArea},
      {form->Command3, &Me::DeleteArea},
      {form->Command4, &Me::reject},
      {form->cmdMoveUp, &Me::Move<areas::Way::Up>},
      {form->cmdMoveDown, &Me::Move<areas::Way::Down>},
      {form->cmdMoveAllUp, &Me::Move<areas::Way::Top>},
      {form->cmdMoveAllDown, &Me::Move<areas::Way::Bottom>},
      {form->cmdCopySelected, &Me::CopySelected},
      {form->cmdChangeSelected, &Me::ChangeSelected},
  };
  for (const auto& [button, act] : buttons) {
    connect(button, &QPushButton::clicked, this, Handler("AreasDetailsListFrm", act));
  }
  connect(form->chkSelectAll, &QCheckBox::clicked, this,
          [this](bool checked) { Guarded(program.Log, "chkSelectAll", [&] { CheckAll(checked); }); });
  connect(form->Text1, &QLineEdit::textEdited, this, Handler("Text1", &Me::TypeName));
  connect(form->Text1, &QLineEdit::editingFinished, this, [this] { program.State.AreaSteps.Settle(); });
  connect(form->ListView1, &QTreeView::doubleClicked, this, Handler("ListView1", &Me::EditArea));
  connect(form->ListView1->selectionModel(), &QItemSelectionModel::selectionChanged, this, &Me::ShowEnabled);
  form->ListView1->installEventFilter(this);
  form->Text1->installEventFilter(this);
  AddUndoKeys<areas::AreaHistory>(*this, program.Log, [this](auto step) { Undo(step); });
}

bool AreasDetailsListFrm::HasGroup() const {
  return groupIndex >= 1 && groupIndex <= program.State.Areas.AreaGroups.UpperBound();
}

const areas::AreaGroup& AreasDetailsListFrm::Group() const { return program.State.Areas.AreaGroups[groupIndex]; }

std::vector<KeyedTree::Row> AreasDetailsListFrm::Rows() const {
  std::vector<KeyedTree::Row> rows;
  if (!HasGroup()) return rows;
  for (const areas::Area& area : Group().Areas.Live()) {
    const auto key = QString(u'D' + QString::number(rows.size() + 1));
    const bool on = area.Visible == areas::On;
    rows.push_back({key, FromBytes(area.Name), -1, static_cast<int>(area.Type),
                    on ? KeyedTree::Mark::On : KeyedTree::Mark::Off, false, false, QStringLiteral("(no name)")});
  }
  return rows;
}

std::size_t AreasDetailsListFrm::Selected() const { return list->Selected().mid(1).toULongLong(); }

void AreasDetailsListFrm::Select(std::size_t area) {
  const std::size_t last = HasGroup() ? Group().Areas.UpperBound() : 0;
  if (last == 0) return;
  list->Select(QString(u'D' + QString::number(std::clamp<std::size_t>(area, 1, last))));
}

void AreasDetailsListFrm::ShowGroup(std::size_t group) {
  program.State.AreaSteps.Settle();
  groupIndex = group;
  form->chkSelectAll->setChecked(false);
  form->lblRefused->hide();
  RefreshList();
  Select(1);
  form->ListView1->setFocus();
}

void AreasDetailsListFrm::RefreshList() {
  const std::size_t selected = Selected();
  list->Refresh(Rows());
  Select(selected);
  ShowTitle();
  const QString name = HasGroup() ? FromBytes(Group().Name) : QString();
  if (form->Text1->text() != name) form->Text1->setText(name);
  ShowEnabled();
}

void AreasDetailsListFrm::ShowTitle() { setWindowTitle(HasGroup() ? AsTitle(FromBytes(Group().Name)) : QString()); }

bool AreasDetailsListFrm::AnyChecked() const {
  return HasGroup() &&
         std::ranges::any_of(Group().Areas.Live(), [](const areas::Area& area) { return area.Visible == areas::On; });
}

void AreasDetailsListFrm::ShowEnabled() {
  const bool row = Selected() != 0;
  for (QPushButton* button :
       std::initializer_list<QPushButton*>{form->Command2, form->Command3, form->cmdMoveUp, form->cmdMoveDown,
                                           form->cmdMoveAllUp, form->cmdMoveAllDown}) {
    button->setEnabled(row);
  }
  const bool checked = AnyChecked();
  form->cmdCopySelected->setEnabled(checked);
  form->cmdChangeSelected->setEnabled(checked);
}

void AreasDetailsListFrm::ShowChange(std::size_t area) {
  RefreshList();
  Select(area);
  program.Shown.Refresh(Changed::Map);
}

void AreasDetailsListFrm::TypeName() {
  const std::optional<std::string> typed = TakeText(*form->Text1, *form->lblRefused);
  if (!typed) return;
  areas::RenameGroup(program.State.Areas, program.State.AreaSteps, groupIndex, *typed);
  ShowTitle();
}

void AreasDetailsListFrm::EditArea() {
  if (const std::size_t area = Selected(); area != 0) Q_EMIT AreaAsked(area);
}

void AreasDetailsListFrm::DeleteArea() {
  const std::size_t area = Selected();
  if (area == 0) return;
  const std::string question = "Are you sure you want to delete this " + Group().Areas[area].Name + "?";
  if (!core::IsSure(program, question, " Confirm...")) return;
  areas::DeleteArea(program.State.Areas, program.State.AreaSteps, groupIndex, area);
  // The button of a list that is empty now is disabled; the keyboard is not to go on to the next one.
  form->ListView1->setFocus();
  ShowChange(area);
}

template <areas::Way way>
void AreasDetailsListFrm::Move() {
  const std::size_t moved = areas::MoveArea(program.State.Areas, program.State.AreaSteps, groupIndex, Selected(), way);
  if (moved != 0) ShowChange(moved);
}

void AreasDetailsListFrm::CheckAll(bool checked) {
  areas::CheckAllAreas(program.State.Areas, program.State.AreaSteps, groupIndex, checked);
  ShowChange(Selected());
}

void AreasDetailsListFrm::CopySelected() {
  SelectAreaGroupfrm question(program.State.Areas, this);
  RunDialog(question, modal);
  if (question.CopyTarget() < 1) return;
  areas::CopyChecked(program.State.Areas, program.State.AreaSteps, groupIndex, question.CopyTarget());
  ShowChange(Selected());
}

void AreasDetailsListFrm::ChangeSelected() {
  const std::span<const areas::Area> all = Group().Areas.Live();
  const auto first = std::ranges::find_if(all, [](const areas::Area& area) { return area.Visible == areas::On; });
  const auto colour = program.Desk.PickColour(first == all.end() ? 0 : first->Color);
  if (!colour) return;
  areas::ColourChecked(program.State.Areas, program.State.AreaSteps, groupIndex, *colour);
  program.Shown.Refresh(Changed::Map);
}

void AreasDetailsListFrm::Undo(UndoStep<areas::AreaHistory> step) {
  const areas::Moved moved = (program.State.AreaSteps.*step)(program.State.Areas);
  if (!moved.Done) return;
  // The group that it shows may be another one's place now.
  if (moved.GroupsChanged) {
    reject();
    program.Shown.Refresh(Changed::Map | Changed::Areas);
    return;
  }
  form->lblRefused->hide();
  ShowChange(Selected());
}

void AreasDetailsListFrm::reject() {
  if (!isVisible()) return;
  program.State.AreaSteps.Settle();
  QDialog::reject();
  Q_EMIT Exited();
}

bool AreasDetailsListFrm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (watched == form->ListView1 && key == Qt::Key_Delete) {
    Handler("ListView1", &AreasDetailsListFrm::DeleteArea)();
    return true;
  }
  // Enter is Edit Area, but for whoever has just typed a name.
  if (watched == form->Text1 && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
    form->ListView1->setFocus();
    return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace kestrel::shell
