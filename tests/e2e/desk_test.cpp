// An evening at the desk of the built station: two servers of the test's own, windows worked by mouse and keyboard, and
// what is left in the program folder.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <utility>

#include "e2e/screen.h"
#include "e2e/station_on_screen.h"

namespace kestrel::e2e {
namespace {

/// A server that does nothing by itself: what reaches it is kept, and told to `diary` under its name.
class RawServer {
 public:
  RawServer(QString serverName, QStringList& sharedDiary) : name(std::move(serverName)), diary(sharedDiary) {
    QObject::connect(&server, &QTcpServer::newConnection, &server, [this] { Take(server.nextPendingConnection()); });
  }
  /// Port 0 takes any; the port.
  quint16 Listen(const QString& address, quint16 port) {
    return server.listen(QHostAddress(address), port) ? server.serverPort() : quint16{0};
  }
  void Send(const QByteArray& bytes) { peer->write(bytes); }
  QByteArray Received;  ///< of all connections

 private:
  void Take(QTcpSocket* next) {
    peer = next;
    diary << name + QStringLiteral(" is called");
    QObject::connect(next, &QTcpSocket::readyRead, next, [this, next] {
      const QByteArray bytes = next->readAll();
      Received += bytes;
      for (const QByteArray& message : bytes.split('\0')) {
        if (!message.isEmpty()) diary << name + QStringLiteral(" hears ") + QString::fromLatin1(message);
      }
    });
    QObject::connect(next, &QTcpSocket::disconnected, next, [this] { diary << name + QStringLiteral(" is left"); });
  }

  QString name;
  QStringList& diary;
  QTcpServer server;
  QTcpSocket* peer = nullptr;
};

QByteArray Message(const char* word, const QByteArray& data = {}) { return word + data + '\0'; }

/// Right-aligned in 12 characters.
QByteArray Feet(double feet) { return QByteArray::number(feet, 'f', 2).rightJustified(12, ' '); }

QByteArray Client(const char* id, const char* name) {
  return QByteArray(id) + '\x1e' + name +
         "\x1e"
         "F-16\x1e"
         "O";
}

/// Map units of a player's place, which becomes feet on the wire.
QByteArray Place(const char* id, double north, double east) {
  constexpr double feetToUnit = 3279.98;
  return QByteArray(id) + '\x1e' + Feet(north * feetToUnit) + Feet(east * feetToUnit) + Feet(21000);
}

class Desk : public StationOnScreen {
 protected:
  void SetUp() override {
    StationOnScreen::SetUp();
    // Addresses that the phonebook which ships does not hold.
    const quint16 port = first.Listen(S("127.0.0.2"), 0);
    ASSERT_NE(port, 0);
    ASSERT_EQ(second.Listen(S("127.0.0.3"), port), port);
    settings = ReadText(Settings());
    Set("LOG", "DEBUG", S("1"));
    Set("OPTIONS", "CONNPORT", QString::number(port));
    // Only the roster is open, rolled down and out of the middle of the map: pixels 80, 120.
    for (const char* hidden : {"BULL", "FREQ", "CURSOR", "VIEW", "AREAS", "REC", "MINIMAP"}) {
      Set("OPTIONS", (QByteArray(hidden) + "FORMHID").constData(), S("1"));
    }
    Set("OPTIONS", "VIEWFORMMIN", S("1"));
    Set("OPTIONS", "CLIENTSFORMX", S("1200"));
    Set("OPTIONS", "CLIENTSFORMY", S("1800"));
    Set("OPTIONS", "CLIENTSFORMMIN", S("0"));
    Set("OPTIONS", "CLIENTSFORMHID", S("0"));
    WriteText(Settings(), settings);
    StartStation();
  }

  /// Puts a key in front of its section, so that it is the first of its name there.
  void Set(const char* section, const char* key, const QString& value) {
    const QString header = u'[' + QString::fromLatin1(section) + u']';
    if (!settings.contains(header)) settings += header + S("\r\n");
    settings.replace(QRegularExpression(QRegularExpression::escape(header) + S("\r?\n")),
                     header + S("\r\n") + QString::fromLatin1(key) + u'=' + value + S("\r\n"));
  }

  /// The first entry of the Connection menu, filled in by typing.
  void ConnectTo(const char* name, const char* address) {
    Menu({S("Right"), S("Return")});
    const QString dialog = screen.Window(S("^Connect to"));
    ASSERT_FALSE(dialog.isEmpty());
    screen.Activate(dialog);
    screen.Type(QString::fromLatin1(name));
    screen.Press({S("Tab")});
    screen.Type(QString::fromLatin1(address));
    screen.Press({S("Return")});
  }
  /// The choice of the channel; without keys the present one stands.
  void Choose(const QStringList& keys) {
    const QString dialog = screen.Window(S("^Select Channel$"));
    ASSERT_FALSE(dialog.isEmpty()) << qPrintable(diary.join(u'\n'));
    screen.Activate(dialog);
    screen.Press(keys + QStringList{S("Return")});
  }
  bool Told(const char* line) {
    return WaitFor([&] { return diary.contains(QString::fromLatin1(line)); });
  }
  /// The middle of the map, where the watched player flies.
  QImage MiddleOfMap() const {
    const QImage all = screen.Picture();
    return all.copy(all.width() / 2 - 150, all.height() / 2 - 100, 300, 200);
  }
  /// Waits until the middle of the map looks as `wanted` says.
  bool Shows(const std::function<bool(const QImage&)>& wanted) {
    return WaitFor([&] { return wanted(MiddleOfMap()); });
  }
  QString Section(const char* name) const {
    const QString text = ReadText(Settings());
    const qsizetype at = text.indexOf(u'[' + QString::fromLatin1(name) + S("]\r\n"));
    return at < 0 ? QString() : text.mid(at, text.indexOf(u'[', at + 1) - at);
  }

  QString settings;
  QStringList diary;
  RawServer first{S("first"), diary};
  RawServer second{S("second"), diary};
};

TEST_F(Desk, ControllerConnectsWatchesEditsMovesOnAndLeavesEverythingSaved) {
  // A new server, typed in; red.
  ConnectTo("Red Flag", "127.0.0.2");
  Choose({S("alt+r")});
  ASSERT_TRUE(Told("first hears NAWACS2")) << qPrintable(diary.join(u'\n'));
  EXPECT_EQ(first.Received, QByteArray("NAWACS2\0", 8));
  EXPECT_FALSE(screen.Window(S("^KESTREL v[0-9.]+ - RED CHANNEL$")).isEmpty());
  EXPECT_EQ(Section("CONNLIST2"), S("[CONNLIST2]\r\nNAME=Red Flag\r\nIP=127.0.0.2\r\n")) << "kept at once";

  // Two players, one of them in the middle of the map, and AI aircraft far from it.
  static const QRegularExpression size(S("\\bSIZE=(\\d+)"));
  const double middle = size.match(ReadText(folder + S("/Theaters/SampleStrait.ini"))).captured(1).toInt() / 2.0;
  ASSERT_GT(middle, 0);
  first.Send(Message("NEWCLT", Client("5", "Smith")) + Message("NEWCLT", Client("6", "Jones")));
  for (const char* id : {"5", "6", "5", "6"}) {
    const double aside = *id == '5' ? 0 : middle / 2;
    first.Send(Message("INDATA", Place(id, middle + aside, middle + aside)));
  }
  first.Send(Message("AILOCA", "Viper1    090 9020") + Message("SYNCRO"));
  ASSERT_TRUE(WaitFor([&] { return Log().contains(S("(SYNCRO)")); })) << qPrintable(Log());

  // The first one's callsign: a click on the roster's first row, Tab, and typing.
  const QString roster = screen.Window(S("^CLIENTS$"));
  ASSERT_FALSE(roster.isEmpty());
  screen.Click(screen.Geometry(roster).topLeft() + QPoint(60, 64));
  QImage before;
  ASSERT_TRUE(Shows([&](const QImage& now) { return std::exchange(before, now) == now; })) << "the map does not rest";
  screen.Press({S("Tab"), S("ctrl+a")});
  screen.Type(S("WWWWWWWWWWWWWWWW"));
  EXPECT_TRUE(Shows([&](const QImage& now) { return now != before; })) << "the label stays as it was";
  // The server's next word on that player brings his own callsign back.
  first.Send(Message("PLSUPD", Client("5", "Smith")));
  EXPECT_TRUE(Shows([&](const QImage& now) { return now == before; })) << "the edited callsign stays";

  // In the Connection menu the entry above the last one: Disconnect.
  Menu({S("Right"), S("Up"), S("Up"), S("Return")});
  ASSERT_TRUE(Told("first is left")) << qPrintable(diary.join(u'\n'));
  EXPECT_EQ(first.Received, QByteArray("NAWACS2\0AWAEND\0", 15));
  EXPECT_FALSE(screen.Window(S("^KESTREL v[0-9.]+$")).isEmpty());

  // Back by the phonebook's last entry, red as before, and on to another server while connected.
  diary.clear();
  Menu({S("Right"), S("Up"), S("Right"), S("Up"), S("Return")});
  Choose({});
  ASSERT_TRUE(Told("first hears NAWACS2"));
  ConnectTo("Elsewhere", "127.0.0.3");
  Choose({S("alt+b")});
  ASSERT_TRUE(Told("second hears NAWACS1")) << qPrintable(diary.join(u'\n'));
  EXPECT_TRUE(Told("first is left"));
  const auto at = [this](const char* line) { return diary.indexOf(QString::fromLatin1(line)); };
  EXPECT_LT(at("first hears AWAEND"), at("second hears NAWACS1")) << qPrintable(diary.join(u'\n'));
  EXPECT_GE(at("first hears AWAEND"), 0);
  EXPECT_FALSE(screen.Window(S("^KESTREL v[0-9.]+ - BLUE CHANNEL$")).isEmpty());

  // The end, while connected.
  Exit();
  EXPECT_TRUE(Told("second hears AWAEND")) << qPrintable(diary.join(u'\n'));

  // The settings.
  EXPECT_EQ(Section("CONNLIST"), S("[CONNLIST]\r\nNUM=3\r\n"));
  EXPECT_EQ(Section("CONNLIST1"), S("[CONNLIST1]\r\nNAME=Demo session\r\nIP=127.0.0.1\r\n"));
  EXPECT_EQ(Section("CONNLIST2"), S("[CONNLIST2]\r\nNAME=Red Flag\r\nIP=127.0.0.2\r\n"));
  EXPECT_EQ(Section("CONNLIST3"), S("[CONNLIST3]\r\nNAME=Elsewhere\r\nIP=127.0.0.3\r\n"));
  for (const char* kept : {"CLIENTSFORMX=1200", "CLIENTSFORMY=1800", "CLIENTSFORMMIN=0", "CLIENTSFORMHID=0",
                           "CLIENTSFORMTR=255", "MINIMAPFORMHID=1"}) {
    EXPECT_TRUE(Section("OPTIONS").contains(S("\r\n") + QString::fromLatin1(kept) + S("\r\n"))) << kept;
  }
  const QString theater = ReadText(folder + S("/Theaters/SampleStrait.ini"));
  EXPECT_TRUE(theater.startsWith(S("\"KESTREL v1.0.0 Theater INI File\"\r\n[MAP]\r\nNAME="))) << qPrintable(theater);
  EXPECT_TRUE(theater.contains(S("[BULLS1]\r\n")));
  EXPECT_EQ(QFileInfo(folder + S("/Theaters/SampleStrait_ViewShort.dat")).size(), 172);

  // The log: every message, in order. The farewell of the end is not in it: the log is closed before.
  QStringList words;
  static const QRegularExpression word(S("Command (?:sent to|arrived from) Server: \\((\\w+)\\)"));
  for (auto each = word.globalMatch(Log()); each.hasNext();) words << each.next().captured(1);
  EXPECT_EQ(words.join(u' '),
            S("NAWACS NEWCLT NEWCLT INDATA INDATA INDATA INDATA AILOCA SYNCRO PLSUPD AWAEND NAWACS AWAEND NAWACS"));
  EXPECT_EQ(Log().count(S("Command sent to Server: (NAWACS)2")), 2);
  EXPECT_EQ(Log().count(S("Command sent to Server: (NAWACS)1")), 1);
  EXPECT_FALSE(Log().contains(S("Message dropped"))) << qPrintable(Log());
}

TEST_F(Desk, TheTipOverAControlLetsTheClickThrough) {
  ConnectTo("Red Flag", "127.0.0.2");
  Choose({});
  ASSERT_TRUE(Told("first hears NAWACS1")) << qPrintable(diary.join(u'\n'));
  first.Send(Message("NEWCLT", Client("5", "Smith")) + Message("SYNCRO"));
  ASSERT_TRUE(WaitFor([&] { return Log().contains(S("(SYNCRO)")); }));
  const QPoint roster = screen.Geometry(screen.Window(S("^CLIENTS$"))).topLeft();
  screen.Click(roster + QPoint(60, 64));
  // The callsign's tip opens below the pointer, over the button for the color.
  const QPoint callsign = roster + QPoint(170, 250), color = roster + QPoint(190, 279);
  const QStringList before = screen.Windows();
  screen.Point(callsign);
  QRect tip;
  ASSERT_TRUE(WaitFor([&] {
    for (const QString& window : screen.Windows()) {
      if (!before.contains(window)) tip = screen.Geometry(window);
    }
    return tip.isValid();
  })) << "no tip";
  ASSERT_TRUE(tip.contains(color)) << "the tip is elsewhere: " << tip.x() - roster.x() << ", " << tip.y() - roster.y();
  screen.Click(color);
  EXPECT_FALSE(screen.Window(S("^Select Color$")).isEmpty()) << "the tip has taken the click";
}

TEST_F(Desk, LeavingTheChoiceOfTheChannelLeavesTheServerWithoutAWord) {
  ConnectTo("Red Flag", "127.0.0.2");
  const QString dialog = screen.Window(S("^Select Channel$"));
  ASSERT_FALSE(dialog.isEmpty());
  screen.Activate(dialog);
  screen.Press({S("Escape")});
  EXPECT_TRUE(Told("first is left")) << qPrintable(diary.join(u'\n'));
  EXPECT_EQ(first.Received, QByteArray());
  EXPECT_FALSE(screen.Window(S("^KESTREL v[0-9.]+$")).isEmpty());
}

TEST_F(Desk, TheOptionsAreReachedAndChangedByKeysAlone) {
  // Screen > Show... > Options: the fifth menu, its first entry, there the fourth.
  Menu({S("Right"), S("Right"), S("Right"), S("Right"), S("Return"), S("Down"), S("Down"), S("Down"), S("Return")});
  const QString options = screen.Window(S("^OPTIONS$"));
  ASSERT_FALSE(options.isEmpty());
  ASSERT_TRUE(WaitFor([&] { return screen.IsActive(options); })) << "it does not have the keyboard";
  // The first button of its caption rolls it down.
  const int rolled = screen.Geometry(options).height();
  screen.Press({S("space")});
  ASSERT_TRUE(WaitFor([&] { return screen.Geometry(options).height() > rolled; }));
  // Past the other two and the tabs to the first box.
  screen.Press({S("Tab"), S("Tab"), S("Tab"), S("Tab"), S("space")});
  Exit();
  EXPECT_TRUE(Section("OPTIONS").contains(S("\r\nVIEWFORMMIN=0\r\n")));
  EXPECT_TRUE(Section("OPTIONS").contains(S("\r\nREALVISIBLE=0\r\n")));
}

}  // namespace
}  // namespace kestrel::e2e
