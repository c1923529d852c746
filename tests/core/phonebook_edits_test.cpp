#include "core/phonebook_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/program_title.h"
#include "core/settings.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

using base::Answer;
using base::Changed;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* NameQuestion =
    "The connection name you specified allready exists in the phonebook. Do you want to replace the associated IP "
    "address (selecting No won't add the entry in phonebook)?";
constexpr const char* AddressQuestion =
    "The connection IP address you specified allready exists in the phonebook. Do you want to replace the associated "
    "name (selecting No won't add the entry in phonebook)?";

/// A station whose phonebook holds "Demo session" at 127.0.0.1 and "Away" at away.example.
class PhonebookEdits : public testing::Test {
 protected:
  PhonebookEdits() {
    WriteInstallation(folder);
    LoadSavedVars(station);
    station.LinkOptions.ConnList.Append({"Away", "away.example"});
    SaveConnList(station);
    before = folder.Read("KESTREL.ini");
  }

  std::vector<std::string> Shown() const { return Listed(station); }
  /// What the next start would find.
  std::vector<std::string> Saved() const {
    Station next;
    next.AppPath = folder.Path;
    LoadSavedVars(next);
    return Listed(next);
  }
  static std::vector<std::string> Listed(const Station& of) {
    std::vector<std::string> entries;
    for (const link::ConnEntry& entry : of.LinkOptions.ConnList.Live()) entries.push_back(entry.Name + "=" + entry.Ip);
    return entries;
  }
  bool MenuRebuilt() const {
    for (const Changed what : around.Shown.Refreshes) {
      if (Has(what, Changed::ConnectionMenus)) return true;
    }
    return false;
  }
  void ExpectQuestion(const char* text) {
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, "Validator");
    EXPECT_EQ(around.Desk.Boxes[0].Text, text);
    EXPECT_EQ(around.Desk.Boxes[0].Buttons, base::MessageButtons::YesNoCancel);
    EXPECT_EQ(around.Desk.Boxes[0].Enter, base::Answer::No) << "what is replaced is gone";
    around.Desk.Boxes.clear();
  }
  /// From here on the settings file cannot be written: a folder stands in its place.
  void BlockTheFile() {
    std::filesystem::remove(folder.Path / "KESTREL.ini");
    std::filesystem::create_directories(folder.Path / "KESTREL.ini" / "x");
  }
  void ExpectSaveFailure(const char* what) {
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, base::ProgramTitle());
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr(what));
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr("could not be saved"));
  }

  ProgramFolder folder;
  Around around{folder.Path};
  Station& station = around.State;
  std::string before;
};

TEST_F(PhonebookEdits, NewEntryIsAddedAndSavedAtOnce) {
  EXPECT_TRUE(KeepTypedEntry(around.All, {"New", "10.0.0.9"}));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_THAT(Shown(), ElementsAre("Demo session=127.0.0.1", "Away=away.example", "New=10.0.0.9"));
  EXPECT_EQ(Saved(), Shown());
  EXPECT_TRUE(MenuRebuilt());
}

TEST_F(PhonebookEdits, NothingIsAskedOrReplacedWhenBothAreThere) {
  EXPECT_TRUE(KeepTypedEntry(around.All, {"Away", "away.example"}));
  EXPECT_TRUE(KeepTypedEntry(around.All, {"Away", "127.0.0.1"})) << "in two entries";
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
  EXPECT_THAT(Shown(), ElementsAre("Demo session=127.0.0.1", "Away=away.example"));
  EXPECT_EQ(folder.Read("KESTREL.ini"), before);
}

TEST_F(PhonebookEdits, KnownNameMayTakeTheAddress) {
  around.Desk.Answers = {Answer::Yes};
  EXPECT_TRUE(KeepTypedEntry(around.All, {"Away", "10.0.0.9"}));
  ExpectQuestion(NameQuestion);
  EXPECT_THAT(Shown(), ElementsAre("Demo session=127.0.0.1", "Away=10.0.0.9"));
  EXPECT_EQ(folder.Read("KESTREL.ini"), before) << "a replacement is saved at the exit only";
}

TEST_F(PhonebookEdits, KnownAddressMayTakeTheName) {
  around.Desk.Answers = {Answer::Yes};
  EXPECT_TRUE(KeepTypedEntry(around.All, {"Home", "127.0.0.1"}));
  ExpectQuestion(AddressQuestion);
  EXPECT_THAT(Shown(), ElementsAre("Home=127.0.0.1", "Away=away.example"));
  EXPECT_EQ(folder.Read("KESTREL.ini"), before);
  EXPECT_TRUE(MenuRebuilt()) << "the menu shows the names";
}

TEST_F(PhonebookEdits, NoConnectsAndCancelDoesNot) {
  for (const link::ConnEntry& entry : {link::ConnEntry{"Away", "10.0.0.9"}, link::ConnEntry{"Home", "127.0.0.1"}}) {
    around.Desk.Answers = {Answer::No, Answer::Cancel};
    EXPECT_TRUE(KeepTypedEntry(around.All, entry));
    EXPECT_FALSE(KeepTypedEntry(around.All, entry));
  }
  EXPECT_THAT(Shown(), ElementsAre("Demo session=127.0.0.1", "Away=away.example"));
  EXPECT_EQ(folder.Read("KESTREL.ini"), before);
  EXPECT_FALSE(MenuRebuilt());
}

TEST_F(PhonebookEdits, LastOfEqualEntriesIsTheOneReplaced) {
  station.LinkOptions.ConnList.Append({"Away", "third.example"});
  around.Desk.Answers = {Answer::Yes};
  EXPECT_TRUE(KeepTypedEntry(around.All, {"Away", "10.0.0.9"}));
  EXPECT_THAT(Shown(), ElementsAre("Demo session=127.0.0.1", "Away=away.example", "Away=10.0.0.9"));
}

TEST_F(PhonebookEdits, EveryEditReachesTheFileAndTheMenu) {
  AddEntry(around.All, {"Away", "away.example"});
  EXPECT_THAT(Saved(), ElementsAre("Demo session=127.0.0.1", "Away=away.example", "Away=away.example"))
      << "an entry may stand twice";
  ReplaceEntry(around.All, 1, {"Home", "10.0.0.1"});
  EXPECT_THAT(Saved(), ElementsAre("Home=10.0.0.1", "Away=away.example", "Away=away.example"));
  for (int left = 3; left > 0; --left) RemoveEntry(around.All, 1);
  EXPECT_THAT(Saved(), IsEmpty());
  EXPECT_THAT(around.Shown.Refreshes, SizeIs(5));
  EXPECT_TRUE(MenuRebuilt());
}

TEST_F(PhonebookEdits, RestOfTheFileStaysWhenThePhonebookIsSaved) {
  folder.Write("KESTREL.ini", folder.Read("KESTREL.ini") + "[OTHERS]\r\nKEY=kept\r\n");
  AddEntry(around.All, {"New", "10.0.0.9"});
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("[OTHERS]\r\nKEY=kept\r\n"));
}

TEST_F(PhonebookEdits, EditThatCannotBeSavedIsToldAndHoldsInMemory) {
  BlockTheFile();
  AddEntry(around.All, {"New", "10.0.0.9"});
  ExpectSaveFailure("The phonebook");
  EXPECT_THAT(Shown(), SizeIs(3));
  EXPECT_TRUE(MenuRebuilt());
}

TEST_F(PhonebookEdits, PortIsSavedAndTheSocketClosedWithoutAWord) {
  around.Link.ConnectTo("127.0.0.1");
  around.WS1.Accept();
  around.WS1.Log.clear();
  ChangeConnPort(around.All, 7000);
  EXPECT_THAT(around.WS1.Log, ElementsAre("close"));
  EXPECT_TRUE(station.Session.Connected) << "ConnectionEnd is not called";
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=7000\r\n"));
  around.Link.ConnectToEntry(1);
  EXPECT_EQ(around.WS1.Port, 7000);
}

TEST_F(PhonebookEdits, PortIsSavedBeforeTheSocketIsClosed) {
  around.Link.ConnectTo("127.0.0.1");
  around.WS1.Accept();
  BlockTheFile();
  // The box about the failed save is up while it is saved.
  around.Desk.WhileOpen = [this] {
    EXPECT_EQ(station.LinkOptions.CONNPORT, 7000);
    EXPECT_EQ(around.WS1.State(), link::SocketState::Connected);
  };
  ChangeConnPort(around.All, 7000);
  ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
  EXPECT_EQ(around.WS1.State(), link::SocketState::Closed);
}

TEST_F(PhonebookEdits, KeptViewsThatCannotBeSavedWithThePortAreToldAsSuch) {
  std::filesystem::create_directories(folder.Path / "Theaters/korea_ViewShort.dat/x");
  ChangeConnPort(around.All, 7000);
  ExpectSaveFailure("The kept views");
  EXPECT_THAT(folder.Read("KESTREL.ini"), HasSubstr("CONNPORT=7000\r\n"));
}

TEST_F(PhonebookEdits, PortThatCannotBeSavedIsToldAndUsed) {
  BlockTheFile();
  ChangeConnPort(around.All, 7000);
  ExpectSaveFailure("The settings");
  EXPECT_EQ(station.LinkOptions.CONNPORT, 7000);
}

}  // namespace
}  // namespace kestrel::core
