#include "core/friends.h"

#include "base/files.h"
#include "core/side_files.h"

namespace kestrel::core {

void LoadFriendsDef(Station& station) {
  base::Table<std::string>& names = station.LinkOptions.FriendNames;
  names.Clear();
  const std::filesystem::path path = base::FindFile(station.AppPath, "FriendlyNames.ini");
  if (!base::FileExists(path)) return;
  const std::string text = base::ReadWholeFile(path, base::MaxTextFileBytes);
  for (const std::string_view line : Lines(text)) names.Append(std::string(line));
}

void TakeFriends(Program& program) {
  Station& station = program.State;
  if (station.LinkOptions.AUTOFRIENDS) station.Plots.FriendlyList = station.LinkOptions.FriendNames;
}

}  // namespace kestrel::core
