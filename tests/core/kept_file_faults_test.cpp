// What is left of a theater's data when a save of many is cut short.
#ifndef _WIN32

#include <gtest/gtest.h>
#include <unistd.h>

#include "core/settings.h"
#include "core/theater_data.h"
#include "doubles/full_disk.h"
#include "doubles/other_process.h"
#include "kept_kinds.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

/// Two states of the data, each more than is written in one piece.
class KeptFileFaults : public testing::TestWithParam<KeptKind> {
 protected:
  KeptFileFaults() {
    WriteInstallation(folder);
    for (Station* station : {&former, &next}) {
      station->AppPath = folder.Path;
      LoadSavedVars(*station);
      kind.Grow(*station, station == &next ? 1000 : 700);
    }
    Save(next);
    nextBytes = folder.Read(file);
    Save(former);
    formerBytes = folder.Read(file);
  }
  void Save(Station& station) { SaveKept(station, *kind.Kept); }
  /// 0, or 1 when it fails.
  int TrySave(Station& station) {
    try {
      Save(station);
    } catch (const base::RuntimeFailure&) {
      return 1;
    }
    return 0;
  }

  const KeptKind& kind = GetParam();
  const std::string& file = kind.File;
  ProgramFolder folder;
  Station former;
  Station next;
  std::string formerBytes;
  std::string nextBytes;
};

TEST_P(KeptFileFaults, AKillAtAnyMomentLeavesTheOldFileOrTheNewOne) {
  ASSERT_TRUE(nextBytes == kind.Bytes(next));
  ASSERT_GT(nextBytes.size(), 1'000'000u);
  for (int round = 0; round < 20; ++round) {
    doubles::KillDuring([this] { Save(next); }, [this] { Save(former); }, std::chrono::microseconds(20'000));
    const std::string left = folder.Read(file);
    ASSERT_TRUE(left == formerBytes || left == nextBytes) << left.size();
  }
}

TEST_P(KeptFileFaults, ADiskThatIsFullLeavesTheOldFile) {
  for (const std::size_t limit : {std::size_t{0}, std::size_t{100}, std::size_t{300'000}, nextBytes.size() - 1}) {
    const int code = doubles::ExitCode([&] {
      const doubles::FullDisk disk(limit);
      return TrySave(next);
    });
    EXPECT_EQ(code, 1) << limit;
    EXPECT_TRUE(folder.Read(file) == formerBytes) << limit;
    EXPECT_FALSE(folder.Has(file + ".new")) << limit;
  }
}

TEST_P(KeptFileFaults, ADiskThatIsFullLeavesTheFileThatCouldNotBeRead) {
  const std::string bytes(300'000, 'x');
  folder.Write(file, bytes);
  (next.*kind.Kept->Keeping).KeepFormer = true;
  // Of the copy, and of the new file when there is room for the copy.
  for (const std::size_t limit : {std::size_t{100}, std::size_t{400'000}}) {
    const int code = doubles::ExitCode([&] {
      const doubles::FullDisk disk(limit);
      return TrySave(next);
    });
    EXPECT_EQ(code, 1) << limit;
    EXPECT_TRUE(folder.Read(file) == bytes) << limit;
  }
  EXPECT_EQ(TrySave(next), 0);
  EXPECT_TRUE(folder.Read(kind.Former()) == bytes);
  EXPECT_TRUE(folder.Read(file) == nextBytes);
}

TEST_P(KeptFileFaults, AFolderThatRefusesLeavesTheOldFileAndIsTold) {
  const std::filesystem::path theaters = folder.Path / "Theaters";
  std::filesystem::permissions(theaters, std::filesystem::perms(0555));
  // The settings lie beside it, where the person of the test may write.
  std::filesystem::permissions(folder.Path, std::filesystem::perms(0777));
  next.LinkOptions.CONNPORT = 4711;
  const int code = doubles::ExitCode([&] {
    // The superuser is refused nothing.
    constexpr uid_t Nobody = 65534;
    if (geteuid() == 0 && setuid(Nobody) != 0) return 4;
    const std::vector<Unsaved> failures = SaveAll(next);
    const std::string name = file.substr(file.find('/') + 1);
    for (const Unsaved& failure : failures) {
      if (failure.What == kind.What) return failure.Reason == name + " cannot be written" ? 0 : 1;
    }
    return 2;
  });
  std::filesystem::permissions(theaters, std::filesystem::perms(0755));
  EXPECT_EQ(code, 0);
  EXPECT_TRUE(folder.Read(file) == formerBytes);
  EXPECT_NE(folder.Read("KESTREL.ini").find("CONNPORT=4711"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Of, KeptFileFaults, testing::ValuesIn(keptKinds),
                         [](const testing::TestParamInfo<KeptKind>& each) { return each.param.What; });

}  // namespace
}  // namespace kestrel::core

#endif
