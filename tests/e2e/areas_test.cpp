// A mission is drawn in the built station while aircraft stream in, exported, and imported by another station, whose
// map then looks the same.

#include <gtest/gtest.h>

#include <vector>

#include "e2e/station_on_screen.h"

namespace kestrel::e2e {
namespace {

/// The steps of the arrow key from Region to each type of area.
enum Type { Region, Circle, Icon, Text, FlightPlan };

class StationAreas : public StationOnScreen {
 protected:
  /// Only the tree of the areas is open, rolled down; it, the list and the editor stand at the left of the map.
  static QString SettingsFor(QString settings, const QString& port) {
    QString options = S("[OPTIONS]\r\nCONNPORT=") + port + S("\r\n");
    for (const char* hidden : {"BULL", "FREQ", "CURSOR", "VIEW", "REC", "CLIENTS", "MINIMAP"}) {
      options += QString::fromLatin1(hidden) + S("FORMHID=1\r\n");
    }
    options += S("AREASFORMX=900\r\nAREASFORMY=1800\r\nAREASFORMMIN=0\r\nAREASFORMHID=0\r\n");
    settings.replace(QRegularExpression(S("\\[OPTIONS\\]\r?\n")), options);
    return settings + S("\r\n[FRMLASTPOS]\r\nAREADETAILLISTLEFT=900\r\nAREADETAILLISTTOP=1800\r\n"
                        "AREADETAILLEFT=900\r\nAREADETAILTOP=1500\r\n");
  }
  void SetUp() override {
    StationOnScreen::SetUp();
    StartServer({S("--period-ms"), S("300"), S("--duration-s"), S("280")}, port);
    shipped = ReadText(Settings());
    WriteText(Settings(), SettingsFor(shipped, port));
  }

  /// Connection, Phonebook, Demo session, then blue by the dialog's default.
  void Connect() {
    Menu({S("Right"), S("Up"), S("Right"), S("Up"), S("Return")});
    const QString dialog = screen.Window(S("^Select Channel$"));
    ASSERT_FALSE(dialog.isEmpty());
    screen.Activate(dialog);
    screen.Press({S("Return")});
    ASSERT_TRUE(WaitFor([&] { return server->Output().contains(S("received NAWACS1")); }));
  }
  /// A new folder with a new group, whose list then stands there.
  void NewGroup() {
    const QString tree = screen.Window(S("^AREAS$"));
    ASSERT_FALSE(tree.isEmpty());
    // A press is what gives a floating window the keyboard; below the nodes it selects nothing.
    screen.Click(screen.Geometry(tree).topLeft() + QPoint(120, 300));
    screen.Press({S("alt+d"), S("alt+g")});
    list = screen.Window(S("^New Area Group$"));
    ASSERT_FALSE(list.isEmpty());
  }
  /// A new area of the list: the name is typed, the type chosen, the map clicked, and the keys are pressed before Enter
  /// in the editor, from the choice of the type on.
  void Draw(const char* name, Type type, const std::vector<QPoint>& clicks, const QStringList& keys = {},
            const char* typed = "") {
    SCOPED_TRACE(name);
    screen.Activate(list);
    screen.Press({S("alt+n")});
    const QString editor = screen.Window(S("^New Area in New Area Group$"));
    ASSERT_FALSE(editor.isEmpty());
    screen.Activate(editor);
    screen.Type(QString::fromLatin1(name));
    screen.Press({S("Tab")});
    for (int step = 0; step < type; ++step) screen.Press({S("Right")});
    for (const QPoint click : clicks) screen.Click(Corner() + click);
    screen.Activate(editor);
    screen.Press(keys);
    if (*typed != '\0') screen.Type(QString::fromLatin1(typed));
    screen.Press({S("Return")});
    list = screen.Window(S("^New Area Group$"));
    ASSERT_FALSE(list.isEmpty());
  }
  void CloseList() {
    screen.Activate(list);
    screen.Press({S("alt+x")});
    ASSERT_FALSE(screen.Window(S("^AREAS$")).isEmpty());
  }
  /// The entry of the File menu that stands so far from its end, and the file that it asks for.
  void FileEntry(int fromTheEnd, const char* title, const QString& file) {
    QStringList keys;
    for (int step = 0; step < fromTheEnd; ++step) keys << S("Up");
    Menu(keys << S("Return"));
    const QString dialog = screen.Window(QString::fromLatin1(title));
    ASSERT_FALSE(dialog.isEmpty());
    screen.Activate(dialog);
    screen.Type(file);
    screen.Press({S("Return")});
  }
  QPoint Corner() const { return screen.Geometry(frame).topLeft(); }
  /// What lies at the right of the windows.
  QImage Map() const { return screen.Picture().copy(QRect(Corner() + QPoint(640, 90), QSize(560, 560))); }
  /// The map once it rests.
  QImage RestingMap() const {
    QImage before, now = Map();
    EXPECT_TRUE(WaitFor([&] { return before = std::exchange(now, Map()), before == now; }));
    return now;
  }

  QString port, shipped, list;
};

TEST_F(StationAreas, GoToAnotherStationAsTheyStand) {
  StartStation();
  Connect();
  NewGroup();
  // Two clicks near one another would be a double click, which centres the map.
  Draw("Kill box", Region, {{700, 200}, {900, 220}, {930, 250}, {850, 390}, {820, 390}, {690, 230}});
  Draw("Ring", Circle, {{1000, 300}}, {S("Tab"), S("Tab"), S("Tab")}, "25");
  Draw("SA-10", Icon, {{1000, 450}}, {S("Tab"), S("Tab"), S("Tab"), S("Down"), S("Down")});
  Draw("Word", Text, {{760, 500}}, {S("Tab"), S("Tab"), S("Tab")}, "Tanker north");
  CloseList();
  NewGroup();
  Draw("Route", FlightPlan, {{680, 560}, {800, 600}, {980, 560}, {1100, 420}});
  CloseList();
  const QString file = place.filePath(S("mission.axp"));
  FileEntry(2, "^Export Visible Areas", file);
  ASSERT_TRUE(WaitFor([&] { return QFile(file).size() > 5 * 506; }));
  EXPECT_TRUE(server->Output().contains(S("received NAWACS1")));
  Exit();

  // Without a session, from the file that the exit has kept.
  StartStation();
  const QImage drawn = RestingMap();
  Exit();

  const QString other = place.filePath(S("other"));
  CopyStation(other);
  WriteText(other + S("/KESTREL.ini"), SettingsFor(shipped, port));
  station = std::make_unique<Child>(other + S("/kestrel"), QStringList{}, screen.Environment());
  frame = screen.Window(S("^KESTREL v"));
  ASSERT_FALSE(frame.isEmpty());
  EXPECT_NE(RestingMap(), drawn);
  FileEntry(3, "^Import Areas", file);
  EXPECT_TRUE(WaitFor([&] { return Map() == drawn; })) << "the other map looks different";
}

}  // namespace
}  // namespace kestrel::e2e
