#pragma once

#include <QDialog>
#include <optional>
#include <vector>

#include "areas/drawing_aids.h"
#include "map/cursor_tools.h"
#include "shell/areas/editor_hand.h"

class QBoxLayout;
class QButtonGroup;
class QKeyEvent;
class QLabel;
class QStackedWidget;

namespace kestrel::shell {

class AreaPanel;
class TextPanel;

/// The editor of one area. It is no modal dialog: clicks on the map go to it, and whatever is done in it shows there at
/// once. It shows the station's editor, which has been opened before; OK, Cancel and the end of the program close that.
class AreasDetailsFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `shown` and `dialogs` outlive the window.
  AreasDetailsFrm(core::Program& shown, ModalCount& dialogs, QWidget* frame);
  /// Cancels what has not been ended.
  ~AreasDetailsFrm() override;

 public Q_SLOTS:
  /// A left click on the map, map units. With Ctrl it snaps to an end point, with Shift it holds the bearing.
  void MapClicked(double x, double y, Qt::KeyboardModifiers keys);
  /// A key pressed on the map: Backspace and Ctrl+Z take back what the last click drew. False: the key is not the
  /// editor's.
  bool MapKey(const QKeyEvent& key);
  /// What is under the pointer on the map, map units: the line from the last point goes there.
  void PointerMoved(double x, double y, Qt::KeyboardModifiers keys);
  /// OK; the window stays while a text cannot be taken.
  void accept() override;
  void reject() override;

 Q_SIGNALS:
  /// The line from the last point to where a click would go, to be shown over the map; none takes it away.
  void RubberMoved(const std::optional<map::MeasuredLine>& line, base::Colour colour);

 private:
  struct Pointer {
    areas::MapPoint Place;
    Qt::KeyboardModifiers Keys;
  };

  void AddName(QBoxLayout& rows);
  void AddTypes(QBoxLayout& rows);
  void AddPanels(QBoxLayout& rows);
  void AddButtons(QBoxLayout& rows);
  /// Brings every control to what the editor holds.
  void ShowEditor();
  void ShowRubber();
  areas::MapPoint PlaceOf(const Pointer& pointer);
  /// False, with the reason shown, when the code page does not hold a text that OK would take.
  bool TextsHeld();
  /// Takes the line off the map; what remains is to close.
  void End(base::Changed changed);

  core::Program& program;
  EditorHand hand;
  QLineEdit* Text13 = nullptr;
  QButtonGroup* Option1 = nullptr;  ///< by the numbers of the types
  QStackedWidget* stack = nullptr;
  std::vector<AreaPanel*> panels;
  TextPanel* text = nullptr;
  QLabel* refused = nullptr;
  std::optional<Pointer> pointer;  ///< once it has been over the map
  bool rubberShown = false;
  bool ended = false;
};

}  // namespace kestrel::shell
