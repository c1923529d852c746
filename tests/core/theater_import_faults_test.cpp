#include "theater_import_fixture.h"

#ifndef _WIN32
#include "doubles/full_disk.h"
#include "doubles/other_process.h"

namespace kestrel::core {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TheaterImportFaults : public TheaterImportTest {
 protected:
  void ExpectNothingChanged(const Files& before) {
    EXPECT_EQ(AllFiles(), before);
    EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
    EXPECT_EQ(station.Catalogue.CurrentTheater, 1);
    EXPECT_THAT(around.Shown.Refreshes, IsEmpty());
  }
};

TEST_F(TheaterImportFaults, CancellingAtAnyMomentLeavesNoTrace) {
  const Files before = AllFiles();
  int words = 0;
  ASSERT_FALSE(Import([&words](std::uint64_t done, std::uint64_t) {
    ++words;
    if (done == ImportParts) throw ImportCancelled();
  }));
  ASSERT_GT(words, 4);
  ExpectNothingChanged(before);
  for (int last = 1; last < words; ++last) {
    int left = last;
    EXPECT_FALSE(Import([&left](std::uint64_t, std::uint64_t) {
      if (--left == 0) throw ImportCancelled();
    })) << last;
    ExpectNothingChanged(before);
    if (HasFailure()) return;
  }
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_TRUE(Import()) << "and then it goes";
}

TEST_F(TheaterImportFaults, ADiskThatIsFullAfterAnyByteIsToldAndChangesNothing) {
  const Files before = AllFiles();
  ASSERT_TRUE(Import());
  const Files after = AllFiles();
  std::size_t largest = 0;
  for (const auto& [name, bytes] : after) largest = std::max(largest, bytes.size());
  const std::size_t settings = after.at("KESTREL.ini").size();
  ASSERT_EQ(largest, settings) << "the last file is the largest: it fails when all others fit";
  std::filesystem::remove(folder.Path / "Theaters/Isle.ini");
  std::filesystem::remove(folder.Path / "Theaters/Isle.gif");
  std::filesystem::remove(folder.Path / "Theaters/Isle_Elevation.dat");
  for (const auto& [name, bytes] : before) test::WriteBytes(folder.Path / name, bytes);
  station.Catalogue.Theaters.Remove(3);
  around.Shown.Refreshes.clear();
  for (std::size_t limit = 0; limit < settings; limit += 53) {
    around.Desk.Boxes.clear();
    {
      const doubles::FullDisk disk(limit);
      EXPECT_FALSE(Import()) << limit;
    }
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("The theater could not be imported: "));
    EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 2u);
    const Files now = AllFiles();
    ASSERT_EQ(now.size(), before.size()) << limit;
    for (const auto& [name, bytes] : before) {
      ASSERT_TRUE(now.contains(name)) << name;
      EXPECT_EQ(now.at(name), bytes) << name << " at " << limit;
    }
    if (HasFailure()) return;
  }
  EXPECT_TRUE(Import());
}

TEST_F(TheaterImportFaults, AKillAtAnyMomentLeavesNoTheaterWithoutItsFiles) {
  const Files before = AllFiles();
  for (int round = 0; round < 40; ++round) {
    doubles::KillDuring([] {}, [this] { Import(); }, std::chrono::microseconds(30000));
    Station again;
    again.AppPath = folder.Path;
    EXPECT_THAT(LoadSavedVars(again), IsEmpty()) << "each theater that is named has its file";
    EXPECT_THAT(again.Notes, IsEmpty());
    for (std::size_t n = 3; n <= again.Catalogue.Theaters.UpperBound(); ++n) {
      const theaters::Theater& theater = again.Catalogue.Theaters[n];
      EXPECT_EQ(base::LoadPicture(TheaterPath(again, theater.Pic)).Width, 32) << theater.Name;
      EXPECT_EQ(folder.Read("Theaters/" + theater.Name + "_Elevation.dat").size(), 2048u);
      EXPECT_EQ(theater.Bulls[1].X, 200);
    }
    for (const auto& [name, bytes] : AllFiles()) {
      if (!before.contains(name)) std::filesystem::remove(folder.Path / name);
    }
    for (const auto& [name, bytes] : before) test::WriteBytes(folder.Path / name, bytes);
    if (HasFailure()) return;
  }
}

TEST_F(TheaterImportFaults, HeightsThatCannotBeReadAreToldAndChangeNothing) {
  const Files before = AllFiles();
  island.Write("Terrdata/korea/terrain/theater.l2", "cut");
  EXPECT_FALSE(Import());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("The theater could not be imported: "));
  ExpectNothingChanged(before);
  around.Desk.Boxes.clear();
  EXPECT_EQ(TheaterImport(around.All, island.Install, 1).Highest({}), std::nullopt);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("The heights of the theater cannot be read: "));
}

TEST_F(TheaterImportFaults, AnotherTheatersFileThatCannotBeWrittenIsToldAndTheImportStands) {
  std::filesystem::remove(folder.Path / "Theaters/balkans.ini");
  std::filesystem::create_directory(folder.Path / "Theaters/balkans.ini");
  EXPECT_TRUE(Import());
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("balkans.ini"));
  EXPECT_EQ(station.Catalogue.Theaters.UpperBound(), 3u);
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("MAP3=Isle.ini"));
  EXPECT_TRUE(folder.Has("Theaters/Isle.gif"));
}

}  // namespace
}  // namespace kestrel::core

#endif
