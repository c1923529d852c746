#include "radio/frequency_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "radio/with_steps.h"

namespace kestrel::radio {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Folders "1", "2", ... with so many entries, whose descriptions are "1a", "1b", ...
Frequencies Folders(std::initializer_list<int> entries) {
  Frequencies tables;
  for (const int count : entries) {
    const std::string name = std::to_string(tables.FreqFolders.UpperBound() + 1);
    FreqFolder& folder = tables.FreqFolders.Append({name, {}});
    for (int j = 0; j < count; ++j) folder.Entries.Append({name + static_cast<char>('a' + j), "225000"});
  }
  return tables;
}

/// "1:1a,1b 2:".
std::string Shape(const Frequencies& tables) {
  std::string shape;
  for (const FreqFolder& folder : tables.FreqFolders.Live()) {
    shape += (shape.empty() ? "" : " ") + folder.Name + ":";
    for (std::size_t j = 1; j <= folder.Entries.UpperBound(); ++j) {
      shape += (j == 1 ? "" : ",") + folder.Entries[j].Description;
    }
  }
  return shape;
}

/// Airfields "1", "2", ... of these teams.
Frequencies Fields(std::initializer_list<int> teams) {
  Frequencies tables;
  for (const int team : teams) {
    const std::string name = std::to_string(tables.Airfields.UpperBound() + 1);
    Airfield& airfield = tables.Airfields.Append({});
    airfield.Name = name;
    airfield.TEAM_INDEX = static_cast<std::uint8_t>(team);
  }
  return tables;
}

std::string Names(const Frequencies& tables) {
  std::string names;
  for (const Airfield& airfield : tables.Airfields.Live()) names += airfield.Name;
  return names;
}

class AirfieldMoves : public WithSteps {};
class FrequencyDrops : public WithSteps {};
class FrequencyEdits : public WithSteps {};
class FrequencyMoves : public WithSteps {};

TEST_F(FrequencyEdits, OfAChannelFindItByItsKey) {
  Frequencies tables;
  EXPECT_EQ(ChannelOf(tables, "FU1"), &tables.CustomUHF[1]);
  EXPECT_EQ(ChannelOf(tables, "FU20"), &tables.CustomUHF[20]);
  EXPECT_EQ(ChannelOf(tables, "FV7"), &tables.CustomVHF[7]);
  EXPECT_EQ(ChannelOf(tables, "FI1"), &tables.CustomF1);
  EXPECT_EQ(ChannelOf(tables, "FI2"), &tables.CustomF2);
  for (const char* key : {"", "U", "V", "I", "FU0", "FU21", "FI3", "A1", "C1"}) {
    EXPECT_EQ(ChannelOf(tables, key), nullptr) << key;
  }
}

TEST_F(FrequencyEdits, OfAChannelStoreWhatWasTyped) {
  Frequencies tables;
  EXPECT_EQ(SetChannel(tables, steps, "FU20", " not checked "), "FU20");
  EXPECT_EQ(tables.CustomUHF[20], " not checked ");
  EXPECT_EQ(SetChannel(tables, steps, "FV1", ""), "FV1");
  EXPECT_EQ(tables.CustomVHF[1], "");
  EXPECT_EQ(SetChannel(tables, steps, "FI2", "243000"), "FI2");
  EXPECT_EQ(tables.CustomF2, "243000");
  EXPECT_EQ(tables.CustomF1, "000000");
  for (const char* key : {"", "U", "FU21", "FI3", "A1", "C1", "D1_C1"}) {
    EXPECT_EQ(SetChannel(tables, steps, key, "x"), std::nullopt) << key;
  }
}

TEST_F(FrequencyEdits, OfAnEntryStoreWhatWasTyped) {
  Frequencies tables = Folders({2});
  EXPECT_EQ(SetEntry(tables, steps, "D2_C1", {" as typed ", "not checked"}), "D2_C1");
  EXPECT_EQ(Shape(tables), "1:1a, as typed ");
  EXPECT_EQ(tables.FreqFolders[1].Entries[2].Value, "not checked");
  for (const char* key : {"C1", "D3_C1", "D1_C2", "", "FU1"}) {
    EXPECT_EQ(SetEntry(tables, steps, key, {"x", "x"}), std::nullopt) << key;
  }
  EXPECT_EQ(Shape(tables), "1:1a, as typed ");
}

TEST_F(FrequencyEdits, TakingTheDefaultsReplacesChannelsAlone) {
  DefaultFrequencies defaults;
  for (std::size_t i = 1; i <= 20; ++i) {
    defaults.DefaultUHF[i] = "U" + std::to_string(i);
    defaults.DefaultVHF[i] = "V" + std::to_string(i);
  }
  defaults.DefaultF1 = "one";
  Frequencies tables;
  tables.FreqFolders.Append({"Folder", {}});
  tables.Airfields.Append({}).Name = "Kunsan";
  tables.Teams[3] = "Red";
  TakeDefaults(tables, steps, defaults);
  EXPECT_EQ(tables.CustomUHF[1], "U1");
  EXPECT_EQ(tables.CustomUHF[20], "U20");
  EXPECT_EQ(tables.CustomVHF[1], "V1");
  EXPECT_EQ(tables.CustomVHF[20], "V20");
  EXPECT_EQ(tables.CustomF1, "one");
  EXPECT_EQ(tables.CustomF2, "") << "an empty default counts";
  EXPECT_EQ(tables.FreqFolders.UpperBound(), 1u);
  EXPECT_EQ(tables.Airfields[1].Name, "Kunsan");
  EXPECT_EQ(tables.Teams[3], "Red");
}

TEST_F(FrequencyEdits, LoadedChannelsAreOneStep) {
  Frequencies tables = Folders({1});
  tables.CustomF1 = "one";
  LoadedChannels loaded{tables.CustomUHF, tables.CustomVHF, "one", "two"};
  loaded.UHF[20] = "251000";
  loaded.VHF[1] = "59401";
  TakeChannels(tables, steps, loaded);
  EXPECT_EQ(tables.CustomUHF[20], "251000");
  EXPECT_EQ(tables.CustomVHF[1], "59401");
  EXPECT_EQ(tables.CustomF2, "two");
  EXPECT_EQ(tables.Revision, 1u);
  EXPECT_EQ(steps.UndoText(), "loaded channels");
  TakeChannels(tables, steps, loaded);
  EXPECT_EQ(tables.Revision, 1u) << "nothing has changed";
  steps.Undo(tables);
  EXPECT_EQ(tables.CustomUHF[20], UnsetChannel);
  EXPECT_EQ(tables.CustomVHF[1], UnsetChannel);
  EXPECT_EQ(tables.CustomF2, UnsetChannel);
  EXPECT_EQ(Shape(tables), "1:1a");
}

TEST_F(FrequencyEdits, AFolderIsAddedAtTheEnd) {
  Frequencies tables = Folders({1});
  EXPECT_EQ(AddFolder(tables, steps), "C2");
  EXPECT_EQ(Shape(tables), "1:1a New Folder:");
}

TEST_F(FrequencyEdits, AFolderIsRenamedAndAnEntryIsNot) {
  Frequencies tables = Folders({1});
  EXPECT_TRUE(RenameFolder(tables, steps, "C1", " as typed "));
  EXPECT_EQ(tables.FreqFolders[1].Name, " as typed ");
  EXPECT_TRUE(RenameFolder(tables, steps, "C1", ""));
  for (const char* key : {"D1_C1", "C2", "", "U"}) EXPECT_FALSE(RenameFolder(tables, steps, key, "x")) << key;
  EXPECT_EQ(Shape(tables), ":1a");
}

TEST_F(FrequencyEdits, OnlyAFolderWithEntriesIsAskedFor) {
  Frequencies tables = Folders({1, 0});
  tables.FreqFolders[1].Name = " Package ";
  EXPECT_EQ(DeleteFolderQuestion(tables, "C1"),
            "Are you sure you want to delete the Package Folder? All Frequencies under it will be deleted also.");
  for (const char* key : {"C2", "D1_C1", "C3", ""}) EXPECT_EQ(DeleteFolderQuestion(tables, key), "") << key;
}

TEST_F(FrequencyEdits, ADeletedFolderGivesTheSelectionToTheNextOrTheLast) {
  Frequencies tables = Folders({1, 2, 0});
  EXPECT_EQ(DeleteFolder(tables, steps, "D1_C2"), std::nullopt);
  EXPECT_EQ(DeleteFolder(tables, steps, ""), std::nullopt);
  EXPECT_EQ(DeleteFolder(tables, steps, "C4"), std::nullopt);
  EXPECT_EQ(DeleteFolder(tables, steps, "C2"), "C2");
  EXPECT_EQ(Shape(tables), "1:1a 3:");
  EXPECT_EQ(DeleteFolder(tables, steps, "C2"), "C1");
  EXPECT_EQ(Shape(tables), "1:1a");
  EXPECT_EQ(DeleteFolder(tables, steps, "C1"), "") << "nothing is left to select";
  EXPECT_EQ(Shape(tables), "");
}

TEST_F(FrequencyEdits, AFrequencyIsAddedToTheFolderOfTheSelection) {
  Frequencies tables = Folders({1, 0});
  EXPECT_EQ(AddFreq(tables, steps, "C2", {"x", "243000"}), "D1_C2");
  EXPECT_EQ(AddFreq(tables, steps, "D1_C1", {"y", "not checked"}), "D2_C1");
  EXPECT_EQ(Shape(tables), "1:1a,y 2:x");
  EXPECT_EQ(tables.FreqFolders[1].Entries[2].Value, "not checked");
}

TEST_F(FrequencyEdits, AFrequencyWithoutASelectionGetsANewFolder) {
  Frequencies tables;
  EXPECT_EQ(AddFreq(tables, steps, "", {"x", "1"}), "D1_C1");
  EXPECT_EQ(Shape(tables), "New Folder:x");
  EXPECT_EQ(AddFreq(tables, steps, "", {"y", "2"}), "D1_C2") << "also when there is a folder";
  EXPECT_EQ(Shape(tables), "New Folder:x New Folder:y");
}

TEST_F(FrequencyEdits, AnEntryIsFoundByItsKey) {
  Frequencies tables = Folders({2});
  EXPECT_EQ(EntryOf(tables, "D2_C1"), &tables.FreqFolders[1].Entries[2]);
  for (const char* key : {"C1", "D3_C1", "D1_C2", "", "FU1"}) EXPECT_EQ(EntryOf(tables, key), nullptr) << key;
}

TEST_F(FrequencyEdits, ADeletedFrequencyGivesTheSelectionToTheNextTheLastOrTheFolder) {
  Frequencies tables = Folders({3});
  EXPECT_EQ(DeleteFreq(tables, steps, "C1"), std::nullopt);
  EXPECT_EQ(DeleteFreq(tables, steps, ""), std::nullopt);
  EXPECT_EQ(DeleteFreq(tables, steps, "D4_C1"), std::nullopt);
  EXPECT_EQ(DeleteFreq(tables, steps, "D2_C1"), "D2_C1");
  EXPECT_EQ(Shape(tables), "1:1a,1c");
  EXPECT_EQ(DeleteFreq(tables, steps, "D2_C1"), "D1_C1");
  EXPECT_EQ(DeleteFreq(tables, steps, "D1_C1"), "C1");
  EXPECT_EQ(Shape(tables), "1:");
}

struct Case {
  const char* Key;
  FreqMove Move;
  Reselect Selected;
  const char* After;
};

TEST_F(FrequencyMoves, OfEntriesStayInTheirFolder) {
  const Case cases[] = {
      {"D2_C1", FreqMove::Up, "D1_C1", "1:1b,1a,1c 2:2a"},
      {"D2_C1", FreqMove::Down, "D3_C1", "1:1a,1c,1b 2:2a"},
      {"D3_C1", FreqMove::Top, "D1_C1", "1:1c,1a,1b 2:2a"},
      {"D1_C1", FreqMove::Bottom, "D3_C1", "1:1b,1c,1a 2:2a"},
      // At the edge Up and Down do not even refresh, the others do.
      {"D1_C1", FreqMove::Up, std::nullopt, "1:1a,1b,1c 2:2a"},
      {"D3_C1", FreqMove::Down, std::nullopt, "1:1a,1b,1c 2:2a"},
      {"D1_C1", FreqMove::Top, "D1_C1", "1:1a,1b,1c 2:2a"},
      {"D3_C1", FreqMove::Bottom, "D3_C1", "1:1a,1b,1c 2:2a"},
      {"D1_C2", FreqMove::Up, std::nullopt, "1:1a,1b,1c 2:2a"},
      {"D1_C2", FreqMove::Bottom, "D1_C2", "1:1a,1b,1c 2:2a"},
      {"D4_C1", FreqMove::Top, std::nullopt, "1:1a,1b,1c 2:2a"},
      {"", FreqMove::Top, std::nullopt, "1:1a,1b,1c 2:2a"},
  };
  for (const Case& each : cases) {
    Frequencies tables = Folders({3, 1});
    EXPECT_EQ(MoveFreq(tables, steps, each.Key, each.Move), each.Selected) << each.Key;
    EXPECT_EQ(Shape(tables), each.After) << each.Key;
  }
}

TEST_F(FrequencyMoves, OfFoldersTakeTheirEntriesAlong) {
  const Case cases[] = {
      {"C2", FreqMove::Up, "C1", "2:2a 1:1a 3:"},          {"C2", FreqMove::Down, "C3", "1:1a 3: 2:2a"},
      {"C3", FreqMove::Top, "C1", "3: 1:1a 2:2a"},         {"C1", FreqMove::Bottom, "C3", "2:2a 3: 1:1a"},
      {"C1", FreqMove::Up, std::nullopt, "1:1a 2:2a 3:"},  {"C3", FreqMove::Down, std::nullopt, "1:1a 2:2a 3:"},
      {"C1", FreqMove::Top, "C1", "1:1a 2:2a 3:"},         {"C3", FreqMove::Bottom, "C3", "1:1a 2:2a 3:"},
      {"C4", FreqMove::Top, std::nullopt, "1:1a 2:2a 3:"},
  };
  for (const Case& each : cases) {
    Frequencies tables = Folders({1, 1, 0});
    EXPECT_EQ(MoveFreq(tables, steps, each.Key, each.Move), each.Selected) << each.Key;
    EXPECT_EQ(Shape(tables), each.After) << each.Key;
  }
}

TEST_F(AirfieldMoves, KeepTheBeginningOfTheKey) {
  const Case cases[] = {
      {"TC5", FreqMove::Up, "TC4", "12354"},         {"A5", FreqMove::Up, "A4", "12354"},
      {"UF2", FreqMove::Down, "UF3", "13245"},       {"VF2", FreqMove::Top, "VF1", "21345"},
      {"I13", FreqMove::Up, "I12", "13245"},         {"I43", FreqMove::Down, "I44", "12435"},
      {"A3", FreqMove::Top, "A1", "31245"},          {"A1", FreqMove::Up, std::nullopt, "12345"},
      {"A5", FreqMove::Down, std::nullopt, "12345"}, {"A1", FreqMove::Top, "A1", "12345"},
      {"R0", FreqMove::Down, std::nullopt, "12345"}, {"A6", FreqMove::Up, std::nullopt, "12345"},
      {"", FreqMove::Up, std::nullopt, "12345"},     {"C1", FreqMove::Up, std::nullopt, "12345"},
  };
  for (const Case& each : cases) {
    Frequencies tables = Fields({0, 0, 0, 0, 0});
    EXPECT_EQ(MoveAirfield(tables, steps, each.Key, each.Move), each.Selected) << each.Key;
    EXPECT_EQ(Names(tables), each.After) << each.Key;
  }
}

TEST_F(AirfieldMoves, SwapWithTheNeighbourOfAnotherTeam) {
  Frequencies tables = Fields({1, 2, 1});
  EXPECT_EQ(MoveAirfield(tables, steps, "A3", FreqMove::Up), "A2");
  EXPECT_EQ(Names(tables), "132");
  EXPECT_EQ(tables.Airfields[2].TEAM_INDEX, 1) << "within its team it stands where it stood";
}

TEST_F(AirfieldMoves, ToTheBottomSelectByTheNumberOfFolders) {
  Frequencies tables = Fields({0, 0, 0, 0});
  for (int folders = 0; folders <= 6; ++folders) {
    Frequencies each = tables;
    for (int n = 0; n < folders; ++n) AddFolder(each, steps);
    const int selected = folders >= 1 && folders <= 4 ? folders : 4;
    EXPECT_EQ(MoveAirfield(each, steps, "TC2", FreqMove::Bottom), "TC" + std::to_string(selected)) << folders;
    EXPECT_EQ(Names(each), "1342") << folders;
  }
  EXPECT_EQ(MoveAirfield(tables, steps, "A4", FreqMove::Bottom), "A4");
  EXPECT_EQ(Names(tables), "1234");
}

TEST_F(FrequencyDrops, MoveAnEntryToAnotherFolder) {
  Frequencies tables = Folders({2, 1, 0});
  EXPECT_EQ(DropFreq(tables, steps, "D1_C1", "C2"), "D2_C2");
  EXPECT_EQ(Shape(tables), "1:1b 2:2a,1a 3:");
  EXPECT_EQ(DropFreq(tables, steps, "D1_C1", "C3"), "D1_C3");
  EXPECT_EQ(Shape(tables), "1: 2:2a,1a 3:1b");
}

TEST_F(FrequencyDrops, ElsewhereDoNothing) {
  Frequencies tables = Folders({2, 1});
  for (const auto& [from, to] : std::vector<std::pair<const char*, const char*>>{{"D1_C1", "C1"},
                                                                                 {"D1_C1", "D1_C2"},
                                                                                 {"C1", "C2"},
                                                                                 {"D3_C1", "C2"},
                                                                                 {"D1_C1", "C3"},
                                                                                 {"D1_C1", ""},
                                                                                 {"", "C1"}}) {
    EXPECT_EQ(DropFreq(tables, steps, from, to), std::nullopt) << from << " on " << to;
  }
  EXPECT_EQ(Shape(tables), "1:1a,1b 2:2a");
}

TEST_F(FrequencyDrops, MayBeTriedFromEntriesOnFolders) {
  EXPECT_TRUE(MayDropFreq("D1_C1", "C2"));
  EXPECT_TRUE(MayDropFreq("D1_C1", "C1")) << "its own folder is highlighted too";
  EXPECT_FALSE(MayDropFreq("D1_C1", "D1_C2"));
  EXPECT_FALSE(MayDropFreq("C1", "C2"));
  EXPECT_FALSE(MayDropFreq("D1_C1", ""));
}

}  // namespace
}  // namespace kestrel::radio
