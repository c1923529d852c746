#include "session-sim/server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "session-sim/encoder.h"

namespace kestrel::sim {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

/// A controller's end of a connection, written against the system's own calls.
class Controller {
 public:
  explicit Controller(std::uint16_t port, int receiveBuffer = 0) : handle(::socket(AF_INET, SOCK_STREAM, 0)) {
    if (receiveBuffer > 0) ::setsockopt(handle, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::fcntl(handle, F_SETFL, O_NONBLOCK);
  }
  ~Controller() { Close(); }
  Controller(const Controller&) = delete;
  Controller& operator=(const Controller&) = delete;
  void Close() {
    if (handle >= 0) ::close(handle);
    handle = -1;
  }
  void Send(const std::string& bytes) {
    EXPECT_EQ(::send(handle, bytes.data(), bytes.size(), MSG_NOSIGNAL), static_cast<ssize_t>(bytes.size()));
  }
  void Read() {
    char buffer[65536];
    ssize_t count = 0;
    while ((count = ::recv(handle, buffer, sizeof buffer, 0)) > 0) {
      All.append(buffer, static_cast<std::size_t>(count));
      ++Arrivals;
    }
    if (count == 0) Ended = true;
  }
  std::vector<std::string> Messages() const {
    std::vector<std::string> messages;
    std::size_t from = 0;
    for (std::size_t end; (end = All.find('\0', from)) != std::string::npos; from = end + 1) {
      messages.push_back(All.substr(from, end - from));
    }
    return messages;
  }
  std::size_t Count(const std::string& word) const {
    std::size_t count = 0;
    for (const std::string& message : Messages()) count += message.compare(0, 6, word) == 0;
    return count;
  }

  std::string All;
  int Arrivals = 0;
  bool Ended = false;

 private:
  int handle;
};

/// A server that is stepped by the test, and its report.
struct Session {
  explicit Session(Options options, std::size_t limit = QueueLimit)
      : Serves((options.Port = 0, options), Report, limit) {}
  /// Steps until `done` or for 20 seconds; false then.
  bool Until(const std::function<bool()>& done, const std::vector<Controller*>& readers) {
    const auto limit = std::chrono::steady_clock::now() + 20s;
    while (std::chrono::steady_clock::now() < limit) {
      Goes = Serves.Step(2ms);
      for (Controller* reader : readers) reader->Read();
      if (done()) return true;
    }
    return false;
  }
  bool Reported(const std::string& text) const { return Report.str().find(text) != std::string::npos; }

  std::ostringstream Report;
  Server Serves;
  bool Goes = true;
};

Options Quick() { return ParseOptions({"--period-ms", "5", "--players", "8", "--ai", "24"}); }

std::set<std::string> NewClients(const Controller& controller) {
  std::set<std::string> ids;
  for (const std::string& message : controller.Messages()) {
    if (message.compare(0, 6, "NEWCLT") == 0) ids.insert(message.substr(6, message.find('\x1e') - 6));
  }
  return ids;
}

TEST(SimServer, SaysNothingBeforeNawacs) {
  Session session(Quick());
  Controller controller(session.Serves.Port());
  Controller other(session.Serves.Port());
  other.Send("NAWACS0\0"s);
  ASSERT_TRUE(session.Until([&] { return other.Count("SYNCRO") >= 3; }, {&controller, &other}));
  EXPECT_EQ(controller.All, "");
}

TEST(SimServer, AnnouncesThePlayersAndThenCycles) {
  Session session(Quick());
  Controller controller(session.Serves.Port());
  controller.Send("NAWACS0\0"s);
  ASSERT_TRUE(session.Until([&] { return controller.Count("SYNCRO") >= 2; }, {&controller}));
  const auto messages = controller.Messages();
  for (std::size_t k = 0; k < 8; ++k) EXPECT_EQ(messages[k].substr(0, 6), "NEWCLT");
  for (std::size_t k = 8; k < 16; ++k) EXPECT_EQ(messages[k].substr(0, 6), "INDATA");
  EXPECT_EQ(messages[16].substr(0, 6), "AILOCA");
  EXPECT_EQ(messages[16].size(), 6 + 24 * 18u);
  EXPECT_EQ(messages[17], "SYNCRO");
  EXPECT_TRUE(session.Reported("connection 1 opened\n"));
  EXPECT_TRUE(session.Reported("connection 1 received NAWACS0\n"));
}

TEST(SimServer, SidesGetDifferentPlayersAndTogetherAllOfThem) {
  Session session(Quick());
  Controller both(session.Serves.Port());
  Controller blue(session.Serves.Port());
  Controller red(session.Serves.Port());
  both.Send("NAWACS0\0"s);
  blue.Send("NAWACS1\0"s);
  red.Send("NAW"s);
  red.Send("ACS2\0"s);
  ASSERT_TRUE(session.Until([&] { return both.Count("SYNCRO") && blue.Count("SYNCRO") && red.Count("SYNCRO"); },
                            {&both, &blue, &red}));
  const auto blues = NewClients(blue);
  auto together = NewClients(red);
  EXPECT_EQ(blues.size(), 4u);
  EXPECT_EQ(together.size(), 4u);
  together.insert(blues.begin(), blues.end());
  EXPECT_EQ(together, NewClients(both));
}

TEST(SimServer, EndsAConnectionOnAwaendAndOnClose) {
  Session session(Quick());
  Controller polite(session.Serves.Port());
  Controller rude(session.Serves.Port());
  polite.Send("NAWACS1\0AWAEND\0"s);
  ASSERT_TRUE(session.Until([&] { return polite.Ended; }, {&polite}));
  EXPECT_TRUE(session.Reported("received AWAEND\n"));
  rude.Send("NAWACS1\0"s);
  ASSERT_TRUE(session.Until([&] { return rude.Count("SYNCRO") > 0; }, {&rude}));
  rude.Close();
  ASSERT_TRUE(session.Until([&] { return session.Serves.Connections() == 0; }, {}));
  EXPECT_TRUE(session.Goes);
}

TEST(SimServer, SplitAndBurstChangeNoByte) {
  struct Received {
    std::string Bytes;  ///< to the end of the first cycle
    int Arrivals;
  };
  // The cycle is long enough for all to be announced before the first one.
  const auto firstCycle = [](bool split, bool burst) {
    Options options = Quick();
    options.PeriodMs = 200;
    options.Split = split;
    options.Burst = burst;
    Session session(options);
    Controller controller(session.Serves.Port());
    controller.Send("NAWACS0\0"s);
    EXPECT_TRUE(session.Until([&] { return controller.Count("SYNCRO") >= 1; }, {&controller}));
    return Received{controller.All.substr(0, controller.All.find("SYNCRO\0"s) + 7), controller.Arrivals};
  };
  const Received plain = firstCycle(false, false);
  EXPECT_EQ(plain.Bytes.substr(0, 6), "NEWCLT");
  EXPECT_EQ(firstCycle(false, true).Bytes, plain.Bytes);
  EXPECT_EQ(firstCycle(true, true).Bytes, plain.Bytes);
  const Received split = firstCycle(true, false);
  EXPECT_EQ(split.Bytes, plain.Bytes);
  // 18 messages, each in two pieces at least; some may have arrived together.
  EXPECT_GT(split.Arrivals, 18);
}

TEST(SimServer, DisconComesAfterItsTimeAndThenTheEnd) {
  Options options = Quick();
  options.DisconAfterS = 0.05;
  Session session(options);
  Controller controller(session.Serves.Port());
  controller.Send("NAWACS2\0"s);
  ASSERT_TRUE(session.Until([&] { return controller.Ended; }, {&controller}));
  EXPECT_EQ(controller.Messages().back(), "DISCON");
  EXPECT_TRUE(session.Goes);
}

TEST(SimServer, DropsWithoutAWordAfterItsTime) {
  Options options = Quick();
  options.DropAfterS = 0.05;
  Session session(options);
  Controller controller(session.Serves.Port());
  controller.Send("NAWACS2\0"s);
  ASSERT_TRUE(session.Until([&] { return controller.Ended; }, {&controller}));
  EXPECT_EQ(controller.Count("DISCON"), 0u);
}

TEST(SimServer, EndsTheSessionAfterItsDuration) {
  Options options = Quick();
  options.DurationS = 0.05;
  Session session(options);
  Controller controller(session.Serves.Port());
  controller.Send("NAWACS2\0"s);
  const auto over = [&] {
    if (controller.Ended) controller.Close();
    return !session.Goes;
  };
  ASSERT_TRUE(session.Until(over, {&controller}));
  EXPECT_EQ(controller.Messages().back(), "DISCON");
}

TEST(SimServer, AStalledReaderIsDroppedAndTheOthersGoOn) {
  Options options = ParseOptions({"--period-ms", "1", "--players", "100", "--ai", "4000"});
  Session session(options, 256 * 1024);
  Controller stalled(session.Serves.Port(), 4096);
  Controller reader(session.Serves.Port());
  stalled.Send("NAWACS0\0"s);
  reader.Send("NAWACS0\0"s);
  ASSERT_TRUE(session.Until([&] { return session.Reported("connection 1 dropped: it does not read"); }, {&reader}));
  const std::size_t before = reader.Count("SYNCRO");
  ASSERT_TRUE(session.Until([&] { return reader.Count("SYNCRO") > before + 3; }, {&reader}));
  EXPECT_EQ(session.Serves.Connections(), 1u);
}

TEST(SimServer, ACommandWithoutEndIsCutOff) {
  Session session(Quick());
  Controller controller(session.Serves.Port());
  controller.Send(std::string(10000, 'A'));
  ASSERT_TRUE(session.Until([&] { return session.Reported("connection 1 dropped: no end"); }, {}));
  EXPECT_EQ(session.Serves.Connections(), 0u);
}

TEST(SimServer, StrangeBytesAreReportedOnOneLine) {
  Session session(Quick());
  Controller controller(session.Serves.Port());
  controller.Send("HELLO\n\xff\0"s);
  ASSERT_TRUE(session.Until([&] { return session.Reported("received HELLO\\x0a\\xff\n"); }, {}));
  EXPECT_EQ(session.Serves.Connections(), 1u);
}

TEST(SimServer, ATakenPortIsAFailure) {
  Session session(Quick());
  Options second = Quick();
  second.Port = session.Serves.Port();
  std::ostringstream report;
  EXPECT_THROW(Server(second, report), std::runtime_error);
}

}  // namespace
}  // namespace kestrel::sim
