#pragma once

#include <QCheckBox>
#include <QProgressBar>
#include <QRadioButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <memory>

#include "core/theater_data.h"
#include "falcon/island_install.h"
#include "shell/falcon/import_theater_frm.h"
#include "shell/falcon/multi_col_editorfrm.h"
#include "shell/parts/colour_button.h"
#include "shell/theaters/theater_windows_fixture.h"

namespace kestrel::shell {

/// The window over a made installation.
class ImportTheater : public TheaterWindows {
 protected:
  void TearDown() override {
    window.reset();
    TheaterWindows::TearDown();
  }
  void Open() {
    window = std::make_unique<ImportTheaterFrm>(program, island.Install, 1, &Frame());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }

  QTreeWidget& Criteria() { return In<QTreeWidget>(*window, "ListView1"); }
  /// "#rrggbb height" of each row.
  QStringList Listed() {
    QStringList rows;
    for (int n = 0; n < Criteria().topLevelItemCount(); ++n) {
      const QTreeWidgetItem& row = *Criteria().topLevelItem(n);
      rows << row.icon(0).pixmap(16, 16).toImage().pixelColor(8, 8).name() + u' ' + row.text(1);
    }
    return rows;
  }
  /// Presses a button that opens the editor, types there and presses OK, or Cancel.
  void Edit(const char* button, const char* height, const char* end = "cmdOK") {
    InNextDialog([=](QWidget& editor) {
      EXPECT_EQ(editor.windowTitle(), QStringLiteral("Edit Entry"));
      Type(editor, "txtElevation", height);
      Press(editor, end);
    });
    Press(*window, button);
  }
  void AddColour(base::Colour colour, const char* height) {
    desk.ColourAnswers.emplace_back(colour);
    InNextDialog([=](QWidget& editor) {
      Press(editor, "cmdColor");
      Type(editor, "txtElevation", height);
      Press(editor, "cmdOK");
    });
    Press(*window, "cmdAdd");
  }
  void AddThree() {
    AddColour(0xFFFFFF, "3200");
    AddColour(0x00FF00, "999");
    AddColour(0xFF0000, "1999");
  }
  base::Colour ColourOf(const char* button) { return In<ColourButton>(*window, button).Colour(); }
  /// The picture of a theater that was imported, as it is on the map.
  QImage PictureFile(const char* name) { return QImage(folder.filePath(QString::fromLatin1(name))); }

  test::IslandInstall island;
  std::unique_ptr<ImportTheaterFrm> window;
};

}  // namespace kestrel::shell
