#pragma once

#include <cstdint>

#include "radio/voice_bridge.h"

namespace kestrel::radio {

/// A transmit key of the voice client.
enum class TransmitKey : std::int16_t { UHF = 1, VHF = 2, Guard = 3 };

/// What a status picture says.
enum class TransmitPicture { Idle, Sending, Failed };

/// The transmit keys: which are down, and the pictures of the status strip by their numbers in its list.
struct Transmission {
  bool TransmittingUHF = false;
  bool TransmittingVHF = false;
  bool TransmittingGuard = false;
  std::int16_t StatPic_UHF = 1;    ///< 1 idle, 2 sending, 7 failed
  std::int16_t StatPic_VHF = 3;    ///< 3 idle, 4 sending, 8 failed
  std::int16_t StatPic_Guard = 9;  ///< 9 idle, 10 sending, 11 failed
};

/// The key went down: the client gets its key if it is connected, and the picture tells whether it did. The flag is set
/// in every case, so that the repeats of a held key do nothing more.
void PressTransmit(Transmission& state, VoiceBridge& voice, TransmitKey key);

/// The key went up: the client gets the release whether or not it is connected or was sent the press.
void ReleaseTransmit(Transmission& state, VoiceBridge& voice, TransmitKey key);

/// Releases each key that is down; true when one was.
bool ReleaseHeld(Transmission& state, VoiceBridge& voice);

/// What the key's present picture says.
TransmitPicture PictureOf(const Transmission& state, TransmitKey key);

}  // namespace kestrel::radio
