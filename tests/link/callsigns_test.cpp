// What players have been given and what of it comes back with them.

#include "link/callsigns.h"

#include "link/roster.h"
#include "link/session_fixture.h"

namespace kestrel::link {
namespace {

using test::ClientData;
using test::Message;

class GivenLooks : public SessionTest {
 protected:
  void SetUp() override {
    tables.Given.REMEMBERCALLSIGNS = true;
    Connect();
    Join("7", "Smith");
    Join("8", "Jones");
  }
  void Join(const std::string& id, const std::string& name) { socket.Arrive(Message("NEWCLT", ClientData(id, name))); }
  /// Types a callsign for the client at `index` and picks a colour.
  void Give(std::size_t index, const std::string& label, base::Colour color) {
    SelectPlot(ClientKey(tables.Clients[index].Id), tables, state);
    SetCallsign(label, tables, state);
    SetColor(color, tables, state);
  }
  void ExpectLook(std::size_t index, const std::string& label, base::Colour color) const {
    EXPECT_EQ(tables.Clients[index].Label, label);
    EXPECT_EQ(tables.Clients[index].Color, color);
  }
};

TEST_F(GivenLooks, ComeBackAfterAStatusUpdate) {
  Give(1, "Viper 1", 0x112233);
  socket.Arrive(Message("PLSUPD", ClientData("7", "Smith")) + Message("PLSUPD", ClientData("8", "Jones")));
  ExpectLook(1, "Viper 1", 0x112233);
  ExpectLook(2, "Airplane 8", 0);
}

TEST_F(GivenLooks, ComeBackWithTheNameUnderAnotherNumberAndInTheNextSession) {
  Give(1, "Viper 1", 0x112233);
  socket.Arrive(Message("DELCLT", "7"));
  Join("7", "Other");
  ExpectLook(2, "Airplane 7", 0);
  Join("9", "Smith");
  ExpectLook(3, "Viper 1", 0x112233);
  session.Disconnect();
  Connect();
  Join("1", " Smith ");
  ExpectLook(1, "Viper 1", 0x112233);
}

TEST_F(GivenLooks, OfAPlayerWhoTakesAnotherNameGoWithTheNames) {
  Give(1, "Viper 1", 0x112233);
  Give(2, "Boxer 2", 0x445566);
  socket.Arrive(Message("PLSUPD", ClientData("7", "Jones")));
  ExpectLook(1, "Boxer 2", 0x445566);
  socket.Arrive(Message("PLSUPD", ClientData("7", "Nobody")));
  ExpectLook(1, "Airplane 7", 0x445566);
}

TEST_F(GivenLooks, StayAwayAsTheStationShips) {
  tables.Given.REMEMBERCALLSIGNS = Callsigns().REMEMBERCALLSIGNS;
  Give(1, "Viper 1", 0x112233);
  socket.Arrive(Message("PLSUPD", ClientData("7", "Smith")));
  ExpectLook(1, "Airplane 7", 0x112233);
  Join("9", "Smith");
  ExpectLook(3, "Airplane 9", 0);
  // Whoever wants them after all gets those of this session.
  tables.Given.REMEMBERCALLSIGNS = true;
  RecallLooks(tables);
  ExpectLook(1, "Viper 1", 0x112233);
  ExpectLook(2, "Airplane 8", 0);
  ExpectLook(3, "Viper 1", 0x112233);
}

TEST_F(GivenLooks, ThatAreTakenBackAreForgotten) {
  Give(1, "Viper 1", 0x112233);
  Give(2, "Boxer 2", 0x112233);
  Give(1, "Airplane 7", 0);
  Give(2, "", 0);
  EXPECT_TRUE(tables.Given.All().empty());
  socket.Arrive(Message("PLSUPD", ClientData("8", "Jones")));
  ExpectLook(2, "Airplane 8", 0);
}

TEST_F(GivenLooks, ThatNoLineHoldsAreNotKept) {
  const std::string longName(Callsigns::MaxText + 1, 'x');
  Join("3", longName);
  Join("4", "a\nb");
  Give(3, "Viper 3", 1);
  Give(4, "Viper 4", 1);
  EXPECT_TRUE(tables.Given.All().empty());
  Give(1, std::string(10'000, 'y'), 1);
  EXPECT_EQ(tables.Given.All().at("Smith").Label, "");
  EXPECT_EQ(tables.Given.All().at("Smith").Color, 1U);
  Join("5", std::string(Callsigns::MaxText, 'x'));
  Give(5, "Viper 5", 1);
  EXPECT_EQ(tables.Given.All().size(), 2u);
}

TEST(Callsigns, AreBoundedInNumber) {
  Callsigns given;
  for (std::size_t n = 0; n <= Callsigns::MaxNames; ++n) given.GiveLabel("Player" + std::to_string(n), "x");
  EXPECT_EQ(given.All().size(), Callsigns::MaxNames);
  // Those that are known go on.
  given.GiveLabel("Player5", "y");
  EXPECT_EQ(given.All().at("Player5").Label, "y");
}

}  // namespace
}  // namespace kestrel::link
