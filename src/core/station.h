#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "areas/area.h"
#include "areas/area_changes.h"
#include "areas/area_editor.h"
#include "base/files.h"
#include "base/picture.h"
#include "core/healing.h"
#include "core/shortcuts.h"
#include "core/window_places.h"
#include "link/link_options.h"
#include "link/session.h"
#include "link/tables.h"
#include "map/extras.h"
#include "map/map_options.h"
#include "map/ties.h"
#include "map/view_state.h"
#include "radio/frequencies.h"
#include "radio/frequency_changes.h"
#include "radio/transmit.h"
#include "tape/player.h"
#include "tape/recorder.h"
#include "theaters/elevations.h"
#include "theaters/theater.h"

namespace kestrel::core {

/// The floating windows, in the order of their settings.
enum class ToolWindow { Bulls, Freq, Clients, Curs, View, Areas, Rec, MiniMap };
inline constexpr std::size_t ToolWindowCount = 8;

/// What is kept of one floating window.
struct ToolWindowState {
  std::int32_t X = 0;     ///< logical units from the left of the screen
  std::int32_t Y = 0;     ///< logical units from its top
  bool Minimized = true;  ///< rolled up to its title strip
  bool Hidden = false;
  std::int16_t Transparency = 255;  ///< opacity 0..255
  bool Placed = false;              ///< the settings hold X or Y; a 0 that stands there is a place
};

/// Last positions of the editor dialogs, logical units; fields named as their keys.
struct EditorPositions {
  std::int32_t AREADETAILLISTLEFT = 0, AREADETAILLISTTOP = 0;
  std::int32_t AREADETAILLEFT = 0, AREADETAILTOP = 0;
  std::int32_t AREAPOINTLEFT = 0, AREAPOINTTOP = 0;
  std::int32_t AREAPOINTFPLEFT = 0, AREAPOINTFPTOP = 0;
};

/// How the windows look.
struct Appearance {
  std::int32_t LOOK = 0;  ///< 1 light, 2 dark; any other as the system's windows
};

/// The tapes: the one that is being recorded and the one that is on show.
struct Tapes {
  tape::Recorder Recorder;
  std::optional<std::uint64_t> FreeBytes;  ///< where the tape is recorded; nothing when that is not known
  std::optional<double> FullAt;            ///< the date when the disk will be full, when less than a day ahead
  bool SpaceTold = false;                  ///< the person knows that the present tape will soon have no room
  /// How much room a folder has: the system's answer, and a test's own.
  std::function<std::optional<std::uint64_t>(const std::filesystem::path&)> FreeSpace = base::FreeSpace;
  tape::Player Player;
  /// The bullseye of the loaded tape; in force instead of the theater's, if it is a place.
  std::optional<tape::BullseyePlace> Bullseye;
};

/// What the files of one kind of the current theater's data want: to be kept, and to be written before a crash loses a
/// change.
struct FileKeeping {
  bool KeepFormer = false;                      ///< the file could not be read whole: it is kept when it is saved over
  std::uint64_t SafeRevision = 0;               ///< of the data, that the file or the rescue holds
  std::optional<std::uint32_t> ChangedAt = {};  ///< tick count at which a change since was first seen
  std::uint32_t RescueAfter = 10'000;           ///< milliseconds from there to the writing of the rescue
  bool RescueFailed = false;                    ///< the last time; it has been logged
};

/// A player's colour before that of the set for every eye took its place.
struct FormerPlayer {
  std::int16_t Id = 0;
  std::string Name;
  base::Colour Color = 0;
};

/// What the current bullseye was before a change during a session.
struct BullseyeStep {
  std::size_t Index = 0;                     ///< of the current theater's
  std::optional<theaters::Bullseye> Edited;  ///< as it was, when it was edited and not another one chosen
};

/// Where a session was asked for.
struct Server {
  std::string Name;          ///< in the phonebook; may be empty
  std::string Host;          ///< address or host name
  std::int32_t Port = 0;     ///< at that time
  bool NewEntry = false;     ///< its entry was made for this connect
  bool HasAnswered = false;  ///< there was a connection
};

/// Settings of sessions that other stations do not know; fields named as their keys. Off as the station ships.
struct SessionExtras {
  bool ASKTOLEAVE = false;  ///< before a session ends for a tape, another entry or another address
};

/// The state of the whole station: made once in main.cpp and handed on by reference. Procedures take the records that
/// they read and write, not all of this; only start, stop and theater switch take it whole.
struct Station {
  /// Everything is read and written below it: the program folder or `OwnFolder`. Where neither can be written it may be
  /// the program folder's "defaults".
  std::filesystem::path AppPath;
  std::filesystem::path ProgramPath;  ///< folder of the executable; set by the start
  std::filesystem::path OwnFolder;    ///< the person's own folder for application data; empty: there is none to offer
  bool DebugLog = false;              ///< key DEBUG: the log file is on
  bool AutoUpdate = false;            ///< AUTOUPDATE of "common.ini"
  std::string DocsUrl;                ///< from "update.txt"
  std::string MailUrl;                ///< from "update.txt"
  theaters::Catalogue Catalogue;
  link::Options LinkOptions;
  link::SessionState Session;
  link::Tables Plots;
  map::Options MapOptions;
  map::Extras Extras;
  core::Appearance Appearance;
  map::Ties Ties;
  core::HealingOptions HealingOptions;
  core::Healing Healing;
  std::vector<FormerPlayer> FormerPlayers;  ///< while EYECOLORS
  map::ViewState View;
  FileKeeping ViewFiles;            ///< of the saved views in View
  base::Picture MapPicture;         ///< the current theater's
  theaters::Elevations Elevations;  ///< the current theater's
  areas::AreaCatalogue Areas;       ///< the current theater's
  areas::AreaHistory AreaSteps;     ///< what of Areas can be undone
  FileKeeping AreaFiles;            ///< of Areas
  areas::AreaEditor Editor;
  radio::Frequencies Frequencies;                ///< the current theater's
  radio::FrequencyHistory FrequencySteps;        ///< what of Frequencies can be undone
  FileKeeping FrequencyFiles;                    ///< of Frequencies
  radio::DefaultFrequencies DefaultFrequencies;  ///< the installation's
  core::Tapes Tapes;
  std::array<ToolWindowState, ToolWindowCount> ToolWindows = {};
  EditorPositions Editors;
  core::WindowExtras WindowOptions;
  Bindings ShortcutKeys = DefaultBindings();
  OwnBindings OwnKeys = DefaultOwnBindings();
  bool HookInstalled = false;  ///< the system's keys are heard
  bool Closing = false;        ///< the closing has begun
  radio::Transmission Transmit;
  std::string VoiceWindowName = "IVC Client";  ///< caption of the voice program's window
  bool FolderReadOnly = false;                 ///< AppPath could not be written at the start; the person has been told
  bool Loading = false;                        ///< while windows are being placed at the start: nothing is drawn
  core::SessionExtras SessionExtras;
  std::optional<Server> LastServer;            ///< where the latest connect went
  std::optional<Server> LeftForTape;           ///< whose session ended for a tape, until the next connect
  std::vector<link::ConnEntry> FailedEntries;  ///< new in the phonebook and never connected
  std::vector<BullseyeStep> BullseyeSteps;     ///< of the current theater, the latest last
  std::vector<std::string> Notes;  ///< what was put right while reading settings; written to the log once it is open
};

/// The folder "Theaters" below `AppPath`.
std::filesystem::path TheatersFolder(const Station& station);

}  // namespace kestrel::core
