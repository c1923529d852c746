// The checks of AI aircraft while the friendly names come by themselves.

#include "shell/link/clients_fixture.h"

namespace kestrel::shell {
namespace {

class GreyedChecks : public ClientsWindow {
 protected:
  QString Tip() { return List().model()->index(0, 0).data(Qt::ToolTipRole).toString(); }
  /// What is seen of the check and of the name of the first item.
  QImage Seen(int from, int to) {
    const QRect item = List().visualRect(List().model()->index(0, 0));
    return List().viewport()->grab(QRect(item.left() + from, item.top(), to - from, item.height())).toImage();
  }
};

TEST_F(GreyedChecks, LookDisabledAndTellWhy) {
  Connect();
  Snapshot({"Ajax31"});
  EXPECT_EQ(Tip(), QString());
  const QImage check = Seen(0, 20);
  const QImage name = Seen(24, 80);
  SetAutoFriends(true);
  EXPECT_EQ(Tip(),
            QStringLiteral("Friendly are the names of FriendlyNames.ini, while Auto Friends is on in the options"));
  EXPECT_NE(Seen(0, 20), check);
  EXPECT_EQ(Seen(24, 80), name) << "the name can be chosen";
  EXPECT_TRUE(List().model()->index(0, 0).flags().testFlag(Qt::ItemIsEnabled));
  SetAutoFriends(false);
  EXPECT_EQ(Seen(0, 20), check);
  EXPECT_EQ(Tip(), QString());
}

TEST_F(GreyedChecks, StandBesidePlayersWhoseLettersAreTold) {
  EXPECT_TRUE(
      Part<QLabel>("lblPlayers").toolTip().contains(QStringLiteral("a ring for O, a cross for X, a bar for -")));
}

}  // namespace
}  // namespace kestrel::shell
