#pragma once

#include "shell/areas/area_panel.h"
#include "shell/areas/points_view.h"

namespace kestrel::shell {

/// Frame1_4: the points of a flight plan.
class FlightPlanPanel final : public AreaPanel {
  Q_OBJECT
 public:
  FlightPlanPanel(EditorHand& common, QWidget* owner);
  void ShowEditor() override;

 private:
  /// Runs what may change any row.
  template <class Act>
  void Rebuild(const char* handler, Act act);
  /// Opens the window of point `index`, 0 for a new one.
  void Details(const char* handler, std::size_t index);
  void EditSelected(const char* handler);

  PointsView* ListView2;
  QPushButton* cmdEditPointFP;
  QPushButton* cmdDelPointFP;
  QCheckBox* chkShowWaypointElevation;
};

}  // namespace kestrel::shell
