#include "core/acmi_export.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "base/failure.h"
#include "base/temp_folder.h"
#include "doubles/full_disk.h"
#include "map/lat_long.h"
#include "tape/acmi_reader.h"
#include "tape/golden_tape.h"
#include "taping_fixture.h"

namespace kestrel::core {
namespace {

namespace fs = std::filesystem;

constexpr double Start = 46347.25;  // 2026-11-21 06:00:00
constexpr double Second = 1 / 86400.0;

theaters::Theater TheTheater() {
  theaters::Theater theater;
  theater.Size = 1024;
  theater.CoordLat = 34;
  theater.CoordLong = 125;
  return theater;
}

link::Tables GoldenTables(double X, double Y, bool hostile) {
  link::Tables tables = test::SampleTables(1, 1, 0);
  tables.Clients[1].Name = "Smith";
  tables.Clients[1].X = X;
  tables.Clients[1].Y = Y;
  tables.Clients[1].Altitude = 250;
  tables.AIPlots[1].Name = "Viper11   ";
  tables.AIPlots[1].X = 50.25F;
  tables.AIPlots[1].Y = 1000;  // 24 from the south edge
  tables.AIPlots[1].Altitude = 15;
  tables.AIPlots[1].Hostile = hostile ? 1 : 0;
  return tables;
}

std::string GoldenTape(std::int32_t count = 3, double bullX = 512) {
  return test::GoldenHeader(count, 1000, Start, bullX, 512) +
         test::GoldenRecord(Start, GoldenTables(100, 200.5, true)) +
         test::GoldenRecord(Start + Second, GoldenTables(101, 200.5, false)) +
         test::GoldenRecord(Start + 3 * Second, test::SampleTables(0, 0, 0));
}

/// Degrees north are (34 * 365221.8846 + feet) / 20925700 * 57.2957795, feet being 3279.98 to a map unit; degrees east
/// are (125 * 0.01745329 * 20925700 * c + feet) / (c * 20925700) * 57.2957795, c being the cosine of the first before
/// it was made degrees.
const std::string GoldenText =
    "\xEF\xBB\xBF"
    "FileType=text/acmi/tacview\nFileVersion=2.2\n0,ReferenceTime=2026-11-21T06:00:00Z\n0,DataRecorder=KESTREL\n"
    "#0.00\n"
    "1,T=130.8834312|38.5981124|0.00,Type=Navaid+Static+Bullseye,Coalition=Allies,Color=Blue,Name=Bullseye\n"
    "2,T=126.1072737|35.8006009|7620.00,Type=Air+FixedWing,Coalition=Allies,Color=Blue,Name=Smith\n"
    "3,T=125.5457171|34.2154940|457.20,Type=Air+FixedWing,Coalition=Enemies,Color=Red,Name=Viper11\n"
    "#1.00\n"
    "2,T=126.1183467|35.8006009|7620.00\n"
    "3,T=125.5457171|34.2154940|457.20,Coalition=Allies,Color=Blue\n"
    "#3.00\n"
    "-2\n"
    "-3\n";

/// What a zip of one file holds, read from its list at the end as others do. `name`: what the file is called in it.
std::string Unzip(const std::string& zip, std::string& name) {
  base::BinaryReader end(std::string_view(zip).substr(zip.size() - 22));
  EXPECT_EQ(end.U32(), 0x06054B50U);
  end.Skip(4);
  EXPECT_EQ(end.U16(), 1);
  EXPECT_EQ(end.U16(), 1);
  const std::uint32_t listBytes = end.U32(), listAt = end.U32();
  EXPECT_EQ(listAt + listBytes + 22, zip.size());
  base::BinaryReader list(std::string_view(zip).substr(listAt));
  EXPECT_EQ(list.U32(), 0x02014B50U);
  list.Skip(2 + 2);
  EXPECT_EQ(list.U16(), 0x0808);
  EXPECT_EQ(list.U16(), 8);
  list.Skip(4);
  const std::uint32_t sum = list.U32(), packed = list.U32(), plain = list.U32();
  const std::uint16_t nameBytes = list.U16();
  list.Skip(2 + 2 + 2 + 2 + 4);
  EXPECT_EQ(list.U32(), 0U);
  name = list.Text(nameBytes);
  EXPECT_EQ(listBytes, 46U + nameBytes);

  base::BinaryReader head(zip);
  EXPECT_EQ(head.U32(), 0x04034B50U);
  head.Skip(22);
  EXPECT_EQ(head.U16(), nameBytes);
  EXPECT_EQ(head.U16(), 0);
  EXPECT_EQ(head.Text(nameBytes), name);
  base::BinaryReader sums(std::string_view(zip).substr(30 + nameBytes + packed));
  EXPECT_EQ(sums.U32(), 0x08074B50U);
  EXPECT_EQ(sums.U32(), sum);
  EXPECT_EQ(sums.U32(), packed);
  EXPECT_EQ(sums.U32(), plain);
  EXPECT_EQ(30U + nameBytes + packed + 16, listAt);

  std::string text(plain + 1, '\0');
  z_stream stream{};
  EXPECT_EQ(inflateInit2(&stream, -15), Z_OK);
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zip.data() + 30 + nameBytes));
  stream.avail_in = packed;
  stream.next_out = reinterpret_cast<Bytef*>(text.data());
  stream.avail_out = static_cast<uInt>(text.size());
  EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
  EXPECT_EQ(stream.total_out, plain);
  EXPECT_EQ(stream.avail_in, 0U);
  inflateEnd(&stream);
  text.resize(plain);
  EXPECT_EQ(crc32(0, reinterpret_cast<const Bytef*>(text.data()), plain), sum);
  return text;
}

class AcmiExports : public testing::Test {
 protected:
  void Put(const std::string& bytes) {
    fs::remove(tape);
    test::WriteBytes(tape, bytes);
  }
  void Export(const fs::path& to, const theaters::Theater& theater = TheTheater()) const {
    AcmiExport exported(tape, to, theater);
    while (exported.Step()) {
    }
    EXPECT_EQ(exported.Percent(), 100);
  }
  std::size_t Files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
  }

  const test::TempFolder folder;
  const fs::path tape = folder / "a.tap";
  const fs::path text = folder / "a.txt.acmi";
  const fs::path zip = folder / "J\u00E4ger.ZIP.acmi";
};

TEST_F(AcmiExports, TheTextIsThatOfTheTapeByteForByte) {
  Put(GoldenTape());
  Export(text);
  EXPECT_EQ(test::ReadBytes(text), GoldenText);
  EXPECT_EQ(Files(), 2U);
}

TEST_F(AcmiExports, PackedItIsTheSameText) {
  Put(GoldenTape());
  Export(zip);
  std::string name;
  EXPECT_EQ(Unzip(test::ReadBytes(zip), name), GoldenText);
  EXPECT_EQ(name, "J\xC3\xA4ger.txt.acmi");
  EXPECT_EQ(Files(), 2U);
}

TEST_F(AcmiExports, ABullseyeThatIsNoPlaceGivesWayToThatOfTheTheater) {
  Put(GoldenTape(3, std::numeric_limits<double>::quiet_NaN()));
  theaters::Theater theater = TheTheater();
  theater.Bulls.Append({"Alpha", 512, 512});
  theater.CurrentBull = 1;
  Export(text, theater);
  EXPECT_EQ(test::ReadBytes(text), GoldenText);
}

TEST_F(AcmiExports, ALongTapeIsReadBackWhereTheMapHasItsAircraft) {
  constexpr int records = 60;
  std::string bytes = test::GoldenHeader(records, 1000, Start, 512, 512);
  std::vector<link::Tables> session;
  for (int n = 0; n < records; ++n) {
    session.push_back(test::SampleTables(n % 7, 40 + n % 30, n));
    bytes += test::GoldenRecord(Start + n * Second, session.back());
  }
  Put(bytes);
  Export(text);
  Export(zip);
  std::string name;
  EXPECT_EQ(Unzip(test::ReadBytes(zip), name), test::ReadBytes(text));
  const test::Acmi read = test::ReadAcmi(test::ReadBytes(text));
  ASSERT_EQ(read.Frames.size(), static_cast<std::size_t>(records));
  const theaters::Corner corner{34, 125};
  for (int n = 0; n < records; ++n) {
    const test::AcmiFrame& frame = read.Frames[static_cast<std::size_t>(n)];
    const link::Tables& tables = session[static_cast<std::size_t>(n)];
    EXPECT_EQ(frame.Seconds, n);
    ASSERT_EQ(frame.Things.size(), 1 + tables.Clients.UpperBound() + tables.AIPlots.UpperBound());
    std::map<std::string, test::AcmiThing> named;
    for (const auto& [id, thing] : frame.Things) named[thing.Properties.at("Name")] = thing;
    const auto stands = [&](const std::string& who, double X, double Y, int altitude, const char* side) {
      const test::AcmiThing& thing = named.at(who);
      const map::LatLong place = map::LatLongFromFeet(corner, X * link::FeetPerMapUnit, Y * link::FeetPerMapUnit);
      // Half of the last place, and what is lost in reading it.
      EXPECT_NEAR(thing.Lat, place.Lat, 5.1e-8) << who;
      EXPECT_NEAR(thing.Long, place.Long, 5.1e-8) << who;
      EXPECT_NEAR(thing.Metres, altitude * 30.48, 0.001) << who;
      EXPECT_EQ(thing.Properties.at("Coalition"), side) << who;
    };
    for (const link::PlotRecord& client : tables.Clients.Live()) {
      stands(client.Name, client.X, client.Y, client.Altitude, "Allies");
    }
    for (const link::AIPlotRecord& plot : tables.AIPlots.Live()) {
      stands(plot.Name.substr(0, plot.Name.find(' ')), static_cast<double>(plot.X), 1024 - static_cast<double>(plot.Y),
             plot.Altitude, plot.Hostile != 0 ? "Enemies" : "Allies");
    }
  }
}

TEST_F(AcmiExports, ACutTapeLeavesNoFile) {
  const std::string whole = GoldenTape();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    Put(whole.substr(0, length));
    for (const fs::path& to : {text, zip}) {
      EXPECT_THROW(Export(to), base::RuntimeFailure) << length;
      ASSERT_EQ(Files(), 1U) << length;
    }
  }
}

TEST_F(AcmiExports, WhatIsNotFinishedLeavesTheOlderFile) {
  Put(GoldenTape());
  test::WriteBytes(text, "older");
  {
    AcmiExport exported(tape, text, TheTheater());
    EXPECT_TRUE(exported.Step());
    EXPECT_EQ(exported.Percent(), 33);
    EXPECT_TRUE(exported.Step());
    EXPECT_EQ(exported.Percent(), 66);
  }
  EXPECT_EQ(test::ReadBytes(text), "older");
  EXPECT_EQ(Files(), 2U);
  Export(text);
  EXPECT_EQ(test::ReadBytes(text), GoldenText);
}

TEST_F(AcmiExports, WithoutRecordsThereIsNothingToExport) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const std::string& bytes :
       {GoldenTape(0), GoldenTape(-1),
        test::GoldenHeader(1, 0, Start, 0, 0) + test::GoldenRecord(none, GoldenTables(0, 0, false))}) {
    Put(bytes);
    EXPECT_THROW(Export(text), base::RuntimeFailure);
    EXPECT_EQ(Files(), 1U);
  }
}

TEST_F(AcmiExports, TheTapeItselfIsNeverWrittenOver) {
  Put(GoldenTape());
  EXPECT_THROW(Export(tape), base::RuntimeFailure);
  EXPECT_EQ(test::ReadBytes(tape), GoldenTape());
  EXPECT_EQ(Files(), 1U);
}

#ifndef _WIN32
TEST_F(AcmiExports, AFullDiskLeavesNoFile) {
  std::string bytes = test::GoldenHeader(400, 1000, Start, 512, 512);
  for (int n = 0; n < 400; ++n) bytes += test::GoldenRecord(Start + n * Second, test::SampleTables(3, 30, 0));
  Put(bytes);
  // Less than the zip.
  for (const std::size_t room : {0, 1, 1000}) {
    for (const fs::path& to : {text, zip}) {
      const doubles::FullDisk full(room);
      EXPECT_THROW(Export(to), base::RuntimeFailure) << room;
      EXPECT_EQ(Files(), 1U) << room;
    }
  }
  Export(text);
  Export(zip);
  EXPECT_EQ(Files(), 3U);
}
#endif

class ExportChoice : public Taping {
 protected:
  std::unique_ptr<AcmiExport> Choose(const std::string& tape, const std::string& file) {
    Desk.FileAnswers = {tape};
    Desk.SaveAnswers = {file};
    return ChooseExport(All);
  }
};

TEST_F(ExportChoice, AsksForATapeAndForTheFile) {
  RecordTape(2);
  const std::string file = (folder.Path / "out.txt.acmi").string();
  const auto exported = Choose(TapePath().string(), file);
  ASSERT_NE(exported, nullptr);
  ASSERT_EQ(Desk.FileQuestions.size(), 1U);
  EXPECT_EQ(Desk.FileQuestions[0].Title, "Export Tape to Tacview...");
  EXPECT_EQ(Desk.FileQuestions[0].Filter, "Tape Files (*.tap)|*.tap");
  EXPECT_EQ(Desk.FileQuestions[0].Folder, (folder.Path / "TAPES").string());
  ASSERT_EQ(Desk.SaveQuestions.size(), 1U);
  EXPECT_EQ(Desk.SaveQuestions[0].Filter, "Text (*.txt.acmi)|*.txt.acmi|Packed (*.zip.acmi)|*.zip.acmi");
  EXPECT_EQ(Desk.SaveQuestions[0].Folder, (folder.Path / "TAPES").string());
  EXPECT_EQ(Desk.SaveQuestions[0].DefaultName, "21-11-26_120000");
  EXPECT_TRUE(exported->Step());
  EXPECT_FALSE(exported->Step());
  const test::Acmi read = test::ReadAcmi(test::ReadBytes(file));
  EXPECT_EQ(read.Global.at("ReferenceTime"), "2026-11-21T12:00:01Z");
  EXPECT_EQ(read.Frames.size(), 2U);
  EXPECT_TRUE(Desk.Boxes.empty());
}

TEST_F(ExportChoice, CancelledAsksNoMore) {
  EXPECT_EQ(ChooseExport(All), nullptr);
  EXPECT_TRUE(Desk.SaveQuestions.empty());
  Desk.FileAnswers = {"a.tap"};
  EXPECT_EQ(ChooseExport(All), nullptr);
  EXPECT_TRUE(Desk.Boxes.empty());
}

TEST_F(ExportChoice, ATapeThatCannotBeExportedIsTold) {
  RecordTape(0);
  const fs::path file = folder.Path / "out.txt.acmi";
  EXPECT_EQ(Choose(TapePath().string(), file.string()), nullptr);
  EXPECT_EQ(Choose((folder.Path / "none.tap").string(), file.string()), nullptr);
  ASSERT_EQ(Desk.Boxes.size(), 2U);
  EXPECT_EQ(
      Desk.Boxes[0].Text,
      "The tape could not be exported: 21-11-26_120000.tap tells of no records; tape-info --repair saves those of "
      "a tape that was not closed.");
  EXPECT_TRUE(Desk.Boxes[1].Text.starts_with("The tape could not be exported: none.tap")) << Desk.Boxes[1].Text;
  EXPECT_FALSE(fs::exists(file));
}

}  // namespace
}  // namespace kestrel::core
