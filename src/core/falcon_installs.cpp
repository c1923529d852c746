#include "core/falcon_installs.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <vector>

#include "base/profile_file.h"
#include "core/settings.h"
#include "core/tell.h"
#include "falcon/written_installs.h"

namespace kestrel::core {
namespace {

using falcon::TheaterDefinition;

falcon::InstallSources WrittenByHand(Program& program) {
  try {
    return falcon::ReadWrittenInstalls(base::ProfileFile::Load(MainIniFile(program.State)));
  } catch (const std::exception& failure) {
    program.Log.LogLine(failure.what());
    return {};
  }
}

}  // namespace

falcon::FalconInstalls FindInstalls(Program& program) {
  falcon::InstallSources sources = WrittenByHand(program);
  if (program.Registered) std::ranges::move(program.Registered(), std::back_inserter(sources));
  std::vector<const falcon::InstallKeys*> asked;
  for (const auto& source : sources) asked.push_back(source.get());
  falcon::FalconInstalls found = falcon::DiscoverFalcon(asked);
  for (const std::string& message : found.Messages) program.Log.LogLine(message);
  const std::size_t told = std::min(found.Messages.size(), MostDiscardedTold);
  for (std::size_t at = 0; at < told; ++at) Tell(program, found.Messages[at], "Error");
  return found;
}

CampaignFolders FoldersOf(const falcon::FalconInstall& install, const TheaterDefinition& theater) {
  CampaignFolders folders;
  folders.Campaign = falcon::TheaterFolder(install, theater, &TheaterDefinition::CampaignDir);
  folders.Objects = {falcon::TheaterFolder(install, theater, &TheaterDefinition::ObjectDir),
                     falcon::TheaterFolder(install, {}, &TheaterDefinition::ObjectDir)};
  return folders;
}

std::vector<std::filesystem::path> ModelFoldersOf(const falcon::FalconInstall& install,
                                                  const TheaterDefinition& theater) {
  return {falcon::TheaterFolder(install, theater, &TheaterDefinition::ThreeDDataDir),
          falcon::TheaterFolder(install, theater, &TheaterDefinition::ObjectDir),
          falcon::TheaterFolder(install, {}, &TheaterDefinition::ObjectDir)};
}

std::optional<std::filesystem::path> ChooseCampaign(Program& program, const CampaignFolders& folders) {
  return ChooseFile(program, "Open Campaign File", "Falcon tac/cam/trn files|*.tac;*.cam;*.trn", "te_new.tac",
                    folders.Campaign);
}

}  // namespace kestrel::core
