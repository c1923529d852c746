#include "shell/radio/freq_frm.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <algorithm>
#include <utility>

#include "map/geometry.h"
#include "radio/navaid_place.h"
#include "radio/tuned_rows.h"
#include "radio/voice_bridge.h"
#include "shell/parts/empty_hint.h"
#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/unicode_text.h"
#include "shell/radio/freq_images.h"
#include "shell/radio/freq_rows.h"
#include "shell/radio/ivc_status.h"
#include "ui_freq_frm.h"

namespace kestrel::shell {
namespace {

using base::Changed;
using radio::FreqMove;
using radio::FreqRecord;
using radio::FreqTab;

constexpr FreqTab Tabs[] = {FreqTab::CustomChannels, FreqTab::Airports, FreqTab::CustomFreqs};
constexpr const char* Captions[] = {"Custom Channels", "Airports", "Custom Freqs"};

/// Characters of a folder's name.
constexpr int NameLimit = 100;

}  // namespace

/// What a button does.
struct FreqFrm::Command {
  const char* Button;
  FreqTab Tab;
  On Where;
  void (FreqFrm::*Act)(const std::string& key);  ///< told the selected node
  int Key = 0;                                   ///< does the same in the tree
  IconKind Icon = {};                            ///< of a button without a caption
};

template <void (FreqFrm::*Asked)()>
void FreqFrm::Ask(const std::string&) {
  Q_EMIT(this->*Asked)();
}

const FreqFrm::Command FreqFrm::Commands[] = {
    {"cmdEditChannel", FreqTab::CustomChannels, On::Channel, &FreqFrm::EditChannel, Qt::Key_F2},
    {"cmdLoadChannels", FreqTab::CustomChannels, On::Nothing, &FreqFrm::Ask<&FreqFrm::LoadChannelsAsked>},
    {"cmdSaveChannels", FreqTab::CustomChannels, On::Nothing, &FreqFrm::Ask<&FreqFrm::SaveChannelsAsked>},
    {"cmdLoadBMS", FreqTab::CustomChannels, On::Nothing, &FreqFrm::LoadBMS},
    {"cmdLoadAirports", FreqTab::Airports, On::Nothing, &FreqFrm::Ask<&FreqFrm::LoadAirportsAsked>},
    {"cmdMoveAllUpAirf", FreqTab::Airports, On::Airfield, &FreqFrm::MoveAirfield<FreqMove::Top>, 0, IconKind::ToTop},
    {"cmdMoveUpAirf", FreqTab::Airports, On::Airfield, &FreqFrm::MoveAirfield<FreqMove::Up>, 0, IconKind::RollUp},
    {"cmdMoveDownAirf", FreqTab::Airports, On::Airfield, &FreqFrm::MoveAirfield<FreqMove::Down>, 0, IconKind::RollDown},
    {"cmdMoveAllDownAirf", FreqTab::Airports, On::Airfield, &FreqFrm::MoveAirfield<FreqMove::Bottom>, 0,
     IconKind::ToBottom},
    {"cmdAddFolder", FreqTab::CustomFreqs, On::Nothing, &FreqFrm::AddFolder},
    {"cmdEditFolder", FreqTab::CustomFreqs, On::Folder, &FreqFrm::EditFolder, Qt::Key_F2},
    {"cmdDeleteFolder", FreqTab::CustomFreqs, On::Folder, &FreqFrm::DeleteFolder, Qt::Key_Delete},
    {"cmdAddFreq", FreqTab::CustomFreqs, On::Nothing, &FreqFrm::AddFreq},
    {"cmdEditFreq", FreqTab::CustomFreqs, On::Entry, &FreqFrm::EditFreq, Qt::Key_F2},
    {"cmdDeleteFreq", FreqTab::CustomFreqs, On::Entry, &FreqFrm::DeleteFreq, Qt::Key_Delete},
    {"cmdMoveAllUp", FreqTab::CustomFreqs, On::FolderOrEntry, &FreqFrm::MoveFreq<FreqMove::Top>, 0, IconKind::ToTop},
    {"cmdMoveUp", FreqTab::CustomFreqs, On::FolderOrEntry, &FreqFrm::MoveFreq<FreqMove::Up>, 0, IconKind::RollUp},
    {"cmdMoveDown", FreqTab::CustomFreqs, On::FolderOrEntry, &FreqFrm::MoveFreq<FreqMove::Down>, 0, IconKind::RollDown},
    {"cmdMoveAllDown", FreqTab::CustomFreqs, On::FolderOrEntry, &FreqFrm::MoveFreq<FreqMove::Bottom>, 0,
     IconKind::ToBottom},
};

FreqFrm::FreqFrm(core::Program& running, ModalCount& dialogs, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::Freq, QStringLiteral("FreqFrm"), QStringLiteral("FREQs"), frame,
              Changed::Frequencies),
      form(std::make_unique<Ui::FreqFrm>()),
      modal(dialogs),
      trees{new KeyedTree(this), new KeyedTree(this), new KeyedTree(this)} {
  form->setupUi(&Body());
  form->TabStrip1->setAccessibleName(QStringLiteral("Frequencies"));
  form->TabStrip1->setExpanding(true);
  form->TabStrip1->setUsesScrollButtons(false);
  for (const char* caption : Captions) form->TabStrip1->addTab(QString::fromLatin1(caption));
  status = new IvcStatus(running, &Body());
  form->content->addWidget(status);
  LoadTrees();
  Connect();
  RefreshList(0, 0, {}, true);
  ShowTab(1);
  FitBody();
  program.Voice.RefreshIVCStatus = [this] { RefreshIVCStatus(); };
}

FreqFrm::~FreqFrm() { program.Voice.RefreshIVCStatus = nullptr; }

void FreqFrm::LoadTrees() {
  for (KeyedTree* tree : trees) tree->SetImages(FreqImages());
  TreeOf(FreqTab::Airports).SetCheck([this](const QString& key, bool on) { return Check(key, on); });
  KeyedTree& folders = TreeOf(FreqTab::CustomFreqs);
  folders.SetRename(NameLimit, [this](const QString& key, const QString& text) { return Rename(key, text); });
  folders.SetDrag([](const QString& from, const QString& to) { return radio::MayDropFreq(ToBytes(from), ToBytes(to)); },
                  [this](const QString& from, const QString& to) {
                    Guarded(program.Log, "TreeView3",
                            [&] { ShowEdited(radio::DropFreq(Tables(), Steps(), ToBytes(from), ToBytes(to))); });
                  });
  for (const FreqTab tab : Tabs) TreeOf(tab).ShowIn(ViewOf(tab));
  noAirfield = new EmptyHint(*form->TreeView2, QStringLiteral("No airfield has this in its name or frequencies."));
  noFreq = new EmptyHint(*form->TreeView3, {});
}

void FreqFrm::Connect() {
  for (const Command& command : Commands) {
    auto* button = Body().findChild<QPushButton*>(QLatin1String(command.Button));
    if (button->text().isEmpty()) button->setIcon(LineIcon(command.Icon));
    connect(button, &QPushButton::clicked, this, [this, &command] { Run(command); });
  }
  const auto boxes = SelectAllControls();
  for (std::size_t box = 0; box < boxes.size(); ++box) {
    // The person's clicks alone: what is set by UpdateTreeviewCheckBoxes selects nothing.
    connect(boxes[box], &QCheckBox::clicked, this, [this, box](bool on) {
      Guarded(program.Log, "chkSelectAll", [&] { SelectAll(static_cast<radio::SelectAllBox>(box), on); });
    });
  }
  connect(form->TabStrip1, &QTabBar::currentChanged, this,
          [this](int at) { Guarded(program.Log, "TabStrip1", [this, at] { ShowTab(at + 1); }); });
  connect(form->txtFilter, &QLineEdit::textChanged, this,
          [this] { Guarded(program.Log, "txtFilter", [this] { Filter(); }); });
  for (const FreqTab tab : Tabs) ConnectTree(ViewOf(tab));
  connect(form->TreeView3->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
          [this](QWidget*, QAbstractItemDelegate::EndEditHint hint) {
            if (hint == QAbstractItemDelegate::RevertModelCache) ShowRefused({});
          });
  connect(status, &IvcStatus::Refreshed, this, [this] {
    for (const FreqTab tab : Tabs) ShowTuned(tab);
  });
  AddUndoKeys<radio::FrequencyHistory>(*this, program.Log, [this](auto step) { Undo(step); });
  // It opens whenever its content comes to be seen.
  Body().installEventFilter(this);
}

void FreqFrm::ConnectTree(QTreeView& view) {
  connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    ShowRefused({});
    ShowEnabled();
  });
  connect(&view, &QTreeView::clicked, this, [this](const QModelIndex& at) {
    Guarded(program.Log, "NodeClick", [&] {
      // A click on a check mark is no click on its node.
      if (!marked) Click(ToBytes(at.data(Qt::UserRole).toString()));
    });
  });
  connect(&view, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& place) { Guarded(program.Log, "mnupopup4", [&] { AskPopUp4(place); }); });
  view.installEventFilter(this);
  view.viewport()->installEventFilter(this);
}

FreqTab FreqFrm::Tab() const { return Tabs[form->TabStrip1->currentIndex()]; }

KeyedTree& FreqFrm::TreeOf(FreqTab tab) const { return *trees[static_cast<std::size_t>(tab) - 1]; }

QTreeView& FreqFrm::ViewOf(FreqTab tab) const {
  QTreeView* const shown[] = {form->TreeView1, form->TreeView2, form->TreeView3};
  return *shown[static_cast<std::size_t>(tab) - 1];
}

std::string FreqFrm::Selected() const { return ToBytes(TreeOf(Tab()).Selected()); }

QString FreqFrm::Wanted(FreqTab tab) const {
  return tab == FreqTab::CustomChannels ? QString() : form->txtFilter->text().trimmed();
}

std::array<QCheckBox*, 6> FreqFrm::SelectAllControls() const {
  return {form->chkSelectAllAirf, form->chkSelectAllTACANs, form->chkSelectAllILS1,
          form->chkSelectAllILS2, form->chkSelectAllILS3,   form->chkSelectAllILS4};
}

std::vector<radio::FreqNode> FreqFrm::Nodes(FreqTab tab) const {
  const core::Station& station = program.State;
  switch (tab) {
    case FreqTab::CustomChannels:
      return radio::ChannelNodes(station.Frequencies, station.DefaultFrequencies);
    case FreqTab::Airports:
      return radio::AirportNodes(station.Frequencies);
    case FreqTab::CustomFreqs:
      return radio::FolderNodes(station.Frequencies);
  }
  return {};
}

void FreqFrm::ShowTab(int tab) {
  form->TabStrip1->setCurrentIndex(tab - 1);
  form->trees->setCurrentIndex(tab - 1);
  form->frames->setCurrentIndex(tab - 1);
  form->txtFilter->setVisible(Tab() != FreqTab::CustomChannels);
  ShowRefused({});
  ShowEnabled();
}

void FreqFrm::RefreshList(int tab, int selectTab, const QString& key, bool collapse) {
  const bool one = tab >= 1 && tab <= 3;
  for (const FreqTab each : Tabs) {
    const int number = static_cast<int>(each);
    if (!one || tab == number) Build(each, number == selectTab ? key : QString(), collapse, {});
  }
  ShowRefused({});
  ShowEnabled();
}

void FreqFrm::ShowLoadedChannels() { RefreshList(1, 1, TreeOf(FreqTab::CustomChannels).Selected(), false); }

void FreqFrm::Build(FreqTab tab, const QString& key, bool collapse, KeyedTree::KeyNow now) {
  KeyedTree& tree = TreeOf(tab);
  FreqRows found = RowsOf(Nodes(tab), Wanted(tab));
  const auto holds = [&key](const KeyedTree::Row& row) { return row.Key == key; };
  if (!key.isEmpty() && !Wanted(tab).isEmpty() && std::none_of(found.Rows.begin(), found.Rows.end(), holds)) {
    // What is asked for is to be seen. The nodes that are seen get their new keys before the others join them.
    if (!collapse) tree.Refresh(std::move(found.Rows), std::exchange(now, {}));
    form->txtFilter->clear();
    found = RowsOf(Nodes(tab), {});
  }
  const QString select = key.isEmpty() ? FromBytes(radio::FirstSelected(program.State.Frequencies, tab)) : key;
  if (collapse) {
    tree.RefreshClosed(std::move(found.Rows), select);
  } else {
    tree.Refresh(std::move(found.Rows), now);
    tree.Select(select);
  }
  ShowFound(tab, found.Open);
  ShowTuned(tab);
}

void FreqFrm::ShowTuned(FreqTab tab) {
  QHash<QString, QString> words;
  for (const radio::TunedRow& row : radio::TunedRows(program.State.Frequencies, tab, status->Status())) {
    words.insert(FromBytes(row.Key), FromBytes(radio::TunedWords(row)));
  }
  TreeOf(tab).SetNotes(std::move(words));
}

void FreqFrm::ShowFound(FreqTab tab, const std::vector<QString>& open) {
  noFreq->setText(Wanted(FreqTab::CustomFreqs).isEmpty()
                      ? QStringLiteral("There are no frequencies yet. Add Folder makes a place for them.")
                      : QStringLiteral("No folder or frequency has this."));
  KeyedTree& tree = TreeOf(tab);
  for (const QString& key : open) ViewOf(tab).expand(tree.Find(key));
  const QModelIndex selected = tree.Find(tree.Selected());
  if (!open.empty() && selected.isValid()) ViewOf(tab).scrollTo(selected);
}

void FreqFrm::Filter() {
  for (const FreqTab tab : {FreqTab::Airports, FreqTab::CustomFreqs}) {
    FreqRows found = RowsOf(Nodes(tab), Wanted(tab));
    TreeOf(tab).Refresh(std::move(found.Rows));
    ShowFound(tab, found.Open);
  }
  ShowEnabled();
}

void FreqFrm::ShowChanged(Changed) {
  // Another theater has been loaded.
  RefreshList(0, 0, {}, true);
  UpdateTreeviewCheckBoxes();
}

void FreqFrm::UpdateTreeviewCheckBoxes() {
  const radio::Frequencies& tables = program.State.Frequencies;
  const radio::SelectAllBoxes boxes = radio::SelectAllMarks(tables);
  for (std::size_t box = 0; box < boxes.size(); ++box) SelectAllControls()[box]->setChecked(boxes[box]);
  std::array<std::size_t, radio::TeamCount> all = {}, shown = {};
  for (const radio::Airfield& airfield : tables.Airfields.Live()) {
    ++all[radio::ShownTeam(airfield)];
    if (airfield.VIS) ++shown[radio::ShownTeam(airfield)];
  }
  for (std::size_t team = 0; team < radio::TeamCount; ++team) {
    TreeOf(FreqTab::Airports).SetMark(u'R' + QString::number(team), all[team] > 0 && shown[team] == all[team]);
  }
}

void FreqFrm::ClearCheckboxes() {
  for (QCheckBox* box : SelectAllControls()) box->setChecked(false);
}

void FreqFrm::RefreshIVCStatus() { status->Refresh(); }

bool FreqFrm::Can(On on, const std::string& key) const {
  // Among neighbours that are not seen nobody can tell where it would go.
  const bool inOrder = Wanted(Tab()).isEmpty();
  switch (radio::ReadFreqKey(key).Record) {
    case FreqRecord::ChannelUHF:
    case FreqRecord::ChannelVHF:
    case FreqRecord::ChannelUI:
      return on == On::Nothing || on == On::Channel;
    case FreqRecord::Airfield:
    case FreqRecord::TowerUHF:
    case FreqRecord::TowerVHF:
    case FreqRecord::TACAN:
    case FreqRecord::ILS:
      return on == On::Nothing || (on == On::Airfield && inOrder);
    case FreqRecord::Folder:
      return on == On::Nothing || on == On::Folder || (on == On::FolderOrEntry && inOrder);
    case FreqRecord::Entry:
      return on == On::Nothing || on == On::Entry || (on == On::FolderOrEntry && inOrder);
    default:
      return on == On::Nothing;
  }
}

void FreqFrm::ShowEnabled() {
  const std::string key = Selected();
  for (const Command& command : Commands) {
    if (command.Tab != Tab()) continue;
    Body().findChild<QPushButton*>(QLatin1String(command.Button))->setEnabled(Can(command.Where, key));
  }
}

void FreqFrm::Run(const Command& command) {
  Guarded(program.Log, command.Button, [&] {
    const std::string key = Selected();
    if (Can(command.Where, key)) (this->*command.Act)(key);
  });
}

void FreqFrm::Click(const std::string& key) {
  program.Voice.ClickValue(radio::ClickedValue(program.State.Frequencies, key));
}

void FreqFrm::AskPopUp4(const QPoint& place) {
  QTreeView& view = ViewOf(Tab());
  const QModelIndex at = view.indexAt(place);
  if (!at.isValid()) return;
  RefreshIVCStatus();
  offeredKey = ToBytes(at.data(Qt::UserRole).toString());
  offeredValue = radio::OfferedValue(program.State.Frequencies, offeredKey);
  Q_EMIT PopUp4Asked(view.viewport()->mapToGlobal(place));
}

bool FreqFrm::MayTune() const { return status->Connected() && !offeredValue.empty(); }
bool FreqFrm::MayCopy() const { return !radio::CopiedValue(program.State.Frequencies, offeredKey).empty(); }
bool FreqFrm::MayShowOnMap() const { return radio::PlaceOf(program.State.Frequencies, offeredKey).has_value(); }

void FreqFrm::TuneUHF() { program.Voice.TuneRadio(radio::Radio::UHF, offeredValue); }
void FreqFrm::TuneVHF() { program.Voice.TuneRadio(radio::Radio::VHF, offeredValue); }
void FreqFrm::CopyOffered() { Copy(offeredKey); }

void FreqFrm::Copy(const std::string& key) {
  const std::string value = radio::CopiedValue(program.State.Frequencies, key);
  if (!value.empty()) QGuiApplication::clipboard()->setText(FromBytes(value));
}

void FreqFrm::ShowOfferedOnMap() {
  const auto place = radio::PlaceOf(program.State.Frequencies, offeredKey);
  if (!place) return;
  program.Shown.Refresh(map::ShowPart(program.State.View, place->MinX, place->MinY, place->MaxX, place->MaxY));
}

bool FreqFrm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &Body()) {
    if (event->type() == QEvent::Show) Guarded(program.Log, "RefreshIVCStatus", [this] { RefreshIVCStatus(); });
    return false;
  }
  if (event->type() == QEvent::MouseButtonPress) marked = false;
  QTreeView& view = ViewOf(Tab());
  if (watched != &view) return ToolFrm::eventFilter(watched, event);
  if (event->type() == QEvent::ContextMenu) {
    // Of a key; that of the mouse goes to the viewport.
    const QModelIndex at = view.currentIndex();
    if (!at.isValid()) return true;
    view.scrollTo(at);
    Guarded(program.Log, "mnupopup4", [&] { AskPopUp4(view.visualRect(at).center()); });
    return true;
  }
  if (event->type() != QEvent::KeyPress) return false;
  // What an editor of a name has not taken comes here too.
  if (view.viewport()->findChild<QLineEdit*>() != nullptr) return false;
  const auto* pressed = static_cast<QKeyEvent*>(event);
  if (pressed->matches(QKeySequence::Copy)) {
    Guarded(program.Log, "mnuCopyFreq", [this] { Copy(Selected()); });
    return true;
  }
  const int key = pressed->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    Guarded(program.Log, "NodeClick", [this] { Click(Selected()); });
    return true;
  }
  constexpr auto toFolder = Qt::ControlModifier | Qt::ShiftModifier;
  const bool arrow = key == Qt::Key_Up || key == Qt::Key_Down;
  if (Tab() == FreqTab::CustomFreqs && arrow && (pressed->modifiers() & toFolder) == toFolder) {
    Guarded(program.Log, "TreeView3", [&] { MoveToFolder(Selected(), key == Qt::Key_Down); });
    return true;
  }
  for (const Command& command : Commands) {
    if (command.Key != key || command.Tab != Tab() || !Can(command.Where, Selected())) continue;
    Run(command);
    return true;
  }
  return false;
}

}  // namespace kestrel::shell
