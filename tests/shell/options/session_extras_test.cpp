// The group of the sessions on page Extras.

#include "shell/options/options_fixture.h"

namespace kestrel::shell {
namespace {

class SessionExtrasGroup : public OptionsTest {};

TEST_F(SessionExtrasGroup, EachControlStoresItsSetting) {
  EXPECT_EQ(Saved("REMEMBERCALLSIGNS", "KESTREL"), "missing");
  EXPECT_EQ(Saved("ASKTOLEAVE", "KESTREL"), "missing");
  Press("chkRememberCallsigns");
  Press("chkAskToLeave");
  EXPECT_EQ(Saved("REMEMBERCALLSIGNS", "KESTREL"), "1");
  EXPECT_EQ(Saved("ASKTOLEAVE", "KESTREL"), "1");
  Press("chkRememberCallsigns");
  Press("chkAskToLeave");
  EXPECT_EQ(Saved("REMEMBERCALLSIGNS", "KESTREL"), "missing");
  EXPECT_EQ(Saved("ASKTOLEAVE", "KESTREL"), "missing");
}

TEST_F(SessionExtrasGroup, CallsignsThatWereGivenBeforeComeBackAtOnce) {
  station.Plots.Given.GiveLabel("Adams", "Viper 1");
  socket.Arrive(test::Message("PLSUPD", test::ClientData("10", "Adams")));
  EXPECT_EQ(station.Plots.Clients[1].Label, "Airplane 10");
  Press("chkRememberCallsigns");
  EXPECT_EQ(station.Plots.Clients[1].Label, "Viper 1");
  socket.Arrive(test::Message("PLSUPD", test::ClientData("10", "Adams")));
  EXPECT_EQ(station.Plots.Clients[1].Label, "Viper 1");
}

TEST_F(SessionExtrasGroup, ToldToAskNoMoreTheControlShowsIt) {
  Press("chkAskToLeave");
  desk.Never = true;
  Action("mnuConnList_2").trigger();
  EXPECT_FALSE(Part<>("chkAskToLeave").isChecked());
  EXPECT_EQ(Saved("ASKTOLEAVE", "KESTREL"), "missing");
}

}  // namespace
}  // namespace kestrel::shell
