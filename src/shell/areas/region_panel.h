#pragma once

#include "shell/areas/area_panel.h"
#include "shell/areas/points_view.h"

namespace kestrel::shell {

/// Frame1_0: the segments of a region.
class RegionPanel final : public AreaPanel {
  Q_OBJECT
 public:
  RegionPanel(EditorHand& common, QWidget* owner);
  void ShowEditor() override;

 private:
  /// Runs what may change any row.
  template <class Act>
  void Rebuild(const char* handler, Act act);
  /// Opens the window of segment `index`, 0 for a new one.
  void Details(const char* handler, std::size_t index);
  void EditSelected(const char* handler);

  PointsView* ListView1;
  QPushButton* Command3;
  QPushButton* Command4;
  QPushButton* Command5;
  QPushButton* Command1;
  QCheckBox* chkBulkDelete;
  QCheckBox* chkSelectAll;
  QCheckBox* chkSingleClick;
};

}  // namespace kestrel::shell
