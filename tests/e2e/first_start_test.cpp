// The floating windows of the built station: where they stand at the very first start, and at the next one.

#include <gtest/gtest.h>

#include <QMap>
#include <utility>

#include "e2e/screen.h"
#include "e2e/station_folder.h"

namespace kestrel::e2e {
namespace {

const char* const Open[] = {"CLIENTS", "BULLSEYE", "CURSOR", "MINIMAP"};
const char* const Hidden[] = {"OPTIONS", "AREAS", "PLAYBACK", "FREQUENCIES"};

class FirstStart : public testing::Test {
 protected:
  void SetUp() override {
    folder = place.filePath(S("station"));
    CopyStation(folder);
  }

  void Start() {
    station = std::make_unique<Child>(folder + S("/kestrel"), QStringList{}, screen.Environment());
    frame = screen.Window(S("^KESTREL v"));
    ASSERT_FALSE(frame.isEmpty()) << qPrintable(station->Output());
  }

  void Exit() {
    screen.Activate(frame);
    screen.Press({S("alt+f"), S("x")});
    ASSERT_TRUE(station->Ends()) << "the station did not end";
    EXPECT_EQ(station->ExitCode(), 0) << qPrintable(station->Output());
  }

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

  QTemporaryDir place;
  QString folder;
  Screen screen;
  std::unique_ptr<Child> station;
  QString frame;
};

TEST_F(FirstStart, OpensFourWindowsSideBySideAndTheNextStartPutsThemThereAgain) {
  ASSERT_NO_FATAL_FAILURE(Start());
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

  ASSERT_NO_FATAL_FAILURE(Start());
  EXPECT_EQ(Places(), first);
  for (const char* caption : Hidden) EXPECT_FALSE(screen.HasWindow(Title(caption))) << caption;
  ASSERT_NO_FATAL_FAILURE(Exit());
}

}  // namespace
}  // namespace kestrel::e2e
