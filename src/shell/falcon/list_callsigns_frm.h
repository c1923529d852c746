#pragma once

#include <QDialog>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "core/channel_exchange.h"
#include "falcon/pilot_file.h"

namespace Ui {
class ListCallsignsFrm;
}

namespace kestrel::shell {

/// Asks whose channels are to be loaded or replaced. At first the pilot is selected who flew last, if he is there. The
/// choice of the installation is shown when there is more than one.
class ListCallsignsFrm final : public QDialog {
  Q_OBJECT
 public:
  /// `installs`, of which there is at least one, outlive the window.
  ListCallsignsFrm(core::ChannelUse use, const std::vector<falcon::FalconInstall>& installs, QWidget* owner);
  ~ListCallsignsFrm() override;

  const falcon::FalconInstall& Install() const;
  /// The file of the pilot who is selected.
  std::optional<std::filesystem::path> PilotFile() const;

 private:
  /// Lists the pilots of a folder; that of `last` is selected.
  void Populate(const std::filesystem::path& configDir, const std::string& last);
  void PopulateSelected();

  const std::vector<falcon::FalconInstall>& choice;
  std::vector<falcon::Callsign> pilots;
  std::unique_ptr<Ui::ListCallsignsFrm> form;
};

}  // namespace kestrel::shell
