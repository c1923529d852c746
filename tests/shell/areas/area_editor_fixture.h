#pragma once

#include <QCheckBox>
#include <QRadioButton>
#include <QToolButton>
#include <memory>
#include <optional>
#include <string>

#include "areas/area_editor.h"
#include "map/geometry.h"
#include "shell/areas/areas_details_frm.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/numbered_list.h"
#include "shell/theaters/theater_windows_fixture.h"

namespace kestrel::shell {

/// A running station with one group of areas, "Targets", and the editor's window over its map.
class AreaEditorWindow : public TheaterWindows {
 protected:
  void SetUp() override {
    TheaterWindows::SetUp();
    station.Areas = {};
    station.Areas.AreaFolders.Append({.Name = "Folder", .Visible = areas::On});
    station.Areas.AreaGroups.Append({.Name = "Targets", .FolderIndex = 1});
  }

  void TearDown() override {
    TakeWindow();
    TheaterWindows::TearDown();
  }

  base::Table<areas::Area>& Areas() { return station.Areas.AreaGroups[1].Areas; }
  areas::AreaEditor& Editor() { return station.Editor; }
  areas::Area& Work() { return station.Editor.WorkArea; }

  AreasDetailsFrm& OpenNew() {
    program.Shown.Refresh(areas::OpenNew(station.Editor, station.Areas, 1, windows.Texts()));
    return Opened();
  }
  /// Puts an area into the group and opens the editor for it.
  AreasDetailsFrm& OpenExisting(areas::Area area) {
    areas::AreaBounds(area, windows.Texts());
    Areas().Append(std::move(area));
    program.Shown.Refresh(areas::OpenExisting(station.Editor, station.Areas, 1,
                                              static_cast<std::int32_t>(Areas().UpperBound()), windows.Texts()));
    return Opened();
  }
  AreasDetailsFrm& Window() { return *window; }
  void TakeWindow() {
    window.reset();
    open.reset();
  }

  /// Presses a button of any kind, or a box.
  void PressIn(const char* name) { QTest::mouseClick(&In<QAbstractButton>(Window(), name), Qt::LeftButton); }
  /// A click on the words of a type.
  void Choose(const char* option) {
    auto& button = In<QRadioButton>(Window(), option);
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
  }
  void Tick(const char* box) {
    auto& check = In<QCheckBox>(Window(), box);
    QTest::mouseClick(&check, Qt::LeftButton, {}, QPoint(8, check.height() / 2));
  }
  bool Visible(const char* name) { return In<QWidget>(Window(), name).isVisible(); }
  bool Enabled(const char* name) { return In<QWidget>(Window(), name).isEnabled(); }
  bool Checked(const char* name) { return In<QAbstractButton>(Window(), name).isChecked(); }
  QString Text(const char* field) { return TextOf(Window(), field); }
  /// As a person leaves a field: with Tab.
  void Leave(const char* field) {
    auto& line = In<QLineEdit>(Window(), field);
    line.setFocus();
    QTest::keyClick(&line, Qt::Key_Tab);
  }

  /// The pixel so far right of and above the middle of the map.
  QPoint Pixel(int right, int up) { return {Picture().width() / 2 + right, Picture().height() / 2 - up}; }
  /// The map position of that pixel: the middle of the theater, 512, lies in the middle of the map, and a pixel is a
  /// map unit at zoom 1. A side of an odd number of pixels has its middle between two.
  double MapX(int right) { return 512 + right - (Picture().width() % 2) / 2.0; }
  double MapY(int up) { return 512 + up + (Picture().height() % 2) / 2.0; }
  void ClickMap(int right, int up, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(&Picture(), Qt::LeftButton, keys, Pixel(right, up));
  }
  QString Number(double value) { return QString::number(value, 'f', 2); }

  QTreeView& ListOf(const char* name) { return In<QTreeView>(Window(), name); }
  QStringList RowOf(const char* name, int row) {
    const QAbstractItemModel& model = *ListOf(name).model();
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column) {
      texts << (row == 0 ? model.headerData(column, Qt::Horizontal) : model.index(row - 1, column).data()).toString();
    }
    return texts;
  }
  int RowsOf(const char* name) { return ListOf(name).model()->rowCount(); }
  std::size_t SelectedIn(const char* name) { return NumberedList::Selected(ListOf(name)); }
  QPoint PlaceIn(const char* name, int row) {
    QTreeView& list = ListOf(name);
    return list.visualRect(list.model()->index(row - 1, 2)).center();
  }
  void ClickIn(const char* name, int row) {
    QTest::mouseClick(ListOf(name).viewport(), Qt::LeftButton, {}, PlaceIn(name, row));
  }
  void DoubleClickIn(const char* name, int row) {
    ClickIn(name, row);
    QTest::mouseDClick(ListOf(name).viewport(), Qt::LeftButton, {}, PlaceIn(name, row));
  }

  /// The colour that the map shows at a pixel so far right of and above its middle.
  QColor Seen(int right, int up) {
    const QImage seen = Picture().grab().toImage();
    return seen.pixelColor(Pixel(right, up) * seen.devicePixelRatio());
  }

 private:
  AreasDetailsFrm& Opened() {
    EXPECT_TRUE(station.Editor.Open);
    TakeWindow();
    // As its owner has it: the floating windows are out of its way.
    open.emplace(dialogs);
    window = std::make_unique<AreasDetailsFrm>(program, dialogs, &Frame());
    QObject::connect(window.get(), &QDialog::finished, [this] { open.reset(); });
    MapPicture& picture = Picture();
    QObject::connect(&picture, &MapPicture::Pressed, window.get(), &AreasDetailsFrm::MapClicked);
    QObject::connect(&picture, &MapPicture::PointerMoved, window.get(), &AreasDetailsFrm::PointerMoved);
    QObject::connect(&picture, &MapPicture::UnboundKey, window.get(), &AreasDetailsFrm::MapKey);
    QObject::connect(window.get(), &AreasDetailsFrm::RubberMoved, &picture, &MapPicture::ShowRubber);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == window.get(); }));
    return *window;
  }

  std::unique_ptr<AreasDetailsFrm> window;
  std::optional<ModalCount::Scope> open;
};

}  // namespace kestrel::shell
