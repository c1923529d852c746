#include "shell/areas/areas_frm.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <utility>

#include "areas/area_box.h"
#include "core/tell.h"
#include "map/geometry.h"
#include "shell/areas/geo_json_files.h"
#include "shell/parts/empty_hint.h"
#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"
#include "ui_areas_frm.h"

namespace kestrel::shell {
namespace {

using base::Changed;

/// Characters of a name; the files hold no more.
constexpr int NameLimit = 100;

enum Image { FolderImage = 1, GroupImage };

KeyedTree::Mark MarkOf(bool on) { return on ? KeyedTree::Mark::On : KeyedTree::Mark::Off; }

KeyedTree::Row RowOf(const std::string& key, const std::string& name, int parent, Image image, bool on) {
  KeyedTree::Row row{FromBytes(key), FromBytes(name), parent, image, MarkOf(on), true, image == GroupImage};
  row.Instead = QStringLiteral("(no name)");
  return row;
}

}  // namespace

/// What a button does, the entry of the menu with its caption too.
struct AreasFrm::Command {
  const char* Button;
  On Where;
  void (AreasFrm::*Act)(const std::string& key);  ///< told the selected node
};

const AreasFrm::Command AreasFrm::Commands[] = {
    {"cmdNewCategory", On::Nothing, &AreasFrm::NewFolder},
    {"cmdEditFolder", On::Folder, &AreasFrm::EditLabel},
    {"cmdDeleteCategory", On::Folder, &AreasFrm::DeleteFolder},
    {"Command1", On::Node, &AreasFrm::NewGroup},
    {"Command2", On::Group, &AreasFrm::EditGroup},
    {"Command3", On::Group, &AreasFrm::DeleteGroup},
    {"cmdMoveUp", On::NodeInOrder, &AreasFrm::Move<areas::Way::Up>},
    {"cmdMoveDown", On::NodeInOrder, &AreasFrm::Move<areas::Way::Down>},
    {"cmdMoveAllUp", On::NodeInOrder, &AreasFrm::Move<areas::Way::Top>},
    {"cmdMoveAllDown", On::NodeInOrder, &AreasFrm::Move<areas::Way::Bottom>},
};

AreasFrm::AreasFrm(core::Program& running, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::Areas, QStringLiteral("AreasFrm"), QStringLiteral("AREAS"), frame,
              Changed::Areas),
      form(std::make_unique<Ui::AreasFrm>()),
      tree(new KeyedTree(this)) {
  form->setupUi(&Body());
  LoadTree();
  Connect();
  RefreshList({});
  FitBody();
}

AreasFrm::~AreasFrm() = default;

void AreasFrm::LoadTree() {
  tree->SetImages({LineIcon(IconKind::AreaFolder), LineIcon(IconKind::AreaGroup)});
  tree->SetCheck([this](const QString& key, bool on) {
    bool done = false;
    Guarded(program.Log, "TreeView1", [&] {
      areas::CheckNode(program.State.Areas, program.State.AreaSteps, ToBytes(key), on);
      done = true;
      program.Shown.Refresh(Changed::Map);
    });
    return done;
  });
  tree->SetRename(NameLimit, [this](const QString& key, const QString& text) { return Rename(key, text); });
  tree->SetDrag(
      [this](const QString& from, const QString& to) {
        return from.startsWith(u'D') && to.startsWith(u'C') && tree->KeyOf(tree->Find(from).parent()) != to;
      },
      [this](const QString& from, const QString& to) {
        Guarded(program.Log, "TreeView1", [&] {
          const std::string key =
              areas::DropNode(program.State.Areas, program.State.AreaSteps, ToBytes(from), ToBytes(to));
          if (!key.empty()) ShowChange(key);
        });
      });
  tree->ShowIn(*form->TreeView1);
  none = new EmptyHint(*form->TreeView1, {});
}

void AreasFrm::Connect() {
  for (const Command& command : Commands) {
    auto* button = Body().findChild<QPushButton*>(QLatin1String(command.Button));
    connect(button, &QPushButton::clicked, this, [this, &command] { Run(command); });
  }
  connect(form->chkSelectAll, &QCheckBox::clicked, this,
          [this](bool checked) { Guarded(program.Log, "chkSelectAll", [&] { CheckAll(checked); }); });
  connect(form->txtFilter, &QLineEdit::textChanged, this,
          [this] { Guarded(program.Log, "txtFilter", [this] { Filter(); }); });
  QTreeView& view = *form->TreeView1;
  connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    ShowRefused({});
    ShowEnabled();
  });
  connect(&view, &QTreeView::doubleClicked, this, &AreasFrm::Choose);
  connect(&view, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& place) { Guarded(program.Log, "PopUpAreas", [&] { ShowMenu(place); }); });
  connect(view.itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
          [this](QWidget*, QAbstractItemDelegate::EndEditHint hint) {
            if (hint == QAbstractItemDelegate::RevertModelCache) ShowRefused({});
          });
  view.installEventFilter(this);
  AddUndoKeys<areas::AreaHistory>(*this, program.Log, [this](auto step) { Undo(step); });
}

QString AreasFrm::Wanted() const { return form->txtFilter->text().trimmed(); }

std::string AreasFrm::Selected() const { return ToBytes(tree->Selected()); }

std::vector<KeyedTree::Row> AreasFrm::Rows() const {
  const areas::AreaCatalogue& catalogue = program.State.Areas;
  const QString wanted = Wanted();
  const auto found = [&wanted](const std::string& name) {
    return wanted.isEmpty() || FromBytes(name).contains(wanted, Qt::CaseInsensitive);
  };
  const std::size_t folders = catalogue.AreaFolders.UpperBound();
  std::vector<bool> whole(folders + 1);
  for (std::size_t folder = 1; folder <= folders; ++folder) whole[folder] = found(catalogue.AreaFolders[folder].Name);
  std::vector<std::vector<std::size_t>> within(folders + 1);
  for (std::size_t index = 1; index <= catalogue.AreaGroups.UpperBound(); ++index) {
    const areas::AreaGroup& group = catalogue.AreaGroups[index];
    if (!areas::HasFolder(catalogue, group)) continue;
    const auto folder = static_cast<std::size_t>(group.FolderIndex);
    if (whole[folder] || found(group.Name)) within[folder].push_back(index);
  }
  std::vector<KeyedTree::Row> rows;
  for (std::size_t index = 1; index <= folders; ++index) {
    if (!whole[index] && within[index].empty()) continue;
    const areas::AreaFolder& folder = catalogue.AreaFolders[index];
    const int parent = static_cast<int>(rows.size());
    rows.push_back(RowOf(areas::FolderKey(index), folder.Name, -1, FolderImage, folder.Visible != areas::Off));
    for (const std::size_t number : within[index]) {
      const areas::AreaGroup& group = catalogue.AreaGroups[number];
      rows.push_back(RowOf(areas::GroupKey(number), group.Name, parent, GroupImage, group.Visible == areas::On));
    }
  }
  return rows;
}

void AreasFrm::RefreshList(const QString& selectKey) {
  tree->RefreshClosed(Rows(), selectKey);
  // What is asked for is to be seen.
  if (!selectKey.isEmpty() && !tree->Find(selectKey).isValid() && !form->txtFilter->text().isEmpty()) {
    form->txtFilter->clear();
    tree->RefreshClosed(Rows(), selectKey);
  }
  OpenFound();
  ShowRefused({});
  ShowEnabled();
}

void AreasFrm::Filter() {
  tree->Refresh(Rows());
  OpenFound();
  ShowEnabled();
}

void AreasFrm::OpenFound() {
  const bool filtered = !Wanted().isEmpty();
  none->setText(filtered ? QStringLiteral("No folder or group has this in its name.")
                         : QStringLiteral("There are no areas yet. New Folder makes a place for them."));
  if (filtered) form->TreeView1->expandAll();
  const QModelIndex selected = tree->Find(tree->Selected());
  if (selected.isValid()) form->TreeView1->scrollTo(selected);
}

void AreasFrm::ShowChanged(Changed) { RefreshList({}); }

bool AreasFrm::Can(On on, const std::string& key) const {
  const std::optional<areas::Node> node = areas::NodeOf(program.State.Areas, key);
  switch (on) {
    case On::Nothing:
      return true;
    case On::Folder:
      return node && node->IsFolder;
    case On::Group:
      return node && !node->IsFolder;
    case On::Node:
      return node.has_value();
    case On::NodeInOrder:
      // Among neighbours that are not seen nobody can tell where it would go.
      return node && Wanted().isEmpty();
  }
  return false;
}

void AreasFrm::ShowEnabled() {
  const std::string key = Selected();
  for (const Command& command : Commands) {
    Body().findChild<QPushButton*>(QLatin1String(command.Button))->setEnabled(Can(command.Where, key));
  }
}

void AreasFrm::Run(const Command& command) {
  Guarded(program.Log, command.Button, [&] {
    const std::string key = Selected();
    if (Can(command.Where, key)) (this->*command.Act)(key);
  });
}

void AreasFrm::Choose() {
  Guarded(program.Log, "TreeView1", [this] {
    const std::string key = Selected();
    if (Can(On::Group, key)) EditGroup(key);
  });
}

void AreasFrm::ShowChange(const std::string& selectKey) {
  RefreshList(FromBytes(selectKey));
  program.Shown.Refresh(Changed::Map);
}

void AreasFrm::NewFolder(const std::string& key) {
  RefreshList(FromBytes(areas::NewFolder(program.State.Areas, program.State.AreaSteps, key)));
}

void AreasFrm::EditLabel(const std::string& key) {
  form->TreeView1->setFocus();
  form->TreeView1->edit(tree->Find(FromBytes(key)));
}

void AreasFrm::DeleteFolder(const std::string& key) {
  const std::size_t folder = areas::NodeOf(program.State.Areas, key)->Index;
  const std::string& name = program.State.Areas.AreaFolders[folder].Name;
  if (areas::HasGroups(program.State.Areas, folder) &&
      !core::IsSure(program,
                    "Are you sure you want to delete the " + name + " Folder? All Areas under it will be deleted also.",
                    "Folder delete...")) {
    return;
  }
  const std::string select = areas::DeleteFolder(program.State.Areas, program.State.AreaSteps, key);
  // Its button is disabled now; the keyboard is not to go on to the next one.
  form->TreeView1->setFocus();
  ShowChange(select);
}

void AreasFrm::NewGroup(const std::string& key) {
  const std::string made = areas::NewGroup(program.State.Areas, program.State.AreaSteps, key);
  RefreshList(FromBytes(made));
  EditGroup(made);
}

void AreasFrm::EditGroup(const std::string& key) {
  if (const auto node = areas::NodeOf(program.State.Areas, key)) Q_EMIT GroupAsked(node->Index);
}

void AreasFrm::DeleteGroup(const std::string& key) {
  const std::string& name = program.State.Areas.AreaGroups[areas::NodeOf(program.State.Areas, key)->Index].Name;
  if (!core::IsSure(program, "Are you sure you want to delete the " + name + " Area?", "Area delete...")) return;
  const std::string select = areas::DeleteGroup(program.State.Areas, program.State.AreaSteps, key);
  form->TreeView1->setFocus();
  ShowChange(select);
}

template <areas::Way way>
void AreasFrm::Move(const std::string& key) {
  const std::string moved = areas::MoveNode(program.State.Areas, program.State.AreaSteps, key, way);
  if (!moved.empty()) ShowChange(moved);
}

void AreasFrm::CheckAll(bool checked) {
  areas::AreaCatalogue& catalogue = program.State.Areas;
  areas::AreaHistory& history = program.State.AreaSteps;
  if (Wanted().isEmpty()) {
    areas::CheckAllNodes(catalogue, history, checked);
  } else {
    const areas::OneStep step(catalogue, history, checked ? "check of those found" : "uncheck of those found");
    for (const KeyedTree::Row& row : Rows()) areas::CheckNode(catalogue, history, ToBytes(row.Key), checked);
  }
  tree->Refresh(Rows());
  program.Shown.Refresh(Changed::Map);
}

void AreasFrm::Undo(UndoStep<areas::AreaHistory> step) {
  const std::size_t folders = program.State.Areas.AreaFolders.UpperBound();
  const areas::Moved moved = (program.State.AreaSteps.*step)(program.State.Areas);
  if (!moved.Done) return;
  if (moved.GroupsChanged || program.State.Areas.AreaFolders.UpperBound() != folders) {
    ShowChange(moved.Select);
    return;
  }
  // The nodes are those that they were: what is open stays open.
  tree->Refresh(Rows());
  OpenFound();
  if (!moved.Select.empty()) tree->Select(FromBytes(moved.Select));
  program.Shown.Refresh(Changed::Map);
}

bool AreasFrm::Rename(const QString& key, const QString& text) {
  bool done = false;
  Guarded(program.Log, "TreeView1", [&] {
    const QString refused = UnheldSentence(UnheldCharacters(text));
    ShowRefused(refused);
    if (!refused.isEmpty()) {
      EditAgain(key, text);
      return;
    }
    areas::RenameNode(program.State.Areas, program.State.AreaSteps, ToBytes(key), ToBytes(text));
    done = true;
  });
  return done;
}

void AreasFrm::EditAgain(const QString& key, const QString& text) {
  // Once the editor that gave the text is gone.
  QTimer::singleShot(0, this, [this, key, text] {
    if (!isActiveWindow() || tree->Selected() != key) return;
    form->TreeView1->setFocus();
    const QModelIndex at = tree->Find(key);
    form->TreeView1->edit(at);
    if (auto* editor = qobject_cast<QLineEdit*>(form->TreeView1->indexWidget(at))) editor->setText(text);
  });
}

void AreasFrm::ShowRefused(const QString& sentence) {
  QLabel& refused = *form->lblRefused;
  if (refused.text() == sentence && refused.isHidden() == sentence.isEmpty()) return;
  refused.setText(sentence);
  refused.setVisible(!sentence.isEmpty());
  // As wide as the tree is, however many lines that takes.
  refused.setMinimumHeight(sentence.isEmpty() ? 0 : refused.heightForWidth(form->TreeView1->width()));
  FitBody();
}

void AreasFrm::ShowOnMap(const std::string& key) {
  const auto box = areas::BoxOf(program.State.Areas, key);
  if (!box) return;
  program.Shown.Refresh(map::ShowPart(program.State.View, box->MinX, box->MinY, box->MaxX, box->MaxY));
}

void AreasFrm::ShowMenu(const QPoint& place) {
  const QString node = tree->KeyOf(form->TreeView1->indexAt(place));
  if (!node.isEmpty()) tree->Select(node);
  const std::string key = ToBytes(node);
  auto* menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("PopUpAreas"));
  connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
  const auto add = [menu](const char* name, const QString& caption, bool enabled) {
    QAction* entry = menu->addAction(caption);
    entry->setObjectName(QLatin1String(name));
    entry->setEnabled(enabled);
    return entry;
  };
  const auto act = [this](QAction* entry, auto run) {
    connect(entry, &QAction::triggered, this, [this, run] { Guarded(program.Log, "PopUpAreas", run); });
  };
  On former = On::Nothing;
  for (const Command& command : Commands) {
    if (!Can(command.Where, key)) continue;
    if (command.Where == On::NodeInOrder && former != On::NodeInOrder) menu->addSeparator();
    former = command.Where;
    const auto* button = Body().findChild<QPushButton*>(QLatin1String(command.Button));
    act(add(command.Button, button->text(), true), [this, &command] { Run(command); });
  }
  if (Can(On::Group, key)) {
    act(add("mnuRenameGroup", QStringLiteral("Rena&me Group\tF2"), true), [this, key] { EditLabel(key); });
  }
  menu->addSeparator();
  act(add("mnuShowOnMap", QStringLiteral("&Show on Map"), areas::BoxOf(program.State.Areas, key).has_value()),
      [this, key] { ShowOnMap(key); });
  menu->addSeparator();
  const auto steps = [&](const char* name, const QString& word, std::string_view what, const char* keys, auto step) {
    const QString caption = word + AsCaption(FromBytes(what)) + QLatin1String(keys);
    act(add(name, caption, !what.empty()), [this, step] { Undo(step); });
  };
  const areas::AreaHistory& history = program.State.AreaSteps;
  steps("mnuUndoAreas", QStringLiteral("Undo "), history.UndoText(), "\tCtrl+Z", &areas::AreaHistory::Undo);
  steps("mnuRedoAreas", QStringLiteral("Redo "), history.RedoText(), "\tCtrl+Y", &areas::AreaHistory::Redo);
  menu->addSeparator();
  act(add("mnuExportGeoJson", QStringLiteral("E&xport as GeoJSON..."), true),
      [this, key] { ExportGeoJson(program, key); });
  act(add("mnuImportGeoJson", QStringLiteral("&Import GeoJSON..."), true), [this] {
    const std::string made = ImportGeoJson(program);
    if (!made.empty()) ShowChange(made);
  });
  menu->popup(form->TreeView1->viewport()->mapToGlobal(place));
}

bool AreasFrm::eventFilter(QObject* watched, QEvent* event) {
  if (watched != form->TreeView1 || event->type() != QEvent::KeyPress) return ToolFrm::eventFilter(watched, event);
  // What an editor of a name has not taken comes here too.
  if (form->TreeView1->viewport()->findChild<QLineEdit*>() != nullptr) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Delete) {
    for (const Command& command : Commands) {
      if (command.Act != &AreasFrm::DeleteFolder && command.Act != &AreasFrm::DeleteGroup) continue;
      if (!Can(command.Where, Selected())) continue;
      Run(command);
      return true;
    }
  }
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    Choose();
    return true;
  }
  return false;
}

}  // namespace kestrel::shell
