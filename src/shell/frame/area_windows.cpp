#include "shell/frame/area_windows.h"

#include "areas/area_editor.h"
#include "areas/area_tree.h"
#include "shell/areas/areas_details_frm.h"
#include "shell/areas/areas_details_list_frm.h"
#include "shell/frame/frame.h"
#include "shell/parts/guard.h"
#include "shell/parts/remembered_place.h"

namespace kestrel::shell {
namespace {

/// Puts a window where it is kept, or, when that is nowhere yet, inside the frame's corner; on a screen in any case.
void Place(QWidget& window, const QWidget& frame, std::int32_t left, std::int32_t top) {
  constexpr QPoint Inside(48, 96);
  window.adjustSize();
  const QPoint kept = left == 0 && top == 0 ? frame.pos() + Inside : PixelsOf({left, top});
  const std::vector<core::WindowArea> screens = ScreenAreas();
  // Of two screens that it lies on, that of its corner.
  const std::size_t nearest = core::NearestScreen(PlaceOf(kept), {}, screens);
  window.move(PixelsOf(core::Inside(PlaceOf(kept), SizeOf(window.size()), screens[nearest])));
}

}  // namespace

AreaWindows::AreaWindows(core::Program& shown, ModalCount& dialogs, MDIForm1& owner)
    : QObject(&owner), program(shown), modal(dialogs), frame(owner) {}

void AreaWindows::OpenList(std::size_t group) {
  if (list == nullptr) {
    list = new AreasDetailsListFrm(program, modal, &frame);
    connect(list, &AreasDetailsListFrm::AreaAsked, this,
            [this](std::size_t area) { Guarded(program.Log, "AreasDetailsFrm", [this, area] { OpenEditor(area); }); });
    connect(list, &AreasDetailsListFrm::Exited, this,
            [this] { Guarded(program.Log, "AreasDetailsListFrm", [this] { ListExited(); }); });
  }
  listOpen = true;
  Hold();
  list->ShowGroup(group);
  Place(*list, frame, program.State.Editors.AREADETAILLISTLEFT, program.State.Editors.AREADETAILLISTTOP);
  list->show();
}

void AreaWindows::ListExited() {
  KeepPlace(*list, program.State.Editors.AREADETAILLISTLEFT, program.State.Editors.AREADETAILLISTTOP);
  list->hide();
  listOpen = false;
  // Nothing is to come back while the frame goes.
  if (frame.Closing()) return;
  Hold();
  program.Shown.Refresh(base::Changed::Areas | base::Changed::Map);
}

void AreaWindows::OpenEditor(std::size_t area) {
  core::Station& station = program.State;
  const auto group = static_cast<std::int32_t>(list->GroupIndex());
  program.Shown.Refresh(area == 0 ? areas::OpenNew(station.Editor, station.Areas, group, program.Shown.Texts())
                                  : areas::OpenExisting(station.Editor, station.Areas, group,
                                                        static_cast<std::int32_t>(area), program.Shown.Texts()));
  ShowEditor();
}

void AreaWindows::AddNewIconArea() {
  core::Station& station = program.State;
  std::int32_t group = 0;
  {
    const areas::OneStep step(station.Areas, station.AreaSteps, "new icon area");
    std::string folder;
    group = areas::AddTempGroup(station.Areas, station.AreaSteps,
                                areas::FindOrAddFolder(station.Areas, station.AreaSteps, folder));
  }
  program.Shown.Refresh(base::Changed::Areas);
  program.Shown.Refresh(areas::PopulateFromNewIconMenu(station.Editor, station.Areas, group, station.View.CursorMapX,
                                                       station.View.CursorMapY, program.Shown.Texts()));
  ShowEditor();
}

void AreaWindows::ShowEditor() {
  if (!program.State.Editor.Open) return;
  if (listOpen) {
    KeepPlace(*list, program.State.Editors.AREADETAILLISTLEFT, program.State.Editors.AREADETAILLISTTOP);
    list->hide();
  }
  editor = new AreasDetailsFrm(program, modal, &frame);
  editor->setAttribute(Qt::WA_DeleteOnClose);
  MapPicture& map = frame.Map().Picture();
  connect(&map, &MapPicture::Pressed, editor, &AreasDetailsFrm::MapClicked);
  connect(&map, &MapPicture::PointerMoved, editor, &AreasDetailsFrm::PointerMoved);
  connect(&map, &MapPicture::UnboundKey, editor, &AreasDetailsFrm::MapKey);
  connect(editor, &AreasDetailsFrm::RubberMoved, &map, &MapPicture::ShowRubber);
  connect(editor, &QDialog::finished, this,
          [this] { Guarded(program.Log, "AreasDetailsFrm", [this] { EditorClosed(); }); });
  Hold();
  Place(*editor, frame, program.State.Editors.AREADETAILLEFT, program.State.Editors.AREADETAILTOP);
  editor->show();
}

void AreaWindows::EditorClosed() {
  KeepPlace(*editor, program.State.Editors.AREADETAILLEFT, program.State.Editors.AREADETAILTOP);
  editor = nullptr;
  if (frame.Closing()) return;
  Hold();
  if (listOpen) {
    list->RefreshList();
    list->show();
  }
  program.Shown.Refresh(base::Changed::Areas | base::Changed::Map);
}

void AreaWindows::Hold() {
  const bool working = listOpen || editor != nullptr;
  frame.Hold("mnuTheaters", *this, working);
  frame.Withhold(core::ToolWindow::Areas, working);
  for (const char* entry : {"mnuAddnewIconArea", "mnuSetNewBulls", "mnuBullseyes"}) {
    frame.Hold(entry, *this, editor != nullptr);
  }
}

}  // namespace kestrel::shell
