#pragma once

#include <QDialog>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "core/program.h"
#include "core/theater_import.h"
#include "falcon/installations.h"

namespace Ui {
class ImportTheaterFrm;
}

namespace kestrel::shell {

class ColourButton;

/// How a theater of the simulator is to be painted, and its import. Its result is Accepted when the theater has been
/// imported, Back when the person wants to choose another one, else Rejected.
class ImportTheaterFrm final : public QDialog {
  Q_OBJECT
 public:
  static constexpr int Back = 2;

  /// For theater `theater` (1 or more) of `install`. `running` outlives the window.
  ImportTheaterFrm(core::Program& running, const falcon::FalconInstall& install, std::int32_t theater, QWidget* parent);
  ~ImportTheaterFrm() override;

 public Q_SLOTS:
  /// Imports. The window stays open when that fails or is cancelled.
  void accept() override;
  /// Ends what is going on; without it the window.
  void reject() override;

 protected:
  /// The Del key of the list.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void PrepareForm();
  void MakeColourButtons();
  void Connect();
  /// Shows the criteria anew, sorted; the row of `current` (0 or more) becomes the selected one.
  void RefreshList(std::size_t current = 0);
  void ShowSea();
  void ShowTwoColours();
  std::size_t SelectedRow() const;

  /// cmdAdd, or cmdEdit of a row.
  void EditCriterion(bool isNew);
  void DeleteCriterion();
  void AutoCalculate();
  void LoadPalette();
  void ExportColors();
  void ImportColors();
  /// Asks for the colour of a button and puts it into `colour`. False when the person cancels.
  bool PickColour(base::Colour& colour);

  falcon::TwoColours ChosenTwoColours() const;
  falcon::ColourScheme Scheme() const;
  /// Does `work`, which tells its progress, with all controls but cmdCancel disabled and the bar shown.
  void Run(const char* what, const std::function<void(const falcon::Progress&)>& work);
  void SetWorking(bool on);

  core::Program& program;
  core::TheaterImport import;
  falcon::ColourChoice choice;
  falcon::TwoColours custom = falcon::CustomColours;
  std::unique_ptr<Ui::ImportTheaterFrm> form;
  ColourButton *cmdSeaColor = nullptr, *cmdColor1 = nullptr, *cmdColor2 = nullptr;
  bool working = false;
  bool cancelled = false;
};

}  // namespace kestrel::shell
