#include "radio/frequency_tree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "radio/frequency_edits.h"
#include "radio/with_steps.h"

namespace kestrel::radio {
namespace {

using testing::ElementsAre;

using Mark = FreqNode::Mark;

/// "KEY|TEXT|IMAGE|PARENT'S KEY".
std::vector<std::string> Lines(const std::vector<FreqNode>& nodes) {
  std::vector<std::string> lines;
  for (const FreqNode& node : nodes) {
    lines.push_back(node.Key + "|" + node.Text + "|" + std::to_string(static_cast<int>(node.Image)) + "|" +
                    (node.Parent < 0 ? "" : nodes[static_cast<std::size_t>(node.Parent)].Key));
  }
  return lines;
}

const FreqNode& NodeOf(const std::vector<FreqNode>& nodes, std::string_view key) {
  static const FreqNode none = {.Key = "(none)", .Text = {}};
  const auto found = std::find_if(nodes.begin(), nodes.end(), [&](const FreqNode& node) { return node.Key == key; });
  EXPECT_NE(found, nodes.end()) << key;
  return found == nodes.end() ? none : *found;
}

Mark MarkOf(const Frequencies& tables, std::string_view key) { return NodeOf(AirportNodes(tables), key).Check; }

/// Airfields of these teams, in this order.
Frequencies Fields(std::initializer_list<int> teams) {
  Frequencies tables;
  for (const int team : teams) tables.Airfields.Append({}).TEAM_INDEX = static_cast<std::uint8_t>(team);
  return tables;
}

class FrequencyMarks : public WithSteps {};
class FrequencyTree : public WithSteps {};

TEST(FrequencyKeys, AreTakenApart) {
  const struct {
    const char* Key;
    FreqRecord Record;
    std::size_t Index, Part;
  } cases[] = {{"U", FreqRecord::Root, 0, 0},
               {"V", FreqRecord::Root, 0, 0},
               {"I", FreqRecord::Root, 0, 0},
               {"FU20", FreqRecord::ChannelUHF, 20, 0},
               {"FV1", FreqRecord::ChannelVHF, 1, 0},
               {"FI2", FreqRecord::ChannelUI, 2, 0},
               {"R0", FreqRecord::Team, 0, 0},
               {"R7", FreqRecord::Team, 7, 0},
               {"R8", FreqRecord::None, 0, 0},
               {"A12", FreqRecord::Airfield, 12, 0},
               {"UF12", FreqRecord::TowerUHF, 12, 0},
               {"VF3", FreqRecord::TowerVHF, 3, 0},
               {"TC5", FreqRecord::TACAN, 5, 0},
               {"I11", FreqRecord::ILS, 1, 0},
               {"I412", FreqRecord::ILS, 12, 3},
               {"I5", FreqRecord::None, 0, 0},
               {"I1", FreqRecord::None, 0, 0},
               {"C3", FreqRecord::Folder, 3, 0},
               {"D4_C3", FreqRecord::Entry, 3, 4},
               {"D4", FreqRecord::None, 0, 0},
               {"D_C3", FreqRecord::None, 0, 0},
               {"D4_C", FreqRecord::None, 0, 0},
               {"D4_C3x", FreqRecord::None, 0, 0},
               {"D0_C1", FreqRecord::None, 0, 0},
               {"C0", FreqRecord::None, 0, 0},
               {"C", FreqRecord::None, 0, 0},
               {"A-1", FreqRecord::None, 0, 0},
               {"A1 ", FreqRecord::None, 0, 0},
               {"A99999999999999999999", FreqRecord::None, 0, 0},
               {"", FreqRecord::None, 0, 0},
               {"D", FreqRecord::None, 0, 0},
               {"X1", FreqRecord::None, 0, 0}};
  for (const auto& each : cases) {
    const FreqKey read = ReadFreqKey(each.Key);
    EXPECT_EQ(read.Record, each.Record) << each.Key;
    EXPECT_EQ(read.Index, each.Index) << each.Key;
    EXPECT_EQ(read.Part, each.Part) << each.Key;
  }
}

TEST_F(FrequencyTree, OfTheChannelsHasThreeRoots) {
  Frequencies tables;
  DefaultFrequencies defaults;
  defaults.ChannelNames[1] = " Flight 1 ";
  tables.CustomUHF[1] = " 297500 ";
  tables.CustomVHF[20] = "138050";
  tables.CustomF1 = "0";
  const auto nodes = ChannelNodes(tables, defaults);
  const auto lines = Lines(nodes);
  ASSERT_EQ(lines.size(), 3u + 20 + 20 + 2);
  EXPECT_EQ(lines[0], "U|UHF Channels|1|");
  EXPECT_EQ(lines[1], "V|VHF Channels|1|");
  EXPECT_EQ(lines[2], "I|UI Channels|1|");
  EXPECT_EQ(lines[3], "FU1|[1](Flight 1): 297500|2|U");
  EXPECT_EQ(lines[4], "FU2|[2](): 000000|7|U");
  EXPECT_EQ(lines[22], "FU20|[20](): 000000|7|U");
  EXPECT_EQ(lines[23], "FV1|[1](Flight 1): 000000|7|V") << "a name is of both channels of its number";
  EXPECT_EQ(lines[42], "FV20|[20](): 138050|3|V");
  EXPECT_EQ(lines[43], "FI1|[F1]: 0|6|I");
  EXPECT_EQ(lines[44], "FI2|[F2]: 000000|7|I");
  for (const FreqNode& node : nodes) {
    EXPECT_EQ(node.Check, Mark::None);
    EXPECT_FALSE(node.Renames || node.Drags);
  }
}

TEST_F(FrequencyTree, OfTheAirportsHasTeamsAirfieldsAndAids) {
  Frequencies tables = Fields({2, 0});
  tables.Teams[2] = " Red ";
  Airfield& airfield = tables.Airfields[1];
  airfield.Name = " Kunsan ";
  airfield.UHF = " 292300 ";
  airfield.VHF = "0";
  airfield.TACAN = "075";
  airfield.TACAN_BAND = "X";
  airfield.TACANR = 150;
  airfield.ILS = {"11030", "-", "", "10810"};
  airfield.ILS_DES = {"36", "18", "-", "09L"};
  EXPECT_THAT(Lines(AirportNodes(tables)),
              ElementsAre("R0|Team #0|1|", "R1|Team #1|1|", "R2| Red |1|", "R3|Team #3|1|", "R4|Team #4|1|",
                          "R5|Team #5|1|", "R6|Team #6|1|", "R7|Team #7|1|", "A1|Kunsan|4|R2", "UF1|292300|7|A1",
                          "VF1|0|6|A1", "TC1|075X [150nm]|5|A1", "I11|[36]: 11030|6|A1", "I21|[18]: -|7|A1",
                          "I31|[-]: |7|A1", "I41|[09L]: 10810|6|A1", "A2||4|R0", "UF2||7|A2", "VF2||7|A2",
                          "TC2| [0nm]|5|A2", "I12|[]: |7|A2", "I22|[]: |7|A2", "I32|[]: |7|A2", "I42|[]: |7|A2"));
}

TEST_F(FrequencyTree, OfTheFoldersHasEntriesThatAreDragged) {
  Frequencies tables;
  tables.FreqFolders.Append({" Package ", {}}).Entries.Append({" Tanker ", " 235100 "});
  tables.FreqFolders[1].Entries.Append({"", "x"});
  tables.FreqFolders.Append({});
  const auto nodes = FolderNodes(tables);
  // " 235100 " as it stands: characters 5 and 6 are "10".
  EXPECT_THAT(Lines(nodes), ElementsAre("C1|Package|1|", "D1_C1|[Tanker]: 235100|7|C1", "D2_C1|[]: x|7|C1", "C2||1|"));
  EXPECT_TRUE(nodes[0].Renames && nodes[3].Renames);
  EXPECT_FALSE(nodes[1].Renames || nodes[2].Renames);
  EXPECT_FALSE(nodes[0].Drags || nodes[3].Drags);
  EXPECT_TRUE(nodes[1].Drags && nodes[2].Drags);
}

TEST_F(FrequencyTree, AnAirfieldOfNoTeamStandsUnderTheFirstAndKeepsItsNumber) {
  Frequencies tables = Fields({7, 8, 255});
  const auto nodes = AirportNodes(tables);
  const auto parent = [&](const char* key) { return nodes[static_cast<std::size_t>(NodeOf(nodes, key).Parent)].Key; };
  EXPECT_EQ(parent("A1"), "R7");
  EXPECT_EQ(parent("A2"), "R0");
  EXPECT_EQ(parent("A3"), "R0");
  EXPECT_TRUE(CheckNode(tables, steps, "R0", true));
  EXPECT_FALSE(tables.Airfields[1].VIS);
  EXPECT_TRUE(tables.Airfields[2].VIS && tables.Airfields[3].VIS);
  EXPECT_EQ(tables.Airfields[2].TEAM_INDEX, 8);
  EXPECT_EQ(tables.Airfields[3].TEAM_INDEX, 255);
}

TEST_F(FrequencyTree, SelectsTheFirstWithoutAWish) {
  Frequencies tables = Fields({0});
  EXPECT_EQ(FirstSelected(tables, FreqTab::CustomChannels), "U");
  EXPECT_EQ(FirstSelected(tables, FreqTab::Airports), "");
  EXPECT_EQ(FirstSelected(tables, FreqTab::CustomFreqs), "");
  tables.FreqFolders.Append({});
  EXPECT_EQ(FirstSelected(tables, FreqTab::CustomFreqs), "C1");
}

TEST_F(FrequencyTree, AClickTunesChannelsTowersAndEntries) {
  Frequencies tables = Fields({0, 0});
  tables.CustomUHF[3] = " 297500";
  tables.CustomVHF[20] = "138050";
  tables.CustomF1 = "307300";
  tables.CustomF2 = "309275";
  tables.Airfields[2].UHF = "292300";
  tables.Airfields[2].VHF = "126500";
  tables.Airfields[2].ILS[0] = "11030";
  tables.FreqFolders.Append({"Package", {}}).Entries.Append({"Tanker", "235100"});
  const std::map<std::string, std::string> clicked = {
      {"FU3", " 297500"}, {"FV20", "138050"}, {"UF2", "292300"}, {"VF2", "126500"}, {"D1_C1", "235100"}};
  for (const char* key : {"U",   "V",   "I",   "FI1", "FI2", "FI3", "FU3", "FU21",  "FV20",  "R0",    "A2",
                          "TC2", "I12", "UF2", "VF2", "UF1", "UF3", "C1",  "D1_C1", "D2_C1", "D1_C2", ""}) {
    const auto found = clicked.find(key);
    EXPECT_EQ(ClickedValue(tables, key), found == clicked.end() ? "" : found->second) << key;
    const std::string offered = std::string_view(key) == "FI1"   ? "307300"
                                : std::string_view(key) == "FI2" ? "309275"
                                                                 : ClickedValue(tables, key);
    EXPECT_EQ(OfferedValue(tables, key), offered) << key;
  }
}

TEST_F(FrequencyMarks, AreTheFlagsOfAirfieldTacanAndIls) {
  Frequencies tables = Fields({0, 0});
  EXPECT_TRUE(CheckNode(tables, steps, "A2", true));
  EXPECT_TRUE(tables.Airfields[2].VIS);
  EXPECT_EQ(MarkOf(tables, "A2"), Mark::On);
  EXPECT_EQ(MarkOf(tables, "A1"), Mark::Off);
  EXPECT_TRUE(CheckNode(tables, steps, "TC1", true));
  EXPECT_TRUE(tables.Airfields[1].TACAN_VIS);
  EXPECT_EQ(MarkOf(tables, "TC1"), Mark::On);
  EXPECT_TRUE(CheckNode(tables, steps, "I32", true));
  EXPECT_THAT(tables.Airfields[2].ILS_VIS, ElementsAre(false, false, true, false));
  EXPECT_EQ(MarkOf(tables, "I32"), Mark::On);
  EXPECT_EQ(MarkOf(tables, "I31"), Mark::Off);
  EXPECT_TRUE(CheckNode(tables, steps, "I32", false));
  EXPECT_FALSE(tables.Airfields[2].ILS_VIS[2]);
  EXPECT_FALSE(tables.Airfields[1].VIS) << "nothing else has changed";
}

TEST_F(FrequencyMarks, OfATowerDoNotStay) {
  Frequencies tables = Fields({0});
  for (const char* key : {"UF1", "VF1"}) {
    EXPECT_FALSE(CheckNode(tables, steps, key, true)) << key;
    EXPECT_EQ(MarkOf(tables, key), Mark::Off) << "there is one to be set";
  }
  for (const char* key : {"", "A2", "TC9", "R8", "U", "C1", "FU1"})
    EXPECT_FALSE(CheckNode(tables, steps, key, true)) << key;
  EXPECT_FALSE(tables.Airfields[1].VIS || tables.Airfields[1].TACAN_VIS);
}

TEST_F(FrequencyMarks, OfATeamGoToItsAirfieldsAlone) {
  Frequencies tables = Fields({1, 2, 1});
  EXPECT_TRUE(CheckNode(tables, steps, "R1", true));
  EXPECT_TRUE(tables.Airfields[1].VIS && tables.Airfields[3].VIS);
  EXPECT_FALSE(tables.Airfields[2].VIS);
  EXPECT_FALSE(tables.Airfields[1].TACAN_VIS);
  EXPECT_EQ(MarkOf(tables, "R1"), Mark::On);
  EXPECT_EQ(MarkOf(tables, "R2"), Mark::Off);
  EXPECT_EQ(MarkOf(tables, "R0"), Mark::Off) << "it has no airfield";
  EXPECT_TRUE(CheckNode(tables, steps, "A3", false));
  EXPECT_EQ(MarkOf(tables, "R1"), Mark::Off);
  EXPECT_TRUE(CheckNode(tables, steps, "R1", false));
  EXPECT_FALSE(tables.Airfields[1].VIS);
}

TEST(SelectAllBoxes, AreTickedWhenThereIsOneAndAllAre) {
  Frequencies tables;
  EXPECT_THAT(SelectAllMarks(tables), ElementsAre(false, false, false, false, false, false));
  tables = Fields({0, 1});
  for (Airfield& airfield : tables.Airfields.Live()) {
    airfield.VIS = true;
    airfield.ILS_VIS[3] = true;
  }
  tables.Airfields[1].TACAN_VIS = true;
  EXPECT_THAT(SelectAllMarks(tables), ElementsAre(true, false, false, false, false, true));
}

TEST_F(FrequencyMarks, OfASelectAllBoxGoToAllAirfieldsAndNoOtherFlag) {
  const SelectAllBox boxes[] = {SelectAllBox::Airfields, SelectAllBox::TACANs, SelectAllBox::ILS1,
                                SelectAllBox::ILS2,      SelectAllBox::ILS3,   SelectAllBox::ILS4};
  for (std::size_t n = 0; n < 6; ++n) {
    Frequencies tables = Fields({0, 1, 200});
    SelectAll(tables, steps, boxes[n], true);
    for (const Airfield& airfield : tables.Airfields.Live()) {
      EXPECT_EQ(airfield.VIS, n == 0);
      EXPECT_EQ(airfield.TACAN_VIS, n == 1);
      for (std::size_t k = 0; k < 4; ++k) EXPECT_EQ(airfield.ILS_VIS[k], n == k + 2) << k;
    }
    SelectAllBoxes expected = {};
    expected[n] = true;
    EXPECT_EQ(SelectAllMarks(tables), expected);
    SelectAll(tables, steps, boxes[n], false);
    EXPECT_EQ(SelectAllMarks(tables), SelectAllBoxes());
  }
}

}  // namespace
}  // namespace kestrel::radio
