#include "areas/area_changes.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "areas/area_list.h"
#include "areas/area_tree.h"
#include "areas/small_catalogue.h"

namespace kestrel::areas {
namespace {

TEST(AreaHistory, HasNothingToUndoAtFirst) {
  Small small;
  for (const Moved& moved : {small.History.Undo(small.Catalogue), small.History.Redo(small.Catalogue)}) {
    EXPECT_FALSE(moved.Done);
    EXPECT_EQ(moved.Select, "");
    EXPECT_FALSE(moved.GroupsChanged);
  }
  EXPECT_EQ(small.History.UndoText(), "");
  EXPECT_EQ(small.History.RedoText(), "");
  EXPECT_EQ(small.Catalogue.Revision, 0u);
}

TEST(AreaHistory, EachStepUndoAndRedoIsARevision) {
  Small small;
  NewFolder(small.Catalogue, small.History);
  EXPECT_EQ(small.Catalogue.Revision, 1u);
  small.History.Undo(small.Catalogue);
  EXPECT_EQ(small.Catalogue.Revision, 2u);
  small.History.Redo(small.Catalogue);
  EXPECT_EQ(small.Catalogue.Revision, 3u);
}

TEST(AreaHistory, AStepAfterAnUndoEndsWhatCouldBeRedone) {
  Small small;
  NewFolder(small.Catalogue, small.History);
  RenameNode(small.Catalogue, small.History, "C1", "A");
  small.History.Undo(small.Catalogue);
  EXPECT_EQ(small.History.RedoText(), "rename of New Folder");
  RenameNode(small.Catalogue, small.History, "C1", "B");
  EXPECT_EQ(small.History.RedoText(), "");
  EXPECT_FALSE(small.History.Redo(small.Catalogue).Done);
  EXPECT_EQ(small.Folders(), "B");
}

TEST(AreaHistory, IsEmptyOnceCleared) {
  Small small;
  NewFolder(small.Catalogue, small.History);
  NewFolder(small.Catalogue, small.History);
  small.History.Undo(small.Catalogue);
  EXPECT_GT(small.History.Bytes(), 0u);
  small.History.Clear();
  EXPECT_EQ(small.History.Bytes(), 0u);
  EXPECT_FALSE(small.History.Undo(small.Catalogue).Done);
  EXPECT_FALSE(small.History.Redo(small.Catalogue).Done);
  EXPECT_EQ(small.Folders(), "New Folder");
}

TEST(AreaHistory, StepsWithinAStepAreOne) {
  Small small;
  {
    OneStep step(small.Catalogue, small.History, "import of objectives");
    step.Select("", "C1");
    std::string name = "Objectives";
    FindOrAddFolder(small.Catalogue, small.History, name);
    AppendArea(small.Catalogue, small.History,
               static_cast<std::size_t>(FindOrAddGroup(small.Catalogue, small.History, "Towns", 1)), Named("t"));
    EXPECT_FALSE(small.History.Undo(small.Catalogue).Done) << "the step is not over";
  }
  EXPECT_EQ(small.Catalogue.Revision, 1u);
  EXPECT_EQ(small.History.UndoText(), "import of objectives");
  const std::string now = Told(small.Catalogue);
  const Moved back = small.History.Undo(small.Catalogue);
  EXPECT_EQ(Told(small.Catalogue), "");
  EXPECT_EQ(back.Select, "");
  EXPECT_TRUE(back.GroupsChanged);
  EXPECT_EQ(small.History.UndoText(), "");
  EXPECT_EQ(small.History.Redo(small.Catalogue).Select, "C1");
  EXPECT_EQ(Told(small.Catalogue), now);
}

TEST(AreaHistory, WhatWasDoneBeforeAFailureIsAStep) {
  Small small;
  try {
    OneStep step(small.Catalogue, small.History, "import");
    NewFolder(small.Catalogue, small.History);
    throw std::runtime_error("the rest cannot be read");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(small.Folders(), "New Folder");
  EXPECT_EQ(small.History.UndoText(), "import");
  small.History.Undo(small.Catalogue);
  EXPECT_EQ(small.Folders(), "");
}

TEST(AreaHistory, AStepWithoutAChangeIsNone) {
  Small small;
  { OneStep step(small.Catalogue, small.History, "nothing"); }
  EXPECT_EQ(small.History.UndoText(), "");
  EXPECT_EQ(small.Catalogue.Revision, 0u);
}

TEST(AreaHistory, TheOldestStepsGoAtTheLimit) {
  Small small;
  small.History = AreaHistory(20'000);
  // Each step holds the former name twice, in its text too: 6010 bytes and some hundred, so that three have room.
  NewFolder(small.Catalogue, small.History);
  for (char letter = 'a'; letter <= 'j'; ++letter) {
    RenameNode(small.Catalogue, small.History, "C1", std::string(3000, letter));
    EXPECT_LE(small.History.Bytes(), 20'000u);
  }
  int undone = 0;
  while (small.History.Undo(small.Catalogue).Done) ++undone;
  EXPECT_EQ(undone, 3);
  EXPECT_EQ(small.Folders(), std::string(3000, 'g'));
  while (small.History.Redo(small.Catalogue).Done) --undone;
  EXPECT_EQ(undone, 0);
  EXPECT_EQ(small.Folders(), std::string(3000, 'j'));
}

TEST(AreaHistory, AStepBeyondTheLimitCannotBeUndone) {
  Small small;
  small.History = AreaHistory(20'000);
  small.AddFolders({"A"});
  small.AddGroups({{"g", 1}});
  for (int i = 0; i < 100; ++i) small.AddAreas(1, {"a"});
  CheckNode(small.Catalogue, small.History, "C1", false);
  DeleteGroup(small.Catalogue, small.History, "D1");
  EXPECT_EQ(small.Groups(), "");
  EXPECT_EQ(small.History.Bytes(), 0u);
  EXPECT_FALSE(small.History.Undo(small.Catalogue).Done) << "nor what came before it";
  NewFolder(small.Catalogue, small.History);
  EXPECT_TRUE(small.History.Undo(small.Catalogue).Done);
}

TEST(AreaHistory, AnUndoThatHoldsTooMuchCannotBeRedone) {
  Small small;
  small.History = AreaHistory(20'000);
  small.AddFolders({"A"});
  small.AddGroups({{"g", 1}});
  for (int i = 0; i < 100; ++i) small.AddAreas(1, {"a"});
  CopyChecked(small.Catalogue, small.History, 1, 1);
  EXPECT_EQ(small.Catalogue.AreaGroups[1].Areas.UpperBound(), 200u);
  EXPECT_TRUE(small.History.Undo(small.Catalogue).Done);
  EXPECT_EQ(small.Catalogue.AreaGroups[1].Areas.UpperBound(), 100u);
  EXPECT_FALSE(small.History.Redo(small.Catalogue).Done);
  EXPECT_EQ(small.History.Bytes(), 0u);
}

TEST(AreaHistory, TheAreasOfADeletedGroupAreMovedAndNotCopied) {
  Small small;
  small.AddFolders({"A"});
  small.AddGroups({{"before", 1}, {"large", 1}, {"behind", 1}});
  base::Table<Area>& areas = small.Catalogue.AreaGroups[2].Areas;
  areas.Resize(50'000);
  areas[1].Lines.Append({1, 2, 3, 4});
  areas[50'000].Points.Append({5, 6, 7, PointType::Target});
  const Area* first = &areas[1];
  const AreaLine* line = &areas[1].Lines[1];
  const FlightPlanPoint* point = &areas[50'000].Points[1];
  const auto expectThere = [&] {
    const base::Table<Area>& now = small.Catalogue.AreaGroups[2].Areas;
    ASSERT_EQ(now.UpperBound(), 50'000u);
    EXPECT_EQ(&now[1], first);
    EXPECT_EQ(&now[1].Lines[1], line);
    EXPECT_EQ(&now[50'000].Points[1], point);
  };

  DeleteGroup(small.Catalogue, small.History, "D2");
  EXPECT_EQ(small.Groups(), "before:1 behind:1");
  EXPECT_GE(small.History.Bytes(), 50'000 * sizeof(Area));
  ASSERT_TRUE(small.History.Undo(small.Catalogue).Done);
  expectThere();
  ASSERT_TRUE(small.History.Redo(small.Catalogue).Done);
  ASSERT_TRUE(small.History.Undo(small.Catalogue).Done);
  expectThere();

  DeleteFolder(small.Catalogue, small.History, "C1");
  EXPECT_EQ(small.Groups(), "");
  ASSERT_TRUE(small.History.Undo(small.Catalogue).Done);
  expectThere();
}

TEST(AreaHistory, ADeletedAreaKeepsItsGeometryWhereItIs) {
  Small small;
  small.AddGroups({{"g", 1}});
  small.AddAreas(1, {"a", "b", "c"});
  small.Catalogue.AreaGroups[1].Areas[2].Lines.Append({1, 2, 3, 4});
  const AreaLine* line = &small.Catalogue.AreaGroups[1].Areas[2].Lines[1];
  DeleteArea(small.Catalogue, small.History, 1, 2);
  small.History.Undo(small.Catalogue);
  EXPECT_EQ(&small.Catalogue.AreaGroups[1].Areas[2].Lines[1], line);
  EXPECT_EQ(small.Areas(1), "a b c");
}

TEST(AreaChanges, ManyAreInsertedAndTakenAtTheirPlaces) {
  Small small;
  small.AddGroups({{"g", 1}});
  small.AddAreas(1, {"a", "b", "c"});
  Insert<Area> insert{1, {}};
  for (const auto& [at, name] : {std::pair{1, "p"}, {3, "q"}, {4, "r"}, {7, "s"}}) {
    insert.Items.push_back({static_cast<std::size_t>(at), Named(name)});
  }
  Change back = Apply(small.Catalogue, insert);
  EXPECT_EQ(small.Areas(1), "p a q r b c s");
  back = Apply(small.Catalogue, std::move(back));
  EXPECT_EQ(small.Areas(1), "a b c");
  Apply(small.Catalogue, std::move(back));
  EXPECT_EQ(small.Areas(1), "p a q r b c s");
  Apply(small.Catalogue, Take<Area>{1, {1, 2, 7}});
  EXPECT_EQ(small.Areas(1), "q r b c");
}

/// The person at work, by a fixed sequence of numbers.
class Worker {
 public:
  explicit Worker(unsigned seed) : random(seed) {
    small.AddFolders({"A", "B", "C"});
    small.AddGroups({{"g", 1}, {"h", 2}, {"i", 1}, {"none", 0}, {"minus", -1}, {"far", 99}});
    small.AddAreas(1, {"a", "b", "c"});
    small.AddAreas(2, {"d"});
  }

  Small small;

  std::size_t Below(std::size_t limit) { return random() % limit; }

  void Work() {
    // Typing would make one step of several.
    history.Settle();
    switch (Below(20)) {
      case 0:
        return void(NewFolder(catalogue, history, Key()));
      case 1:
      case 2:
        return void(NewGroup(catalogue, history, Key()));
      case 3:
        return void(RenameNode(catalogue, history, Key(), Name()));
      case 4:
        if (Below(3) == 0) DeleteFolder(catalogue, history, Key());
        return;
      case 5:
        return void(DeleteGroup(catalogue, history, Key()));
      case 6:
      case 7:
        return void(MoveNode(catalogue, history, Key(), AnyWay()));
      case 8:
        return void(DropNode(catalogue, history, Key(), Key()));
      case 9:
        return void(CheckNode(catalogue, history, Key(), Below(2) == 0));
      case 10:
        return CheckAllNodes(catalogue, history, Below(2) == 0);
      case 11:
        return RenameGroup(catalogue, history, Group(), Name());
      case 12: {
        Area area = Named(Name());
        area.Lines.Append({1, 2, 3, 4});
        return void(AppendArea(catalogue, history, Group(), area));
      }
      case 13:
        return ReplaceArea(catalogue, history, Group(), AreaIndex(), Named(Name()));
      case 14:
        return DeleteArea(catalogue, history, Group(), AreaIndex());
      case 15:
        return void(MoveArea(catalogue, history, Group(), AreaIndex(), AnyWay()));
      case 16:
        return CheckArea(catalogue, history, Group(), AreaIndex(), Below(2) == 0);
      case 17:
        return CheckAllAreas(catalogue, history, Group(), Below(2) == 0);
      case 18: {
        const std::size_t group = Group();
        if (group <= catalogue.AreaGroups.UpperBound() && catalogue.AreaGroups[group].Areas.UpperBound() < 12) {
          CopyChecked(catalogue, history, group, Group());
        }
        return;
      }
      default:
        return ColourChecked(catalogue, history, Group(), static_cast<base::Colour>(Below(5)));
    }
  }

 private:
  std::string Key() { return (Below(2) == 0 ? "C" : "D") + std::to_string(Below(9)); }
  std::string Name() { return std::string(Below(30), static_cast<char>('a' + Below(26))); }
  std::size_t Group() { return Below(8); }
  std::size_t AreaIndex() { return Below(6); }
  Way AnyWay() { return static_cast<Way>(Below(4)); }

  AreaCatalogue& catalogue = small.Catalogue;
  AreaHistory& history = small.History;
  std::minstd_rand random;
};

TEST(AreaHistory, WhateverIsDoneCanBeUndoneAndRedone) {
  for (const unsigned seed : {1u, 2u, 3u, 4u}) {
    Worker worker(seed);
    AreaCatalogue& catalogue = worker.small.Catalogue;
    AreaHistory& history = worker.small.History;
    std::vector<std::string> states = {Told(catalogue)};
    std::size_t at = 0;
    std::size_t undone = 0;
    for (int turn = 0; turn < 1500; ++turn) {
      const std::size_t what = worker.Below(10);
      if (what < 2) {
        ASSERT_EQ(history.Undo(catalogue).Done, at > 0);
        if (at > 0) --at, ++undone;
      } else if (what == 2) {
        ASSERT_EQ(history.Redo(catalogue).Done, at + 1 < states.size());
        if (at + 1 < states.size()) ++at;
      } else {
        const std::uint64_t revision = catalogue.Revision;
        worker.Work();
        if (catalogue.Revision != revision) {
          ASSERT_EQ(catalogue.Revision, revision + 1);
          states.resize(++at);
          states.push_back(Told(catalogue));
        }
      }
      ASSERT_EQ(Told(catalogue), states[at]) << "seed " << seed << ", turn " << turn;
    }
    EXPECT_GT(undone, 100u);
    EXPECT_GT(states.size(), 200u);
    while (at > 0) {
      ASSERT_TRUE(history.Undo(catalogue).Done);
      ASSERT_EQ(Told(catalogue), states[--at]);
    }
    EXPECT_FALSE(history.Undo(catalogue).Done);
    while (at + 1 < states.size()) {
      ASSERT_TRUE(history.Redo(catalogue).Done);
      ASSERT_EQ(Told(catalogue), states[++at]);
    }
  }
}

}  // namespace
}  // namespace kestrel::areas
