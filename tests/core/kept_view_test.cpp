#include "core/kept_view.h"

#include <gtest/gtest.h>

#include "core/program.h"
#include "core/settings.h"
#include "station_folder.h"

namespace kestrel::core {
namespace {

class KeptViews : public testing::Test {
 protected:
  KeptViews() { WriteInstallation(folder); }
  /// Starts, looks at a place of its own, and closes.
  void OneRun(bool kept, double zoom = 4, double X = 150, double Y = 300.5) {
    Around run(folder.Path);
    run.Shown.WhenShown = [&run] { RunSteps(MapLoadSteps(), run.All); };
    ASSERT_TRUE(Main(run.All));
    run.State.WindowOptions.KEEPFRAME = kept;
    run.State.View.Resolution = zoom;
    run.State.View.ViewCenterX = X;
    run.State.View.ViewCenterY = Y;
    Close(run.All);
  }
  map::ViewState NextStart() {
    Around next(folder.Path);
    next.Shown.WhenShown = [&next] { RunSteps(MapLoadSteps(), next.All); };
    EXPECT_TRUE(Main(next.All));
    return next.State.View;
  }

  ProgramFolder folder;
};

TEST_F(KeptViews, AsTheStationShipsAStartShowsTheWholeTheater) {
  OneRun(false);
  EXPECT_EQ(folder.Read("KESTREL.ini").find("[KESTREL]"), std::string::npos);
  const map::ViewState view = NextStart();
  EXPECT_EQ(view.Resolution, 1);
  EXPECT_EQ(view.ViewCenterX, 512 * 15);
}

TEST_F(KeptViews, WhereItIsWantedTheNextStartShowsTheLastView) {
  OneRun(true);
  const map::ViewState view = NextStart();
  EXPECT_EQ(view.Resolution, 4);
  EXPECT_EQ(view.ViewCenterX, 150);
  EXPECT_EQ(view.ViewCenterY, 300.5);
}

TEST_F(KeptViews, AnotherTheaterBeginsAsAWhole) {
  OneRun(true);
  std::string text = folder.Read("KESTREL.ini");
  text.replace(text.find("CURRENTMAP=1"), 12, "CURRENTMAP=2");
  folder.Write("KESTREL.ini", text);
  const map::ViewState view = NextStart();
  EXPECT_EQ(view.Resolution, 1);
  EXPECT_EQ(view.ViewCenterX, 1024 * 15);
}

TEST_F(KeptViews, APlaceOffTheMapIsNotTaken) {
  OneRun(true, 4, 1024 * 15 + 1, 300);
  EXPECT_EQ(NextStart().ViewCenterX, 512 * 15);
  OneRun(true, 4, 150, -1);
  EXPECT_EQ(NextStart().ViewCenterY, 512 * 15);
}

}  // namespace
}  // namespace kestrel::core
