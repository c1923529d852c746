#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "areas/area_drawing.h"
#include "areas/area_editor.h"

namespace kestrel::areas {

inline constexpr auto MapAndPlots = base::Changed::Map | base::Changed::Plots;
inline constexpr auto MapAndLists = base::Changed::Map | base::Changed::Areas;

/// Every text is 30 wide and 4 high.
class FixedTexts final : public TextMeasure {
 public:
  TextExtent Extent(const std::string&, const AreaFont&) override { return {30, 4}; }
};

/// An editor over one group "Ranges" that shows.
class EditorTest : public testing::Test {
 protected:
  EditorTest() {
    catalogue.AreaFolders.Append({"General"});
    catalogue.AreaGroups.Append({.Name = "Ranges", .FolderIndex = 1});
  }

  Area& Store(Area area) { return catalogue.AreaGroups[1].Areas.Append(std::move(area)); }
  const Area& Stored(std::size_t index) { return catalogue.AreaGroups[1].Areas[index]; }
  std::size_t StoredCount() { return catalogue.AreaGroups[1].Areas.UpperBound(); }

  void Open(AreaType type) {
    OpenNew(editor, catalogue, 1, texts);
    ChooseType(editor, type, texts);
  }
  base::Changed OpenStored(Area area) {
    Store(std::move(area));
    return OpenExisting(editor, catalogue, 1, static_cast<std::int32_t>(StoredCount()), texts);
  }
  base::Changed Click(double x, double y) { return MapClick(editor, x, y, texts); }

  void ExpectLine(std::size_t index, double x1, double y1, double x2, double y2) {
    ASSERT_LE(index, editor.WorkArea.Lines.UpperBound());
    const AreaLine& line = editor.WorkArea.Lines[index];
    EXPECT_EQ(std::vector({line.X1, line.Y1, line.X2, line.Y2}), std::vector({x1, y1, x2, y2}));
  }

  FixedTexts texts;
  AreaCatalogue catalogue;
  AreaHistory history;
  AreaEditor editor;
};

}  // namespace kestrel::areas
