#include "areas/area_editor.h"

namespace kestrel::areas {

std::vector<std::size_t> HighLights(const AreaEditor& editor) {
  std::vector<std::size_t> found;
  if (!editor.Open || editor.WorkArea.Type != AreaType::Region) return found;
  const std::size_t count = editor.WorkArea.Lines.UpperBound();
  if (!editor.BulkDelete) {
    if (editor.Selected >= 1 && editor.Selected <= count) found.push_back(editor.Selected);
    return found;
  }
  for (std::size_t index = 1; index <= count && index <= editor.Checked.size(); ++index) {
    if (editor.Checked[index - 1]) found.push_back(index);
  }
  return found;
}

}  // namespace kestrel::areas
