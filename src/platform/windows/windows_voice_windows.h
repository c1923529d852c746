#pragma once

#include <cstdint>
#include <string>

#include "radio/voice_windows.h"

namespace kestrel::platform {

/// The windows of other programs on Windows. The client handles each message before the station goes on, as a direct
/// call would, but a hung client is waited for no longer than OperationLimit in one operation: what is then left of the
/// operation sees empty answers. Keys are not waited for: the client gets them in their order, a hung one when it comes
/// back.
class WindowsVoiceWindows final : public radio::VoiceWindows {
 public:
  /// Milliseconds.
  static constexpr std::uint32_t OperationLimit = 500;

  void OperationStarts() override;
  radio::WindowHandle FindTop(const std::string& title) override;
  radio::WindowHandle FindChild(radio::WindowHandle parent, radio::WindowHandle after, const char* className,
                                const char* caption) override;
  std::size_t TextLength(radio::WindowHandle window) override;
  std::string Text(radio::WindowHandle window, std::size_t room) override;
  void SetText(radio::WindowHandle window, const std::string& text) override;
  void Click(radio::WindowHandle button) override;
  void SendKey(radio::WindowHandle window, std::int32_t vkey, bool down) override;

 private:
  struct Message;
  std::uintptr_t Send(const Message& message);

  std::uint64_t deadline = 0;  ///< where the operation ends, by the system's tick count in milliseconds
};

}  // namespace kestrel::platform
