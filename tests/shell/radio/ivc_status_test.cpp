#include "shell/radio/ivc_status.h"

#include <QLineEdit>
#include <QPushButton>
#include <memory>
#include <stdexcept>

#include "shell/parts/line_icon.h"
#include "shell/station_fixture.h"
#include "shell/word.h"

namespace kestrel::shell {
namespace {

class IvcStatusGroup : public StationTest {
 protected:
  void TearDown() override {
    group.reset();
    StationTest::TearDown();
  }
  void Open() {
    group = std::make_unique<IvcStatus>(program, nullptr);
    QObject::connect(group.get(), &IvcStatus::Refreshed, group.get(), [this] { ++refreshed; });
    group->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(group.get()));
  }
  template <class Control>
  Control& In(const char* name) {
    auto* control = group->findChild<Control*>(Word(name));
    if (control == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *control;
  }
  bool Shows(const char* label, IconKind kind) {
    const QPixmap shown = In<QLabel>(label).pixmap();
    const QPixmap wanted = LineIcon(kind).pixmap(shown.deviceIndependentSize().toSize(), shown.devicePixelRatio());
    return !shown.isNull() && shown.toImage() == wanted.toImage();
  }
  QString Text(const char* field) { return In<QLineEdit>(field).text(); }
  QString State() { return In<QLabel>("lblIVCWords").text(); }

  std::unique_ptr<IvcStatus> group;
  int refreshed = 0;
};

TEST_F(IvcStatusGroup, AsksNothingBeforeItIsTold) {
  Open();
  EXPECT_EQ(group->title(), Word("IVC Status"));
  EXPECT_EQ(In<QLabel>("Image_IVCRunning").toolTip(), Word("IVC Running Status"));
  EXPECT_EQ(In<QLabel>("Image_IVCConnected").toolTip(), Word("IVC Connected Status"));
  EXPECT_EQ(voiceWindows.Operations, 0);
  EXPECT_FALSE(group->Connected());
  EXPECT_TRUE(Shows("Image_IVCRunning", IconKind::ProgramMissing));
  EXPECT_TRUE(Shows("Image_IVCConnected", IconKind::VoiceApart));
}

TEST_F(IvcStatusGroup, RefreshShowsWhatTheClientHas) {
  Open();
  auto& button = In<QPushButton>("cmdRefresh");
  EXPECT_EQ(button.text(), Word("Refresh"));
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(voiceWindows.Operations, 1) << "asked in one operation";
  EXPECT_EQ(refreshed, 1);
  EXPECT_TRUE(Shows("Image_IVCRunning", IconKind::ProgramRuns));
  EXPECT_TRUE(Shows("Image_IVCConnected", IconKind::VoiceConnected));
  EXPECT_EQ(In<QLabel>("Image_IVCConnected").accessibleName(), Word("Connected"));
  EXPECT_EQ(State(), Word("Connected"));
  EXPECT_EQ(Text("txtIVC_UHF"), Word("305000"));
  EXPECT_EQ(Text("txtIVC_VHF"), Word("128550"));
  EXPECT_TRUE(In<QLineEdit>("txtIVC_UHF").isReadOnly());
  EXPECT_TRUE(In<QLineEdit>("txtIVC_VHF").isReadOnly());
  EXPECT_TRUE(group->Connected());
  EXPECT_EQ(group->Status().VHF, "128550");
}

TEST_F(IvcStatusGroup, ClientThatIsNotConnectedOrNotThereIsShownAsThat) {
  Open();
  voiceWindows.Status = "NO CONNECTION";
  group->Refresh();
  EXPECT_TRUE(Shows("Image_IVCRunning", IconKind::ProgramRuns));
  EXPECT_TRUE(Shows("Image_IVCConnected", IconKind::VoiceApart));
  EXPECT_EQ(State(), Word("Running, not connected"));
  EXPECT_EQ(Text("txtIVC_UHF"), Word("305000"));
  voiceWindows.Running = false;
  group->Refresh();
  EXPECT_TRUE(Shows("Image_IVCRunning", IconKind::ProgramMissing));
  EXPECT_EQ(In<QLabel>("Image_IVCRunning").accessibleName(), Word("Not running"));
  EXPECT_EQ(State(), Word("The IVC Client is not running"));
  EXPECT_EQ(Text("txtIVC_UHF") + Text("txtIVC_VHF"), QString());
  EXPECT_FALSE(group->Connected());
  EXPECT_EQ(refreshed, 2);
}

TEST_F(IvcStatusGroup, FollowsATuning) {
  Open();
  program.Voice.RefreshIVCStatus = [this] { group->Refresh(); };
  program.Voice.ClickValue("297500");
  EXPECT_EQ(voiceWindows.Tuned, std::vector<std::string>{"UHF 297500"});
  EXPECT_EQ(Text("txtIVC_UHF"), Word("297500"));
  EXPECT_EQ(voiceWindows.Operations, 1);
  program.Voice.RefreshIVCStatus = nullptr;
}

TEST_F(IvcStatusGroup, WhereTheClientCannotRunOneLineSaysSoAndNothingIsAsked) {
  voiceWindows.CanRun = false;
  Open();
  group->Refresh();
  EXPECT_TRUE(In<QLabel>("lblIVCNone").isVisible());
  EXPECT_EQ(group->findChild<QPushButton*>(), nullptr);
  EXPECT_EQ(group->findChild<QLineEdit*>(), nullptr);
  EXPECT_EQ(voiceWindows.Operations, 0);
  EXPECT_FALSE(group->Status().Running);
  EXPECT_EQ(refreshed, 1) << "whoever waits for it goes on";
}

}  // namespace
}  // namespace kestrel::shell
