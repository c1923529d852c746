// Connect to, the phonebook and the port, pressed like a person does.

#include <QAbstractButton>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <initializer_list>

#include "core/phonebook_edits.h"
#include "shell/commit_text.h"
#include "shell/link/frm_conn_port.h"
#include "shell/link/prefer_form.h"
#include "shell/link/select_channel_dialog.h"
#include "shell/link/vld_from2.h"
#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

using base::Answer;
using Lines = std::vector<std::string>;

class ConnectionWindows : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    desk.Boxes.clear();
  }

  template <class Control>
  static Control& In(QWidget& window, const char* name) {
    return *window.findChild<Control*>(QString::fromLatin1(name));
  }
  static void Type(QWidget& window, const char* field, const char* text) {
    auto& line = In<QLineEdit>(window, field);
    line.selectAll();
    QTest::keyClick(&line, Qt::Key_Delete);
    QTest::keyClicks(&line, QString::fromLatin1(text));
  }
  static void Press(QWidget& window, const char* button) {
    QTest::mouseClick(&In<QPushButton>(window, button), Qt::LeftButton);
  }
  static QString TextOf(QWidget& window, const char* field) { return In<QLineEdit>(window, field).text(); }

  /// Fills "Connect to..." and presses OK; whether the window closed.
  bool ConnectTo(const char* name, const char* address) {
    VldFrom2 dialog(program, &Frame());
    dialog.show();
    Type(dialog, "Text1", name);
    Type(dialog, "Text2", address);
    Press(dialog, "cmdOK");
    return dialog.result() == QDialog::Accepted && !dialog.isVisible();
  }
  base::Table<link::ConnEntry>& Entries() { return station.LinkOptions.ConnList; }
  void ExpectQuestion(const char* text) {
    ASSERT_EQ(desk.Boxes.size(), 1u);
    EXPECT_EQ(desk.Boxes[0].Title, "Validator");
    EXPECT_EQ(desk.Boxes[0].Text, text);
    EXPECT_EQ(desk.Boxes[0].Buttons, base::MessageButtons::YesNoCancel);
  }

  static constexpr const char* NameKnown =
      "The connection name you specified allready exists in the phonebook. Do you want to replace the associated IP "
      "address (selecting No won't add the entry in phonebook)?";
  static constexpr const char* AddressKnown =
      "The connection IP address you specified allready exists in the phonebook. Do you want to replace the associated "
      "name (selecting No won't add the entry in phonebook)?";
};

TEST_F(ConnectionWindows, NewEntryIsAppendedSavedAndConnected) {
  EXPECT_TRUE(ConnectTo("  Third ", " 10.0.0.3  "));
  ASSERT_EQ(Entries().UpperBound(), 3u);
  EXPECT_EQ(Entries()[3].Name, "Third");
  EXPECT_EQ(Entries()[3].Ip, "10.0.0.3");
  EXPECT_EQ(Action("mnuConnList_3").text(), QStringLiteral("Third"));
  EXPECT_TRUE(Read("KESTREL.ini").contains("[CONNLIST3]\r\nNAME=Third\r\nIP=10.0.0.3\r\n"));
  EXPECT_TRUE(Read("KESTREL.ini").contains("NUM=3\r\n"));
  EXPECT_EQ(socket.Host, "10.0.0.3");
  EXPECT_TRUE(desk.Boxes.empty());
}

TEST_F(ConnectionWindows, KnownNameAndAddressOnlyConnect) {
  EXPECT_TRUE(ConnectTo("Home", "away.invalid"));
  EXPECT_EQ(Entries().UpperBound(), 2u);
  EXPECT_EQ(Entries()[1].Ip, "10.0.0.1");
  EXPECT_TRUE(desk.Boxes.empty());
  EXPECT_EQ(socket.Host, "away.invalid");
}

TEST_F(ConnectionWindows, KnownNameMayTakeTheNewAddress) {
  const QByteArray before = Read("KESTREL.ini");
  desk.Answers = {Answer::Yes};
  EXPECT_TRUE(ConnectTo("Home", "10.9.9.9"));
  ExpectQuestion(NameKnown);
  EXPECT_EQ(Entries()[1].Ip, "10.9.9.9");
  EXPECT_EQ(Entries().UpperBound(), 2u);
  EXPECT_EQ(socket.Host, "10.9.9.9");
  EXPECT_EQ(Read("KESTREL.ini"), before) << "a replacement reaches the file only by the save at exit";
}

TEST_F(ConnectionWindows, KnownAddressMayTakeTheNewName) {
  desk.Answers = {Answer::Yes};
  EXPECT_TRUE(ConnectTo("Base", "10.0.0.1"));
  ExpectQuestion(AddressKnown);
  EXPECT_EQ(Entries()[1].Name, "Base");
  EXPECT_EQ(Action("mnuConnList_1").text(), QStringLiteral("Base"));
  EXPECT_EQ(socket.Host, "10.0.0.1");
}

TEST_F(ConnectionWindows, NoChangesNothingAndConnects) {
  for (const auto& [name, address] : {std::pair("Home", "10.9.9.9"), std::pair("Base", "10.0.0.1")}) {
    desk.Answers = {Answer::No};
    EXPECT_TRUE(ConnectTo(name, address));
    EXPECT_EQ(Entries()[1].Name, "Home");
    EXPECT_EQ(Entries()[1].Ip, "10.0.0.1");
    EXPECT_EQ(socket.Host, address);
  }
}

TEST_F(ConnectionWindows, CancelLeavesTheWindowOpenAndConnectsNothing) {
  for (const auto& [name, address] : {std::pair("Home", "10.9.9.9"), std::pair("Base", "10.0.0.1")}) {
    desk.Answers = {Answer::Cancel};
    EXPECT_FALSE(ConnectTo(name, address));
  }
  EXPECT_EQ(Entries()[1].Name, "Home");
  EXPECT_EQ(Entries()[1].Ip, "10.0.0.1");
  EXPECT_EQ(socket.Connects, 0);
}

TEST_F(ConnectionWindows, OfSeveralEntriesOfANameTheLastOneIsMeant) {
  Entries().Append({"Home", "10.0.0.7"});
  desk.Answers = {Answer::Yes};
  EXPECT_TRUE(ConnectTo("Home", "10.9.9.9"));
  EXPECT_EQ(Entries()[1].Ip, "10.0.0.1");
  EXPECT_EQ(Entries()[3].Ip, "10.9.9.9");
}

TEST_F(ConnectionWindows, OldServerGetsItsFarewellBeforeTheNewAttempt) {
  Connect();
  socket.Log.clear();
  EXPECT_TRUE(ConnectTo("Third", "10.0.0.3"));
  EXPECT_EQ(socket.Log, (Lines{"send AWAEND", "close", "connect 10.0.0.3:5556"}));
  EXPECT_FALSE(station.Session.Connected);
}

TEST_F(ConnectionWindows, SecondPressOfOkWhileTheServerIsBeingLeftDoesNothing) {
  Connect();
  socket.Log.clear();
  VldFrom2 dialog(program, &Frame());
  dialog.show();
  Type(dialog, "Text1", "Third");
  Type(dialog, "Text2", "10.0.0.3");
  desk.WhenEventsRun = [&dialog] { Press(dialog, "cmdOK"); };
  Press(dialog, "cmdOK");
  EXPECT_EQ(socket.Log, (Lines{"send AWAEND", "close", "connect 10.0.0.3:5556"}));
  EXPECT_EQ(Entries().UpperBound(), 3u);
}

TEST_F(ConnectionWindows, TypedEntryIsOneLineOfBoundedLength) {
  VldFrom2 dialog(program, &Frame());
  dialog.show();
  In<QLineEdit>(dialog, "Text1").setText(QStringLiteral("[MAPS]\r\nx") + QString(300, u'n'));
  In<QLineEdit>(dialog, "Text2").setText(QStringLiteral("10.0.0.3\r\n"));
  Press(dialog, "cmdOK");
  ASSERT_EQ(Entries().UpperBound(), 3u);
  EXPECT_EQ(Entries()[3].Name, "[MAPS]  x" + std::string(246, 'n'));
  EXPECT_EQ(Entries()[3].Ip, "10.0.0.3");
  EXPECT_TRUE(Read("KESTREL.ini").contains("\r\nNAME=[MAPS]  xnnn"));
}

TEST_F(ConnectionWindows, EachButtonHasAToolTip) {
  VldFrom2 connecting(program, &Frame());
  PreferForm book(program, &Frame());
  frmConnPort port(program, &Frame());
  frmSelectChannel channel(1, &Frame());
  for (QDialog* window : std::initializer_list<QDialog*>{&connecting, &book, &port, &channel}) {
    const auto buttons = window->findChildren<QAbstractButton*>();
    EXPECT_GE(buttons.size(), window == &channel ? 4 : 2);
    for (const QAbstractButton* button : buttons) {
      EXPECT_FALSE(button->toolTip().isEmpty()) << qPrintable(button->text());
    }
  }
}

TEST_F(ConnectionWindows, EmptyAddressIsRefusedInTheWindow) {
  VldFrom2 dialog(program, &Frame());
  dialog.show();
  Type(dialog, "Text1", "Nowhere");
  Type(dialog, "Text2", "   ");
  Press(dialog, "cmdOK");
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_TRUE(In<QLabel>(dialog, "lblRefused").isVisible());
  EXPECT_EQ(Entries().UpperBound(), 2u);
  EXPECT_EQ(socket.Connects, 0);
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ConnectionWindows, TextThatTheCodePageDoesNotHoldIsRefusedInTheWindow) {
  for (const auto& [field, other] : {std::pair("Text1", "Text2"), std::pair("Text2", "Text1")}) {
    VldFrom2 dialog(program, &Frame());
    dialog.show();
    Type(dialog, other, "10.0.0.3");
    auto& line = In<QLineEdit>(dialog, field);
    Commit(line, QStringLiteral("x\uD55C\uAD6D"));
    Press(dialog, "cmdOK");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(In<QLabel>(dialog, "lblRefused").isVisible());
    EXPECT_EQ(In<QLabel>(dialog, "lblRefused").text(),
              QStringLiteral("These characters cannot be used here: \uD55C, \uAD6D."));
    EXPECT_EQ(line.text(), QStringLiteral("x\uD55C\uAD6D"));
    EXPECT_EQ(Entries().UpperBound(), 2u);
    EXPECT_EQ(socket.Connects, 0);
  }
}

TEST_F(ConnectionWindows, ConnectToWorksWithTheKeyboardAlone) {
  InNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), QStringLiteral("VldFrom2"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Third"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("10.0.0.3"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  });
  Action("mnuConnCustom").trigger();
  EXPECT_EQ(socket.Host, "10.0.0.3");
}

TEST_F(ConnectionWindows, PhonebookThatCannotBeSavedIsToldAndStaysInMemory) {
  ASSERT_TRUE(QFile::remove(folder.filePath(QStringLiteral("KESTREL.ini"))));
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("KESTREL.ini")));
  EXPECT_TRUE(ConnectTo("Third", "10.0.0.3"));
  ASSERT_EQ(desk.Boxes.size(), 1u);
  EXPECT_EQ(desk.Boxes[0].Text.find("The phonebook could not be saved: "), 0u);
  EXPECT_EQ(Entries().UpperBound(), 3u);
  EXPECT_EQ(socket.Host, "10.0.0.3");
}

class Phonebook : public ConnectionWindows {
 protected:
  void SetUp() override {
    ConnectionWindows::SetUp();
    book = std::make_unique<PreferForm>(program, &Frame());
    book->show();
  }
  void TearDown() override {
    book.reset();
    ConnectionWindows::TearDown();
  }
  QListWidget& List() { return In<QListWidget>(*book, "List1"); }
  void Pick(int row) {
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualItemRect(List().item(row)).center());
  }
  std::unique_ptr<PreferForm> book;
};

TEST_F(Phonebook, PickingAnEntryFillsTheFields) {
  EXPECT_EQ(List().count(), 2);
  EXPECT_EQ(TextOf(*book, "Text1"), QStringLiteral("Home"));
  Pick(1);
  EXPECT_EQ(TextOf(*book, "Text1"), QStringLiteral("Away & far"));
  EXPECT_EQ(TextOf(*book, "Text2"), QStringLiteral("away.invalid"));
}

TEST_F(Phonebook, AddAppendsAndShowsTheFirst) {
  Pick(1);
  Type(*book, "Text1", "Third");
  Type(*book, "Text2", "10.0.0.3");
  Press(*book, "Command1");
  ASSERT_EQ(Entries().UpperBound(), 3u);
  EXPECT_EQ(Entries()[3].Ip, "10.0.0.3");
  EXPECT_EQ(List().currentRow(), 0);
  EXPECT_EQ(TextOf(*book, "Text1"), QStringLiteral("Home"));
  EXPECT_EQ(Action("mnuConnList_3").text(), QStringLiteral("Third"));
  EXPECT_TRUE(Read("KESTREL.ini").contains("NUM=3\r\n"));
}

TEST_F(Phonebook, ReplaceChangesThePickedEntry) {
  Pick(1);
  Type(*book, "Text1", "Near");
  Type(*book, "Text2", "near.invalid");
  Press(*book, "Command3");
  EXPECT_EQ(Entries()[2].Name, "Near");
  EXPECT_EQ(Entries()[2].Ip, "near.invalid");
  EXPECT_EQ(Action("mnuConnList_2").text(), QStringLiteral("Near"));
  EXPECT_TRUE(Read("KESTREL.ini").contains("IP=near.invalid\r\n"));
}

TEST_F(Phonebook, RemovingAllEmptiesTheFieldsAndDisablesWhatNeedsAnEntry) {
  Press(*book, "Command2");
  ASSERT_EQ(Entries().UpperBound(), 1u);
  EXPECT_EQ(Entries()[1].Name, "Away & far");
  Press(*book, "Command2");
  EXPECT_TRUE(Entries().Empty());
  EXPECT_EQ(TextOf(*book, "Text1"), QString());
  EXPECT_EQ(TextOf(*book, "Text2"), QString());
  EXPECT_FALSE(In<QPushButton>(*book, "Command2").isEnabled());
  EXPECT_FALSE(In<QPushButton>(*book, "Command3").isEnabled());
  EXPECT_TRUE(In<QPushButton>(*book, "Command1").isEnabled());
  EXPECT_TRUE(Read("KESTREL.ini").contains("NUM=0\r\n"));
  EXPECT_EQ(Frame().findChild<QAction*>(QStringLiteral("mnuConnList_1")), nullptr);
}

TEST_F(Phonebook, TextThatTheCodePageDoesNotHoldIsRefused) {
  for (const char* field : {"Text1", "Text2"}) {
    auto& line = In<QLineEdit>(*book, field);
    const QString before = line.text();
    line.clear();
    Commit(line, QStringLiteral("\uD55C"));
    for (const char* button : {"Command1", "Command3"}) {
      Press(*book, button);
      EXPECT_EQ(In<QLabel>(*book, "lblRefused").text(), QStringLiteral("This character cannot be used here: \uD55C."));
      EXPECT_EQ(line.text(), QStringLiteral("\uD55C"));
    }
    line.setText(before);
  }
  EXPECT_EQ(Entries().UpperBound(), 2u);
  EXPECT_EQ(Entries()[1].Name, "Home");
  EXPECT_EQ(Entries()[1].Ip, "10.0.0.1");
}

TEST_F(Phonebook, EntryWithoutAnAddressIsRefused) {
  Type(*book, "Text2", "");
  Press(*book, "Command1");
  Press(*book, "Command3");
  EXPECT_EQ(Entries().UpperBound(), 2u);
  EXPECT_EQ(Entries()[1].Ip, "10.0.0.1");
  EXPECT_TRUE(In<QLabel>(*book, "lblRefused").isVisible());
  Press(*book, "Command4");
  EXPECT_FALSE(book->isVisible());
}

class ConnPort : public ConnectionWindows {
 protected:
  bool ChangeTo(const char* port) {
    frmConnPort dialog(program, &Frame());
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Connection Port"));
    EXPECT_EQ(TextOf(dialog, "txtConnPort"), QString::number(station.LinkOptions.CONNPORT));
    Type(dialog, "txtConnPort", port);
    Press(dialog, "cmdOK");
    return dialog.result() == QDialog::Accepted;
  }
};

TEST_F(ConnPort, IsSavedAndUsedForTheNextConnection) {
  EXPECT_TRUE(ChangeTo("7777"));
  EXPECT_TRUE(Read("KESTREL.ini").contains("CONNPORT=7777\r\n"));
  Action("mnuConnList_1").trigger();
  EXPECT_EQ(socket.Port, 7777);
}

TEST_F(ConnPort, ChangeWhileConnectedClosesTheSocketAndKeepsTheTables) {
  Connect();
  socket.Arrive(std::string("NEWCLT5\x1eSmith\x1eInfo\x1eO\0", 21));
  ASSERT_EQ(station.Plots.Clients.UpperBound(), 1u);
  socket.Log.clear();
  EXPECT_TRUE(ChangeTo("7777"));
  EXPECT_EQ(socket.Log, (Lines{"close"})) << "neither AWAEND nor anything else";
  EXPECT_EQ(station.Plots.Clients.UpperBound(), 1u);
  EXPECT_TRUE(station.Session.Connected);
  Action("mnuDisconnect").trigger();
  EXPECT_TRUE(station.Plots.Clients.Empty());
}

TEST_F(ConnPort, WhatIsNoPortIsRefusedInTheWindow) {
  for (const char* port : {"", "0", "-1", "65536", "99999999999", "12a", "5,5"}) EXPECT_FALSE(ChangeTo(port)) << port;
  EXPECT_EQ(station.LinkOptions.CONNPORT, 5556);
  EXPECT_TRUE(ChangeTo(" 65535 "));
}

TEST_F(ConnPort, CancelChangesNothing) {
  frmConnPort dialog(program, &Frame());
  dialog.show();
  Type(dialog, "txtConnPort", "7777");
  Press(dialog, "cmdCancel");
  EXPECT_EQ(station.LinkOptions.CONNPORT, 5556);
  EXPECT_FALSE(dialog.isVisible());
}

}  // namespace
}  // namespace kestrel::shell
