#include "radio/frequency_changes.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "radio/airfield_build.h"
#include "radio/frequency_edits.h"
#include "radio/frequency_file.h"
#include "radio/with_steps.h"

namespace kestrel::radio {
namespace {

/// Folders " Package " (3 entries), "Empty" and "Last" (1 entry); airfields of the teams 1, 2, 1 and none.
Frequencies Sample() {
  Frequencies tables;
  tables.CustomUHF[5] = "297500";
  tables.CustomF1 = " 243000 ";
  tables.Teams[1] = "Red";
  FreqFolder& package = tables.FreqFolders.Append({" Package ", {}});
  for (const char* name : {"Tanker", "Strike", "Escort"}) package.Entries.Append({name, "235100"});
  tables.FreqFolders.Append({"Empty", {}});
  tables.FreqFolders.Append({"Last", {}}).Entries.Append({"Tower", "0"});
  for (const int team : {1, 2, 1, 99}) {
    Airfield& airfield = tables.Airfields.Append({});
    airfield.Name = "Field " + std::to_string(tables.Airfields.UpperBound());
    airfield.TEAM_INDEX = static_cast<std::uint8_t>(team);
    airfield.ILS_DES = {"09L", "27R", "-", "-"};
  }
  tables.Airfields[2].VIS = true;
  tables.Airfields[3].ILS_VIS = {false, true, false, true};
  return tables;
}

DefaultFrequencies Defaults() {
  DefaultFrequencies defaults;
  defaults.DefaultUHF[5] = "297500";
  defaults.DefaultUHF[20] = "300000";
  defaults.DefaultF2 = "307300";
  return defaults;
}

/// What one edit of Sample() is as a step.
struct Edit {
  std::function<void(Frequencies&, FrequencyHistory&)> Do;
  const char* Text;
  const char* Before;  ///< the key that is selected once it is undone
  const char* After;   ///< and once it is redone
  FreqTab Tab;
};

constexpr FreqTab Channel = FreqTab::CustomChannels;
constexpr FreqTab Airport = FreqTab::Airports;
constexpr FreqTab Custom = FreqTab::CustomFreqs;

using Tables = Frequencies;
using Steps = FrequencyHistory;

const Edit edits[] = {
    {[](Tables& t, Steps& s) { SetChannel(t, s, "FU5", ""); }, "change of UHF 5", "FU5", "FU5", Channel},
    {[](Tables& t, Steps& s) { SetChannel(t, s, "FV20", "x"); }, "change of VHF 20", "FV20", "FV20", Channel},
    {[](Tables& t, Steps& s) { SetChannel(t, s, "FI1", "243000"); }, "change of F1", "FI1", "FI1", Channel},
    {[](Tables& t, Steps& s) { SetChannel(t, s, "FI2", "0"); }, "change of F2", "FI2", "FI2", Channel},
    {[](Tables& t, Steps& s) { TakeDefaults(t, s, Defaults()); }, "default channels", "", "", Channel},
    {[](Tables& t, Steps& s) { AddFolder(t, s); }, "new folder", "", "C4", Custom},
    {[](Tables& t, Steps& s) { AddFolder(t, s, "D1_C3"); }, "new folder", "D1_C3", "C4", Custom},
    {[](Tables& t, Steps& s) { RenameFolder(t, s, "C1", ""); }, "rename of Package", "C1", "C1", Custom},
    {[](Tables& t, Steps& s) { DeleteFolder(t, s, "C1"); }, "delete of Package", "C1", "C1", Custom},
    {[](Tables& t, Steps& s) { DeleteFolder(t, s, "C3"); }, "delete of Last", "C3", "C2", Custom},
    {[](Tables& t, Steps& s) {
       AddFreq(t, s, "D1_C1", {"n", "1"});
     },
     "new frequency", "D1_C1", "D4_C1", Custom},
    {[](Tables& t, Steps& s) {
       AddFreq(t, s, "C2", {"n", "1"});
     },
     "new frequency", "C2", "D1_C2", Custom},
    {[](Tables& t, Steps& s) {
       AddFreq(t, s, "", {"n", "1"});
     },
     "new frequency", "", "D1_C4", Custom},
    {[](Tables& t, Steps& s) {
       SetEntry(t, s, "D2_C1", {"Strike", ""});
     },
     "change of Strike", "D2_C1", "D2_C1", Custom},
    {[](Tables& t, Steps& s) { DeleteFreq(t, s, "D2_C1"); }, "delete of Strike", "D2_C1", "D2_C1", Custom},
    {[](Tables& t, Steps& s) { DeleteFreq(t, s, "D3_C1"); }, "delete of Escort", "D3_C1", "D2_C1", Custom},
    {[](Tables& t, Steps& s) { DeleteFreq(t, s, "D1_C3"); }, "delete of Tower", "D1_C3", "C3", Custom},
    {[](Tables& t, Steps& s) { MoveFreq(t, s, "D1_C1", FreqMove::Bottom); }, "move of Tanker", "D1_C1", "D3_C1",
     Custom},
    {[](Tables& t, Steps& s) { MoveFreq(t, s, "D2_C1", FreqMove::Up); }, "move of Strike", "D2_C1", "D1_C1", Custom},
    {[](Tables& t, Steps& s) { MoveFreq(t, s, "C3", FreqMove::Top); }, "move of Last", "C3", "C1", Custom},
    {[](Tables& t, Steps& s) { MoveFreq(t, s, "C1", FreqMove::Down); }, "move of Package", "C1", "C2", Custom},
    {[](Tables& t, Steps& s) { DropFreq(t, s, "D2_C1", "C3"); }, "move of Strike", "D2_C1", "D2_C3", Custom},
    {[](Tables& t, Steps& s) { DropFreq(t, s, "D1_C3", "C2"); }, "move of Tower", "D1_C3", "D1_C2", Custom},
    {[](Tables& t, Steps& s) { MoveAirfield(t, s, "TC4", FreqMove::Top); }, "move of Field 4", "TC4", "TC1", Airport},
    // The key after a move to the bottom has the number of the folders.
    {[](Tables& t, Steps& s) { MoveAirfield(t, s, "A1", FreqMove::Bottom); }, "move of Field 1", "A1", "A3", Airport},
    {[](Tables& t, Steps& s) {
       AirfieldBuild build{.Teams = {"a", "b"}, .Airfields = {}, .Trouble = {}};
       build.Airfields.Append(t.Airfields[2]);
       TakeAirfields(t, s, std::move(build));
     },
     "load of airfields", "", "", Airport},
    {[](Tables& t, Steps& s) { CheckNode(t, s, "A2", false); }, "uncheck of Field 2", "A2", "A2", Airport},
    {[](Tables& t, Steps& s) { CheckNode(t, s, "TC1", true); }, "check of Field 1 TACAN", "TC1", "TC1", Airport},
    {[](Tables& t, Steps& s) { CheckNode(t, s, "I11", true); }, "check of Field 1 ILS 09L", "I11", "I11", Airport},
    {[](Tables& t, Steps& s) { CheckNode(t, s, "R1", true); }, "check of Red", "R1", "R1", Airport},
    {[](Tables& t, Steps& s) { CheckNode(t, s, "R0", true); }, "check of Team #0", "R0", "R0", Airport},
    {[](Tables& t, Steps& s) { SelectAll(t, s, SelectAllBox::Airfields, true); }, "check of all airfields", "", "",
     Airport},
    {[](Tables& t, Steps& s) { SelectAll(t, s, SelectAllBox::TACANs, true); }, "check of all TACANs", "", "", Airport},
    {[](Tables& t, Steps& s) { SelectAll(t, s, SelectAllBox::ILS4, false); }, "uncheck of all ILS4", "", "", Airport},
};

TEST(FrequencyHistories, EachEditIsUndoneAndRedoneToTheByte) {
  for (const Edit& edit : edits) {
    SCOPED_TRACE(edit.Text);
    Frequencies tables = Sample();
    FrequencyHistory steps;
    const std::string before = WriteFrequencies(tables);
    edit.Do(tables, steps);
    const std::string after = WriteFrequencies(tables);
    EXPECT_NE(after, before);
    EXPECT_EQ(tables.Revision, 1u);
    for (std::uint64_t revision = 2; revision < 6; revision += 2) {
      EXPECT_EQ(steps.UndoText(), edit.Text);
      EXPECT_EQ(steps.RedoText(), "");
      const Moved back = steps.Undo(tables);
      EXPECT_TRUE(back.Done);
      EXPECT_EQ(back.Select, edit.Before);
      EXPECT_EQ(back.Tab, edit.Tab);
      EXPECT_EQ(WriteFrequencies(tables), before);
      EXPECT_EQ(steps.UndoText(), "");
      EXPECT_EQ(steps.RedoText(), edit.Text);
      EXPECT_EQ(tables.Revision, revision);
      const Moved again = steps.Redo(tables);
      EXPECT_TRUE(again.Done);
      EXPECT_EQ(again.Select, edit.After);
      EXPECT_EQ(again.Tab, edit.Tab);
      EXPECT_EQ(WriteFrequencies(tables), after);
      EXPECT_EQ(tables.Revision, revision + 1);
    }
  }
}

class FrequencySteps : public WithSteps {
 protected:
  Frequencies tables = Sample();
};

TEST_F(FrequencySteps, AreNoneWhereNothingChanges) {
  const std::string before = WriteFrequencies(tables);
  EXPECT_EQ(SetChannel(tables, steps, "FU5", "297500"), "FU5") << "it is selected all the same";
  EXPECT_EQ(SetChannel(tables, steps, "U", "x"), std::nullopt);
  EXPECT_EQ(SetEntry(tables, steps, "D1_C1", {"Tanker", "235100"}), "D1_C1");
  EXPECT_EQ(SetEntry(tables, steps, "C1", {"x", "x"}), std::nullopt);
  EXPECT_TRUE(RenameFolder(tables, steps, "C1", " Package "));
  EXPECT_EQ(MoveFreq(tables, steps, "D1_C1", FreqMove::Top), "D1_C1");
  EXPECT_EQ(MoveFreq(tables, steps, "C3", FreqMove::Bottom), "C3");
  EXPECT_EQ(MoveAirfield(tables, steps, "A1", FreqMove::Top), "A1");
  EXPECT_TRUE(CheckNode(tables, steps, "A2", true));
  EXPECT_TRUE(CheckNode(tables, steps, "R5", true)) << "a team without airfields";
  EXPECT_FALSE(CheckNode(tables, steps, "UF1", true));
  SelectAll(tables, steps, SelectAllBox::ILS1, false);
  EXPECT_EQ(DropFreq(tables, steps, "D1_C1", "C1"), std::nullopt);
  EXPECT_EQ(steps.UndoText(), "");
  EXPECT_EQ(tables.Revision, 0u);
  EXPECT_EQ(WriteFrequencies(tables), before);
  EXPECT_FALSE(steps.Undo(tables).Done);
  EXPECT_FALSE(steps.Redo(tables).Done);
}

TEST_F(FrequencySteps, AreUndoneOneAfterTheOther) {
  std::vector<std::string> states = {WriteFrequencies(tables)};
  for (const char* key : {"D3_C1", "D1_C1", "C1", "C1"}) {
    if (*key == 'D') DeleteFreq(tables, steps, key);
    if (*key == 'C') DeleteFolder(tables, steps, key);
    states.push_back(WriteFrequencies(tables));
  }
  for (std::size_t at = 4; at-- > 0;) {
    EXPECT_TRUE(steps.Undo(tables).Done);
    EXPECT_EQ(WriteFrequencies(tables), states[at]);
  }
  EXPECT_FALSE(steps.Undo(tables).Done);
  for (std::size_t at = 1; at <= 4; ++at) {
    EXPECT_TRUE(steps.Redo(tables).Done);
    EXPECT_EQ(WriteFrequencies(tables), states[at]);
  }
}

TEST_F(FrequencySteps, AfterAnUndoEndWhatCouldBeRedone) {
  RenameFolder(tables, steps, "C1", "A");
  steps.Undo(tables);
  EXPECT_EQ(steps.RedoText(), "rename of Package");
  RenameFolder(tables, steps, "C1", "B");
  EXPECT_EQ(steps.RedoText(), "");
  EXPECT_FALSE(steps.Redo(tables).Done);
  EXPECT_EQ(tables.FreqFolders[1].Name, "B");
}

TEST_F(FrequencySteps, WithinAStepAreOne) {
  const std::string before = WriteFrequencies(tables);
  {
    OneStep step(tables, steps, "check of those found");
    for (const char* key : {"A1", "A3", "A4"}) CheckNode(tables, steps, key, true);
    EXPECT_FALSE(steps.Undo(tables).Done) << "the step is not over";
  }
  EXPECT_EQ(tables.Revision, 1u);
  EXPECT_EQ(steps.UndoText(), "check of those found");
  EXPECT_EQ(steps.Undo(tables).Select, "");
  EXPECT_EQ(WriteFrequencies(tables), before);
  EXPECT_EQ(steps.UndoText(), "");
}

TEST_F(FrequencySteps, ThatJoinAreOneUntilTheySettle) {
  const auto type = [this](const char* name) {
    OneStep step(tables, steps, "typing", "C1");
    step.Select("C1", name);
    RenameFolder(tables, steps, "C1", name);
  };
  type("A");
  type("AB");
  steps.Settle();
  type("ABC");
  EXPECT_EQ(steps.Undo(tables).Select, "C1");
  EXPECT_EQ(tables.FreqFolders[1].Name, "AB");
  steps.Undo(tables);
  EXPECT_EQ(tables.FreqFolders[1].Name, " Package ");
  EXPECT_FALSE(steps.Undo(tables).Done);
  EXPECT_EQ(steps.Redo(tables).Select, "AB");
  EXPECT_EQ(tables.FreqFolders[1].Name, "AB");
}

TEST_F(FrequencySteps, AreNoneOnceCleared) {
  AddFolder(tables, steps);
  AddFolder(tables, steps);
  steps.Undo(tables);
  EXPECT_GT(steps.Bytes(), 0u);
  steps.Clear();
  EXPECT_EQ(steps.Bytes(), 0u);
  EXPECT_FALSE(steps.Undo(tables).Done);
  EXPECT_FALSE(steps.Redo(tables).Done);
  EXPECT_EQ(tables.FreqFolders.UpperBound(), 4u);
}

TEST_F(FrequencySteps, OfTheOldestGoAtTheLimit) {
  steps = FrequencyHistory(20'000);
  // Each holds the former text of 6000 bytes and some hundred, so that three have room.
  SetChannel(tables, steps, "FU1", "first");
  for (char letter = 'a'; letter <= 'j'; ++letter) {
    SetChannel(tables, steps, "FU1", std::string(6000, letter));
    EXPECT_LE(steps.Bytes(), 20'000u);
  }
  int undone = 0;
  while (steps.Undo(tables).Done) ++undone;
  EXPECT_EQ(undone, 3);
  EXPECT_EQ(tables.CustomUHF[1], std::string(6000, 'g'));
  while (steps.Redo(tables).Done) --undone;
  EXPECT_EQ(undone, 0);
  EXPECT_EQ(tables.CustomUHF[1], std::string(6000, 'j'));
}

TEST_F(FrequencySteps, CountWhatADeletedFolderHolds) {
  FreqFolder& large = tables.FreqFolders.Append({"Large", {}});
  for (int n = 0; n < 100; ++n) large.Entries.Append({std::string(1000, 'd'), std::string(500, 'v')});
  DeleteFolder(tables, steps, "C4");
  EXPECT_GE(steps.Bytes(), 150'000u);
  EXPECT_LE(steps.Bytes(), 170'000u);
  steps = FrequencyHistory(100'000);
  tables = Sample();
  tables.FreqFolders.Append({"Large", {}}).Entries.Append({std::string(100'000, 'd'), ""});
  CheckNode(tables, steps, "A1", true);
  DeleteFolder(tables, steps, "C4");
  EXPECT_EQ(steps.Bytes(), 0u);
  EXPECT_FALSE(steps.Undo(tables).Done) << "nor what came before it";
}

TEST_F(FrequencySteps, MoveTheEntriesOfADeletedFolderAndCopyNone) {
  tables.FreqFolders[1].Entries.Resize(50'000);
  tables.FreqFolders[1].Entries[50'000].Value = "a text that is too long to be held in the place of its pointer";
  const FreqEntry* first = &tables.FreqFolders[1].Entries[1];
  const char* text = tables.FreqFolders[1].Entries[50'000].Value.data();
  for (int turn = 0; turn < 2; ++turn) {
    DeleteFolder(tables, steps, "C1");
    ASSERT_TRUE(steps.Undo(tables).Done);
    ASSERT_TRUE(steps.Redo(tables).Done);
    EXPECT_EQ(tables.FreqFolders.UpperBound(), 2u);
    ASSERT_TRUE(steps.Undo(tables).Done);
    ASSERT_EQ(tables.FreqFolders[1].Entries.UpperBound(), 50'000u);
    EXPECT_EQ(&tables.FreqFolders[1].Entries[1], first);
    EXPECT_EQ(tables.FreqFolders[1].Entries[50'000].Value.data(), text);
  }
  DropFreq(tables, steps, "D50000_C1", "C2");
  EXPECT_EQ(tables.FreqFolders[2].Entries[1].Value.data(), text);
  ASSERT_TRUE(steps.Undo(tables).Done);
  EXPECT_EQ(tables.FreqFolders[1].Entries[50'000].Value.data(), text);
}

/// The person at work, by a fixed sequence of numbers.
class Worker {
 public:
  explicit Worker(unsigned seed) : random(seed) {}

  Frequencies Tables = Sample();
  FrequencyHistory Steps;

  std::size_t Below(std::size_t limit) { return random() % limit; }

  void Work() {
    const auto move = static_cast<FreqMove>(Below(4));
    const bool on = Below(2) == 0;
    switch (Below(12)) {
      case 0:
        return void(AddFolder(Tables, Steps, Key()));
      case 1:
        return void(RenameFolder(Tables, Steps, Key(), Text()));
      case 2:
        if (Below(2) == 0) DeleteFolder(Tables, Steps, Key());
        return;
      case 3:
      case 4:
        return void(AddFreq(Tables, Steps, Key(), {Text(), Text()}));
      case 5:
        return void(DeleteFreq(Tables, Steps, Key()));
      case 6:
        return void(MoveFreq(Tables, Steps, Key(), move));
      case 7:
        return void(DropFreq(Tables, Steps, Key(), Key()));
      case 8:
        return void(SetEntry(Tables, Steps, Key(), {Text(), Text()}));
      case 9:
        return void(SetChannel(Tables, Steps, Key(), Text()));
      case 10:
        if (Below(2) == 0) return void(CheckNode(Tables, Steps, Key(), on));
        if (Below(3) == 0) return TakeDefaults(Tables, Steps, Defaults());
        return SelectAll(Tables, Steps, static_cast<SelectAllBox>(Below(6)), on);
      default:
        return void(MoveAirfield(Tables, Steps, Key(), move));
    }
  }

 private:
  std::string Key() {
    const std::string beginnings[] = {"C", "D1_C", "D2_C", "D4_C", "A", "TC", "I2", "R", "FU", "FV", "FI", "UF"};
    // Those of the third tree more often.
    return beginnings[Below(2) == 0 ? Below(4) : Below(12)] + std::to_string(Below(6));
  }
  std::string Text() { return std::string(Below(30), static_cast<char>('a' + Below(26))); }

  std::minstd_rand random;
};

TEST(FrequencyHistories, WhateverIsDoneCanBeUndoneAndRedone) {
  for (const unsigned seed : {1u, 2u, 3u}) {
    Worker worker(seed);
    std::vector<std::string> states = {WriteFrequencies(worker.Tables)};
    std::size_t at = 0;
    std::size_t undone = 0;
    for (int turn = 0; turn < 1500; ++turn) {
      const std::size_t what = worker.Below(10);
      if (what < 2) {
        ASSERT_EQ(worker.Steps.Undo(worker.Tables).Done, at > 0);
        if (at > 0) --at, ++undone;
      } else if (what == 2) {
        ASSERT_EQ(worker.Steps.Redo(worker.Tables).Done, at + 1 < states.size());
        if (at + 1 < states.size()) ++at;
      } else {
        const std::uint64_t revision = worker.Tables.Revision;
        worker.Work();
        if (worker.Tables.Revision != revision) {
          ASSERT_EQ(worker.Tables.Revision, revision + 1);
          states.resize(++at);
          states.push_back(WriteFrequencies(worker.Tables));
        }
      }
      ASSERT_EQ(WriteFrequencies(worker.Tables), states[at]) << "seed " << seed << ", turn " << turn;
    }
    EXPECT_GT(undone, 100u);
    EXPECT_GT(states.size(), 100u);
    while (at > 0) {
      ASSERT_TRUE(worker.Steps.Undo(worker.Tables).Done);
      ASSERT_EQ(WriteFrequencies(worker.Tables), states[--at]);
    }
    while (at + 1 < states.size()) {
      ASSERT_TRUE(worker.Steps.Redo(worker.Tables).Done);
      ASSERT_EQ(WriteFrequencies(worker.Tables), states[++at]);
    }
  }
}

}  // namespace
}  // namespace kestrel::radio
