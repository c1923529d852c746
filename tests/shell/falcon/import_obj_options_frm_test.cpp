#include "shell/falcon/import_obj_options_frm.h"

#include "shell/falcon/import_obj_fixture.h"
#include "shell/parts/colour_button.h"

namespace kestrel::shell {
namespace {

class ImportObjOptions : public ImportObjWindows {
 protected:
  void Open() {
    list = std::make_unique<core::ObjectiveList>(data);
    list->SelectShown(true);
    options = std::make_unique<ImportObjOptionsFrm>(program, ObjectiveSource{data, models, *list},
                                                    core::ObjectiveImport{}, &frame);
    Activate(*options);
  }
  bool Visible(const char* name) { return In<QWidget>(*options, name).isVisible(); }
  QString Label(const char* name) { return In<QLabel>(*options, name).text(); }
  void Type(const char* field, const char* text) {
    auto& line = In<QLineEdit>(*options, field);
    line.selectAll();
    QTest::keyClicks(&line, QString::fromLatin1(text));
  }

  std::unique_ptr<core::ObjectiveList> list;
  std::unique_ptr<ImportObjOptionsFrm> options;
};

TEST_F(ImportObjOptions, BeginWithTheIconsOfTheTypes) {
  Open();
  EXPECT_EQ(options->windowTitle(), QStringLiteral("Import Options"));
  const struct {
    const char *Name, *Text;
  } captions[] = {{"OptImportType_0", "Import as Auto Icon"},
                  {"OptImportType_1", "Import as Lines"},
                  {"OptImportType_2", "Import as Single Icon"},
                  {"cmdBack", "< Back"},
                  {"cmdImport", "Import"}};
  for (const auto& [name, text] : captions) {
    EXPECT_EQ(In<QAbstractButton>(*options, name).text().remove(u'&'), QString::fromLatin1(text));
  }
  EXPECT_TRUE(In<QRadioButton>(*options, "OptImportType_0").isChecked());
  EXPECT_EQ(In<QLineEdit>(*options, "txtSimplFactor").text(), QStringLiteral("0.01"));
  EXPECT_EQ(In<QLineEdit>(*options, "txtSimplFactor").toolTip(),
            QStringLiteral("Lines which are within this range (km) will be disregarded."));
  EXPECT_EQ(In<QLineEdit>(*options, "txtMaxZ").text(), QStringLiteral("0"));
  EXPECT_EQ(In<QLineEdit>(*options, "txtMaxZ").toolTip(),
            QStringLiteral("Only the points with elevation (feet) smaller or equal with this value will be drawn. "
                           "Default value 0."));
  EXPECT_EQ(Label("lblWORKING"), QStringLiteral("WORKING..."));
  for (const char* told : {"lblWORKING", "PB1", "lblLabel1", "lblLabel2"}) EXPECT_FALSE(Visible(told)) << told;
}

TEST_F(ImportObjOptions, EachWayShowsWhatItAsks) {
  Open();
  EXPECT_EQ(Label("lblDependingOn"), QStringLiteral("Color of the icons:"));
  EXPECT_FALSE(Visible("txtMaxZ"));
  EXPECT_FALSE(Visible("Option3_1"));
  Press(*options, "OptImportType_1");
  EXPECT_EQ(Label("lblDependingOn"), QStringLiteral("Color of the lines:"));
  EXPECT_TRUE(Visible("txtSimplFactor"));
  EXPECT_TRUE(Visible("txtMaxZ"));
  EXPECT_FALSE(Visible("Option3_1"));
  Press(*options, "OptImportType_2");
  EXPECT_EQ(Label("lblDependingOn"), QStringLiteral("Icon, and its color:"));
  EXPECT_FALSE(Visible("txtMaxZ"));
  EXPECT_TRUE(Visible("Option3_35"));
  EXPECT_TRUE(Visible("cmdCol"));
}

TEST_F(ImportObjOptions, SingleIconAndColourAreTaken) {
  Open();
  Press(*options, "OptImportType_2");
  Press(*options, "Option3_3");
  desk.ColourAnswers = {0x00123456, std::nullopt};
  Press(*options, "cmdCol");
  Press(*options, "cmdCol");
  EXPECT_EQ(desk.ColourQuestions.size(), 2U);
  EXPECT_EQ(In<ColourButton>(*options, "cmdCol").Colour(), 0x00123456U) << "the second one was cancelled";
  Press(*options, "cmdImport");
  EXPECT_EQ(options->result(), QDialog::Accepted);
  ASSERT_EQ(Imported().UpperBound(), 4U);
  for (const areas::Area& area : Imported().Live()) {
    EXPECT_EQ(area.Icon, 3);
    EXPECT_EQ(area.Color, 0x00123456U);
  }
  EXPECT_EQ(Imported()[3].Name, "charlie <b>");
}

TEST_F(ImportObjOptions, LinesAreTakenByTheFields) {
  Open();
  Press(*options, "OptImportType_1");
  // 60 feet are 0.0183 km.
  Type("txtSimplFactor", "0,02km");
  EXPECT_EQ(In<QLineEdit>(*options, "txtSimplFactor").text(), QStringLiteral("0,02"));
  Press(*options, "cmdImport");
  EXPECT_TRUE(Imported().Empty());
  Open();
  Press(*options, "OptImportType_1");
  Type("txtSimplFactor", "0,018");
  Type("txtMaxZ", "-1");
  Press(*options, "cmdImport");
  EXPECT_TRUE(Imported().Empty());
  Open();
  Press(*options, "OptImportType_1");
  Type("txtSimplFactor", "0,018");
  Press(*options, "cmdImport");
  ASSERT_EQ(Imported().UpperBound(), 1U);
  EXPECT_EQ(Imported()[1].Name, "bravo");
  EXPECT_EQ(Imported()[1].Type, areas::AreaType::Region);
}

TEST_F(ImportObjOptions, ProgressIsShownWhileItWorks) {
  Open();
  desk.WhenEventsRun = [this] {
    EXPECT_TRUE(Visible("lblWORKING"));
    EXPECT_TRUE(Visible("PB1"));
    EXPECT_FALSE(Enabled(*options, "cmdImport"));
    EXPECT_FALSE(Enabled(*options, "cmdBack"));
    EXPECT_FALSE(Enabled(*options, "OptImportType_1"));
    EXPECT_TRUE(Enabled(*options, "cmdCancel"));
    if (desk.EventRuns > 1) return;
    EXPECT_EQ(Label("lblLabel1"), QStringLiteral("Proccessing Objective 1 of total 4"));
    EXPECT_EQ(Label("lblLabel2"), QStringLiteral("(* bravo *)"));
    EXPECT_EQ(In<QProgressBar>(*options, "PB1").value(), 25);
  };
  Press(*options, "cmdImport");
  EXPECT_GE(desk.EventRuns, 1);
  EXPECT_EQ(In<QProgressBar>(*options, "PB1").value(), 100);
  EXPECT_EQ(Label("lblLabel2"), QStringLiteral("(* delta *)"));
  EXPECT_EQ(options->result(), QDialog::Accepted);
}

TEST_F(ImportObjOptions, CancelStopsTheImportAndNothingHasChanged) {
  for (const char* way : {"cmdCancel", "Escape"}) {
    SCOPED_TRACE(way);
    Open();
    Press(*options, "OptImportType_1");
    desk.EventRuns = 0;
    desk.WhenEventsRun = [this, way] {
      if (desk.EventRuns > 1) return;
      if (std::string(way) == "Escape") {
        QTest::keyClick(options.get(), Qt::Key_Escape);
      } else {
        Press(*options, way);
      }
    };
    Press(*options, "cmdImport");
    EXPECT_EQ(desk.EventRuns, 1);
    EXPECT_TRUE(options->isVisible());
    EXPECT_TRUE(Enabled(*options, "cmdImport"));
    EXPECT_FALSE(Visible("PB1"));
    EXPECT_TRUE(Catalogue().AreaGroups.Empty());
    EXPECT_EQ(station.AreaSteps.UndoText(), "");
    EXPECT_EQ(MapDraws(), 0);
    EXPECT_TRUE(desk.Boxes.empty());
    // Another time it is done.
    desk.WhenEventsRun = nullptr;
    Press(*options, "cmdImport");
    EXPECT_EQ(Imported().UpperBound(), 1U);
    Catalogue() = {};
    station.AreaSteps.Clear();
    MapDraws();
  }
}

TEST_F(ImportObjOptions, WithoutModelsLinesAreRefusedAndTheWindowStays) {
  std::filesystem::remove(disk / "KoreaObj.HDR");
  Open();
  Press(*options, "OptImportType_1");
  Press(*options, "cmdImport");
  ASSERT_EQ(desk.Boxes.size(), 1U);
  EXPECT_EQ(desk.Boxes[0].Text, "Could not load HDR file.");
  EXPECT_TRUE(options->isVisible());
  Press(*options, "OptImportType_0");
  Press(*options, "cmdImport");
  EXPECT_EQ(Imported().UpperBound(), 4U);
}

}  // namespace
}  // namespace kestrel::shell
