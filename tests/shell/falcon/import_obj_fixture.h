#pragma once

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QRadioButton>
#include <memory>
#include <string>

#include "core/objective_world.h"
#include "shell/areas/area_tables_fixture.h"
#include "shell/falcon/import_obj_frm.h"
#include "shell/falcon/import_obj_options_frm.h"

namespace kestrel::shell {

/// A campaign with "bravo", an airbase of Red with a hangar, "Alpha" and "charlie", SAM sites of Blue without
/// buildings, and "delta" of no known class; the windows over it with doubles at the seams.
class ImportObjWindows : public AreaTables {
 protected:
  ImportObjWindows() {
    data.World.Teams[1].Name = "Red";
    data.World.Teams[2].Name = "Blue & co";
    const std::int32_t hangar = test::AddBuilding(data, {1, 0, 0, 0, 0, 0, 0});
    const std::uint16_t airbase = test::AddObjectiveClass(data, 1, {{.ClassIndex = hangar}});
    const std::uint16_t site = test::AddObjectiveClass(data, 31);
    test::AddObjective(data, airbase, "bravo", 1);
    test::AddObjective(data, site, "Alpha", 2);
    test::AddObjective(data, site, "charlie <b>", 2);
    test::AddObjective(data, 9999, "delta");
    test::WriteModels(disk.Path(), {test::LineShape(60)});
  }

  void Open() {
    window = std::make_unique<ImportObjFrm>(program, data, models, dialogs, &frame);
    Activate(*window);
  }
  QTreeView& List() { return In<QTreeView>(*window, "ListView1"); }
  void Choose(const std::string& option) { Press(*window, option.c_str()); }
  QString Count() { return In<QLabel>(*window, "lblObjectivesSelected").text(); }
  bool AllChecked() { return In<QCheckBox>(*window, "chkSelectAll").isChecked(); }
  /// The names that are shown.
  std::string Names() { return Texts(List()).join(u' ').toStdString(); }
  void ClickColumn(int column) {
    QHeaderView& header = *List().header();
    const QPoint place(header.sectionViewportPosition(column) + 8, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
  }
  /// Runs `act` on the window of the options, which the next call opens.
  template <class Act>
  void InOptions(Act act) {
    QTimer::singleShot(0, qApp, [act, this] {
      auto* options = dynamic_cast<ImportObjOptionsFrm*>(QApplication::activeModalWidget());
      ASSERT_NE(options, nullptr);
      optionsSeen = true;
      act(*options);
      if (options->isVisible()) options->close();
    });
  }
  base::Table<areas::Area>& Imported() { return Catalogue().AreaGroups[1].Areas; }

  test::TempFolder disk;
  core::CampaignData data = test::NoObjectives();
  falcon::ModelStore models{{disk.Path()}, {}};
  std::unique_ptr<ImportObjFrm> window;
  bool optionsSeen = false;
};

}  // namespace kestrel::shell
