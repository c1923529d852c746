#include "shell/falcon/list_theaters_frm.h"

#include <QPushButton>
#include <QRadioButton>
#include <memory>

#include "base/program_title.h"
#include "shell/falcon/installed_falcon.h"

namespace kestrel::shell {
namespace {

class TheaterList : public InstalledFalcon {
 protected:
  void TearDown() override {
    // Before its owner.
    list.reset();
    InstalledFalcon::TearDown();
  }
  /// The window, shown and in front.
  ListTheatersfrm& Open(TheaterUse use = TheaterUse::ImportTheater) {
    list = std::make_unique<ListTheatersfrm>(
        program, use,
        [this](const falcon::FalconInstall& install, std::int32_t theater) {
          chosen << FromBytes(install.Key) + u'/' +
                        FromBytes(install.Theaters[static_cast<std::size_t>(theater)].Definition.Name);
          EXPECT_TRUE(list->isVisible());
          return closes;
        },
        &Frame());
    list->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(list.get()));
    return *list;
  }
  static QString FromBytes(const std::string& text) { return QString::fromLatin1(text.c_str()); }
  bool Enabled(const char* name) { return In<QWidget>(*list, name).isEnabled(); }
  bool Visible(const char* name) { return In<QWidget>(*list, name).isVisible(); }

  std::unique_ptr<ListTheatersfrm> list;
  QStringList chosen;
  bool closes = true;
};

TEST_F(TheaterList, CaptionsAreWordForWord) {
  ListTheatersfrm& window = Open();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Select Theater"));
  EXPECT_EQ(window.objectName(), QStringLiteral("ListTheatersfrm"));
  EXPECT_EQ(In<QRadioButton>(window, "OptFalconType_0").text(), QStringLiteral("OF/FF/AF"));
  EXPECT_EQ(In<QRadioButton>(window, "OptFalconType_1").text(), QStringLiteral("BMS"));
  EXPECT_EQ(In<QPushButton>(window, "cmdNext").text(), QStringLiteral("Next >"));
  EXPECT_EQ(In<QPushButton>(window, "cmdCancel").text(), QStringLiteral("Cancel"));
}

TEST_F(TheaterList, SwitchesBetweenTheFamilies) {
  AddBms("4.37").AddTheaters({"Korea", "Balkans <b>"});
  AddFalcon("Old Korea");
  ListTheatersfrm& window = Open();
  EXPECT_TRUE(In<QRadioButton>(window, "OptFalconType_1").isChecked());
  EXPECT_EQ(Items(window), Words({"Korea", "Balkans <b>"}));
  EXPECT_FALSE(Visible("cboInstall")) << "there is one of each family";
  EXPECT_FALSE(Visible("lblInstall"));
  Press(window, "OptFalconType_0");
  EXPECT_EQ(Items(window), Words({"Old Korea"}));
  Press(window, "cmdNext");
  EXPECT_EQ(chosen, Words({"4.0/Old Korea"}));
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.result(), QDialog::Accepted);
}

TEST_F(TheaterList, OfAFamilyThatIsNotInstalledIsEmptyAndSaysWhy) {
  AddFalcon("Old Korea");
  ListTheatersfrm& window = Open();
  EXPECT_TRUE(In<QRadioButton>(window, "OptFalconType_0").isChecked()) << "it alone is there";
  EXPECT_FALSE(Visible("lblHint"));
  Press(window, "OptFalconType_1");
  EXPECT_EQ(Items(window), Words({}));
  EXPECT_TRUE(Label(window, "lblHint").startsWith(QStringLiteral("No Falcon BMS has been found")));
  EXPECT_TRUE(Visible("lblHint"));
  EXPECT_FALSE(Enabled("cmdNext"));
  QTest::keyClick(&window, Qt::Key_Return);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(chosen, Words({}));
  Press(window, "OptFalconType_0");
  EXPECT_FALSE(Visible("lblHint"));
  EXPECT_TRUE(Enabled("cmdNext"));
}

TEST_F(TheaterList, OfAnInstallationWithoutTheatersSaysSo) {
  AddBms("4.37").WriteList("# none\n");
  ListTheatersfrm& window = Open();
  EXPECT_EQ(Label(window, "lblHint"),
            QStringLiteral("The list of theaters of this installation names none that is there."));
  EXPECT_FALSE(Enabled("cmdNext"));
}

TEST_F(TheaterList, ForObjectivesAndAirfieldsIsThatOfBmsAlone) {
  AddFalcon("Old Korea");
  for (const TheaterUse use : {TheaterUse::ImportObjectives, TheaterUse::LoadAirports}) {
    ListTheatersfrm& window = Open(use);
    EXPECT_TRUE(In<QRadioButton>(window, "OptFalconType_1").isChecked());
    EXPECT_FALSE(Enabled("OptFalconType_0"));
    EXPECT_FALSE(Enabled("OptFalconType_1"));
    EXPECT_EQ(Items(window), Words({}));
  }
}

TEST_F(TheaterList, OffersTheInstallationsOfAFamilyTheNewestFirst) {
  AddBms("4.35").AddTheaters({"Korea", "Israel"});
  AddBms("4.37.1").AddTheaters({"Korea", "Balkans"});
  AddFalcon("Old Korea");
  ListTheatersfrm& window = Open();
  EXPECT_TRUE(Visible("cboInstall"));
  const QString drive = QString::fromStdString(base::PathForMessage(disk.Path()));
  EXPECT_EQ(Items(window, "cboInstall"), QStringList({QStringLiteral("Falcon BMS 4.37.1, %1/4.37.1").arg(drive),
                                                      QStringLiteral("Falcon BMS 4.35, %1/4.35").arg(drive)}));
  EXPECT_EQ(Items(window), Words({"Korea", "Balkans"}));
  In<QComboBox>(window, "cboInstall").setFocus();
  QTest::keyClick(&In<QComboBox>(window, "cboInstall"), Qt::Key_Down);
  EXPECT_EQ(Items(window), Words({"Korea", "Israel"}));
  QTest::keyClick(&In<QComboBox>(window, "Combo1"), Qt::Key_Down);
  QTest::keyClick(&window, Qt::Key_Return);
  EXPECT_EQ(chosen, Words({"Falcon BMS 4.35/Israel"}));
}

TEST_F(TheaterList, BeginsWithTheTheaterThatWasFlownLast) {
  AddBms("4.37", "", "Balkans").AddTheaters({"Korea", "Balkans"});
  EXPECT_EQ(Current(Open()), QStringLiteral("Balkans"));
  AddBms("4.37", "", "Gone");
  test::SmallInstall(disk / "4.37").AddTheaters({"Korea", ""});
  ListTheatersfrm& window = Open();
  EXPECT_EQ(Items(window), Words({"Korea", ""})) << "a theater without a name is listed";
  EXPECT_EQ(Current(window), QStringLiteral("Korea"));
}

TEST_F(TheaterList, StaysOpenUntilWhatItWasOpenedForIsDone) {
  AddBms("4.37").AddTheaters({"Korea"});
  closes = false;
  ListTheatersfrm& window = Open();
  Press(window, "cmdNext");
  EXPECT_TRUE(window.isVisible());
  closes = true;
  Press(window, "cmdNext");
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(chosen.size(), 2);
}

TEST_F(TheaterList, IsLeftByCancelAndEsc) {
  AddBms("4.37").AddTheaters({"Korea"});
  Press(Open(), "cmdCancel");
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(list->result(), QDialog::Rejected);
  QTest::keyClick(&Open(), Qt::Key_Escape);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(chosen, Words({}));
}

TEST_F(TheaterList, DiscardedEntriesAreToldBeforeItOpens) {
  AddBms("4.37").WriteList("gone.tdf\n");
  desk.WhileOpen = [this] { EXPECT_EQ(list, nullptr); };
  Open();
  ExpectBox("Error", "The theaters.lst entry \"gone.tdf\" doesn't exist on your system. It will be discarded.");
}

}  // namespace
}  // namespace kestrel::shell
