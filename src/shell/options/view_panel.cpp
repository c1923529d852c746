#include "shell/options/view_panel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include "core/execute_shortcut.h"
#include "map/geometry.h"
#include "shell/options/panel_parts.h"
#include "shell/parts/colour_button.h"
#include "shell/parts/guard.h"
#include "shell/parts/line_icon.h"
#include "shell/parts/unicode_text.h"

namespace kestrel::shell {
namespace {

/// Each power of two is a value of its own: ten values to a step below x1, eleven above.
constexpr map::SliderRange ZoomRange{0, 140};
constexpr int ZoomPage = 11;

struct Arrow {
  const char* Name;
  IconKind Icon;
  const char* Meaning;
  std::int32_t Direction;
  int Row, Column;  ///< in the cross that they form
};
constexpr Arrow arrows[] = {
    {"cmdUp", IconKind::RollUp, "Move the map half a screen up", 1, 0, 1},
    {"cmdLeft", IconKind::Leftward, "Move the map half a screen to the left", 3, 1, 0},
    {"cmdCenter", IconKind::Centre, "The center of the theater", 5, 1, 1},
    {"cmdRight", IconKind::Rightward, "Move the map half a screen to the right", 4, 1, 2},
    {"cmdDown", IconKind::RollDown, "Move the map half a screen down", 2, 2, 1},
};
constexpr int ArrowSide = 28;
/// A button that shows a number, pixels.
constexpr int ViewNumberWidth = 40;

}  // namespace

ViewPanel::ViewPanel(core::Program& running, OptionControls& controls, QWidget* owner)
    : QFrame(owner), program(running), options(controls) {
  setObjectName(QStringLiteral("Frame1"));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
  rows->setSpacing(PanelGap);
  QHBoxLayout* columns = NewRow(*rows);
  auto* left = new QVBoxLayout;
  auto* right = new QVBoxLayout;
  for (QVBoxLayout* column : {left, right}) {
    column->setSpacing(PanelGap);
    columns->addLayout(column, 1);
  }
  AddPlots(*left);
  AddLayers(*left);
  AddColors(*right);
  AddZoom(*right);
  for (QVBoxLayout* column : {left, right}) column->addStretch(1);
  AddShortcuts(*rows);
  rows->addStretch(1);
  ShowZoom();
}

template <class Step>
void ViewPanel::Run(const char* control, Step step) {
  Guarded(program.Log, control, [this, &step] { program.Shown.Refresh(step(program.State.View)); });
}

void ViewPanel::AddPlots(QBoxLayout& column) {
  QHBoxLayout* both = NewRow(column);
  QVBoxLayout* plots = NewGroup("Display Plots", *both, this);
  plots->addWidget(options.Check("Check1", Words("Real/Sim"), Words("Plots of real players"), this));
  plots->addWidget(options.Check("Check2", Words("AI"), Words("Plots of AI aircraft"), this));
  QVBoxLayout* labels = NewGroup("Display Labels", *both, this);
  labels->addWidget(options.Check("Check4", Words("Real/Sim"), Words("Labels of real players"), this));
  labels->addWidget(options.Check("Check6", Words("AI"), Words("Labels of AI aircraft"), this));
}

void ViewPanel::AddLayers(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Map", column, this);
  const auto withColor = [this, rows](QCheckBox* box, const char* color, const char* meaning) {
    QHBoxLayout* row = NewRow(*rows);
    row->addWidget(box, 1);
    row->addWidget(options.Color(color, {}, Words(meaning), this));
    return row;
  };
  withColor(options.Check("Check3", Words("Show Bullseye"), Words("The bullseye mark"), this), "cmdBullseyeColor",
            "Color of the bullseye");
  withColor(options.Check("chkShowLat", Words("Show Lat-Long Grid"), Words("Lines on whole degrees"), this),
            "cmdGridPrimCol", "Color of the lines on whole degrees");
  QHBoxLayout* half = withColor(options.Check("chkGrid30Resolution", Words("30' Resolution"),
                                              Words("Lines on half degrees too, while the grid is shown"), this),
                                "cmdGridSecCol", "Color of the lines on half degrees");
  half->insertSpacing(0, 2 * PanelGap);
  rows->addWidget(options.Check("Check5", Words("Show Plot History"), Words("Trails behind the plots"), this));
  rows->addWidget(options.Check("Check9", Words("Show Area Names"), Words("Names of the areas on the map"), this));
  rows->addWidget(options.Font("cmdAreaNameFont", Words("Area Name Font"), Words("Font of the areas' names"), this));
}

void ViewPanel::AddColors(QBoxLayout& column) {
  QVBoxLayout* plots = NewGroup("AI's Plot Color", column, this);
  QHBoxLayout* sides = NewRow(*plots);
  sides->addWidget(options.Color("cmdAIEnemy", Words("Enemy"), Words("Color of hostile AI aircraft"), this));
  sides->addWidget(options.Color("cmdAIFriends", Words("Friendly"), Words("Color of friendly AI aircraft"), this));
  QVBoxLayout* cursor = NewGroup("Cursor", column, this);
  QHBoxLayout* colors = NewRow(*cursor);
  colors->addWidget(options.Color("cmdCursorCol", Words("Cursor Line"), Words("Color of the bearing line"), this));
  colors->addWidget(options.Color("cmdCursorTextColor", Words("Cursor Text"), Words("Color of its text"), this));
  cursor->addWidget(options.Font("cmdCursorFont", Words("Cursor Text Font"), Words("Font of its text"), this));
}

void ViewPanel::AddZoom(QBoxLayout& column) {
  QVBoxLayout* rows = NewGroup("Zoom and Center", column, this);
  lblZoom = new QLabel(this);
  lblZoom->setObjectName(QStringLiteral("lblZoom"));
  rows->addWidget(lblZoom);
  ZoomScroll = new QSlider(Qt::Horizontal, this);
  ZoomScroll->setObjectName(QStringLiteral("ZoomScroll"));
  ZoomScroll->setRange(ZoomRange.Min, ZoomRange.Max);
  ZoomScroll->setPageStep(ZoomPage);
  ZoomScroll->setToolTip(QStringLiteral("Zoom of the map"));
  ZoomScroll->setAccessibleName(ZoomScroll->toolTip());
  connect(ZoomScroll, &QSlider::valueChanged, this, &ViewPanel::TakeZoom);
  rows->addWidget(ZoomScroll);
  AddMoves(*rows);
}

void ViewPanel::AddMoves(QBoxLayout& rows) {
  auto* cross = new QGridLayout;
  cross->setSpacing(RowGap);
  cross->setColumnStretch(3, 1);
  for (const Arrow& arrow : arrows) {
    auto* button = new QToolButton(this);
    button->setObjectName(Words(arrow.Name));
    button->setIcon(LineIcon(arrow.Icon));
    button->setFixedSize(ArrowSide, ArrowSide);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(Words(arrow.Meaning));
    button->setAccessibleName(button->toolTip());
    cross->addWidget(button, arrow.Row, arrow.Column);
    connect(button, &QToolButton::clicked, this, [this, &arrow] {
      Run(arrow.Name, [&arrow](map::ViewState& view) { return map::MoveScreen(view, arrow.Direction); });
    });
  }
  rows.addLayout(cross);
}

void ViewPanel::AddShortcuts(QBoxLayout& rows) {
  QHBoxLayout* row = NewRow(*NewGroup("View Shortcuts", rows, this));
  for (std::int16_t slot = 1; slot <= 3; ++slot) {
    const QString number = QString::number(slot);
    if (slot > 1) row->addSpacing(PanelGap);
    auto* show = new QPushButton(number, this);
    show->setObjectName(QStringLiteral("cmdViewShortcut_") + number);
    show->setToolTip(QStringLiteral("Show view ") + number);
    show->setAccessibleName(show->toolTip());
    auto* save = new QPushButton(QStringLiteral("Save ") + number, this);
    save->setObjectName(QStringLiteral("cmdSaveShortcut_") + number);
    save->setToolTip(QStringLiteral("Keep the present center and zoom as view ") + number);
    show->setFixedWidth(ViewNumberWidth);
    row->addWidget(show);
    row->addWidget(save, 1);
    for (QPushButton* button : {show, save}) button->setAutoDefault(false);
    connect(show, &QPushButton::clicked, this, [this, slot] {
      Run("cmdViewShortcut", [slot](map::ViewState& view) { return map::SetViewShortcut(view, slot); });
    });
    connect(save, &QPushButton::clicked, this,
            [this, slot] { Guarded(program.Log, "cmdSaveShortcut", [this, slot] { core::SaveView(program, slot); }); });
  }
}

void ViewPanel::TakeZoom(int value) {
  const QScopedValueRollback<bool> ours(sliding, true);
  Run("ZoomScroll",
      [value](map::ViewState& view) { return map::ChangeRes(view, map::ResolutionFromScroll(ZoomRange, value)); });
}

void ViewPanel::ShowZoom() {
  const map::ViewState& view = program.State.View;
  lblZoom->setText(FromBytes(map::ZoomText(view)));
  if (sliding) return;
  const QSignalBlocker quiet(ZoomScroll);
  ZoomScroll->setValue(map::ScrollFromResolution(ZoomRange, view.Resolution));
}

}  // namespace kestrel::shell
