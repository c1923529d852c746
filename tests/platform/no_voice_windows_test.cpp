#ifdef __linux__

#include <gtest/gtest.h>

#include "platform/make_seams.h"
#include "radio/voice_bridge.h"

namespace kestrel::platform {
namespace {

TEST(NoVoiceWindows, TheClientCannotRunAndNothingOfItIsFound) {
  const auto windows = MakeVoiceWindows();
  const std::string name = "IVC Client";
  radio::VoiceBridge bridge(*windows, name);
  EXPECT_FALSE(bridge.Available());
  EXPECT_FALSE(bridge.IsIVCRunning());
  EXPECT_FALSE(bridge.Status().Connected);
  EXPECT_FALSE(bridge.SendIVCKey(112, true));
}

}  // namespace
}  // namespace kestrel::platform

#endif
