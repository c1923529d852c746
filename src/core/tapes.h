#pragma once

#include <cstdint>
#include <string>

#include "base/changed.h"
#include "core/program.h"

// Recording and replay in the station.
namespace kestrel::core {

/// Menu entry mnuStartRec: makes a tape in the folder TAPES and records from the next SYNCRO on. A tape that cannot be
/// made is told.
void RecordingStart(Program& program);
/// Menu entry mnuStopRecording and the end of a connection: closes the tape. Nothing while not recording. A tape that
/// cannot be closed properly is told.
void RecordingEnd(Program& program);
/// RecordingEnd at the unload of the map window, where the person is told before the closing goes on. The tape on show
/// is let go of too.
void UnloadTapes(Program& program);
/// SYNCRO: one record, while recording. When the tape cannot be written that is told once, the tape is closed with what
/// it has, and the session goes on. When the disk will be full in less than ten minutes that is told, and again only
/// after there was room for more than twenty.
void ComputeRecData(Program& program);

/// True while the menu entry mnuStartRec can be used.
bool MayRecord(const Program& program);
/// True while RecFrm may load a tape: none is loaded and nothing is recorded.
bool MayLoadTape(const Station& station);
/// The tip of the recording lamp: the name of the tape that was recorded last; while one is, the tape's size, the free
/// space and, when that is less than a day ahead, the hour at which the disk will be full.
std::string RecordingTip(const Station& station);
/// A number of bytes for people: "0 bytes", "12.4 MB". 1 MB is a million bytes.
std::string SizeText(std::uint64_t bytes);

/// The controls of RecFrm, as tape::Player has them.
void LoadTape(Program& program);
void PlayTape(Program& program);
void PauseTape(Program& program);
void StopTape(Program& program);
void CloseTape(Program& program);
void TapeTick(Program& program);
void MoveTape(Program& program, std::int32_t barValue);
/// Shows a record, 1 to the number of them.
void ShowTapePoint(Program& program, std::int32_t Point);
void SetTapeSpeed(Program& program, std::int32_t step);

}  // namespace kestrel::core
