#pragma once

#include <QDialog>
#include <memory>

#include "core/objective_import.h"
#include "core/objective_list.h"
#include "core/program.h"
#include "falcon/model_store.h"
#include "shell/parts/modal_count.h"

namespace Ui {
class ImportObjFrm;
}

namespace kestrel::shell {

class ObjectiveRows;

/// Which objectives of a campaign become areas of the map. "Next >" leads to how they are drawn; the window is accepted
/// when they have been imported.
class ImportObjFrm final : public QDialog {
  Q_OBJECT
 public:
  /// All but the owner outlive the window.
  ImportObjFrm(core::Program& running, const core::CampaignData& campaign, falcon::ModelStore& source,
               ModalCount& dialogs, QWidget* owner);
  ~ImportObjFrm() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Populate();
  void AddOptions();
  void AddSortKeys();
  void Connect();
  /// After a filter: the rows that are shown now.
  void ShowRows();
  void ShowSelection();
  void Next();

  core::Program& program;
  const core::CampaignData& data;
  falcon::ModelStore& models;
  ModalCount& modal;
  core::ObjectiveList list;
  core::ObjectiveImport how;  ///< as it was chosen last, while the window is open
  std::unique_ptr<Ui::ImportObjFrm> form;
  ObjectiveRows* rows;
};

}  // namespace kestrel::shell
