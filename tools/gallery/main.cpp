// Pictures of every window for the user guide: the whole station on the offscreen platform over a copy of the program
// folder, connected to a demo session, each window brought up through its menu entry and grabbed.
//
//   gallery STATION-FOLDER SESSION-SIM light|dark PICTURE-FOLDER

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLineEdit>
#include <QPixmap>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <vector>

#include "areas/area_file.h"
#include "base/files.h"
#include "base/profile_file.h"
#include "core/global_keys.h"
#include "gallery/extras.h"
#include "gallery/sample_data.h"
#include "gallery/sample_install.h"
#include "gallery/script.h"
#include "radio/voice_windows.h"
#include "shell/areas/areas_details_frm.h"
#include "shell/core/run_station.h"
#include "shell/falcon/import_obj_frm.h"
#include "shell/falcon/import_theater_frm.h"
#include "shell/frame/frame.h"
#include "shell/parts/look.h"

namespace {

namespace fs = std::filesystem;
using namespace kestrel;
using gallery::Script;
using gallery::Shown;
using gallery::Top;

template <class Control>
Control* RecControl(const char* name) {
  return Top(QStringLiteral("RecFrm"))->findChild<Control*>(QLatin1String(name));
}

/// The pictures show the windows as they are where the transmit keys are heard.
class KeysOfAnyDesktop final : public core::GlobalKeys {
 public:
  bool Start(Heard) override { return true; }
  void Stop() override {}
  std::string Missing() const override { return {}; }
};

/// A voice client that is connected: the panel of the frequencies is pictured with it. Its controls are known by their
/// order alone.
class VoiceOfAnyDesktop final : public radio::VoiceWindows {
 public:
  bool Available() const override { return true; }
  void OperationStarts() override {}
  radio::WindowHandle FindTop(const std::string&) override { return Client; }
  radio::WindowHandle FindChild(radio::WindowHandle parent, radio::WindowHandle after, const char* className,
                                const char*) override {
    if (parent == Client) return after == 0 ? Panel : 0;
    if (std::string_view(className) != "Edit" || after == Panel + std::size(texts)) return 0;
    return after == 0 ? Panel + 1 : after + 1;
  }
  std::size_t TextLength(radio::WindowHandle window) override { return texts[window - Panel - 1].size(); }
  std::string Text(radio::WindowHandle window, std::size_t) override { return std::string(texts[window - Panel - 1]); }
  void SetText(radio::WindowHandle, const std::string&) override {}
  void Click(radio::WindowHandle) override {}
  void SendKey(radio::WindowHandle, std::int32_t, bool) override {}

 private:
  static constexpr radio::WindowHandle Client = 1, Panel = 2;
  static constexpr std::string_view texts[] = {"", "", "CONNECTED", "317650", "", "121500"};
};

/// A page of the panel of the frequencies with a node of it selected, which is opened with its first child.
void ShowFreqTab(int tab, std::initializer_list<int> path) {
  QWidget* panel = Top(QStringLiteral("FreqFrm"));
  panel->findChild<QTabBar*>(QStringLiteral("TabStrip1"))->setCurrentIndex(tab - 1);
  auto* tree = panel->findChild<QTreeView*>(QStringLiteral("TreeView") + QString::number(tab));
  QModelIndex at;
  for (const int row : path) {
    tree->expand(at);
    at = tree->model()->index(row, 0, at);
  }
  tree->expand(at);
  tree->setCurrentIndex(at);
}

/// An area with something of each type, and the editor's window for it.
void OpenAreaEditor() {
  auto& frame = *static_cast<shell::MDIForm1*>(Top(QStringLiteral("MDIForm1")));
  core::Program& program = frame.Program();
  areas::AreaCatalogue& catalogue = program.State.Areas;
  catalogue = {};
  catalogue.AreaFolders.Append({.Name = "Mission", .Visible = areas::On});
  catalogue.AreaGroups.Append({.Name = "Engagement zones", .FolderIndex = 1});
  areas::Area area{
      .Name = "Kill box", .Radius = 12, .X = 420, .Y = 560, .Color = 0x2060F0, .Icon = 3, .Text = "Hot area"};
  area.TextFont.Size = 12;
  const areas::MapPoint corners[] = {{400, 540}, {460, 540}, {475, 590}, {430, 620}, {390, 585}};
  for (std::size_t at = 0; at < std::size(corners); ++at) {
    const areas::MapPoint& to = corners[(at + 1) % std::size(corners)];
    area.Lines.Append({corners[at].X, corners[at].Y, to.X, to.Y});
  }
  area.Points.Append({380, 500, 0, areas::PointType::Nav});
  area.Points.Append({400, 530, 18000, areas::PointType::Nav});
  area.Points.Append({415, 548, 12000, areas::PointType::IP});
  area.Points.Append({420, 560, 500, areas::PointType::Target});
  catalogue.AreaGroups[1].Areas.Append(area);
  areas::OpenExisting(program.State.Editor, catalogue, 1, 1, program.Shown.Texts());
  static shell::ModalCount dialogs;
  auto* editor = new shell::AreasDetailsFrm(program, dialogs, &frame);
  editor->setAttribute(Qt::WA_DeleteOnClose);
  // The screen of the pictures is a low one.
  editor->resize(editor->sizeHint());
  editor->show();
}

/// The choice among objectives, some of them selected.
void OpenObjectives() {
  static const core::CampaignData data = gallery::SampleObjectives();
  static falcon::ModelStore models({}, {});
  static shell::ModalCount dialogs;
  auto& frame = *static_cast<shell::MDIForm1*>(Top(QStringLiteral("MDIForm1")));
  auto* window = new shell::ImportObjFrm(frame.Program(), data, models, dialogs, &frame);
  window->setAttribute(Qt::WA_DeleteOnClose);
  QAbstractItemModel* rows = window->findChild<QTreeView*>(QStringLiteral("ListView1"))->model();
  for (const int row : {0, 2, 4}) rows->setData(rows->index(row, 0), Qt::Checked, Qt::CheckStateRole);
  window->show();
}

/// The window of the theater import, over an installation that has the sample theater's heights.
void OpenTheaterConfig(const fs::path& station) {
  static const falcon::FalconInstall install = gallery::SampleInstall(station);
  auto& frame = *static_cast<shell::MDIForm1*>(Top(QStringLiteral("MDIForm1")));
  auto* window = new shell::ImportTheaterFrm(frame.Program(), install, 1, &frame);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->show();
  window->findChild<QLineEdit*>(QStringLiteral("txtColors"))->setText(QStringLiteral("12"));
}

/// An installation of the simulator with some theaters and pilots, all of them without content.
void MakeSimulator(const fs::path& folder) {
  const fs::path config = folder / "User" / "Config", lists = folder / "Data" / "Terrdata" / "theaterdefinition";
  fs::create_directories(config);
  fs::create_directories(lists);
  std::string list;
  for (const char* const theater : {"Korea KTO", "Balkans", "Sample Strait"}) {
    const std::string file = std::string(theater) + ".tdf";
    base::WriteWholeFile(lists / file, "name " + std::string(theater) + "\r\n");
    list += "Terrdata\\theaterdefinition\\" + file + "\r\n";
  }
  base::WriteWholeFile(lists / "theater.lst", list);
  for (const char* const pilot : {"Arrow", "Falcon", "Viper"}) {
    for (const char* const end : {".lbk", ".ini"}) base::WriteWholeFile(config / (std::string(pilot) + end), "");
  }
}

int ConnectedCycles(const fs::path& log) { return static_cast<int>(fs::exists(log) ? fs::file_size(log) / 10000 : 0); }

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc != 5) {
    std::fprintf(stderr, "usage: gallery STATION-FOLDER SESSION-SIM light|dark PICTURE-FOLDER\n");
    return 1;
  }
  const QString palette = QString::fromLocal8Bit(argv[3]);
  shell::ApplyLook(application, palette == QLatin1String("dark"));
  QTemporaryDir place;
  const fs::path folder = fs::path(place.path().toStdU16String()) / "station";
  fs::copy(argv[1], folder, fs::copy_options::recursive);

  QProcess server;
  server.start(
      QString::fromLocal8Bit(argv[2]),
      {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--players"), QStringLiteral("10"),
       QStringLiteral("--period-ms"), QStringLiteral("200"), QStringLiteral("--duration-s"), QStringLiteral("300")});
  server.waitForReadyRead(10000);
  const QString port = QString::fromLatin1(server.readAllStandardOutput()).section(u' ', 2).section(u'\n', 0, 0);
  base::ProfileFile ini = base::ProfileFile::Load(folder / "KESTREL.ini");
  ini.WriteIniValue("OPTIONS", "CONNPORT", port.toStdString());
  ini.WriteIniValue("LOG", "DEBUG", "1");
  const fs::path simulator = folder.parent_path() / "Falcon BMS 4.38";
  MakeSimulator(simulator);
  ini.WriteIniValue("INSTALLATIONS", "BMS1", base::TextOfPath(simulator));
  ini.Save(folder / "KESTREL.ini");

  areas::WriteAreaFile(folder / "Theaters" / "SampleStrait_Areas.dat", gallery::SampleAreas());

  Script script(palette, QString::fromLocal8Bit(argv[4]));
  script.Menu("mnuConnList_1");
  script.Grab("frmSelectChannel");
  script.Press("frmSelectChannel", "Command1");
  script.Add([folder] { return ConnectedCycles(folder / "KESTRELLog.txt") > 3; },
             [] {
               auto* tree = Top(QStringLiteral("ClientsFrm"))->findChild<QTreeView*>(QStringLiteral("TreeView1"));
               tree->setCurrentIndex(tree->model()->index(0, 0));
             });
  for (const char* window : {"MDIForm1", "ClientsFrm", "CursFrm", "BullsFrm", "MiniMapFrm"}) script.Grab(window);
  gallery::AddAircraft(script);
  script.Menu("mnuFAreas");
  script.Add([] { return Shown("AreasFrm"); },
             [] {
               auto* tree = Top(QStringLiteral("AreasFrm"))->findChild<QTreeView*>(QStringLiteral("TreeView1"));
               tree->expandAll();
               tree->setCurrentIndex(tree->model()->index(0, 0, tree->model()->index(0, 0)));
             });
  script.Grab("AreasFrm");
  script.Press("AreasFrm", "Command2");
  script.Grab("AreasDetailsListFrm");
  script.Press("AreasDetailsListFrm", "cmdCopySelected");
  script.GrabAndClose("SelectAreaGroupfrm");
  script.Press("AreasDetailsListFrm", "Command4");
  script.Menu("mnuFrequencies");
  script.Add([] { return Shown("FreqFrm"); }, [] { ShowFreqTab(1, {0, 0}); });
  script.Grab("FreqFrm", "1");
  script.Press("FreqFrm", "cmdEditChannel");
  script.Grab("EditFreqFrm", "1");
  script.Close("EditFreqFrm");
  script.Press("FreqFrm", "cmdLoadChannels");
  script.Add([] { return Shown("ListCallsignsFrm"); },
             [] {
               auto* list = Top(QStringLiteral("ListCallsignsFrm"))->findChild<QComboBox*>(QStringLiteral("Combo1"));
               list->setCurrentIndex(list->count() - 1);
             });
  script.GrabAndClose("ListCallsignsFrm");
  script.Add([] { return Shown("FreqFrm"); }, [] { ShowFreqTab(2, {1, 0}); });
  script.Grab("FreqFrm", "2");
  script.Press("FreqFrm", "cmdLoadAirports");
  script.GrabAndClose("ListTheatersfrm");
  script.Add([] { return Shown("FreqFrm"); }, [] { ShowFreqTab(3, {0, 1}); });
  script.Grab("FreqFrm", "3");
  script.Add([] { return true; },
             [] {
               auto* tree = Top(QStringLiteral("FreqFrm"))->findChild<QTreeView*>(QStringLiteral("TreeView3"));
               QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
               QApplication::sendEvent(tree, &event);
             });
  script.GrabAndClose("mnupopup4");
  script.Press("FreqFrm", "cmdAddFreq");
  script.Grab("EditFreqFrm", "2");
  script.Close("EditFreqFrm");
  script.Menu("mnuFOptions");
  const char* const pages[] = {"1", "2", "3", "4", "5"};
  for (int page = 0; page < 5; ++page) {
    script.Add(
        [] { return true; },
        [page] {
          Top(QStringLiteral("ViewFrm"))->findChild<QTabBar*>(QStringLiteral("TabStrip1"))->setCurrentIndex(page);
        });
    script.Grab("ViewFrm", pages[page]);
  }
  const std::pair<const char*, const char*> dialogs[] = {{"mnuConnCustom", "VldFrom2"},
                                                         {"mnuConnPort", "frmConnPort"},
                                                         {"mnuPhonebookEdit", "PreferForm"},
                                                         {"mnuAbout", "AboutFrm"}};
  for (const auto& [entry, window] : dialogs) {
    script.Menu(entry);
    script.GrabAndClose(window);
  }
  script.Menu("mnuModifyTheater");
  script.Grab("MdfTheatersFrm");
  script.Press("MdfTheatersFrm", "Command1_1");
  script.GrabAndClose("TheateDetailsFrm");
  script.Close("MdfTheatersFrm");
  script.Menu("mnuModifyBullseyes");
  script.GrabAndClose("MdfBullsFrm");
  script.Menu("mnuSetNewBulls");
  script.GrabAndClose("BullsDetailsFrm");
  script.Add([] { return true; }, [folder] { OpenTheaterConfig(folder); });
  script.Press("ImportTheaterFrm", "cmdAutoCalculate");
  script.Grab("ImportTheaterFrm", "1");
  script.Press("ImportTheaterFrm", "cmdEdit");
  script.GrabAndClose("MultiColEditorfrm");
  script.Add([] { return true; },
             [] {
               Top(QStringLiteral("ImportTheaterFrm"))
                   ->findChild<QTabWidget*>(QStringLiteral("tabMethod"))
                   ->setCurrentIndex(1);
             });
  script.Grab("ImportTheaterFrm", "2");
  script.Close("ImportTheaterFrm");
  script.Add([] { return true; }, OpenAreaEditor);
  for (const auto& [type, page] :
       {std::pair("Option1_1", "1"), std::pair("Option1_2", "2"), std::pair("Option1_3", "3"),
        std::pair("Option1_4", "4"), std::pair("Option1_5", "5")}) {
    script.Press("AreasDetailsFrm", type);
    script.Grab("AreasDetailsFrm", page);
  }
  script.Press("AreasDetailsFrm", "cmdAddPointFP");
  script.GrabAndClose("FPPointDetailsFrm");
  script.Press("AreasDetailsFrm", "Option1_1");
  script.Press("AreasDetailsFrm", "Command3");
  script.GrabAndClose("PointDetailsFrm");
  script.Close("AreasDetailsFrm");
  script.Add([] { return true; }, OpenObjectives);
  script.Grab("ImportObjFrm");
  script.Press("ImportObjFrm", "cmdImport");
  for (const auto& [look, page] :
       {std::pair("OptImportType_0", "1"), std::pair("OptImportType_1", "2"), std::pair("OptImportType_2", "3")}) {
    script.Press("ImportObjOptionsFrm", look);
    script.Grab("ImportObjOptionsFrm", page);
  }
  script.Close("ImportObjOptionsFrm");
  script.Close("ImportObjFrm");
  script.Menu("mnuKeys");
  script.GrabAndClose("KeysFrm");
  gallery::AddLostLink(script, server);
  gallery::AddExport(script, folder);
  // A replay of the demo tape, somewhat into it.
  script.Add([] { return true; },
             [] { Top(QStringLiteral("MDIForm1"))->findChild<QToolButton*>(QStringLiteral("chkPlayback"))->click(); });
  script.Press("RecFrm", "Command1");
  script.Add([] { return Shown("OpenFile"); },
             [folder] {
               QWidget* dialog = Top(QStringLiteral("OpenFile"));
               dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                   ->setText(QString::fromStdString((folder / "TAPES" / "Demo.tap").string()));
               QTimer::singleShot(0, dialog, [dialog] { QMetaObject::invokeMethod(dialog, "accept"); });
             });
  script.Add([] { return RecControl<QAbstractButton>("Command2")->isEnabled(); },
             [] { RecControl<QSlider>("HScroll1")->setValue(57); });
  script.Press("RecFrm", "Command2");
  script.Add([] { return RecControl<QAbstractButton>("Command3")->isEnabled(); },
             [] { RecControl<QSlider>("Slider1")->setValue(2); });
  script.Grab("RecFrm");
  gallery::AddReplay(script);
  script.Add([] { return true; }, [] { Top(QStringLiteral("MDIForm1"))->close(); });
  KeysOfAnyDesktop keys;
  VoiceOfAnyDesktop voice;
  return shell::RunStation(folder, {keys, voice}, [&script] { script.Start(); });
}
