// The floating windows of the built station: where they stand at the very first start, and at the next one.

#include <gtest/gtest.h>

#include <QMap>
#include <utility>

#include "e2e/screen.h"
#include "e2e/station_on_screen.h"

namespace kestrel::e2e {
namespace {

const char* const Open[] = {"CLIENTS", "BULLSEYE", "CURSOR", "MINIMAP"};
const char* const Hidden[] = {"OPTIONS", "AREAS", "PLAYBACK", "FREQs"};

class FirstStart : public StationOnScreen {
 protected:
  static QString Title(const char* caption) { return u'^' + S(caption) + u'$'; }

  /// Where the open windows stand once they stay where they are.
  QMap<QString, QRect> Places() {
    QMap<QString, QRect> last;
    EXPECT_TRUE(WaitFor([&] {
      QMap<QString, QRect> now;
      for (const char* caption : Open) now[S(caption)] = screen.Geometry(screen.Window(Title(caption)));
      return std::exchange(last, now) == now;
    })) << "the windows do not rest";
    return last;
  }
};

TEST_F(FirstStart, OpensFourWindowsSideBySideAndTheNextStartPutsThemThereAgain) {
  ASSERT_NO_FATAL_FAILURE(StartStation());
  const QMap<QString, QRect> first = Places();
  const QRect within = screen.Geometry(frame);
  for (auto one = first.begin(); one != first.end(); ++one) {
    EXPECT_FALSE(one.value().isEmpty()) << qPrintable(one.key());
    EXPECT_TRUE(within.contains(one.value())) << qPrintable(one.key());
    for (auto other = std::next(one); other != first.end(); ++other) {
      EXPECT_FALSE(one.value().intersects(other.value())) << qPrintable(one.key() + S(" covers ") + other.key());
    }
  }
  for (const char* caption : Hidden) EXPECT_FALSE(screen.HasWindow(Title(caption))) << caption;
  ASSERT_NO_FATAL_FAILURE(Exit());

  ASSERT_NO_FATAL_FAILURE(StartStation());
  EXPECT_EQ(Places(), first);
  for (const char* caption : Hidden) EXPECT_FALSE(screen.HasWindow(Title(caption))) << caption;
  ASSERT_NO_FATAL_FAILURE(Exit());
}

}  // namespace
}  // namespace kestrel::e2e
