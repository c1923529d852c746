// A person takes what a simulator's installation has into the built station: one run for each generation. What is
// expected is worked out by hand from falcon/made_world.h.

#include <gtest/gtest.h>

#include <QByteArray>
#include <QImage>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "areas/area_file.h"
#include "e2e/falcon_on_screen.h"
#include "falcon/made_world.h"

namespace kestrel::e2e {
namespace {

using made::Generation;

/// Where a person has to look for the colours of the ground, red first.
struct Colours {
  QRgb Hill, Slope, Sea;
};
/// Five bands up to the hill of 2500 feet are 500 feet and 51 colours of "gradient.act" each: the hill has its colour
/// 254, the slopes at 1500 feet have its colour 152. The sea is 16762913, blue first.
constexpr Colours FiveBands{0xFFFAF8F8, 0xFFCFA96B, 0xFF21C8FF};
/// 7917318 and 16777215, blue first.
constexpr Colours Light{0xFF06CF78, 0xFF06CF78, 0xFFFFFFFF};

QByteArray ReadBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class FalconImport : public FalconOnScreen {
 protected:
  /// A made installation that the settings name.
  void Install(Generation which) {
    made = made::WriteInstallation(disk / made::KeyName(which), which);
    const bool isOld = which == Generation::Falcon40;
    Set("INSTALLATIONS",
        (isOld ? S("FALCON1=") : S("BMS1=")) + QString::fromStdString(made.Folder.string()) + S("\r\n"));
  }
  /// Enter in a window whose preset answer is meant.
  void Confirm(const char* title) {
    ASSERT_NO_FATAL_FAILURE(Dialog(title));
    screen.Press({S("Return")});
  }
  void ExpectGone(const char* title) {
    EXPECT_TRUE(WaitFor([&] { return !screen.HasWindow(QString::fromLatin1(title)); })) << title;
  }
  QString Theaters(const char* file) const { return folder + S("/Theaters/") + QString::fromLatin1(file); }

  /// The theater that is preset. `keys` choose the colours, from the tabs on; the log tells when `done` is.
  void ImportTheater(const QStringList& keys, const char* done = "") {
    ASSERT_NO_FATAL_FAILURE(FalconTool(0));
    ASSERT_NO_FATAL_FAILURE(Confirm("^Select Theater$"));
    ASSERT_NO_FATAL_FAILURE(Dialog("^Theater Config$"));
    screen.Press(keys);
    ASSERT_TRUE(WaitFor([&] { return Log().contains(QString::fromLatin1(done)); })) << qPrintable(Log());
    screen.Press({S("Return")});
    ExpectGone("^Theater Config$");
    ASSERT_TRUE(WaitFor([&] { return QFile::exists(Theaters("Made Straits.ini")); })) << qPrintable(Log());
  }
  void ExpectTheater(const Colours& colours) {
    const QString theater = ReadText(Theaters("Made Straits.ini"));
    EXPECT_TRUE(theater.contains(S("NAME=Default\r\nX=40\r\nY=22\r\n"))) << qPrintable(theater);
    const QImage picture(Theaters("Made Straits.gif"));
    ASSERT_EQ(picture.size(), QSize(64, 64));
    // North is at the top.
    const auto at = [&](int x, int y) { return picture.pixel(x, 63 - y); };
    EXPECT_EQ(at(44, 50), colours.Hill);
    EXPECT_EQ(at(45, 51), colours.Slope);
    EXPECT_EQ(at(11, 19), colours.Sea);
    EXPECT_NE(at(12, 19), colours.Sea);
    const QByteArray bytes = ReadBytes(Theaters("Made Straits_Elevation.dat"));
    ASSERT_EQ(bytes.size(), 2 * 64 * 64);
    // The southern edge comes first.
    const auto height = [&](int x, int y) {
      const qsizetype byte = 2 * (y * 64 + x);
      return static_cast<std::int16_t>(static_cast<std::uint8_t>(bytes[byte]) |
                                       static_cast<std::uint8_t>(bytes[byte + 1]) << 8);
    };
    EXPECT_EQ(height(44, 50), 2500);
    EXPECT_EQ(height(45, 51), 1500);
    EXPECT_EQ(height(11, 19), 0);
    EXPECT_EQ(height(63, 63), 352);  // 100 + 63 + 3 * 63
    EXPECT_EQ(height(5, 60), -70);
  }

  /// Those of "te_new.tac", which is preset. `look` chooses how they are drawn.
  void ImportObjectives(const char* look) {
    ASSERT_NO_FATAL_FAILURE(FalconTool(1));
    ASSERT_NO_FATAL_FAILURE(Confirm("^Select Theater$"));
    ASSERT_NO_FATAL_FAILURE(Confirm("^Open Campaign File"));
    ASSERT_NO_FATAL_FAILURE(Dialog("^Import Objectives$"));
    screen.Press({S("alt+a"), S("alt+n")});
    ASSERT_NO_FATAL_FAILURE(Dialog("^Import Options$"));
    screen.Press({QString::fromLatin1(look), S("alt+i")});
    ExpectGone("^Import Options$");
    ExpectGone("^Import Objectives$");
  }
  /// What the station has kept of them when it has ended.
  void ReadImported() {
    areas::AreaFile file =
        areas::ReadAreaFile(Theaters("SampleStrait_Areas.dat").toStdString(), areas::AreaFileKind::Theater);
    for (const areas::AreaGroup& group : file.AreaGroups.Live()) {
      if (group.Name == "Imported Objectives") imported = group.Areas;
    }
  }
  void ExpectIcons() {
    ASSERT_NO_FATAL_FAILURE(ReadImported());
    const struct {
      const char* Name;
      int Icon;
      double X, Y;
    } icons[] = {{"Anvil Airbase", 4, 20.5, 12.5}, {"Birch Airbase", 4, 50.5, 40.5},   {"Dorn", 8, 30.5, 25.5},
                 {"Dorn Bridge", 7, 31.5, 24.5},   {"Elmsted Works", 10, 48.5, 44.5},  {"Farrow Power", 19, 60.5, 3.5},
                 {"Gannet Radar", 14, 44.5, 50.5}, {"Heron SAM Site", 18, 45.5, 48.5}, {"\xC9pine", 17, 13.5, 62.5}};
    ASSERT_EQ(imported.UpperBound(), std::size(icons));
    for (std::size_t n = 0; n < std::size(icons); ++n) {
      const areas::Area& area = imported[n + 1];
      EXPECT_EQ(area.Name, icons[n].Name);
      EXPECT_EQ(area.Type, areas::AreaType::Icon);
      EXPECT_EQ(area.Icon, icons[n].Icon) << area.Name;
      EXPECT_EQ(area.X, icons[n].X) << area.Name;
      EXPECT_EQ(area.Y, icons[n].Y) << area.Name;
    }
  }
  /// The two lines that the wedge of a site has, its right angle so many feet east and north of the site's middle at
  /// `x`, `y`. It looks west: 40 feet forward are west, 20 feet to the right are north. The side of 20 feet is shorter
  /// than the hundredth of a kilometre that is preset.
  void ExpectWedge(const char* name, double x, double y, double east, double north) {
    SCOPED_TRACE(name);
    const areas::Area* site = nullptr;
    for (const areas::Area& area : imported.Live()) {
      if (area.Name == name) site = &area;
    }
    ASSERT_NE(site, nullptr);
    EXPECT_EQ(site->Type, areas::AreaType::Region);
    ASSERT_EQ(site->Lines.UpperBound(), 2U);
    const std::array<double, 2> corner{east, north}, front{east - 40, north}, side{east, north + 20};
    // In either order and direction.
    const auto has = [&](const std::array<double, 2>& from, const std::array<double, 2>& to) {
      for (const areas::AreaLine& line : site->Lines.Live()) {
        const auto isAt = [&](double atX, double atY, const std::array<double, 2>& feet) {
          return std::abs((atX - x) * 3279.98 - feet[0]) < 0.05 && std::abs((atY - y) * 3279.98 - feet[1]) < 0.05;
        };
        if (isAt(line.X1, line.Y1, from) && isAt(line.X2, line.Y2, to)) return true;
        if (isAt(line.X1, line.Y1, to) && isAt(line.X2, line.Y2, from)) return true;
      }
      return false;
    };
    EXPECT_TRUE(has(corner, front));
    EXPECT_TRUE(has(front, side));
  }
  void ExpectLines() {
    ASSERT_NO_FATAL_FAILURE(ReadImported());
    EXPECT_EQ(imported.UpperBound(), 8U) << "all but the village, which has no buildings";
    ExpectWedge("Farrow Power", 60.5, 3.5, 100, 100);
    ExpectWedge("Gannet Radar", 44.5, 50.5, 0, 0);
  }

  /// The panel of the frequencies alone stands on the map.
  void ShowFrequencies() {
    QString lines = S("FREQFORMX=900\r\nFREQFORMY=1800\r\nFREQFORMMIN=0\r\nFREQFORMHID=0\r\n");
    for (const char* hidden : {"BULL", "AREAS", "CURSOR", "VIEW", "REC", "CLIENTS", "MINIMAP"}) {
      lines += QString::fromLatin1(hidden) + S("FORMHID=1\r\n");
    }
    Set("OPTIONS", lines);
  }
  /// A press is what gives a floating window the keyboard; the tab is the one of so many.
  void PressInFrequencies(int tab, const char* key) {
    const QString panel = screen.Window(S("^FREQs$"));
    ASSERT_FALSE(panel.isEmpty());
    const QRect at = screen.Geometry(panel);
    screen.Click(at.topLeft() + QPoint(at.width() * (2 * tab + 1) / 6, 38));
    ASSERT_TRUE(WaitFor([&] { return screen.IsActive(panel); }));
    screen.Press({QString::fromLatin1(key)});
  }
  /// Those of "te_new.tac", which is preset.
  void LoadAirfields() {
    ASSERT_NO_FATAL_FAILURE(PressInFrequencies(1, "alt+m"));
    ASSERT_NO_FATAL_FAILURE(Confirm("^Select Theater$"));
    ASSERT_NO_FATAL_FAILURE(Confirm("^Open Campaign File"));
    ExpectGone("^Select Theater$");
  }
  QString Frequencies() const { return ReadText(Theaters("SampleStrait_Frequencies.dat")); }
  void ExpectAirfields() {
    const QString text = Frequencies();
    for (const char* airfield :
         {"NAME=Anvil Airbase\r\nUHF=250200\r\nVHF=118700\r\nTACAN=042\r\n"
          "TACANX=20.50000\r\nTACANY=12.50000\r\nTACANR=140.00000\r\nTACAN_BAND=X\r\nTEAM_INDEX=2\r\n",
          "NAME=Birch Airbase\r\nUHF=0\r\nVHF=126200\r\nTACAN=007\r\n"
          "TACANX=50.50000\r\nTACANY=40.50000\r\nTACANR=70.00000\r\nTACAN_BAND=Y\r\nTEAM_INDEX=6\r\n",
          "NAME=**Not an Airbase!\r\n"}) {
      EXPECT_TRUE(text.contains(QString::fromLatin1(airfield))) << airfield;
    }
    EXPECT_TRUE(text.contains(S("[AIRFIELDS]\r\nNUM=4\r\n"))) << qPrintable(text);
  }

  made::Installation made;
  base::Table<areas::Area> imported;
};

TEST_F(FalconImport, TakesATheaterOfFalcon40) {
  Install(Generation::Falcon40);
  Set("LOG", S("DEBUG=1\r\n"));
  ASSERT_NO_FATAL_FAILURE(StartFalconStation());
  // The list, Add, the sea's colour, the number of colours, Auto Calculate.
  ASSERT_NO_FATAL_FAILURE(
      ImportTheater({S("Tab"), S("Tab"), S("Tab"), S("Tab"), S("5"), S("Tab"), S("space")}, "Read the heights in"));
  ASSERT_NO_FATAL_FAILURE(Exit());
  ExpectTheater(FiveBands);
}

TEST_F(FalconImport, TakesLinesAndAirfieldsOfBms433) {
  Install(Generation::Bms433);
  ShowFrequencies();
  ASSERT_NO_FATAL_FAILURE(StartFalconStation());
  // The tab of the two colours.
  ASSERT_NO_FATAL_FAILURE(ImportTheater({S("Right")}));
  ASSERT_NO_FATAL_FAILURE(ImportObjectives("alt+l"));
  ASSERT_NO_FATAL_FAILURE(LoadAirfields());
  ASSERT_NO_FATAL_FAILURE(Exit());
  ExpectTheater(Light);
  ExpectLines();
  ExpectAirfields();
}

TEST_F(FalconImport, TakesIconsAirfieldsAndChannelsOfBms435InAWinePrefix) {
  made = made::WriteWinePrefix(disk / "prefix", {Generation::Bms435}).front();
  ShowFrequencies();
  ASSERT_NO_FATAL_FAILURE(StartFalconStation({S("WINEPREFIX=") + place.filePath(S("prefix"))}));
  ASSERT_NO_FATAL_FAILURE(ImportTheater({S("Right")}));
  ASSERT_NO_FATAL_FAILURE(ImportObjectives("alt+a"));
  ASSERT_NO_FATAL_FAILURE(LoadAirfields());
  // The pilot who flew last is preset.
  ASSERT_NO_FATAL_FAILURE(PressInFrequencies(0, "alt+m"));
  ASSERT_NO_FATAL_FAILURE(Confirm("^Callsigns$"));
  ExpectGone("^Callsigns$");
  ASSERT_NO_FATAL_FAILURE(Exit());
  ExpectTheater(Light);
  ExpectIcons();
  ExpectAirfields();
  const QString channels = Frequencies();
  for (const char* value : {"UHF_1=226000", "UHF_20=245000", "VHF_3=59400", "VHF_20=118500", "F1=339750", "F2=1234"}) {
    EXPECT_TRUE(channels.contains(QString::fromLatin1(value) + S("\r\n"))) << value;
  }
}

TEST_F(FalconImport, TakesLinesAndAirfieldsOfBms437) {
  Install(Generation::Bms437);
  ShowFrequencies();
  ASSERT_NO_FATAL_FAILURE(StartFalconStation());
  ASSERT_NO_FATAL_FAILURE(ImportTheater({S("Right")}));
  ASSERT_NO_FATAL_FAILURE(ImportObjectives("alt+l"));
  ASSERT_NO_FATAL_FAILURE(LoadAirfields());
  ASSERT_NO_FATAL_FAILURE(Exit());
  ExpectTheater(Light);
  ExpectLines();
  ExpectAirfields();
}

TEST_F(FalconImport, TakesIconsOfBms438AndGivesItChannels) {
  Install(Generation::Bms438);
  ShowFrequencies();
  const QString cfg = QString::fromStdString((made.Config / "Falcon BMS.cfg").string());
  const QString pilot = QString::fromStdString((made.Config / "Ghost.ini").string());
  const QString cfgBefore = ReadText(cfg), pilotBefore = ReadText(pilot);
  ASSERT_FALSE(cfgBefore.isEmpty());
  ASSERT_FALSE(pilotBefore.isEmpty());
  ASSERT_NO_FATAL_FAILURE(StartFalconStation());
  ASSERT_NO_FATAL_FAILURE(ImportTheater({S("Right")}));
  ASSERT_NO_FATAL_FAILURE(ImportObjectives("alt+a"));
  ASSERT_NO_FATAL_FAILURE(LoadAirfields());
  ASSERT_NO_FATAL_FAILURE(PressInFrequencies(0, "alt+s"));
  ASSERT_NO_FATAL_FAILURE(Dialog("^Attention$"));
  screen.Press({S("alt+y")});
  // Nobody is known to have flown last: the first one is Ghost.
  ASSERT_NO_FATAL_FAILURE(Dialog("^Callsigns$"));
  screen.Press({S("Down"), S("Return")});
  ExpectGone("^Callsigns$");
  ASSERT_NO_FATAL_FAILURE(Exit());
  ExpectTheater(Light);
  ExpectIcons();
  ExpectAirfields();
  // The channels are those of the theater that ships, of which some have no value.
  QString expected = pilotBefore;
  const char* const uhf[] = {"292300", "273525", "353100", "235100", "317650",
                             "391975", "305000", "282550", "243000", "259700"};
  const char* const vhf[] = {"126500", "121600", "122100", "138050", "134925", "121500"};
  for (int n = 1; n <= 20; ++n) {
    const auto set = [&](const QString& key, int before, const char* value) {
      expected.replace(key + QString::number(before) + S("\r\n"), key + QString::fromLatin1(value) + S("\r\n"));
    };
    set(S("\nUHF_%1=").arg(n), made::UhfOf(n) + 50000, n <= 10 ? uhf[n - 1] : "000000");
    set(S("\nVHF_%1=").arg(n), made::VhfOf(n), n <= 6 ? vhf[n - 1] : "000000");
  }
  EXPECT_EQ(ReadText(pilot), expected);
  expected = cfgBefore;
  EXPECT_EQ(ReadText(cfg),
            expected.replace(S("Freq 339750"), S("Freq 307300")).replace(S("Freq 1234"), S("Freq 309275")));
  EXPECT_EQ(ReadText(cfg + S("_backup")), cfgBefore);
}

}  // namespace
}  // namespace kestrel::e2e
