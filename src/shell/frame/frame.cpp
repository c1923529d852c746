#include "shell/frame/frame.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>

#include "base/failure.h"
#include "core/acmi_export.h"
#include "core/connecting.h"
#include "core/side_files.h"
#include "core/tapes.h"
#include "core/tell.h"
#include "core/theater_data.h"
#include "core/theater_switch.h"
#include "map/cursor_tools.h"
#include "map/geometry.h"
#include "map/lat_long.h"
#include "shell/areas/areas_frm.h"
#include "shell/frame/about_frm.h"
#include "shell/frame/area_windows.h"
#include "shell/frame/bullseye_windows.h"
#include "shell/frame/falcon_windows.h"
#include "shell/frame/kept_frame.h"
#include "shell/frame/keys_frm.h"
#include "shell/frame/open_menus.h"
#include "shell/frame/tool_table.h"
#include "shell/link/clients_frm.h"
#include "shell/link/frm_conn_port.h"
#include "shell/link/prefer_form.h"
#include "shell/link/vld_from2.h"
#include "shell/map/lost_link.h"
#include "shell/map/replay_sign.h"
#include "shell/parts/dialogs.h"
#include "shell/parts/guard.h"
#include "shell/parts/look.h"
#include "shell/parts/plain_text.h"
#include "shell/parts/unicode_text.h"
#include "shell/radio/freq_frm.h"
#include "shell/tape/export_tape_frm.h"
#include "shell/theaters/mdf_theaters_frm.h"

namespace kestrel::shell {
namespace {

/// The frame's size at the start, pixels, where the screen has room for it.
constexpr QSize StartSize(1280, 800);
/// For so long no window of ours is active before another program counts as being in front, milliseconds: between two
/// windows of ours there is such a moment too.
constexpr int AwayMs = 150;
/// How often is looked whether something is to be rescued, milliseconds.
constexpr int RescueMs = 1000;

QString ItemName(const char* row, std::size_t index) {
  return QString::fromLatin1(row) + u'_' + QString::number(index);
}

}  // namespace

MDIForm1::MDIForm1(core::Program& running, ModalCount& dialogs) : program(running), modal(dialogs) {
  setObjectName(QStringLiteral("MDIForm1"));
  setContextMenuPolicy(Qt::PreventContextMenu);
  BuildMenus(MenuBarEntries());
  BuildMenus(PopUpEntries());
  DressOpenMenus(MenuBarEntries(), running.State, *this);
  OpenByF10(*menuBar());
  map = new MainFrm(running, PopUp("PopUp2"), this);
  setCentralWidget(map);
  replay = new ReplaySign(&map->Picture());
  strip = new StatusStrip(this);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->setContentsMargins(0, 0, 0, 0);
  statusBar()->addPermanentWidget(strip, 1);
  lost = new LostLink(running, map->Picture());
  connect(lost, &LostLink::Silent, strip, &StatusStrip::ShowSilence);
  bullseyes = new BullseyeWindows(running, modal, *this);
  for (const char* name : {"mnuDisconnect", "mnuStartRec", "mnuStopRecording"}) Entry(name).setEnabled(false);
  // What a window manager adds around it is not known yet: a title bar's height is left above and a little below.
  const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight);
  const QRect room = screen()->availableGeometry().adjusted(0, title, 0, -title / 2);
  resize(StartSize.boundedTo(room.size()));
  // The floating windows find their first places by it, before the system has had its say.
  move(room.left() + (room.width() - width()) / 2, room.top() + (room.height() - height()) / 4);
  TakeFrame(*this, running.State.WindowOptions);

  tools = std::make_unique<ToolWindows>(running, modal, this);
  connect(tools.get(), &ToolWindows::CloseAsked, this,
          [this](core::ToolWindow which) { strip->Check(which).setChecked(false); });
  Entry("mnuUndoPositions").setEnabled(false);
  connect(tools.get(), &ToolWindows::PlacesKept, &Entry("mnuUndoPositions"),
          [&undo = Entry("mnuUndoPositions")] { undo.setEnabled(true); });
  for (const ToolEntry& entry : ToolEntries()) {
    connect(&strip->Check(entry.Which), &QToolButton::toggled, this, [this, &entry](bool shown) {
      tools->SetShown(entry.Which, shown);
      Entry(entry.Menu).setChecked(shown);
    });
  }
  areas = new AreaWindows(running, modal, *this);
  connect(&tools->The<AreasFrm>(), &AreasFrm::GroupAsked, areas, [this](std::size_t group) {
    Guarded(program.Log, "AreasDetailsListFrm", [this, group] { areas->OpenList(group); });
  });
  connect(&tools->The<ClientsFrm>(), &ClientsFrm::PopUp3Asked, this,
          [this](const QPoint& place) { PopUp("PopUp3").popup(place); });
  connect(&tools->The<ClientsFrm>(), &ClientsFrm::AircraftAsked, &map->Picture(), &MapPicture::ShowAircraft);
  FreqFrm& frequencies = tools->The<FreqFrm>();
  connect(&frequencies, &FreqFrm::PopUp4Asked, this, &MDIForm1::ShowPopUp4);
  falcon = new FalconWindows(running, modal, *this);
  connect(&frequencies, &FreqFrm::LoadChannelsAsked, falcon, &FalconWindows::LoadChannels);
  connect(&frequencies, &FreqFrm::SaveChannelsAsked, falcon, &FalconWindows::SaveChannels);
  connect(&frequencies, &FreqFrm::LoadAirportsAsked, falcon, &FalconWindows::LoadAirports);
  rescue.setInterval(RescueMs);
  connect(&rescue, &QTimer::timeout, this, [this] {
    if (!closing) Guarded(program.Log, "RescueChanges", [this] { core::RescueChanges(program); });
  });
  rescue.start();
  left.setSingleShot(true);
  left.setInterval(AwayMs);
  connect(&left, &QTimer::timeout, this, [this] {
    if (!modal.Open()) tools->ShowAllWindows(false);
  });
  connect(qApp, &QGuiApplication::applicationStateChanged, this, &MDIForm1::FollowActivation);
}

void MDIForm1::BuildMenus(std::span<const MenuEntry> entries) {
  for (const MenuEntry& entry : entries) {
    const QString name = QString::fromLatin1(entry.Name);
    const bool top = *entry.Parent == '\0';
    QMenu* parent = top ? nullptr : findChild<QMenu*>(QString::fromLatin1(entry.Parent));
    if (entry.LineAbove) parent->addSeparator();
    if (entry.Work == MenuWork::Submenu) {
      auto* menu = new QMenu(QString::fromLatin1(entry.Caption), this);
      menu->setObjectName(name);
      menu->menuAction()->setObjectName(name);
      // A menu without a caption is a pop-up menu and stands nowhere.
      if (!top) {
        parent->addMenu(menu);
      } else if (*entry.Caption != '\0') {
        menuBar()->addMenu(menu);
      }
    } else if (entry.Work == MenuWork::Items) {
      parent->addSeparator()->setObjectName(name);
    } else {
      AddEntry(entry, *parent);
    }
  }
}

QMenu& MDIForm1::PopUp(const char* name) const { return *findChild<QMenu*>(QString::fromLatin1(name)); }

QAction* MDIForm1::AddEntry(const MenuEntry& entry, QMenu& parent) {
  QAction* action = parent.addAction(QString::fromLatin1(entry.Caption));
  action->setObjectName(QString::fromLatin1(entry.Name));
  action->setCheckable(entry.Work == MenuWork::Toggles);
  if (entry.Run != nullptr) {
    connect(action, &QAction::triggered, this,
            [this, entry] { Guarded(program.Log, entry.Name, [this, &entry] { entry.Run(*this); }); });
  }
  return action;
}

QAction& MDIForm1::Entry(const char* name) const { return *findChild<QAction*>(QString::fromLatin1(name)); }

QMenu& MDIForm1::ClearItems(const char* row) {
  QAction& line = Entry(row);
  QMenu& menu = *qobject_cast<QMenu*>(line.parent());
  const QList<QAction*> actions = menu.actions();
  for (QAction* item : actions.mid(actions.indexOf(&line) + 1)) {
    // Not deleted at once: one of them may be what is running this.
    menu.removeAction(item);
    item->setObjectName(QString());
    item->deleteLater();
  }
  return menu;
}

QAction& MDIForm1::AddItem(const char* row, std::size_t index, const std::string& caption) {
  QMenu& menu = *qobject_cast<QMenu*>(Entry(row).parent());
  QAction* item = menu.addAction(AsCaption(FromBytes(caption)));
  item->setObjectName(ItemName(row, index));
  return *item;
}

void MDIForm1::LoadConnectionMenus() {
  ClearItems("mnuConnList");
  const auto& entries = program.State.LinkOptions.ConnList;
  for (std::size_t index = 1; index <= entries.UpperBound(); ++index) {
    connect(&AddItem("mnuConnList", index, entries[index].Name), &QAction::triggered, this, [this, index] {
      Guarded(program.Log, "mnuConnList", [this, index] { core::ConnectToEntry(program, index); });
    });
  }
  AddDrops();
}

void MDIForm1::AddDrops() {
  const std::vector<link::ConnEntry>& failed = program.State.FailedEntries;
  QMenu& menu = *qobject_cast<QMenu*>(Entry("mnuConnList").parent());
  if (!failed.empty()) menu.addSeparator();
  for (std::size_t which = 0; which < failed.size(); ++which) {
    const QString name = FromBytes(failed[which].Name.empty() ? failed[which].Ip : failed[which].Name);
    QAction* item = menu.addAction(AsCaption(QStringLiteral("Drop ") + name + QStringLiteral(" (never connected)")));
    item->setObjectName(ItemName("mnuDropEntry", which + 1));
    connect(item, &QAction::triggered, this, [this, which] {
      Guarded(program.Log, "mnuDropEntry", [this, which] { core::DropFailedEntry(program, which); });
    });
  }
}

void MDIForm1::ReloadNameMenu() {
  const theaters::Catalogue& catalogue = program.State.Catalogue;
  ClearItems("mnuTheatername");
  for (std::size_t index = 1; index <= catalogue.Theaters.UpperBound(); ++index) {
    QAction& item = AddItem("mnuTheatername", index, catalogue.Theaters[index].DisplayName);
    item.setCheckable(true);
    item.setChecked(static_cast<std::size_t>(catalogue.CurrentTheater) == index);
    connect(&item, &QAction::triggered, this, [this, index] {
      Guarded(program.Log, "mnuTheatername", [this, index] { core::SwitchTheater(program, index); });
      ReloadNameMenu();
    });
  }
  QMenu& bullseyeMenu = ClearItems("mnuBullseyesName");
  const theaters::Theater& theater = catalogue.Current();
  for (std::size_t index = 1; index <= theater.Bulls.UpperBound(); ++index) {
    QAction& item = AddItem("mnuBullseyesName", index, theater.Bulls[index].Name);
    item.setCheckable(true);
    item.setChecked(static_cast<std::size_t>(theater.CurrentBull) == index);
    connect(&item, &QAction::triggered, this, [this, index] {
      Guarded(program.Log, "mnuBullseyesName",
              [this, index] { program.Shown.Refresh(core::SelectBullseye(program, index)); });
      ReloadNameMenu();
    });
  }
  bullseyes->SayInMenus(bullseyeMenu);
}

void MDIForm1::ShowConnection() {
  const link::SessionState& session = program.State.Session;
  setWindowTitle(FromBytes(link::FrameCaption(session)));
  strip->ShowConnected(session.Connected);
  Entry("mnuDisconnect").setEnabled(session.Connected);
}

void MDIForm1::ShowTape() {
  const core::Tapes& tapes = program.State.Tapes;
  replay->ShowPlayer(tapes.Player.State());
  strip->ShowRecording(tapes.Recorder.Recording(), FromBytes(core::RecordingTip(program.State)));
  Entry("mnuStartRec").setEnabled(core::MayRecord(program));
  Entry("mnuStopRecording").setEnabled(tapes.Recorder.Recording());
  Entry("mnuConnection").setEnabled(!tapes.Player.State().Loaded());
  // While a tape plays that has one, the bullseye is its own.
  for (const char* entry : {"mnuBullseyes", "mnuSetNewBulls"}) Hold(entry, *this, tapes.Bullseye.has_value());
}

void MDIForm1::ShowZoom() { strip->ShowZoom(FromBytes(map::ZoomText(program.State.View))); }

void MDIForm1::ShowThreats() {
  const core::Station& station = program.State;
  strip->ShowThreats(station.Extras.THREATRING ? std::optional(station.Ties.Threats.size()) : std::nullopt);
}

void MDIForm1::ShowPointer() {
  const map::ViewState& view = program.State.View;
  const theaters::Theater& theater = program.State.Catalogue.Current();
  // Until the pointer has been over the map there is no place to tell.
  std::string position;
  map::LatLongText place;
  std::string elevation;
  if (view.PointerSeen) {
    position = "x:" + map::SafeFormat(view.CursorMapX, "0.00") + " / y:" + map::SafeFormat(view.CursorMapY, "0.00");
    place = map::FormatLatLong({theater.CoordLat, theater.CoordLong}, view.CursorMapX, view.CursorMapY);
    elevation = map::ElevationText(view, program.State.Elevations);
  }
  strip->ShowPosition(FromBytes(position), FromBytes(place.Lat), FromBytes(place.Long));
  strip->ShowElevation(FromBytes(elevation));
  map->Picture().ShowLine(FromBytes(map::UpdateBRs(view).Line));
}

void MDIForm1::Refresh(base::Changed what) {
  using base::Changed;
  struct View {
    Changed Of;  ///< shows any of it
    void (*Show)(MDIForm1&);
  };
  static constexpr View Views[] = {
      {Changed::Zoom, [](MDIForm1& frame) { frame.ShowZoom(); }},
      {Changed::Connection, [](MDIForm1& frame) { frame.ShowConnection(); }},
      {Changed::Connection | Changed::Tape, [](MDIForm1& frame) { frame.ShowTape(); }},
      {Changed::Activity, [](MDIForm1& frame) { frame.strip->ActivityPulse(); }},
      {Changed::Transmit, [](MDIForm1& frame) { frame.strip->ShowTransmit(frame.program.State.Transmit); }},
      {Changed::NameMenus | Changed::Connection, [](MDIForm1& frame) { frame.ReloadNameMenu(); }},
      {Changed::ConnectionMenus, [](MDIForm1& frame) { frame.LoadConnectionMenus(); }},
      {Changed::CursorLine, [](MDIForm1& frame) { frame.ShowPointer(); }},
      {Changed::Map | Changed::Plots, [](MDIForm1& frame) { frame.ShowThreats(); }},
      {Changed::Connection | Changed::Activity | Changed::Options | Changed::Tape,
       [](MDIForm1& frame) { frame.lost->Follow(); }},
  };
  // Before anything is drawn in its colours.
  if (Has(what, Changed::Look)) ChooseLook(program.State.Appearance.LOOK);
  // The map draws what moves in either case.
  if (Has(what, Changed::Map)) {
    map->Picture().DrawMap();
  } else if (Has(what, Changed::Plots)) {
    map->Picture().RedrawPlots();
  }
  for (const View& view : Views) {
    if (Has(what, view.Of)) view.Show(*this);
  }
  tools->Refresh(what);
}

void MDIForm1::ShowAutoUpdate() { Entry("mnuAutoUpdate").setChecked(program.State.AutoUpdate); }

void MDIForm1::RunEntry(std::string_view name) {
  auto* entry = findChild<QAction*>(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())));
  if (entry != nullptr && MayChoose(*entry)) entry->trigger();
}

void MDIForm1::Disconnect() { program.Link.Disconnect(); }

void MDIForm1::StartRecording() { core::RecordingStart(program); }

void MDIForm1::StopRecording() { core::RecordingEnd(program); }

void MDIForm1::ExportTape() {
  const std::unique_ptr<core::AcmiExport> exported = core::ChooseExport(program);
  if (!exported) return;
  ExportTapeFrm progress(program, *exported, this);
  RunDialog(progress, modal);
}

void MDIForm1::ResetZoomAndCenter() {
  program.Shown.Refresh(map::ResetZoomAndCenter(program.State.View));
  map->Picture().CenterMousePointer();
}

void MDIForm1::OpenOnlineDocs() { program.Desk.Open(program.State.DocsUrl, {}, {}); }

void MDIForm1::ToggleAutoUpdate() {
  try {
    core::SetAutoUpdate(program.State, !program.State.AutoUpdate);
  } catch (const base::RuntimeFailure& failure) {
    core::TellUnsaved(program, {"setting", failure.what()});
  }
  ShowAutoUpdate();
}

void MDIForm1::ConnectCustom() {
  VldFrom2 dialog(program, this);
  RunDialog(dialog, modal);
}

void MDIForm1::ChangePort() {
  frmConnPort dialog(program, this);
  RunDialog(dialog, modal);
}

void MDIForm1::EditPhonebook() {
  PreferForm phonebook(program, this);
  RunDialog(phonebook, modal);
}

void MDIForm1::ModifyTheaters() {
  MdfTheatersFrm theaters(program, modal, this);
  RunDialog(theaters, modal);
}

void MDIForm1::Hold(const char* entry, const QObject& holder, bool held) {
  QSet<const QObject*>& all = holders[QString::fromLatin1(entry)];
  if (held) {
    all.insert(&holder);
  } else {
    all.remove(&holder);
  }
  Entry(entry).setEnabled(all.isEmpty());
}

void MDIForm1::SetCenterOfMap() { map->Picture().SetCenterOfScreen(); }

void MDIForm1::CheckAllTools(bool shown) {
  for (const ToolEntry& entry : ToolEntries()) {
    QToolButton& check = strip->Check(entry.Which);
    if (check.isEnabled()) check.setChecked(shown);
  }
}

void MDIForm1::Withhold(core::ToolWindow which, bool withheld) {
  tools->Withhold(which, withheld);
  strip->Check(which).setEnabled(!withheld);
  for (const ToolEntry& entry : ToolEntries()) {
    if (entry.Which == which) Hold(entry.Menu, *tools, withheld);
  }
}

void MDIForm1::ToggleTool(core::ToolWindow which) {
  strip->Check(which).toggle();
  // Shown by itself a window takes no keyboard, but the keys may be all that the person has to reach it.
  if (strip->Check(which).isChecked()) tools->Window(which).activateWindow();
}

void MDIForm1::ShowPlotOfNode() {
  ClientsFrm& clients = tools->The<ClientsFrm>();
  clients.ShowPlot(clients.PopUp3Client());
}

void MDIForm1::HidePlotOfNode() {
  ClientsFrm& clients = tools->The<ClientsFrm>();
  clients.HidePlot(clients.PopUp3Client());
}

void MDIForm1::ShowPopUp4(const QPoint& place) {
  const FreqFrm& frequencies = tools->The<FreqFrm>();
  for (const char* entry : {"mnuTuneUHF", "mnuTuneVHF"}) Entry(entry).setEnabled(frequencies.MayTune());
  Entry("mnuCopyFreq").setEnabled(frequencies.MayCopy());
  Entry("mnuShowFreqOnMap").setEnabled(frequencies.MayShowOnMap());
  PopUp("mnupopup4").popup(place);
}

void MDIForm1::About() {
  AboutFrm about(program, this);
  RunDialog(about, modal);
}

void MDIForm1::ShowKeys() {
  KeysFrm keys(program, this);
  RunDialog(keys, modal);
}

void MDIForm1::FollowActivation() {
  if (QGuiApplication::applicationState() != Qt::ApplicationActive) {
    left.start();
    return;
  }
  left.stop();
  if (!modal.Open()) tools->ShowAllWindows(true);
}

void MDIForm1::closeEvent(QCloseEvent* event) {
  event->accept();
  if (closing) return;
  closing = true;
  KeepFrame(*this, program.State.WindowOptions);
  Guarded(program.Log, "Unload", [this] { core::Close(program); });
  Q_EMIT Closed();
}

}  // namespace kestrel::shell
