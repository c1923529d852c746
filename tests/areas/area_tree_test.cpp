#include "areas/area_tree.h"

#include <gtest/gtest.h>

#include "areas/small_catalogue.h"

namespace kestrel::areas {
namespace {

class AreaTree : public testing::Test {
 protected:
  /// Undo gives what was before the last step, Redo what is now.
  void ExpectBackAndForth(const std::string& before) {
    const std::string now = Told(catalogue);
    EXPECT_NE(before, now);
    EXPECT_TRUE(history.Undo(catalogue).Done);
    EXPECT_EQ(Told(catalogue), before);
    EXPECT_TRUE(history.Redo(catalogue).Done);
    EXPECT_EQ(Told(catalogue), now);
  }
  /// A step that changes nothing leaves nothing to be undone.
  void ExpectNoStep() {
    EXPECT_EQ(history.UndoText(), "");
    EXPECT_EQ(catalogue.Revision, 0u);
  }

  Small small;
  AreaCatalogue& catalogue = small.Catalogue;
  AreaHistory& history = small.History;
};

TEST_F(AreaTree, KeysNameNodesThatAreThere) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 1}});
  ASSERT_TRUE(NodeOf(catalogue, "C2"));
  EXPECT_TRUE(NodeOf(catalogue, "C2")->IsFolder);
  EXPECT_EQ(NodeOf(catalogue, "C2")->Index, 2u);
  ASSERT_TRUE(NodeOf(catalogue, "D1"));
  EXPECT_FALSE(NodeOf(catalogue, "D1")->IsFolder);
  for (const char* key :
       {"", "C", "D", "C0", "D0", "C3", "D2", "E1", "1", "C-1", "C1x", "C99999999999999999999999", "D 1"}) {
    EXPECT_FALSE(NodeOf(catalogue, key)) << key;
  }
}

TEST_F(AreaTree, KeysThatNameNothingDoNothing) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 1}});
  const std::string before = Told(catalogue);
  for (const char* key : {"", "C0", "D0", "C3", "D2"}) {
    EXPECT_EQ(NewGroup(catalogue, history, key), "");
    EXPECT_EQ(RenameNode(catalogue, history, key, "x"), "");
    EXPECT_EQ(DeleteFolder(catalogue, history, key), "");
    EXPECT_EQ(DeleteGroup(catalogue, history, key), "");
    for (const Way way : {Way::Up, Way::Down, Way::Top, Way::Bottom}) {
      EXPECT_EQ(MoveNode(catalogue, history, key, way), "");
    }
    EXPECT_EQ(DropNode(catalogue, history, key, "C2"), "");
    EXPECT_EQ(DropNode(catalogue, history, "D1", key), "");
    EXPECT_EQ(CheckNode(catalogue, history, key, false), "");
  }
  EXPECT_EQ(Told(catalogue), before);
  ExpectNoStep();
}

TEST_F(AreaTree, TheOtherKindOfNodeDoesNothing) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 1}, {"h", 1}});
  const std::string before = Told(catalogue);
  DeleteFolder(catalogue, history, "D1");
  DeleteGroup(catalogue, history, "C1");
  EXPECT_EQ(DropNode(catalogue, history, "C1", "C2"), "") << "folders cannot be dragged";
  EXPECT_EQ(DropNode(catalogue, history, "D1", "D2"), "") << "a group takes none";
  EXPECT_EQ(Told(catalogue), before);
  ExpectNoStep();
}

TEST_F(AreaTree, AFolderIsFoundInAnyCaseOrMade) {
  small.AddFolders({"Alpha", "Bravo"});
  std::string name = "bRAVO";
  EXPECT_EQ(FindOrAddFolder(catalogue, history, name), 2);
  EXPECT_EQ(name, "bRAVO");
  ExpectNoStep();

  const std::string before = Told(catalogue);
  name = "Charlie";
  EXPECT_EQ(FindOrAddFolder(catalogue, history, name), 3);
  EXPECT_EQ(small.Folders(), "Alpha Bravo Charlie");
  EXPECT_EQ(catalogue.AreaFolders[3].Visible, On);
  ExpectBackAndForth(before);
}

TEST_F(AreaTree, AFolderWithoutNameIsTheTemporaryOne) {
  std::string name;
  EXPECT_EQ(FindOrAddFolder(catalogue, history, name), 1);
  EXPECT_EQ(name, "Temporary Folder");
  EXPECT_EQ(catalogue.AreaFolders[1].Name, "Temporary Folder");
  name.clear();
  EXPECT_EQ(FindOrAddFolder(catalogue, history, name), 1);
}

TEST_F(AreaTree, AGroupIsFoundWhateverItsFolder) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"Same", 1}, {"SAME", 2}});
  EXPECT_EQ(FindOrAddGroup(catalogue, history, "same", 2), 1);
  ExpectNoStep();
  const std::string before = Told(catalogue);
  EXPECT_EQ(FindOrAddGroup(catalogue, history, "Other", 2), 3);
  EXPECT_EQ(small.Groups(), "Same:1 SAME:2 Other:2");
  EXPECT_EQ(catalogue.AreaGroups[3].Visible, On);
  EXPECT_TRUE(catalogue.AreaGroups[3].Areas.Empty());
  ExpectBackAndForth(before);
}

TEST_F(AreaTree, ATemporaryGroupTakesTheLowestFreeNumber) {
  small.AddGroups({{"Temp Area 1", 1}, {"TEMP AREA 2", 7}, {"temp area 4", 1}, {"Temp Area 03", 1}});
  const std::string before = Told(catalogue);
  EXPECT_EQ(AddTempGroup(catalogue, history, 1), 5);
  EXPECT_EQ(catalogue.AreaGroups[5].Name, "Temp Area 3");
  EXPECT_EQ(catalogue.AreaGroups[5].FolderIndex, 1);
  EXPECT_EQ(catalogue.AreaGroups[5].Visible, On);
  ExpectBackAndForth(before);
  EXPECT_EQ(AddTempGroup(catalogue, history, 1), 6);
  EXPECT_EQ(catalogue.AreaGroups[6].Name, "Temp Area 5");
}

TEST_F(AreaTree, ANewFolderStandsAtTheEnd) {
  small.AddFolders({"A"});
  const std::string before = Told(catalogue);
  EXPECT_EQ(NewFolder(catalogue, history, "C1"), "C2");
  EXPECT_EQ(small.Folders(), "A New Folder");
  EXPECT_EQ(catalogue.AreaFolders[2].Visible, On);
  ExpectBackAndForth(before);
  EXPECT_EQ(history.Undo(catalogue).Select, "C1") << "what was selected";
  EXPECT_EQ(history.Redo(catalogue).Select, "C2");
}

TEST_F(AreaTree, ANewGroupGoesToTheFolderOfTheSelectedNode) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 2}});
  const std::string before = Told(catalogue);
  EXPECT_EQ(NewGroup(catalogue, history, "C1"), "D2");
  EXPECT_EQ(small.Groups(), "g:2 New Area Group:1");
  EXPECT_EQ(catalogue.AreaGroups[2].Visible, On);
  ExpectBackAndForth(before);
  EXPECT_EQ(NewGroup(catalogue, history, "D1"), "D3");
  EXPECT_EQ(small.Groups(), "g:2 New Area Group:1 New Area Group:2");
  const Moved moved = history.Undo(catalogue);
  EXPECT_EQ(moved.Select, "D1");
  EXPECT_TRUE(moved.GroupsChanged);
}

TEST_F(AreaTree, NodesAreRenamed) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 2}});
  std::string before = Told(catalogue);
  EXPECT_EQ(RenameNode(catalogue, history, "C2", "Bravo"), "C2");
  EXPECT_EQ(small.Folders(), "A Bravo");
  EXPECT_EQ(history.UndoText(), "rename of B");
  ExpectBackAndForth(before);
  before = Told(catalogue);
  EXPECT_EQ(RenameNode(catalogue, history, "D1", ""), "D1");
  EXPECT_EQ(small.Groups(), ":2") << "an empty name is a name";
  ExpectBackAndForth(before);
  EXPECT_FALSE(history.Undo(catalogue).GroupsChanged);
}

TEST_F(AreaTree, TheFirstOfThreeFoldersGoesWithItsGroups) {
  small.AddFolders({"A", "B", "C"});
  small.AddGroups({{"a1", 1}, {"b1", 2}, {"a2", 1}, {"c1", 3}, {"none", 0}, {"minus", -1}, {"far", 99}});
  small.AddAreas(3, {"x", "y"});
  const std::string before = Told(catalogue);
  EXPECT_TRUE(HasGroups(catalogue, 1));
  EXPECT_EQ(DeleteFolder(catalogue, history, "C1"), "");
  EXPECT_EQ(small.Folders(), "B C");
  EXPECT_EQ(small.Groups(), "b1:1 c1:2 none:0 minus:-1 far:98");
  EXPECT_EQ(history.UndoText(), "delete of A");
  ExpectBackAndForth(before);
  const Moved back = history.Undo(catalogue);
  EXPECT_EQ(back.Select, "C1");
  EXPECT_TRUE(back.GroupsChanged);
  EXPECT_EQ(small.Areas(3), "x y");
  EXPECT_EQ(history.Redo(catalogue).Select, "");
}

TEST_F(AreaTree, AnEmptyFolderInTheMiddleGoes) {
  small.AddFolders({"A", "B", "C"});
  small.AddGroups({{"a", 1}, {"c", 3}});
  const std::string before = Told(catalogue);
  EXPECT_FALSE(HasGroups(catalogue, 2));
  DeleteFolder(catalogue, history, "C2");
  EXPECT_EQ(small.Folders(), "A C");
  EXPECT_EQ(small.Groups(), "a:1 c:2");
  ExpectBackAndForth(before);
  EXPECT_FALSE(history.Undo(catalogue).GroupsChanged);
}

TEST_F(AreaTree, AGroupGoesWithItsAreas) {
  small.AddFolders({"A"});
  small.AddGroups({{"g", 1}, {"h", 1}, {"i", 1}});
  small.AddAreas(2, {"x", "y"});
  const std::string before = Told(catalogue);
  EXPECT_EQ(DeleteGroup(catalogue, history, "D2"), "");
  EXPECT_EQ(small.Groups(), "g:1 i:1");
  EXPECT_EQ(history.UndoText(), "delete of h");
  ExpectBackAndForth(before);
  const Moved back = history.Undo(catalogue);
  EXPECT_EQ(back.Select, "D2");
  EXPECT_TRUE(back.GroupsChanged);
  EXPECT_EQ(history.UndoText(), "");
  EXPECT_EQ(history.RedoText(), "delete of h");
}

// Of folder 1 the groups p, q, r stand at 1, 4 and 6, between them those of folder 2.
class GroupMoves : public AreaTree {
 protected:
  GroupMoves() {
    small.AddFolders({"A", "B"});
    small.AddGroups({{"p", 1}, {"x", 2}, {"y", 2}, {"q", 1}, {"z", 2}, {"r", 1}});
  }
  void ExpectMove(const std::string& key, Way way, const std::string& select, const std::string& groups) {
    const std::string before = Told(catalogue);
    EXPECT_EQ(MoveNode(catalogue, history, key, way), select);
    EXPECT_EQ(small.Groups(), groups);
    ExpectBackAndForth(before);
    const Moved back = history.Undo(catalogue);
    EXPECT_EQ(back.Select, key);
    EXPECT_TRUE(back.GroupsChanged);
    EXPECT_EQ(history.Redo(catalogue).Select, select);
  }
};

TEST_F(GroupMoves, UpPastGroupsOfAnotherFolder) { ExpectMove("D4", Way::Up, "D1", "q:1 x:2 y:2 p:1 z:2 r:1"); }
TEST_F(GroupMoves, DownPastAGroupOfAnotherFolder) { ExpectMove("D4", Way::Down, "D6", "p:1 x:2 y:2 r:1 z:2 q:1"); }
TEST_F(GroupMoves, ToTheTopTheOthersKeepTheirOrder) { ExpectMove("D6", Way::Top, "D1", "r:1 x:2 y:2 p:1 z:2 q:1"); }
TEST_F(GroupMoves, ToTheBottomTheOthersKeepTheirOrder) {
  ExpectMove("D1", Way::Bottom, "D6", "q:1 x:2 y:2 r:1 z:2 p:1");
}
TEST_F(GroupMoves, TheFirstAndTheLastOfAFolderGoNoFurther) {
  const std::string before = Told(catalogue);
  for (const Way way : {Way::Up, Way::Top}) {
    EXPECT_EQ(MoveNode(catalogue, history, "D1", way), "");
    EXPECT_EQ(MoveNode(catalogue, history, "D2", way), "") << "first of folder 2";
  }
  for (const Way way : {Way::Down, Way::Bottom}) {
    EXPECT_EQ(MoveNode(catalogue, history, "D6", way), "");
    EXPECT_EQ(MoveNode(catalogue, history, "D5", way), "") << "last of folder 2";
  }
  EXPECT_EQ(Told(catalogue), before);
  ExpectNoStep();
}

// The groups are of folders 4, 1, 2, 3, 4, of none that is there, and of 1.
class FolderMoves : public AreaTree {
 protected:
  FolderMoves() {
    small.AddFolders({"A", "B", "C", "D"});
    small.AddGroups({{"d", 4}, {"a", 1}, {"b", 2}, {"c", 3}, {"e", 4}, {"f", 99}, {"g", 1}});
  }
  void ExpectMove(const std::string& key, Way way, const std::string& select, const std::string& folders,
                  const std::string& groups) {
    const std::string before = Told(catalogue);
    EXPECT_EQ(MoveNode(catalogue, history, key, way), select);
    EXPECT_EQ(small.Folders(), folders);
    EXPECT_EQ(small.Groups(), groups);
    ExpectBackAndForth(before);
    const Moved back = history.Undo(catalogue);
    EXPECT_EQ(back.Select, key);
    EXPECT_FALSE(back.GroupsChanged);
  }
};

TEST_F(FolderMoves, Up) { ExpectMove("C3", Way::Up, "C2", "A C B D", "d:4 a:1 b:3 c:2 e:4 f:99 g:1"); }
TEST_F(FolderMoves, Down) { ExpectMove("C1", Way::Down, "C2", "B A C D", "d:4 a:2 b:1 c:3 e:4 f:99 g:2"); }
TEST_F(FolderMoves, ToTheTop) { ExpectMove("C3", Way::Top, "C1", "C A B D", "d:4 a:2 b:3 c:1 e:4 f:99 g:2"); }
TEST_F(FolderMoves, ToTheBottomIndexesAboveDropThatOfNoFolderToo) {
  ExpectMove("C2", Way::Bottom, "C4", "A C D B", "d:3 a:1 b:4 c:2 e:3 f:98 g:1");
}
TEST_F(FolderMoves, ToTheTopIndexesBelowRiseThatOfNoFolderToo) {
  small.AddGroups({{"zero", 0}, {"minus", -1}});
  ExpectMove("C4", Way::Top, "C1", "D A B C", "d:1 a:2 b:3 c:4 e:1 f:99 g:2 zero:1 minus:0");
}
TEST_F(FolderMoves, TheFirstAndTheLastGoNoFurther) {
  const std::string before = Told(catalogue);
  EXPECT_EQ(MoveNode(catalogue, history, "C1", Way::Up), "");
  EXPECT_EQ(MoveNode(catalogue, history, "C1", Way::Top), "");
  EXPECT_EQ(MoveNode(catalogue, history, "C4", Way::Down), "");
  EXPECT_EQ(MoveNode(catalogue, history, "C4", Way::Bottom), "");
  EXPECT_EQ(Told(catalogue), before);
  ExpectNoStep();
}

TEST_F(AreaTree, AGroupIsDroppedOnAnotherFolder) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 1}, {"h", 1}, {"lost", 99}});
  EXPECT_EQ(DropNode(catalogue, history, "D2", "C1"), "") << "its own";
  ExpectNoStep();
  std::string before = Told(catalogue);
  EXPECT_EQ(DropNode(catalogue, history, "D2", "C2"), "D2");
  EXPECT_EQ(small.Groups(), "g:1 h:2 lost:99");
  ExpectBackAndForth(before);
  before = Told(catalogue);
  EXPECT_EQ(DropNode(catalogue, history, "D3", "C1"), "D3");
  EXPECT_EQ(small.Groups(), "g:1 h:2 lost:1");
  ExpectBackAndForth(before);
  EXPECT_EQ(history.Undo(catalogue).Select, "D3");
}

TEST_F(AreaTree, ChecksAreWrittenInFullAndOneByOne) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 1}, {"h", 1}});
  catalogue.AreaFolders[1].Visible = 5;  // true of a folder
  catalogue.AreaGroups[1].Visible = 5;   // false of a group
  std::string before = Told(catalogue);
  EXPECT_EQ(CheckNode(catalogue, history, "C1", true), "C1");
  EXPECT_EQ(catalogue.AreaFolders[1].Visible, -1);
  ExpectBackAndForth(before);
  before = Told(catalogue);
  EXPECT_EQ(CheckNode(catalogue, history, "D1", true), "D1");
  EXPECT_EQ(catalogue.AreaGroups[1].Visible, -1);
  ExpectBackAndForth(before);
  before = Told(catalogue);
  EXPECT_EQ(CheckNode(catalogue, history, "C1", false), "C1");
  EXPECT_EQ(catalogue.AreaFolders[1].Visible, 0);
  EXPECT_EQ(catalogue.AreaGroups[1].Visible, -1) << "a folder's mark is its own";
  EXPECT_EQ(catalogue.AreaFolders[2].Visible, -1);
  EXPECT_EQ(history.UndoText(), "uncheck of A");
  ExpectBackAndForth(before);
}

TEST_F(AreaTree, ACheckThatStandsIsNoStep) {
  small.AddFolders({"A"});
  small.AddGroups({{"g", 1}});
  EXPECT_EQ(CheckNode(catalogue, history, "C1", true), "C1");
  EXPECT_EQ(CheckNode(catalogue, history, "D1", true), "D1");
  CheckAllNodes(catalogue, history, true);
  ExpectNoStep();
}

TEST_F(AreaTree, AllNodesOfTheTreeAreChecked) {
  small.AddFolders({"A", "B"});
  small.AddGroups({{"g", 1}, {"h", 2}, {"none", 0}, {"minus", -1}, {"far", 99}});
  catalogue.AreaFolders[2].Visible = 7;
  const std::string before = Told(catalogue);
  CheckAllNodes(catalogue, history, false);
  const auto flags = [this] {
    std::string all;
    for (const AreaFolder& folder : catalogue.AreaFolders.Live()) all += std::to_string(folder.Visible) + " ";
    for (const AreaGroup& group : catalogue.AreaGroups.Live()) all += std::to_string(group.Visible) + " ";
    return all;
  };
  EXPECT_EQ(flags(), "0 0 0 0 -1 -1 -1 ") << "groups of no folder have no node";
  ExpectBackAndForth(before);
  CheckAllNodes(catalogue, history, true);
  EXPECT_EQ(flags(), "-1 -1 -1 -1 -1 -1 -1 ");
}

TEST_F(AreaTree, AGroupOfNoFolderIsHandledAsAny) {
  small.AddFolders({"A"});
  small.AddGroups({{"zero", 0}, {"minus", -1}, {"far", 99}, {"far2", 99}});
  for (std::size_t group = 1; group <= 4; ++group) EXPECT_FALSE(HasFolder(catalogue, catalogue.AreaGroups[group]));
  EXPECT_EQ(MoveNode(catalogue, history, "D1", Way::Down), "") << "no other of folder 0";
  EXPECT_EQ(MoveNode(catalogue, history, "D3", Way::Bottom), "D4");
  EXPECT_EQ(small.Groups(), "zero:0 minus:-1 far2:99 far:99");
  EXPECT_EQ(NewGroup(catalogue, history, "D2"), "D5");
  EXPECT_EQ(catalogue.AreaGroups[5].FolderIndex, -1);
  DeleteGroup(catalogue, history, "D1");
  EXPECT_EQ(small.Groups(), "minus:-1 far2:99 far:99 New Area Group:-1");
}

}  // namespace
}  // namespace kestrel::areas
