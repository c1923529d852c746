// "Save Setup..." and "Load Setup..." of the menu Tools.

#include <QFileInfo>
#include <QSignalSpy>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class SetupMenu : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
  }
  QString Zip() const { return folder.filePath(QStringLiteral("mine.zip")); }
  bool Waits() const { return QFileInfo::exists(folder.filePath(QStringLiteral("setup.new/new/KESTREL.ini"))); }
};

TEST_F(SetupMenu, WhatIsSavedIsLoadedAndTheStationClosesWhereThatIsWanted) {
  desk.SaveAnswers = {Zip().toStdString()};
  Action("mnuSaveSetup").trigger();
  EXPECT_TRUE(QFileInfo::exists(Zip()));
  EXPECT_TRUE(desk.Boxes.empty());
  QSignalSpy closed(&Frame(), &MDIForm1::Closed);
  desk.FileAnswers = {Zip().toStdString(), Zip().toStdString()};
  desk.Answers = {base::Answer::No};
  Action("mnuLoadSetup").trigger();
  EXPECT_EQ(closed.count(), 0);
  EXPECT_TRUE(Waits());
  desk.Answers = {base::Answer::Yes};
  Action("mnuLoadSetup").trigger();
  EXPECT_EQ(closed.count(), 1);
  EXPECT_TRUE(Waits());
}

TEST_F(SetupMenu, WhatIsNoSetupLeavesTheStationOpen) {
  Write("mine.zip", "no zip");
  QSignalSpy closed(&Frame(), &MDIForm1::Closed);
  desk.FileAnswers = {Zip().toStdString()};
  Action("mnuLoadSetup").trigger();
  EXPECT_EQ(closed.count(), 0);
  ASSERT_EQ(desk.Boxes.size(), 1U);
  EXPECT_EQ(desk.Boxes[0].Text, "The setup could not be loaded: mine.zip is no zip.");
  EXPECT_FALSE(Waits());
}

}  // namespace
}  // namespace kestrel::shell
