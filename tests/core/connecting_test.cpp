// Where the station connects to: the question before, what is told of a failure, the way back from a tape.

#include "core/connecting.h"

#include "core/settings.h"
#include "taping_fixture.h"

namespace kestrel::core {
namespace {

using base::Answer;
using testing::EndsWith;
using testing::SizeIs;

class Connecting : public Taping {
 protected:
  Connecting() {
    State.LinkOptions.ConnList.Append({"Away", "away.example"});
    Host.Owner = &All;
  }
  void ConnectHome() {
    ConnectToEntry(All, 1);
    WS1.Accept();
    ServerAnswered(State);
    ASSERT_TRUE(State.Session.Connected);
    WS1.Log.clear();
  }
  bool FailedEntry(const std::string& name) const {
    return std::any_of(State.FailedEntries.begin(), State.FailedEntries.end(),
                       [&name](const link::ConnEntry& entry) { return entry.Name == name; });
  }
};

TEST_F(Connecting, AsksNothingAsTheStationShips) {
  ConnectHome();
  ConnectToEntry(All, 2);
  EXPECT_THAT(Desk.Boxes, SizeIs(0));
  EXPECT_EQ(WS1.Host, "away.example");
}

TEST_F(Connecting, AsksBeforeALiveSessionEnds) {
  State.SessionExtras.ASKTOLEAVE = true;
  ConnectToEntry(All, 1);
  ConnectToEntry(All, 1);
  EXPECT_THAT(Desk.Boxes, SizeIs(0)) << "nobody has answered yet";
  WS1.Accept();
  WS1.Log.clear();
  ConnectToEntry(All, 2);
  EXPECT_FALSE(ConnectToTyped(All, {"New", "10.0.0.9"}));
  LoadTape(All);
  ASSERT_THAT(Desk.Boxes, SizeIs(3));
  for (const auto& box : Desk.Boxes) {
    EXPECT_EQ(box.Title, "Connection");
    EXPECT_EQ(box.Text, "Leave the session on Demo session?");
    EXPECT_EQ(box.Buttons, base::MessageButtons::YesNo);
    EXPECT_EQ(box.Enter, Answer::No);
  }
  EXPECT_TRUE(WS1.Log.empty());
  EXPECT_TRUE(State.Session.Connected);
  EXPECT_EQ(State.LinkOptions.ConnList.UpperBound(), 2u);
  EXPECT_TRUE(Desk.FileQuestions.empty());
  Desk.Answers = {Answer::Yes, Answer::Yes};
  LoadTape(All);
  EXPECT_THAT(Desk.FileQuestions, SizeIs(1));
  EXPECT_TRUE(State.Session.Connected) << "no tape was chosen";
  ConnectToEntry(All, 2);
  EXPECT_EQ(WS1.Host, "away.example");
}

TEST_F(Connecting, AsksNoMoreOnceTold) {
  State.SessionExtras.ASKTOLEAVE = true;
  ConnectHome();
  Desk.Never = true;
  ConnectToEntry(All, 2);
  EXPECT_EQ(WS1.Host, "127.0.0.1") << "the answer was No";
  EXPECT_FALSE(State.SessionExtras.ASKTOLEAVE);
  ConnectToEntry(All, 2);
  EXPECT_THAT(Desk.Boxes, SizeIs(1));
  EXPECT_EQ(WS1.Host, "away.example");
}

TEST_F(Connecting, TypedPortBecomesThatOfAllConnects) {
  EXPECT_TRUE(ConnectToTyped(All, {"New", "10.0.0.9:7777"}));
  EXPECT_EQ(WS1.Host, "10.0.0.9");
  EXPECT_EQ(WS1.Port, 7777);
  EXPECT_EQ(State.LinkOptions.ConnList[3].Ip, "10.0.0.9");
  EXPECT_NE(folder.Read("KESTREL.ini").find("CONNPORT=7777\r\n"), std::string::npos);
}

TEST_F(Connecting, FailureNamesWhatWasTriedAndDropsTheNewEntry) {
  ConnectToEntry(All, 1);
  EXPECT_EQ(FailureAdvice(All),
            "\nDemo session: 127.0.0.1, port 5556. Is the server running, are address and port right, does a firewall "
            "let the station through?");
  EXPECT_TRUE(State.FailedEntries.empty()) << "an entry that was there before is the person's own matter";
  ConnectToTyped(All, {"", "10.0.0.9"});
  for (int failure = 0; failure < 2; ++failure) {
    const std::string advice = FailureAdvice(All);
    EXPECT_EQ(advice.find("\n10.0.0.9, port 5556. Is the server running, "), 0u) << advice;
    EXPECT_THAT(advice, EndsWith(" The end of the Phonebook menu drops its entry."));
  }
  ASSERT_THAT(State.FailedEntries, SizeIs(1));
  DropFailedEntry(All, 0);
  EXPECT_EQ(State.LinkOptions.ConnList.UpperBound(), 2u);
  EXPECT_TRUE(State.FailedEntries.empty());
  DropFailedEntry(All, 0);
  EXPECT_EQ(State.LinkOptions.ConnList.UpperBound(), 2u);
}

TEST_F(Connecting, EntryThatConnectsAfterAllStays) {
  ConnectToTyped(All, {"New", "10.0.0.9"});
  FailureAdvice(All);
  ASSERT_TRUE(FailedEntry("New"));
  ConnectToEntry(All, 3);
  ServerAnswered(State);
  EXPECT_FALSE(FailedEntry("New"));
  EXPECT_EQ(FailureAdvice(All), "") << "a connection that breaks is another matter";
}

TEST_F(Connecting, EntryThatIsGoneOrAnotherIsNotDropped) {
  ConnectToTyped(All, {"New", "10.0.0.9"});
  FailureAdvice(All);
  State.LinkOptions.ConnList[3].Ip = "10.0.0.8";
  DropFailedEntry(All, 0);
  EXPECT_EQ(State.LinkOptions.ConnList.UpperBound(), 3u);
  EXPECT_TRUE(State.FailedEntries.empty());
}

TEST_F(Connecting, SessionThatWasLeftForATapeIsFoundAgain) {
  RecordTape(2);
  EXPECT_FALSE(MayGoBack(State));
  ConnectHome();
  EXPECT_FALSE(MayGoBack(State));
  Load();
  ASSERT_TRUE(State.Tapes.Player.State().Loaded());
  ASSERT_TRUE(MayGoBack(State));
  State.LinkOptions.CONNPORT = 7777;
  BackToSession(All);
  EXPECT_FALSE(State.Tapes.Player.State().Loaded());
  EXPECT_EQ(WS1.Log.back(), "connect 127.0.0.1:7777");
  EXPECT_FALSE(MayGoBack(State)) << "it has been gone back to";
  WS1.Accept();
  EXPECT_TRUE(State.Session.Connected);
}

TEST_F(Connecting, TapeWithoutASessionBeforeLeavesNoWayBack) {
  RecordTape(2);
  Load();
  EXPECT_FALSE(MayGoBack(State));
  BackToSession(All);
  EXPECT_TRUE(State.Tapes.Player.State().Loaded());
}

TEST_F(Connecting, RecordedTapeIsNamedInTheLogAndInTheTipOfTheLamp) {
  Log.File.Open(folder.Path / "log.txt");
  RecordTape(3);
  EXPECT_NE(folder.Read("log.txt").find("Recorded: 21-11-26_120000.tap, 3 records"), std::string::npos);
  EXPECT_EQ(RecordingTip(State), "Not recording; the last tape is 21-11-26_120000.tap");
}

}  // namespace
}  // namespace kestrel::core
