#include "tape/reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "base/temp_folder.h"
#include "tape/golden_tape.h"
#include "tape/sample_tape.h"

namespace kestrel::tape {
namespace {

using namespace std::string_literals;
using test::Sample;
using test::Start;
using test::Written;

// One record with one AI aircraft and one player, byte by byte.
const std::string handMade =
    "TAPEv2.01"
    "\x01\0\0\0"                                // RecordCount
    "\xE8\x03\0\0"                              // SyncInterval 1000
    "\0\0\0\0\x68\xA1\xE6\x40"                  // StartTime 46347.25
    "\0\0\0\0\0\x04\x80\x40"                    // BullX 512.5
    "\0\0\0\0\0\0\x69\xC0"                      // BullY -200
    "\0\0\0\0\x80\xA1\xE6\x40"                  // Time 46348
    "\x01\0\x02\0\0\0\0\0\0\0"                  // AI: 1 dimension, 2 elements, from 0
    "\0\0"                                      // slot 0: Name
    "\0\0\0\0\0\0\0\0"                          // Bearing
    "\0\0\0\0\0\0\0\0"                          // Range
    "\0\0"                                      // Altitude
    "\0\0\0\0\0\0\0\0"                          // X, Y
    "\0"                                        // Hostile
    "\x0A\0Viper11   "                          // slot 1: Name
    "\0\0\0\0\0\x80\x56\x40"                    // Bearing 90
    "\0\0\0\0\0\0\x24\x40"                      // Range 10
    "\x5E\x01"                                  // Altitude 350
    "\0\0\x80\x3F"                              // X 1
    "\0\0\x20\xC1"                              // Y -10
    "\x01"                                      // Hostile
    "\x01\0\x02\0\0\0\0\0\0\0"                  // Clients: 1 dimension, 2 elements, from 0
    "\0\0"                                      // slot 0: Status
    "\0\0"                                      // Id
    "\0\0"                                      // Info
    "\0\0\0\0\0\0\0\0"                          // X
    "\0\0\0\0\0\0\0\0"                          // Y
    "\0\0"                                      // PosText
    "\0\0\0\0"                                  // Color
    "\0\0"                                      // Altitude
    "\0\0\0\0\0\0\0\0"                          // Reserved1, Reserved2
    "\0\0\0\0\xFF\xFF"                          // ShowLabel, ShowAllHistory, PlotVisible
    "\0\0"                                      // ClientId
    "\x0A\0First_Time"                          // Label
    "\0\0"                                      // Name
    "\0\0"                                      // Speed
    "\x01\0\x01\0\0\0\0\0\0\0"                  // History: its slot 0 alone
    "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"          // 0, 0
    "\x01\0O"                                   // slot 1: Status
    "\xF9\xFF"                                  // Id -7
    "\x02\0f4"                                  // Info
    "\0\0\0\0\0\0\x08\x40"                      // X 3
    "\0\0\0\0\0\0\x10\x40"                      // Y 4
    "\x03\0pos"                                 // PosText
    "\x11\x22\x33\0"                            // Color 0x00332211
    "\xFD\xFF"                                  // Altitude -3
    "\xFF\xFF\xFF\xFF\x02\0\0\0"                // Reserved1, Reserved2
    "\xFF\xFF\0\0\xFF\xFF"                      // ShowLabel, not ShowAllHistory, PlotVisible
    "\xF9\xFF"                                  // ClientId -7
    "\x02\0\xE4\xF6"                            // Label in the code page
    "\x05\0Pilot"                               // Name
    "\xC2\x01"                                  // Speed 450
    "\x01\0\x02\0\0\0\0\0\0\0"                  // History: slot 0 and one position
    "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"          // 0, 0
    "\0\0\0\0\0\0\0\x40\0\0\0\0\0\0\xF0\xBF"s;  // 2, -1

TEST(TapeReader, ReadsEachFieldOfATapeWrittenByHand) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "a.tap", handMade);
  TapeReader reader(folder / "a.tap");
  EXPECT_EQ(reader.Header().RecordCount, 1);
  EXPECT_EQ(reader.Header().SyncInterval, 1000);
  EXPECT_EQ(reader.Header().StartTime, 46347.25);
  EXPECT_EQ(reader.Header().BullX, 512.5);
  EXPECT_EQ(reader.Header().BullY, -200);
  EXPECT_EQ(reader.Skip(FirstRecordAt).Next, handMade.size());
  EXPECT_EQ(reader.ReadTime(FirstRecordAt), 46348);
  const TapeRecord record = reader.ReadRecord(FirstRecordAt);
  EXPECT_EQ(record.Time, 46348);
  ASSERT_EQ(record.AI.UpperBound(), 1U);
  const link::AIPlotRecord& plot = record.AI[1];
  EXPECT_EQ(plot.Name, "Viper11   ");
  EXPECT_EQ(plot.Bearing, 90);
  EXPECT_EQ(plot.Range, 10);
  EXPECT_EQ(plot.Altitude, 350);
  EXPECT_EQ(plot.X, 1);
  EXPECT_EQ(plot.Y, -10);
  EXPECT_EQ(plot.Hostile, 1);
  ASSERT_EQ(record.Clients.UpperBound(), 1U);
  EXPECT_EQ(record.Clients[0].Label, "First_Time");
  EXPECT_EQ(record.Clients[0].History.UpperBound(), 0U);
  const link::PlotRecord& client = record.Clients[1];
  EXPECT_EQ(client.Status, "O");
  EXPECT_EQ(client.Id, -7);
  EXPECT_EQ(client.Info, "f4");
  EXPECT_EQ(client.X, 3);
  EXPECT_EQ(client.Y, 4);
  EXPECT_EQ(client.PosText, "pos");
  EXPECT_EQ(client.Color, 0x00332211U);
  EXPECT_EQ(client.Altitude, -3);
  EXPECT_EQ(client.Reserved1, 0xFFFFFFFFU);
  EXPECT_EQ(client.Reserved2, 2U);
  EXPECT_TRUE(client.ShowLabel);
  EXPECT_FALSE(client.ShowAllHistory);
  EXPECT_TRUE(client.PlotVisible);
  EXPECT_EQ(client.ClientId, -7);
  EXPECT_EQ(client.Label, "\xE4\xF6");
  EXPECT_EQ(client.Name, "Pilot");
  EXPECT_EQ(client.Speed, 450);
  ASSERT_EQ(client.History.UpperBound(), 1U);
  EXPECT_EQ(client.History[1].X, 2);
  EXPECT_EQ(client.History[1].Y, -1);
}

TEST(GoldenTape, IsTheTapeWrittenByHand) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "a.tap", handMade);
  const TapeRecord record = TapeReader(folder / "a.tap").ReadRecord(FirstRecordAt);
  EXPECT_EQ(test::GoldenHeader(1, 1000, 46347.25, 512.5, -200) + Written(record), handMade);
}

TEST(TapeReader, RecordsAreFoundAndReadInAnyOrder) {
  const test::TempFolder folder;
  const Sample sample(30);
  test::WriteBytes(folder / "a.tap", sample.Bytes);
  TapeReader reader(folder / "a.tap");
  std::uint64_t at = FirstRecordAt;
  for (std::size_t n = 0; n < 30; ++n) {
    EXPECT_EQ(at, sample.Positions[n]);
    at = reader.Skip(at).Next;
  }
  EXPECT_EQ(at, sample.Bytes.size());
  for (std::size_t n = 30; n-- > 0;) {
    EXPECT_EQ(Written(reader.ReadRecord(sample.Positions[n])),
              test::GoldenRecord(Start + static_cast<double>(n), sample.Session[n]));
    EXPECT_EQ(reader.ReadTime(sample.Positions[n]), Start + static_cast<double>(n));
  }
}

TEST(TapeReader, LongTextsAndHistoriesAreReadWhole) {
  const test::TempFolder folder;
  link::Tables tables = test::SampleTables(3, 300, 5000);
  tables.Clients[2].Info = std::string(65535, 'i');
  tables.Clients[3].Name = std::string(513, 'n');
  const std::string record = test::GoldenRecord(Start, tables);
  test::WriteBytes(folder / "a.tap", test::GoldenHeader(1, 0, Start, 0, 0) + record);
  TapeReader reader(folder / "a.tap");
  EXPECT_EQ(reader.Skip(FirstRecordAt).Next, 41 + record.size());
  EXPECT_TRUE(Written(reader.ReadRecord(FirstRecordAt)) == record);
}

TEST(TapeReader, HistoriesAndTextsOfAnyLengthAreSteppedOverAndRead) {
  const test::TempFolder folder;
  std::string bytes = test::GoldenHeader(0, 0, Start, 0, 0);
  std::vector<std::string> records;
  for (const int points : {0, 1, 30, 31, 32, 127, 128, 510, 511, 512, 1022, 1023, 1024, 4094, 4095, 4096, 9000}) {
    link::Tables tables = test::SampleTables(5, points % 50, points);
    tables.Clients[1].Info = std::string(static_cast<std::size_t>(points), 'i');
    tables.Clients[2].History.Clear();
    records.push_back(test::GoldenRecord(Start + points, tables));
    bytes += records.back();
  }
  test::WriteBytes(folder / "a.tap", bytes);
  TapeReader reader(folder / "a.tap");
  std::uint64_t at = FirstRecordAt;
  for (const std::string& record : records) {
    const RecordShape shape = reader.Skip(at);
    ASSERT_EQ(shape.Next - at, record.size());
    EXPECT_EQ(shape.Clients, 5U);
    at = shape.Next;
  }
  EXPECT_EQ(at, bytes.size());
  for (std::size_t n = records.size(); n-- > 0;) {
    at -= records[n].size();
    EXPECT_TRUE(Written(reader.ReadRecord(at)) == records[n]) << n;
  }
}

TEST(TapeReader, ShapeTellsWhatARecordHolds) {
  const test::TempFolder folder;
  const link::Tables tables = test::SampleTables(3, 4, 5);
  const std::string record = test::GoldenRecord(Start, tables);
  test::WriteBytes(folder / "a.tap", test::GoldenHeader(1, 0, Start, 0, 0) + record);
  const RecordShape shape = TapeReader(folder / "a.tap").Skip(FirstRecordAt);
  EXPECT_EQ(shape.Position, 41U);
  EXPECT_EQ(shape.Next, 41 + record.size());
  EXPECT_EQ(shape.Time, Start);
  EXPECT_EQ(shape.AIPlots, 4U);
  EXPECT_EQ(shape.Clients, 3U);
  EXPECT_EQ(shape.HistoryBytes, 4 * 10U + (1 + 3 * 6) * 16U);
  EXPECT_EQ(8 + shape.AIBytes + shape.ClientBytes + shape.HistoryBytes, record.size());
  std::uint64_t ai = 10;
  for (const link::AIPlotRecord& plot : tables.AIPlots.Slots()) ai += test::GoldenAI(plot).size();
  EXPECT_EQ(shape.AIBytes, ai);
}

TEST(TapeReader, HistoriesCanBeSteppedOver) {
  const test::TempFolder folder;
  link::Tables tables = test::SampleTables(3, 4, 5);
  test::WriteBytes(folder / "a.tap", test::GoldenHeader(1, 0, Start, 0, 0) + test::GoldenRecord(Start, tables));
  const TapeRecord record = TapeReader(folder / "a.tap").ReadRecord(FirstRecordAt, TapeReader::Histories::StepOver);
  for (link::PlotRecord& client : tables.Clients.Slots()) client.History.Clear();
  EXPECT_EQ(Written(record), test::GoldenRecord(Start, tables));
}

TEST(TapeReader, HeaderIsReadAgain) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "a.tap", test::GoldenHeader(0, 250, Start, 1, 2));
  TapeReader reader(folder / "a.tap");
  test::WriteBytes(folder / "a.tap", test::GoldenHeader(5, 1000, Start, 1, 2));
  EXPECT_EQ(reader.Header().RecordCount, 0);
  EXPECT_EQ(reader.ReadHeader().RecordCount, 5);
  EXPECT_EQ(reader.Header().SyncInterval, 1000);
  test::WriteBytes(folder / "a.tap", "TAPE");
  EXPECT_THROW(reader.ReadHeader(), base::RuntimeFailure);
}

TEST(TapeReader, ArrayWithoutEvenASlot0ReadsAsEmpty) {
  const test::TempFolder folder;
  test::WriteBytes(folder / "a.tap", test::GoldenHeader(1, 0, Start, 0, 0) + test::BytesF64(Start) +
                                         test::TapeArray(0) + test::TapeArray(0));
  TapeReader reader(folder / "a.tap");
  EXPECT_EQ(reader.Skip(FirstRecordAt).Clients, 0U);
  EXPECT_TRUE(reader.ReadRecord(FirstRecordAt).Clients.Empty());
}

TEST(TapeReader, TablesHaveNoMoreSlotsThanTheBound) {
  const test::TempFolder folder;
  // An aircraft of zeros is one with an empty name: 2 + 8 + 8 + 2 + 4 + 4 + 1 bytes. A client has 2 + 2 + 2 + 8 + 8 + 2
  // + 4 + 2 + 4 + 4 + 6 + 2 + 2 + 2 + 2 bytes and a history of no elements.
  const std::string ai(29, '\0');
  const std::string client = std::string(52, '\0') + test::TapeArray(0);
  constexpr std::uint32_t most = 262144;
  for (const std::uint32_t slots : {most, most + 1}) {
    SCOPED_TRACE(slots);
    std::string plots = test::TapeArray(slots);
    std::string clients = test::TapeArray(slots);
    for (std::uint32_t n = 0; n < slots; ++n) {
      plots += ai;
      clients += client;
    }
    for (const std::string& tables : {plots + test::TapeArray(0), test::TapeArray(0) + clients}) {
      test::WriteBytes(folder / "a.tap", test::GoldenHeader(1, 0, Start, 0, 0) + test::BytesF64(Start) + tables);
      TapeReader reader(folder / "a.tap");
      if (slots > most) {
        EXPECT_THROW(reader.Skip(FirstRecordAt), base::RuntimeFailure);
        EXPECT_THROW(reader.ReadRecord(FirstRecordAt), base::RuntimeFailure);
        continue;
      }
      const RecordShape shape = reader.Skip(FirstRecordAt);
      EXPECT_EQ(shape.AIPlots + shape.Clients, most - 1);
      const TapeRecord record = reader.ReadRecord(FirstRecordAt);
      EXPECT_EQ(record.AI.UpperBound() + record.Clients.UpperBound(), most - 1);
    }
  }
}

TEST(TapeReader, AnyNumberButZeroIsTrue) {
  const test::TempFolder folder;
  std::string bytes = handMade;
  const std::size_t flags = bytes.find("\xFF\xFF\0\0\xFF\xFF\xF9"s);
  ASSERT_NE(flags, std::string::npos);
  bytes.replace(flags, 2, "\x01\0"s);
  test::WriteBytes(folder / "a.tap", bytes);
  EXPECT_TRUE(TapeReader(folder / "a.tap").ReadRecord(FirstRecordAt).Clients[1].ShowLabel);
}

}  // namespace
}  // namespace kestrel::tape
