#include "platform/make_seams.h"

namespace kestrel::platform {
namespace {

/// The voice client is a Windows program: here it is never running.
class NoVoiceWindows final : public radio::VoiceWindows {
 public:
  bool Available() const override { return false; }
  void OperationStarts() override {}
  radio::WindowHandle FindTop(const std::string&) override { return 0; }
  radio::WindowHandle FindChild(radio::WindowHandle, radio::WindowHandle, const char*, const char*) override {
    return 0;
  }
  std::size_t TextLength(radio::WindowHandle) override { return 0; }
  std::string Text(radio::WindowHandle, std::size_t) override { return {}; }
  void SetText(radio::WindowHandle, const std::string&) override {}
  void Click(radio::WindowHandle) override {}
  void SendKey(radio::WindowHandle, std::int32_t, bool) override {}
};

}  // namespace

std::unique_ptr<radio::VoiceWindows> MakeVoiceWindows() { return std::make_unique<NoVoiceWindows>(); }

}  // namespace kestrel::platform
