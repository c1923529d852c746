#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "core/early_windows.h"
#include "core/program.h"
#include "core/windows.h"
#include "link/session.h"
#include "map/text_measure.h"
#include "shell/core/saving_message.h"
#include "shell/frame/frame.h"
#include "shell/map/qt_surface.h"
#include "shell/parts/modal_count.h"

namespace kestrel::shell {

/// The windows as the rooms see them: makes the frame, refreshes each view that has changed, asks for the channel.
class StationWindows final : public core::Windows, public core::EarlyWindows, public link::SessionHost {
 public:
  /// `dialogs` outlives the windows.
  explicit StationWindows(ModalCount& dialogs) : modal(dialogs) {}
  /// The program that the windows show; before ShowMainFrm. It outlives the frame (DeleteWindows).
  void Attach(core::Program& running) { program = &running; }
  /// Null before ShowMainFrm.
  MDIForm1* Frame() { return frame.get(); }
  void DeleteWindows();

  void MakeMainFrm(bool made) override;
  void ShowMainFrm() override;
  void PlaceToolWindows() override;
  void OpenFreqFrm() override;
  void Refresh(base::Changed what) override;
  void ShowSavingMessage(bool shown) override;
  void ShowLoading(std::optional<int> percent) override;
  areas::TextMeasure& Texts() override { return texts; }
  void RunEntry(std::string_view entry) override;
  void ShowMoment(std::string_view text) override;
  void UnloadWindows() override;
  std::optional<std::uint8_t> ChooseChannel(std::uint8_t present) override;
  std::string FailureAdvice() override;
  void ComputeRecData() override;
  void RecordingEnd() override;
  bool LinkLost(const std::string& why) override;
  void LinkLeft() override;

 private:
  ModalCount& modal;
  core::Program* program = nullptr;
  std::unique_ptr<MDIForm1> frame;
  frmSavingMessage* saving = nullptr;  ///< child of the frame, made when first shown
  QtSurface letters;                   ///< nothing is drawn on it: boxes of areas do not hang on the map's pixels
  map::SurfaceTexts texts{letters};
  bool unloaded = false;
};

}  // namespace kestrel::shell
