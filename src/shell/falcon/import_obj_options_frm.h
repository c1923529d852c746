#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

#include "core/objective_import.h"
#include "core/objective_list.h"
#include "core/program.h"
#include "falcon/model_store.h"

class QButtonGroup;

namespace Ui {
class ImportObjOptionsFrm;
}

namespace kestrel::shell {

class ColourButton;

/// What is imported, and from where.
struct ObjectiveSource {
  const core::CampaignData& Data;
  falcon::ModelStore& Models;
  const core::ObjectiveList& List;
};

/// How objectives are drawn, and their import. It is accepted when they have been imported, rejected by "< Back", and
/// GivenUp by "Cancel", which during an import stops that alone.
class ImportObjOptionsFrm final : public QDialog {
  Q_OBJECT
 public:
  static constexpr int GivenUp = 2;  ///< a result beside Accepted and Rejected

  /// `running` and what `source` names outlive the window. `former`: what it begins with.
  ImportObjOptionsFrm(core::Program& running, const ObjectiveSource& source, const core::ObjectiveImport& former,
                      QWidget* owner);
  ~ImportObjOptionsFrm() override;

  core::ObjectiveImport Chosen() const;

 public Q_SLOTS:
  /// During an import it stops that, and the window stays.
  void reject() override;

 private:
  void AddIcons();
  void Show(const core::ObjectiveImport& former);
  void Connect();
  void ShowLook();
  void ShowWorking(bool on);
  void PickColour();
  void Cancel();
  void Import();
  /// False when the person has given the import up.
  bool Follow(const core::ObjectiveProgress& progress);

  core::Program& program;
  ObjectiveSource from;
  std::unique_ptr<Ui::ImportObjOptionsFrm> form;
  QButtonGroup* OptImportType;
  QButtonGroup* Option3;
  ColourButton* cmdCol;
  bool working = false;
  bool stopped = false;
  QElapsedTimer sinceEvents;  ///< were last let run
};

}  // namespace kestrel::shell
