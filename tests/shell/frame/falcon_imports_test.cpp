// Theaters and objectives of an installed simulator, from the menu to the map.

#include <QElapsedTimer>
#include <QTabWidget>
#include <algorithm>
#include <functional>

#include "areas/area.h"
#include "falcon/made_installation.h"
#include "falcon/made_world.h"
#include "shell/falcon/installed_falcon.h"
#include "shell/frame/falcon_windows.h"

namespace kestrel::shell {
namespace {

class FalconImports : public InstalledFalcon {
 protected:
  made::Installation Install(made::Generation which) {
    const made::Installation made = made::WriteInstallation(disk / "sim", which);
    keys.AddText("SOFTWARE\\Benchmark Sims\\" + made.Key, "baseDir", "C:\\sim");
    return made;
  }
  /// Runs `act` on the dialog of that name once it is open; dialogs may follow each other.
  void WhenOpen(const char* name, std::function<void(QWidget&)> act) {
    waited.start();
    Look(name, std::move(act));
  }

  QStringList visited;  ///< names of the dialogs, in order

 private:
  void Look(const char* name, std::function<void(QWidget&)> act) {
    QTimer::singleShot(1, qApp, [this, name, act = std::move(act)]() mutable {
      QWidget* dialog = QApplication::activeModalWidget();
      if (dialog != nullptr && dialog->objectName() == QLatin1String(name) && QApplication::activeWindow() == dialog) {
        visited << dialog->objectName();
        act(*dialog);
      } else if (waited.elapsed() < 10'000) {
        Look(name, std::move(act));
      } else {
        ADD_FAILURE() << name << " does not open";
        if (dialog != nullptr) dialog->close();
      }
    });
  }

  QElapsedTimer waited;
};

TEST_F(FalconImports, BackLeadsToTheListAndTheTheaterIsInTheMenu) {
  Install(made::Generation::Bms433);
  const std::size_t before = station.Catalogue.Theaters.UpperBound();
  WhenOpen("ListTheatersfrm", [this](QWidget& dialog) {
    EXPECT_TRUE(In<QAbstractButton>(dialog, "OptFalconType_1").isChecked());
    WhenOpen("ImportTheaterFrm", [this](QWidget& config) {
      EXPECT_EQ(Label(config, "lblTheaterName"), QString::fromStdString(made::TheaterName));
      EXPECT_EQ(Label(config, "lblTheaterSize"), QStringLiteral("Theater size: 64"));
      WhenOpen("ListTheatersfrm", [this](QWidget& again) {
        WhenOpen("ImportTheaterFrm", [](QWidget& last) {
          In<QTabWidget>(last, "tabMethod").setCurrentIndex(1);
          Press(last, "cmdOK");
        });
        Press(again, "cmdNext");
      });
      Press(config, "cmdBack");
    });
    Press(dialog, "cmdNext");
  });
  Action("mnuImportNewTheater").trigger();
  EXPECT_EQ(visited, Words({"ListTheatersfrm", "ImportTheaterFrm", "ListTheatersfrm", "ImportTheaterFrm"}));
  EXPECT_TRUE(desk.Boxes.empty());
  ASSERT_EQ(station.Catalogue.Theaters.UpperBound(), before + 1);
  const theaters::Theater& made = station.Catalogue.Theaters[before + 1];
  EXPECT_EQ(made.DisplayName, made::TheaterName);
  ASSERT_EQ(made.Bulls.UpperBound(), 1U);
  EXPECT_EQ(made.Bulls[1].X, made::BullseyeX);
  EXPECT_EQ(made.Bulls[1].Y, made::BullseyeY);
  const QString entry = QStringLiteral("mnuTheatername_%1").arg(before + 1);
  EXPECT_EQ(Action(entry.toLatin1().constData()).text(), QString::fromStdString(made::TheaterName));
}

TEST_F(FalconImports, CancelImportsNothing) {
  Install(made::Generation::Bms433);
  const std::size_t before = station.Catalogue.Theaters.UpperBound();
  WhenOpen("ListTheatersfrm", [this](QWidget& dialog) {
    WhenOpen("ImportTheaterFrm", [](QWidget& config) { Press(config, "cmdCancel"); });
    Press(dialog, "cmdNext");
  });
  Action("mnuImportNewTheater").trigger();
  EXPECT_EQ(visited, Words({"ListTheatersfrm", "ImportTheaterFrm"}));
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), before);
}

TEST_F(FalconImports, ObjectivesOfACampaignComeOntoTheMap) {
  const made::Installation sim = Install(made::Generation::Bms437);
  desk.FileAnswers.emplace_back(base::TextOfPath(sim.Campaign / "te_new.tac"));
  WhenOpen("ListTheatersfrm", [this](QWidget& dialog) {
    WhenOpen("ImportObjFrm", [this](QWidget& list) {
      Press(list, "chkSelectAll");
      EXPECT_EQ(Label(list, "lblObjectivesSelected"), QStringLiteral("Objectives Selected: 9"));
      WhenOpen("ImportObjOptionsFrm", [](QWidget& options) {
        Press(options, "OptImportType_1");
        Press(options, "cmdImport");
      });
      Press(list, "cmdImport");
    });
    Press(dialog, "cmdNext");
  });
  Action("mnuImportObjectives").trigger();
  EXPECT_EQ(visited, Words({"ListTheatersfrm", "ImportObjFrm", "ImportObjOptionsFrm"}));
  EXPECT_TRUE(desk.Boxes.empty());
  const auto& groups = station.Areas.AreaGroups;
  const std::size_t last = groups.UpperBound();
  ASSERT_EQ(groups[last].Name, "Imported Objectives");
  // The village has no buildings.
  ASSERT_EQ(groups[last].Areas.UpperBound(), 8U);
  const areas::Area& station506 = groups[last].Areas[6];
  EXPECT_EQ(station506.Name, "Farrow Power");
  // A wedge that looks west, 100 feet east and north of the middle of cell 60, 3: its 40 feet forward lie to the west.
  // The side of 20 feet is within the 0.01 map units, 32.8 feet, that are disregarded.
  ASSERT_EQ(station506.Lines.UpperBound(), 2U);
  const double east = 100 / made::FeetPerUnit;
  double west = 100;
  for (std::size_t n = 1; n <= 2; ++n) west = std::min({west, station506.Lines[n].X1, station506.Lines[n].X2});
  EXPECT_NEAR(west, 60.5 + east - 40 / made::FeetPerUnit, 1e-6);
}

TEST_F(FalconImports, CampaignThatCannotBeReadLeavesTheListOpen) {
  const made::Installation sim = Install(made::Generation::Bms437);
  test::WriteBytes(sim.Campaign / "bad.tac", "no campaign");
  desk.FileAnswers.emplace_back(base::TextOfPath(sim.Campaign / "bad.tac"));
  WhenOpen("ListTheatersfrm", [this](QWidget& dialog) {
    Press(dialog, "cmdNext");
    EXPECT_TRUE(dialog.isVisible());
    ASSERT_EQ(desk.Boxes.size(), 1U);
    EXPECT_TRUE(desk.Boxes[0].Text.starts_with("An error occured: Error #321. bad.tac")) << desk.Boxes[0].Text;
    Press(dialog, "cmdCancel");
  });
  Action("mnuImportObjectives").trigger();
  EXPECT_EQ(visited, Words({"ListTheatersfrm"}));
}

}  // namespace
}  // namespace kestrel::shell
