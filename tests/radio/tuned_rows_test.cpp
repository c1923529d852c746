#include "radio/tuned_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::radio {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

VoiceStatus On(const char* uhf, const char* vhf) {
  return {.Running = true, .Connected = true, .UHF = uhf, .VHF = vhf};
}

/// As "FU3 on UHF".
std::vector<std::string> Rows(const Frequencies& tables, FreqTab tab, const VoiceStatus& status) {
  std::vector<std::string> words;
  for (const TunedRow& row : TunedRows(tables, tab, status)) words.push_back(row.Key + " " + TunedWords(row));
  return words;
}

TEST(TunedRows, AreTheChannelsOfTheirRadios) {
  Frequencies tables;
  tables.CustomUHF[1] = "297500";
  tables.CustomUHF[20] = " 297500 ";
  tables.CustomUHF[2] = "297525";
  tables.CustomVHF[3] = "138050";
  tables.CustomF1 = "138050";
  tables.CustomF2 = "297500";
  EXPECT_THAT(Rows(tables, FreqTab::CustomChannels, On("297500", "138050")),
              ElementsAre("FU1 on UHF", "FU20 on UHF", "FV3 on VHF", "FI1 on VHF", "FI2 on UHF"));
}

TEST(TunedRows, GoByTheTextAndNotByTheKind) {
  Frequencies tables;
  tables.CustomUHF[1] = "297500";
  tables.CustomVHF[2] = "123";
  EXPECT_THAT(Rows(tables, FreqTab::CustomChannels, On("123", "297500")), ElementsAre("FU1 on VHF", "FV2 on UHF"));
  EXPECT_THAT(Rows(tables, FreqTab::CustomChannels, On("297500", " 297500")), ElementsAre("FU1 on UHF and VHF"));
}

TEST(TunedRows, AreTheTowersAndNeitherTACANNorILS) {
  Frequencies tables;
  for (int i = 0; i < 3; ++i) tables.Airfields.Append({}).UHF = "300000";
  tables.Airfields[2].UHF = "257800";
  tables.Airfields[3].VHF = "257800";
  tables.Airfields[1].TACAN = "257800";
  tables.Airfields[1].ILS = {"257800", "257800", "257800", "257800"};
  EXPECT_THAT(Rows(tables, FreqTab::Airports, On("257800", "-")), ElementsAre("UF2 on UHF", "VF3 on UHF"));
}

TEST(TunedRows, AreTheEntriesOfAllFolders) {
  Frequencies tables;
  tables.FreqFolders.Append({"Empty", {}});
  tables.FreqFolders.Append({"Two", {}});
  tables.FreqFolders[2].Entries.Append({"Guard", "243000"});
  tables.FreqFolders[2].Entries.Append({"Guard", "121500"});
  EXPECT_THAT(Rows(tables, FreqTab::CustomFreqs, On("243000", "121500")), ElementsAre("D1_C2 on UHF", "D2_C2 on VHF"));
}

TEST(TunedRows, AreNoneOfWhatIsNoFrequency) {
  Frequencies tables;
  const char* const nothing[] = {"", " ", "0", "00", "000000", "-", "tower", "297,5", "+297500"};
  std::size_t channel = 0;
  for (const char* value : nothing) tables.CustomUHF[++channel] = value;
  for (const char* value : nothing) {
    EXPECT_THAT(Rows(tables, FreqTab::CustomChannels, On(value, value)), IsEmpty()) << '"' << value << '"';
  }
  // One radio without a frequency leaves the other.
  tables.CustomVHF[1] = "138050";
  EXPECT_THAT(Rows(tables, FreqTab::CustomChannels, On("0", "138050")), ElementsAre("FV1 on VHF"));
}

TEST(TunedRows, AreNoneWhileTheClientDoesNotRun) {
  EXPECT_THAT(Rows(Frequencies(), FreqTab::CustomChannels, VoiceStatus()), IsEmpty());
}

TEST(TunedRows, HaveKeysOfTheTree) {
  Frequencies tables;
  tables.CustomUHF[7] = tables.CustomVHF[8] = tables.CustomF1 = "297500";
  tables.Airfields.Append({});
  tables.Airfields[1].UHF = tables.Airfields[1].VHF = "297500";
  tables.FreqFolders.Append({});
  tables.FreqFolders[1].Entries.Append({"", "297500"});
  const struct {
    FreqTab Tab;
    std::size_t Rows;
    std::vector<FreqNode> Nodes;
  } trees[] = {{FreqTab::CustomChannels, 3, ChannelNodes(tables, {})},
               {FreqTab::Airports, 2, AirportNodes(tables)},
               {FreqTab::CustomFreqs, 1, FolderNodes(tables)}};
  for (const auto& [tab, count, nodes] : trees) {
    const std::vector<TunedRow> rows = TunedRows(tables, tab, On("297500", ""));
    EXPECT_EQ(rows.size(), count);
    for (const TunedRow& row : rows) {
      EXPECT_EQ(OfferedValue(tables, row.Key), "297500") << row.Key;
      EXPECT_THAT(nodes, testing::Contains(testing::Field(&FreqNode::Key, row.Key)));
    }
  }
}

}  // namespace
}  // namespace kestrel::radio
