#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/station.h"

// Commands that share a key: the one that stands first acts, the others do nothing.
namespace kestrel::core {

/// A command with its present binding.
struct BoundCommand {
  std::size_t Index;        ///< of core/shortcuts.h
  const Shortcut* Command;  ///< never null
  std::int32_t Bound;       ///< 0 for none
};

/// All commands in the order in which they act.
std::vector<BoundCommand> BoundCommands(const Station& station);

/// What is to be said beside the key of a command: "taken by Zoom In" where another acts instead, "shared with Zoom
/// Out" or "shared with 2 others" where it acts; empty where it has its key for itself.
std::string ClashOf(const std::vector<BoundCommand>& commands, std::size_t index);

/// The commands without effect, each with the one that has its key: "Zoom Out (PAGEUP is Zoom In)". Empty in a station
/// without any.
std::vector<std::string> Shadowed(const std::vector<BoundCommand>& commands);

/// A line of them: "No effect: Zoom Out (PAGEUP is Zoom In) and 2 more", no more than two by name; empty without any.
std::string ShadowedLine(const std::vector<std::string>& shadowed);

}  // namespace kestrel::core
