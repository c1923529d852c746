#include "core/guide.h"

#include "base/files.h"
#include "core/default_files.h"
#include "core/tell.h"

namespace kestrel::core {

void OpenGuide(Program& program) {
  const std::filesystem::path& home = program.State.ProgramPath;
  for (const std::filesystem::path& folder : {home, DefaultsFolder(home)}) {
    const std::filesystem::path file = base::FindFile(folder, "docs/guide.html");
    if (folder.empty() || !base::FileExists(file)) continue;
    program.Desk.Open(base::TextOfPath(file), {}, {});
    return;
  }
  Tell(program, "The guide docs/guide.html was not found in the program folder:\n" + base::PathForMessage(home) +
                    "\n\nOnline Documents in the menu Help opens its page.");
}

}  // namespace kestrel::core
