#include "core/key_clashes.h"

#include <algorithm>

namespace kestrel::core {
namespace {

constexpr std::size_t MostByName = 2;

bool Share(const BoundCommand& one, const BoundCommand& other) { return one.Bound != 0 && one.Bound == other.Bound; }

/// The command that acts on the key of `command`.
const BoundCommand& ActingOn(const std::vector<BoundCommand>& commands, const BoundCommand& command) {
  return *std::find_if(commands.begin(), commands.end(),
                       [&](const BoundCommand& each) { return each.Index == command.Index || Share(each, command); });
}

}  // namespace

std::vector<BoundCommand> BoundCommands(const Station& station) {
  std::vector<BoundCommand> commands;
  for (std::size_t at = 0; at < Shortcuts.size(); ++at) {
    commands.push_back({at, &Shortcuts[at], station.ShortcutKeys[at]});
  }
  for (std::size_t at = 0; at < OwnShortcuts.size(); ++at) {
    commands.push_back({at + FirstOwnShortcut, &OwnShortcuts[at], station.OwnKeys[at]});
  }
  return commands;
}

std::string ClashOf(const std::vector<BoundCommand>& commands, std::size_t index) {
  const auto found =
      std::find_if(commands.begin(), commands.end(), [index](const auto& each) { return each.Index == index; });
  if (found == commands.end()) return {};
  const BoundCommand& acting = ActingOn(commands, *found);
  if (acting.Index != index) return "taken by " + std::string(acting.Command->Name);
  const BoundCommand* other = nullptr;
  std::size_t others = 0;
  for (const BoundCommand& each : commands) {
    if (each.Index == index || !Share(each, *found)) continue;
    other = &each;
    ++others;
  }
  if (others == 0) return {};
  return "shared with " + (others == 1 ? std::string(other->Command->Name) : std::to_string(others) + " others");
}

std::vector<std::string> Shadowed(const std::vector<BoundCommand>& commands) {
  std::vector<std::string> names;
  for (const BoundCommand& command : commands) {
    const BoundCommand& acting = ActingOn(commands, command);
    if (acting.Index == command.Index) continue;
    names.push_back(std::string(command.Command->Name) + " (" + KeyName(command.Bound) + " is " +
                    std::string(acting.Command->Name) + ")");
  }
  return names;
}

std::string ShadowedLine(const std::vector<std::string>& shadowed) {
  if (shadowed.empty()) return {};
  std::string line = "No effect: " + shadowed.front();
  for (std::size_t at = 1; at < std::min(shadowed.size(), MostByName); ++at) line += ", " + shadowed[at];
  if (shadowed.size() > MostByName) line += " and " + std::to_string(shadowed.size() - MostByName) + " more";
  return line;
}

}  // namespace kestrel::core
