#include "radio/voice_bridge.h"

#include <algorithm>

#include "base/text.h"
#include "radio/frequencies.h"

namespace kestrel::radio {
namespace {

constexpr const char* PanelClass = "wxWindowClassNR";
constexpr const char* EditClass = "Edit";
constexpr const char* ButtonClass = "Button";
constexpr const char* ChangeCaption = "Change FRQ";

// The place of each control among its siblings of the same class, from 1.
constexpr int StatusEdit = 3;
constexpr int UhfEdit = 4;
constexpr int VhfEdit = 6;

// The length is the client's word; more than this no box of it holds.
constexpr std::size_t MaxTextLength = 32767;

}  // namespace

/// While it lives, one operation runs; those inside it belong to it and share its time.
class VoiceBridge::Operation {
 public:
  explicit Operation(VoiceBridge& bridge) : count(bridge.running) {
    if (count++ == 0) bridge.seen.OperationStarts();
  }
  ~Operation() { --count; }
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

 private:
  int& count;
};

VoiceBridge::VoiceBridge(VoiceWindows& windows, const std::string& IVC_WINDOW_NAME)
    : seen(windows), title(IVC_WINDOW_NAME) {}

WindowHandle VoiceBridge::Panel() {
  const WindowHandle top = seen.FindTop(title);
  return top == 0 ? 0 : seen.FindChild(top, 0, PanelClass, nullptr);
}

/// The control number `count` from 1, among the panel's children of that class and caption.
WindowHandle VoiceBridge::NthControl(int count, const char* className, const char* caption) {
  const WindowHandle panel = Panel();
  if (panel == 0) return 0;
  WindowHandle found = 0;
  for (int at = 0; at < count; ++at) {
    found = seen.FindChild(panel, found, className, caption);
    // Not on: a search behind none begins at the first again.
    if (found == 0) return 0;
  }
  return found;
}

WindowHandle VoiceBridge::FreqBox(Radio radio) {
  return NthControl(radio == Radio::UHF ? UhfEdit : VhfEdit, EditClass, nullptr);
}

std::string VoiceBridge::TextOf(WindowHandle window) {
  return seen.Text(window, std::min(seen.TextLength(window), MaxTextLength) + 1);
}

bool VoiceBridge::IsIVCRunning() {
  const Operation operation(*this);
  return seen.FindTop(title) != 0;
}

bool VoiceBridge::IsIVCConnected() {
  const Operation operation(*this);
  const WindowHandle status = NthControl(StatusEdit, EditClass, nullptr);
  // "NO CONNECTION", a connecting state and whatever else it may read: not connected.
  return status != 0 && base::Upper(TextOf(status)) == "CONNECTED";
}

std::string VoiceBridge::GetRadioFreq(Radio radio) {
  const Operation operation(*this);
  const WindowHandle box = FreqBox(radio);
  return box == 0 ? std::string() : std::string(base::Trim(TextOf(box)));
}

bool VoiceBridge::SetRadioFreq(Radio radio, const std::string& value) {
  const Operation operation(*this);
  const WindowHandle box = FreqBox(radio);
  if (box == 0) return false;
  seen.SetText(box, value);
  return true;
}

bool VoiceBridge::PressChange(Radio radio) {
  const Operation operation(*this);
  const WindowHandle button = NthControl(static_cast<int>(radio), ButtonClass, ChangeCaption);
  if (button == 0) return false;
  seen.Click(button);
  return true;
}

void VoiceBridge::TuneRadio(Radio radio, const std::string& value) {
  const Operation operation(*this);
  SetRadioFreq(radio, value);
  PressChange(radio);
  if (RefreshIVCStatus) RefreshIVCStatus();
}

VoiceStatus VoiceBridge::Status() {
  const Operation operation(*this);
  VoiceStatus status;
  status.Running = IsIVCRunning();
  if (!status.Running) return status;
  status.UHF = GetRadioFreq(Radio::UHF);
  status.VHF = GetRadioFreq(Radio::VHF);
  status.Connected = IsIVCConnected();
  return status;
}

void VoiceBridge::ClickValue(const std::string& value) {
  const Operation operation(*this);
  if (RefreshIVCStatus) RefreshIVCStatus();
  if (!IsIVCConnected()) return;
  if (IsUHF(value)) TuneRadio(Radio::UHF, value);
  if (IsVHF(value)) TuneRadio(Radio::VHF, value);
}

bool VoiceBridge::SendIVCKey(std::int32_t vkey, bool down) {
  const Operation operation(*this);
  const WindowHandle top = seen.FindTop(title);
  if (top == 0) return false;
  seen.SendKey(top, vkey, down);
  return true;
}

}  // namespace kestrel::radio
