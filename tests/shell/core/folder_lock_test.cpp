#include "shell/core/folder_lock.h"

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class FolderLocks : public testing::Test {
 protected:
  QString Name() const { return folder.filePath(QStringLiteral("KESTREL.lock")); }
  std::filesystem::path Path() const { return folder.path().toStdU16String(); }

  QTemporaryDir folder;
};

TEST_F(FolderLocks, ASecondStationIsToldWhileTheFirstRuns) {
  {
    FolderLock first, second;
    EXPECT_TRUE(first.Take(Path()));
    EXPECT_TRUE(QFile::exists(Name()));
    EXPECT_FALSE(second.Take(Path()));
  }
  EXPECT_FALSE(QFile::exists(Name()));
  FolderLock next;
  EXPECT_TRUE(next.Take(Path()));
}

TEST_F(FolderLocks, ALockThatAnEndedStationHasLeftDoesNotCount) {
  QFile left(Name());
  ASSERT_TRUE(left.open(QIODevice::WriteOnly));
  // Numbers of processes end below that.
  left.write("2147483646\nkestrel\n" + QSysInfo::machineHostName().toUtf8() + "\n");
  left.close();
  FolderLock lock;
  EXPECT_TRUE(lock.Take(Path()));
}

TEST_F(FolderLocks, AFolderThatIsNotThereCountsAsFree) {
  FolderLock lock;
  EXPECT_TRUE(lock.Take(Path() / "missing"));
}

}  // namespace
}  // namespace kestrel::shell
