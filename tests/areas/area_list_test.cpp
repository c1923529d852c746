#include "areas/area_list.h"

#include <gtest/gtest.h>

#include "areas/small_catalogue.h"

namespace kestrel::areas {
namespace {

class AreaList : public testing::Test {
 protected:
  static Small TwoGroups() {
    Small made;
    made.AddFolders({"F"});
    made.AddGroups({{"g", 1}, {"h", 1}});
    made.AddAreas(1, {"a", "b", "c", "d"});
    made.AddAreas(2, {"z"});
    return made;
  }

  /// Undo gives what was before the last step, Redo what is now; the group's node is selected, no list goes stale.
  void ExpectBackAndForth(const std::string& before) {
    const std::string now = Told(catalogue);
    EXPECT_NE(before, now);
    const Moved back = history.Undo(catalogue);
    EXPECT_TRUE(back.Done);
    EXPECT_EQ(back.Select, "D1");
    EXPECT_FALSE(back.GroupsChanged);
    EXPECT_EQ(Told(catalogue), before);
    EXPECT_TRUE(history.Redo(catalogue).Done);
    EXPECT_EQ(Told(catalogue), now);
  }

  Small small = TwoGroups();
  AreaCatalogue& catalogue = small.Catalogue;
  AreaHistory& history = small.History;
  base::Table<Area>& areas = catalogue.AreaGroups[1].Areas;
  const std::string start = Told(catalogue);
};

TEST_F(AreaList, TypesHaveNamesButForFlightPlans) {
  EXPECT_EQ(AreaTypeToName(AreaType::Region), "Region");
  EXPECT_EQ(AreaTypeToName(AreaType::Circle), "Circle");
  EXPECT_EQ(AreaTypeToName(AreaType::Icon), "Icon");
  EXPECT_EQ(AreaTypeToName(AreaType::Text), "Text");
  for (const int other : {5, 0, -1, 6, 32767}) EXPECT_EQ(AreaTypeToName(static_cast<AreaType>(other)), "") << other;
}

TEST_F(AreaList, WhatIsNotThereIsLeftAlone) {
  for (const std::size_t group : {0u, 3u, 99u}) {
    RenameGroup(catalogue, history, group, "x");
    EXPECT_EQ(AppendArea(catalogue, history, group, {}), 0u);
    CheckAllAreas(catalogue, history, group, false);
    EXPECT_EQ(CopyChecked(catalogue, history, group, 1), 0u);
    EXPECT_EQ(CopyChecked(catalogue, history, 1, group), 0u);
    ColourChecked(catalogue, history, group, 7);
    DeleteArea(catalogue, history, group, 1);
  }
  for (const std::size_t index : {0u, 5u}) {
    ReplaceArea(catalogue, history, 1, index, Named("x"));
    DeleteArea(catalogue, history, 1, index);
    EXPECT_EQ(MoveArea(catalogue, history, 1, index, Way::Top), 0u);
    CheckArea(catalogue, history, 1, index, false);
  }
  EXPECT_EQ(Told(catalogue), start);
  EXPECT_EQ(history.UndoText(), "");
  EXPECT_EQ(catalogue.Revision, 0u);
}

TEST_F(AreaList, AnAreaIsAppended) {
  Area area = Named("e");
  area.Editing = true;
  area.Lines.Append({1, 2, 3, 4});
  EXPECT_EQ(AppendArea(catalogue, history, 1, area), 5u);
  EXPECT_EQ(small.Areas(1), "a b c d e");
  EXPECT_FALSE(areas[5].Editing);
  EXPECT_EQ(areas[5].Lines[1].Y2, 4);
  ExpectBackAndForth(start);
}

TEST_F(AreaList, AnAreaIsReplacedAndNeitherIsHeldByAnEditor) {
  areas[2].Editing = true;
  Area area = areas[2];
  area.Name = "B";
  area.Points.Append({1, 2, 3, PointType::IP});
  ReplaceArea(catalogue, history, 1, 2, area);
  EXPECT_EQ(small.Areas(1), "a B c d");
  EXPECT_FALSE(areas[2].Editing);
  ExpectBackAndForth(start);
  history.Undo(catalogue);
  EXPECT_EQ(Told(catalogue), start) << "the old one is not held either";
}

TEST_F(AreaList, AnAreaIsDeleted) {
  DeleteArea(catalogue, history, 1, 2);
  EXPECT_EQ(small.Areas(1), "a c d");
  EXPECT_EQ(history.UndoText(), "delete of b");
  ExpectBackAndForth(start);
}

TEST_F(AreaList, TheLastAreaIsDeletedAndComesBack) {
  DeleteArea(catalogue, history, 2, 1);
  EXPECT_TRUE(catalogue.AreaGroups[2].Areas.Empty());
  EXPECT_EQ(history.Undo(catalogue).Select, "D2");
  EXPECT_EQ(Told(catalogue), start);
}

TEST_F(AreaList, AreasMove) {
  struct Row {
    std::size_t From;
    Way To;
    std::size_t At;
    const char* Order;
  };
  const Row rows[] = {
      {3, Way::Up, 2, "a c b d"},  {2, Way::Down, 3, "a c b d"},   {3, Way::Top, 1, "c a b d"},
      {4, Way::Top, 1, "d a b c"}, {1, Way::Bottom, 4, "b c d a"}, {2, Way::Bottom, 4, "a c d b"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MoveArea(catalogue, history, 1, row.From, row.To), row.At);
    EXPECT_EQ(small.Areas(1), row.Order);
    ExpectBackAndForth(start);
    history.Undo(catalogue);
  }
  EXPECT_EQ(MoveArea(catalogue, history, 1, 1, Way::Up), 0u);
  EXPECT_EQ(MoveArea(catalogue, history, 1, 1, Way::Top), 0u);
  EXPECT_EQ(MoveArea(catalogue, history, 1, 4, Way::Down), 0u);
  EXPECT_EQ(MoveArea(catalogue, history, 1, 4, Way::Bottom), 0u);
  EXPECT_EQ(Told(catalogue), start);
}

TEST_F(AreaList, ChecksAreWrittenInFull) {
  areas[2].Visible = 5;  // of an area false
  const std::string before = Told(catalogue);
  CheckArea(catalogue, history, 1, 2, true);
  EXPECT_EQ(areas[2].Visible, -1);
  ExpectBackAndForth(before);
  CheckArea(catalogue, history, 1, 2, false);
  EXPECT_EQ(areas[2].Visible, 0);
  EXPECT_EQ(areas[1].Visible, -1);
  EXPECT_EQ(history.UndoText(), "uncheck of b");
}

TEST_F(AreaList, AllAreasOfTheGroupAreChecked) {
  areas[2].Visible = 5;
  areas[3].Visible = Off;
  const std::string before = Told(catalogue);
  CheckAllAreas(catalogue, history, 1, false);
  for (const Area& area : areas.Live()) EXPECT_EQ(area.Visible, 0);
  EXPECT_EQ(catalogue.AreaGroups[2].Areas[1].Visible, -1) << "of another group";
  ExpectBackAndForth(before);
  CheckAllAreas(catalogue, history, 1, true);
  for (const Area& area : areas.Live()) EXPECT_EQ(area.Visible, -1);
  const std::uint64_t revision = catalogue.Revision;
  CheckAllAreas(catalogue, history, 1, true);
  EXPECT_EQ(catalogue.Revision, revision) << "nothing to change";
}

TEST_F(AreaList, CheckedAreasAreCopiedWhole) {
  areas[1].Visible = Off;
  areas[3].Visible = 5;
  areas[2].Lines.Append({1, 2, 3, 4});
  areas[4].Points.Append({5, 6, 7, PointType::Target});
  const std::string before = Told(catalogue);
  EXPECT_EQ(CopyChecked(catalogue, history, 1, 2), 2u);
  EXPECT_EQ(small.Areas(1), "a b c d");
  EXPECT_EQ(small.Areas(2), "z b d");
  EXPECT_EQ(Told(catalogue.AreaGroups[2].Areas[2]), Told(areas[2]));
  EXPECT_EQ(Told(catalogue.AreaGroups[2].Areas[3]), Told(areas[4]));
  ExpectBackAndForth(before);
}

TEST_F(AreaList, AGroupCopiedOntoItselfDoublesOnce) {
  EXPECT_EQ(CopyChecked(catalogue, history, 1, 1), 4u);
  EXPECT_EQ(small.Areas(1), "a b c d a b c d");
  ExpectBackAndForth(start);
  history.Undo(catalogue);
  CheckArea(catalogue, history, 1, 2, false);
  CheckArea(catalogue, history, 1, 3, false);
  EXPECT_EQ(CopyChecked(catalogue, history, 1, 1), 2u);
  EXPECT_EQ(small.Areas(1), "a b c d a d");
}

TEST_F(AreaList, NothingCheckedCopiesNothing) {
  CheckAllAreas(catalogue, history, 1, false);
  EXPECT_EQ(CopyChecked(catalogue, history, 1, 2), 0u);
  EXPECT_EQ(small.Areas(2), "z");
  EXPECT_EQ(history.UndoText(), "uncheck of all in g");
}

TEST_F(AreaList, CheckedAreasTakeTheColour) {
  areas[2].Visible = Off;
  areas[3].Color = 0x010203;
  const std::string before = Told(catalogue);
  ColourChecked(catalogue, history, 1, 0xFF8000);
  EXPECT_EQ(areas[1].Color, 0xFF8000);
  EXPECT_EQ(areas[2].Color, 0);
  EXPECT_EQ(areas[3].Color, 0xFF8000);
  EXPECT_EQ(areas[4].Color, 0xFF8000);
  ExpectBackAndForth(before);
}

TEST_F(AreaList, ATypedNameIsOneStep) {
  RenameGroup(catalogue, history, 1, "gr");
  RenameGroup(catalogue, history, 1, "gro");
  RenameGroup(catalogue, history, 1, "grou");
  EXPECT_EQ(catalogue.Revision, 3u);
  EXPECT_EQ(small.Groups(), "grou:1 h:1");
  ExpectBackAndForth(start);
  history.Undo(catalogue);
  EXPECT_EQ(history.UndoText(), "") << "there was one step";
}

TEST_F(AreaList, TypingIsPartedByAnotherStepAnUndoOrWhenItSettles) {
  RenameGroup(catalogue, history, 1, "one");
  history.Settle();
  RenameGroup(catalogue, history, 1, "two");
  RenameGroup(catalogue, history, 2, "other");
  RenameGroup(catalogue, history, 1, "three");
  history.Undo(catalogue);
  EXPECT_EQ(small.Groups(), "two:1 other:1");
  history.Undo(catalogue);
  EXPECT_EQ(small.Groups(), "two:1 h:1");
  RenameGroup(catalogue, history, 1, "four");
  history.Undo(catalogue);
  EXPECT_EQ(small.Groups(), "two:1 h:1") << "typed after an undo";
  history.Undo(catalogue);
  EXPECT_EQ(small.Groups(), "one:1 h:1");
  history.Undo(catalogue);
  EXPECT_EQ(Told(catalogue), start);
}

}  // namespace
}  // namespace kestrel::areas
