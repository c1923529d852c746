#include "shell/link/clients_frm.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QStyle>
#include <QStyledItemDelegate>
#include <initializer_list>

#include "link/client_details.h"
#include "shell/link/clients_pictures.h"
#include "shell/link/height_grip.h"
#include "shell/parts/guard.h"
#include "shell/parts/typed_text.h"
#include "shell/parts/unicode_text.h"
#include "ui_clients_frm.h"

namespace kestrel::shell {
namespace {

using base::Changed;

constexpr int PictureSide = 16;
constexpr QSize ColourSize(48, 12);
/// Rows that the tree and the list have room for.
constexpr int TreeRows = 8;
constexpr int ListRows = 9;

/// Rows of one height in tree and list, with check boxes that stand out in either palette.
class RowDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  static int Height(const QFontMetrics& metrics) { return qMax(metrics.height(), PictureSide) + 2; }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return {QStyledItemDelegate::sizeHint(option, index).width(), Height(option.fontMetrics)};
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    // The style takes the outline of a check box from this role: on a dark list it would not be seen.
    option->palette.setColor(QPalette::Window, option->palette.color(QPalette::PlaceholderText));
  }
};

/// What the check of a row takes of its left end, pixels.
int CheckWidth(const QAbstractItemView& view) {
  const QStyle& style = *view.style();
  return style.pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &view) +
         2 * (style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view) + 1);
}

void SetUpView(QAbstractItemView& view, QAbstractItemModel& model) {
  view.setModel(&model);
  view.setItemDelegate(new RowDelegate(&view));
  view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

/// Room for so many rows and `more` pixels.
void FitRows(QAbstractItemView& view, int rows, int more) {
  view.setFixedHeight(rows * RowDelegate::Height(view.fontMetrics()) + 2 * view.frameWidth() + more);
}

/// The selected row, none when there is none: the current one may be merely where the keyboard stands.
QModelIndex SelectedRow(const QAbstractItemView& view) {
  const QModelIndexList rows = view.selectionModel()->selectedRows();
  return rows.isEmpty() ? QModelIndex() : rows.front();
}

/// Keeps the rows that are seen where they are while rows come and go above them. At the top, the top stays.
class KeptPlace {
 public:
  explicit KeptPlace(QAbstractItemView& shown) : view(shown) {
    // Not even asked for at the top: the answer would lay out all rows anew.
    if (view.verticalScrollBar()->value() == 0) return;
    topRow = view.indexAt(QPoint(1, 1));
    if (topRow.isValid()) top = view.visualRect(topRow).top();
  }
  ~KeptPlace() {
    if (!topRow.isValid()) return;
    const int moved = view.visualRect(topRow).top() - top;
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() + moved);
  }
  KeptPlace(const KeptPlace&) = delete;
  KeptPlace& operator=(const KeptPlace&) = delete;

 private:
  QAbstractItemView& view;
  QPersistentModelIndex topRow;
  int top = 0;
};

}  // namespace

ClientsFrm::ClientsFrm(core::Program& running, QWidget* frame)
    : ToolFrm(running, core::ToolWindow::Clients, QStringLiteral("ClientsFrm"), QStringLiteral("CLIENTS"), frame,
              Changed::Roster | Changed::AIList | Changed::Connection | Changed::Options | Changed::Look),
      form(std::make_unique<Ui::ClientsFrm>()),
      clients(new ClientsModel(this)),
      aircraft(new AIListModel(running.State.Plots, this)),
      clientNames(new NameProxy(this)),
      aircraftNames(new NameProxy(this)) {
  form->setupUi(&Body());
  SetUpView(*form->TreeView1, *clients);
  SetUpView(*form->List1, *aircraft);
  form->TreeView1->setIconSize(QSize(PictureSide, PictureSide));
  ShowPictures();
  form->cmdPlotColor->setIconSize(ColourSize);
  Connect();
  AddFilter();
  ShowConnection();
  ShowOptions();
  ShowDetails(Fill::All);
  FitHeight();
}

ClientsFrm::~ClientsFrm() = default;

void ClientsFrm::FitHeight() {
  const int more = qBound(0, program.State.WindowOptions.CLIENTSHEIGHT, screen()->availableGeometry().height() / 2);
  FitRows(*form->TreeView1, TreeRows, more / 2);
  FitRows(*form->List1, ListRows, more - more / 2);
  FitBody();
}

void ClientsFrm::DragHeight(int by) {
  int& more = program.State.WindowOptions.CLIENTSHEIGHT;
  const int room = more + qMax(0, screen()->availableGeometry().bottom() - geometry().bottom());
  more = qBound(0, heldHeight + by, room);
  FitHeight();
}

template <class Edit>
void ClientsFrm::Change(const char* control, Edit edit) {
  Guarded(program.Log, control,
          [this, &edit] { program.Shown.Refresh(edit(program.State.Plots, program.State.Session)); });
}

void ClientsFrm::Connect() {
  form->TreeView1->viewport()->installEventFilter(this);
  form->List1->viewport()->installEventFilter(this);
  form->Text1->installEventFilter(this);
  connect(form->TreeView1->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ClientsFrm::NodeSelected);
  for (QLabel* head : {form->lblPlayers, form->lblAircraft}) {
    const QString meaning = head->toolTip();
    head->setToolTip((meaning.isEmpty() ? meaning : meaning + QStringLiteral(". ")) +
                     QStringLiteral("Click to sort by name; Ctrl+F filters both lists"));
    head->installEventFilter(this);
  }
  auto* grip = new HeightGrip(&Body());
  connect(grip, &HeightGrip::Held, this, [this] { heldHeight = program.State.WindowOptions.CLIENTSHEIGHT; });
  connect(grip, &HeightGrip::Dragged, this, &ClientsFrm::DragHeight);
  connect(form->TreeView1, &QWidget::customContextMenuRequested, this, &ClientsFrm::AskPopUp3);
  connect(form->Text1, &QLineEdit::textEdited, this, [this] { EditCallsign(); });
  connect(form->cmdPlotColor, &QPushButton::clicked, this, &ClientsFrm::PickColor);
  connect(form->Check1, &QCheckBox::clicked, this, [this](bool checked) {
    Change("Check1", [checked](auto& plots, auto& session) { return SetShowAllHistory(checked, plots, session); });
  });
  connect(form->chkHide, &QCheckBox::clicked, this, [this](bool checked) {
    Change("chkHide", [checked](auto& plots, auto& session) { return SetHidden(checked, plots, session); });
  });
  connect(form->Command2, &QPushButton::clicked, this, &ClientsFrm::ResetFriends);
}

void ClientsFrm::AddFilter() {
  txtFilter = new QLineEdit(&Body());
  txtFilter->setObjectName(QStringLiteral("txtFilter"));
  txtFilter->setPlaceholderText(QStringLiteral("Filter by name"));
  txtFilter->setAccessibleName(QStringLiteral("Filter both lists by name"));
  txtFilter->setToolTip(QStringLiteral("Both lists show the names that hold what is typed; Esc shows all"));
  txtFilter->setClearButtonEnabled(true);
  txtFilter->installEventFilter(this);
  txtFilter->hide();
  form->rows->insertWidget(0, txtFilter);
  setTabOrder(txtFilter, form->TreeView1);
  connect(txtFilter, &QLineEdit::textChanged, this, &ClientsFrm::FilterNames);
  auto* find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
  connect(find, &QShortcut::activated, this, [this] {
    if (txtFilter->isHidden()) {
      txtFilter->show();
      FitBody();
    }
    txtFilter->selectAll();
    txtFilter->setFocus(Qt::ShortcutFocusReason);
  });
}

void ClientsFrm::FilterNames() {
  const QScopedValueRollback<bool> ours(updating, true);
  const QString text = txtFilter->isHidden() ? QString() : txtFilter->text();
  clientNames->SetText(text);
  aircraftNames->SetText(text);
  UseProxy(*form->TreeView1);
  UseProxy(*form->List1);
}

void ClientsFrm::SortNames(QAbstractItemView& view, QLabel& head) {
  const bool players = &view == form->TreeView1;
  NameProxy& names = players ? *clientNames : *aircraftNames;
  const QScopedValueRollback<bool> ours(updating, true);
  const QString caption = players ? QStringLiteral("Players") : QStringLiteral("Friendly AI aircraft");
  switch (names.Order()) {
    case NameOrder::AsTold:
      names.SetOrder(NameOrder::Ascending);
      head.setText(caption + QStringLiteral(", A-Z"));
      break;
    case NameOrder::Ascending:
      names.SetOrder(NameOrder::Descending);
      head.setText(caption + QStringLiteral(", Z-A"));
      break;
    case NameOrder::Descending:
      names.SetOrder(NameOrder::AsTold);
      head.setText(caption);
      break;
  }
  UseProxy(view);
}

void ClientsFrm::UseProxy(QAbstractItemView& view) {
  const bool players = &view == form->TreeView1;
  NameProxy& names = players ? *clientNames : *aircraftNames;
  QAbstractItemModel* source = players ? static_cast<QAbstractItemModel*>(clients) : aircraft;
  QAbstractItemModel* wanted = names.Active() ? static_cast<QAbstractItemModel*>(&names) : source;
  const QScopedValueRollback<bool> ours(updating, true);
  if (view.model() != wanted) {
    names.setSourceModel(names.Active() ? source : nullptr);
    QItemSelectionModel* former = view.selectionModel();
    view.setModel(wanted);
    delete former;
    if (players) {
      connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, &ClientsFrm::NodeSelected);
    }
  }
  if (!players) return;
  // From one who is out of sight now the view has gone on to another, whom nobody has selected.
  const link::SessionState& session = program.State.Session;
  QModelIndex picked;
  if (session.Details.Enabled) {
    picked = ViewRow(view, clients->index(static_cast<int>(session.SelectedPlot) - 1));
  }
  if (picked.isValid()) {
    view.setCurrentIndex(picked);
  } else {
    view.selectionModel()->clear();
  }
}

QModelIndex ClientsFrm::SourceRow(const QAbstractItemView& view, const QModelIndex& row) const {
  const auto* names = qobject_cast<const NameProxy*>(view.model());
  return names != nullptr ? names->mapToSource(row) : row;
}

QModelIndex ClientsFrm::ViewRow(const QAbstractItemView& view, const QModelIndex& row) const {
  const auto* names = qobject_cast<const NameProxy*>(view.model());
  return names != nullptr ? names->mapFromSource(row) : row;
}

void ClientsFrm::ShowChanged(Changed what) {
  if (Has(what, Changed::Roster)) LoadRoster();
  if (Has(what, Changed::AIList)) LoadAIList();
  if (Has(what, Changed::Connection)) ShowConnection();
  if (Has(what, Changed::Options)) ShowOptions();
  if (Has(what, Changed::Look)) {
    ShowPictures();
    ShowDetails(Fill::NotWhatIsEdited);
  }
}

void ClientsFrm::ShowPictures() {
  form->ImageCon->setPixmap(LinkIcon(true).pixmap(PictureSide, PictureSide));
  form->ImageDiscon->setPixmap(LinkIcon(false).pixmap(PictureSide, PictureSide));
}

void ClientsFrm::LoadRoster() {
  link::SessionState& session = program.State.Session;
  const std::int16_t shown = session.Details.Id;
  link::FollowSelectedPlot(program.State.Plots, session);
  // The place of the client shown may be another one's now: whatever is being typed was not meant for that one.
  const bool another = session.Details.Enabled && session.Details.Id != shown;
  {
    const QScopedValueRollback<bool> ours(updating, true);
    const KeptPlace place(*form->TreeView1);
    const QPersistentModelIndex selected = SelectedRow(*form->TreeView1);
    clients->Load(program.State.Plots);
    // When its row has gone the view goes on to the next one, which nobody has selected.
    if (another) {
      const QModelIndex row = clients->index(static_cast<int>(session.SelectedPlot) - 1);
      form->TreeView1->setCurrentIndex(ViewRow(*form->TreeView1, row));
    } else if (!selected.isValid() || !session.Details.Enabled) {
      form->TreeView1->selectionModel()->clear();
    }
  }
  ShowDetails(another ? Fill::All : Fill::NotWhatIsEdited);
}

void ClientsFrm::LoadAIList() {
  const KeptPlace place(*form->List1);
  aircraft->Load();
}

void ClientsFrm::ShowConnection() {
  const bool connected = program.State.Session.Connected;
  form->ImageCon->setVisible(connected);
  form->ImageDiscon->setVisible(!connected);
}

void ClientsFrm::ShowOptions() {
  const bool automatic = program.State.LinkOptions.AUTOFRIENDS;
  form->Command2->setEnabled(!automatic);
  aircraft->SetCheckable(!automatic);
  form->Command2->setToolTip(automatic ? QStringLiteral("The friendly names are those of FriendlyNames.ini")
                                       : QStringLiteral("Uncheck all: every AI aircraft is hostile"));
}

void ClientsFrm::ShowDetails(Fill fill) {
  const link::ClientDetails& details = program.State.Session.Details;
  form->Label10->setText(FromBytes(details.Caption));
  form->Label10->setToolTip(form->Label10->text());
  for (QWidget* field : std::initializer_list<QWidget*>{form->lblCallsign, form->Text1, form->lblColor,
                                                        form->cmdPlotColor, form->Check1, form->chkHide}) {
    field->setEnabled(details.Enabled);
  }
  // A callsign that is being typed is the person's until it has been left.
  const QString callsign = FromBytes(details.Label);
  const bool typing = fill == Fill::NotWhatIsEdited && details.Enabled && form->Text1->hasFocus();
  if (!typing && form->Text1->text() != callsign) form->Text1->setText(callsign);
  if (!typing && !form->lblRefused->isHidden()) {
    form->lblRefused->hide();
    FitRefused();
  }
  const QColor colour(base::RedOf(details.Color), base::GreenOf(details.Color), base::BlueOf(details.Color));
  // Without a colour the room for it stays, so that the button keeps its height.
  form->cmdPlotColor->setIcon(ColourIcon(details.Enabled ? colour : QColor(Qt::transparent), ColourSize));
  form->cmdPlotColor->setAccessibleName(details.Enabled ? QStringLiteral("Color ") + colour.name() : QString());
  form->Check1->setChecked(details.ShowAllHistory);
  form->chkHide->setChecked(details.Hidden);
}

void ClientsFrm::EditCallsign() {
  Change("Text1", [this](auto& plots, auto& session) {
    // What cannot be taken leaves the callsign at the last one that could be.
    const bool wasRefused = !form->lblRefused->isHidden();
    const std::optional<std::string> typed = TakeText(*form->Text1, *form->lblRefused);
    if (wasRefused || !typed) FitRefused();
    return typed ? link::SetCallsign(*typed, plots, session) : Changed::Nothing;
  });
}

void ClientsFrm::FitRefused() {
  const bool shown = !form->lblRefused->isHidden();
  // As wide as the fields are, however many lines that takes.
  form->lblRefused->setMinimumHeight(shown ? form->lblRefused->heightForWidth(form->Label10->width()) : 0);
  FitBody();
}

bool ClientsFrm::eventFilter(QObject* watched, QEvent* event) {
  if ((watched == form->lblPlayers || watched == form->lblAircraft) && event->type() == QEvent::MouseButtonRelease) {
    const bool players = watched == form->lblPlayers;
    if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
      SortNames(players ? static_cast<QAbstractItemView&>(*form->TreeView1) : *form->List1,
                players ? *form->lblPlayers : *form->lblAircraft);
    }
    return false;
  }
  if (watched == txtFilter) {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) return false;
    txtFilter->clear();
    txtFilter->hide();
    FitBody();
    form->TreeView1->setFocus();
    return true;
  }
  if (watched == form->TreeView1->viewport()) {
    if (event->type() == QEvent::MouseButtonPress) PressedInTree();
  }
  for (const QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{form->TreeView1, form->List1}) {
    if (watched != view->viewport()) continue;
    const auto* mouse = event->type() == QEvent::MouseButtonDblClick ? static_cast<QMouseEvent*>(event) : nullptr;
    if (mouse != nullptr && mouse->button() == Qt::LeftButton) AskAircraft(*view, mouse->position().toPoint());
    return false;
  }
  if (watched == form->Text1) {
    // What has come from the server while the callsign was being typed is shown once it has been left; its own menu is
    // no leaving.
    const bool left =
        event->type() == QEvent::FocusOut && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason;
    if (left) ShowDetails(Fill::All);
    return false;
  }
  return ToolFrm::eventFilter(watched, event);
}

void ClientsFrm::PressedInTree() {
  link::DeselectPlot(program.State.Session);
  // So that a press on the node that was selected selects it anew.
  const QScopedValueRollback<bool> ours(updating, true);
  form->TreeView1->selectionModel()->clear();
  ShowDetails(Fill::All);
}

void ClientsFrm::NodeSelected() {
  const QModelIndex node = SelectedRow(*form->TreeView1);
  if (updating || !node.isValid()) return;
  Guarded(program.Log, "TreeView1", [this, &node] {
    link::SelectPlot(ToBytes(node.data(ClientsModel::KeyRole).toString()), program.State.Plots, program.State.Session);
    ShowDetails(Fill::All);
  });
}

void ClientsFrm::AskPopUp3(const QPoint& place) {
  const QModelIndex node = form->TreeView1->indexAt(place);
  if (!node.isValid()) return;
  popUpId = clients->At(SourceRow(*form->TreeView1, node)).Id;
  Q_EMIT PopUp3Asked(form->TreeView1->viewport()->mapToGlobal(place));
}

void ClientsFrm::AskAircraft(const QAbstractItemView& view, QPoint place) {
  const QModelIndex shown = view.indexAt(place);
  if (!shown.isValid()) return;
  const QModelIndex row = SourceRow(view, shown);
  map::Aircraft who;
  if (&view == form->TreeView1) {
    who.Real = true;
    who.Id = clients->At(row).Id;
  } else {
    // Two clicks on the check are two changes of the check.
    if (place.x() < view.visualRect(shown).left() + CheckWidth(view)) return;
    who.Name = aircraft->At(row).Name;
    // Of several of one name it is the one in this row.
    const auto index = static_cast<std::size_t>(row.row()) + 1;
    const auto& plots = program.State.Plots.AIPlots;
    if (index <= plots.UpperBound() && plots[index].Name == who.Name) {
      who.At = {plots[index].X, program.State.View.Size - plots[index].Y};
    }
  }
  Q_EMIT AircraftAsked(who);
}

std::size_t ClientsFrm::PopUp3Client() const {
  // The client may have left, or moved up in the table, while the menu was open.
  return popUpId ? program.State.Plots.FindClient(*popUpId) : 0;
}

void ClientsFrm::ShowPlot(std::size_t Index) {
  Change("ShowPlot", [Index](auto& plots, auto&) { return link::ShowPlot(Index, plots); });
  FollowEdit();
}

void ClientsFrm::HidePlot(std::size_t Index) {
  Change("HidePlot", [Index](auto& plots, auto&) { return link::HidePlot(Index, plots); });
  FollowEdit();
}

void ClientsFrm::FollowEdit() {
  link::FollowSelectedPlot(program.State.Plots, program.State.Session);
  ShowDetails(Fill::NotWhatIsEdited);
}

void ClientsFrm::PickColor() {
  Change("cmdPlotColor", [this](auto& plots, auto& session) {
    const auto colour = program.Desk.PickColour(session.Details.Color);
    const Changed what = colour ? link::SetColor(*colour, plots, session) : Changed::Nothing;
    ShowDetails(Fill::NotWhatIsEdited);
    return what;
  });
}

void ClientsFrm::ResetFriends() {
  Guarded(program.Log, "Command2", [this] {
    if (link::ResetFriends(program.State.LinkOptions, program.State.Plots)) aircraft->UncheckAll();
  });
}

}  // namespace kestrel::shell
