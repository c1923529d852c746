#pragma once

#include <QGroupBox>

#include "core/program.h"

class QLabel;
class QLineEdit;

namespace kestrel::shell {

/// The group "IVC Status": whether the voice client runs and is connected, and what its radios have. It asks when it is
/// told to and by its button, never by a timer. Where the client cannot run there is one line that says so, and nothing
/// is asked.
class IvcStatus final : public QGroupBox {
  Q_OBJECT
 public:
  IvcStatus(core::Program& running, QWidget* owner);

  /// Asks for the whole status once and shows it.
  void Refresh();
  /// What was last found.
  const radio::VoiceStatus& Status() const { return status; }
  bool Connected() const { return status.Connected; }

 Q_SIGNALS:
  /// Status() has been asked anew.
  void Refreshed();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void AddControls();
  void Show();

  core::Program& program;
  radio::VoiceStatus status;
  // None where the client cannot run.
  QLabel* Image_IVCRunning = nullptr;
  QLabel* Image_IVCConnected = nullptr;
  QLabel* lblIVCWords = nullptr;
  QLineEdit* txtIVC_UHF = nullptr;
  QLineEdit* txtIVC_VHF = nullptr;
};

}  // namespace kestrel::shell
