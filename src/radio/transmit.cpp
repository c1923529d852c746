#include "radio/transmit.h"

#include <array>
#include <cstddef>

namespace kestrel::radio {
namespace {

struct Row {
  std::int32_t SentKey;  ///< virtual key number that the client listens to
  bool Transmission::*Flag;
  std::int16_t Transmission::*Picture;
  std::int16_t Idle, Sending, Failed;
};

constexpr std::array<Row, 3> rows = {{
    {112, &Transmission::TransmittingUHF, &Transmission::StatPic_UHF, 1, 2, 7},
    {113, &Transmission::TransmittingVHF, &Transmission::StatPic_VHF, 3, 4, 8},
    {114, &Transmission::TransmittingGuard, &Transmission::StatPic_Guard, 9, 10, 11},
}};

const Row& RowOf(TransmitKey key) { return rows[static_cast<std::size_t>(key) - 1]; }

}  // namespace

void PressTransmit(Transmission& state, VoiceBridge& voice, TransmitKey key) {
  const Row& row = RowOf(key);
  if (state.*row.Flag) return;
  const bool sent = voice.IsIVCConnected() && voice.SendIVCKey(row.SentKey, true);
  state.*row.Picture = sent ? row.Sending : row.Failed;
  state.*row.Flag = true;
}

void ReleaseTransmit(Transmission& state, VoiceBridge& voice, TransmitKey key) {
  const Row& row = RowOf(key);
  state.*row.Picture = row.Idle;
  voice.SendIVCKey(row.SentKey, false);
  state.*row.Flag = false;
}

bool ReleaseHeld(Transmission& state, VoiceBridge& voice) {
  bool any = false;
  for (const TransmitKey key : {TransmitKey::UHF, TransmitKey::VHF, TransmitKey::Guard}) {
    if (!(state.*RowOf(key).Flag)) continue;
    ReleaseTransmit(state, voice, key);
    any = true;
  }
  return any;
}

TransmitPicture PictureOf(const Transmission& state, TransmitKey key) {
  const Row& row = RowOf(key);
  if (state.*row.Picture == row.Sending) return TransmitPicture::Sending;
  return state.*row.Picture == row.Failed ? TransmitPicture::Failed : TransmitPicture::Idle;
}

}  // namespace kestrel::radio
