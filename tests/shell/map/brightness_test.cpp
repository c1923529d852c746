#include <QSlider>

#include "core/view_options.h"
#include "shell/map/painted.h"
#include "shell/map/ratios.h"
#include "shell/near.h"
#include "shell/station_fixture.h"

// The brightness of the map's picture.
namespace kestrel::shell {
namespace {

/// 60 by 40 pixels of one colour.
base::Picture Flat(QRgb colour, std::vector<std::uint32_t>& pixels) {
  pixels.assign(60 * 40, colour);
  return {60, 40, 60 * 4, reinterpret_cast<const std::uint8_t*>(pixels.data()), nullptr};
}

TEST(Brightness, DimsThePictureByItsShareAndNothingBeyondIt) {
  std::vector<std::uint32_t> pixels;
  const base::Picture flat = Flat(qRgb(200, 100, 41), pixels);
  for (const double ratio : Ratios) {
    for (const int percent : {20, 50, 75, 99}) {
      SCOPED_TRACE(percent);
      QtSurface plain = Made({100, 80}, ratio);
      plain.CopyPicture(flat, {-20, -20, 100, 80});
      QtSurface surface = Made({100, 80}, ratio);
      surface.SetBrightness(percent);
      surface.CopyPicture(flat, {-20, -20, 100, 80});
      const QRgb middle = surface.Image().pixel(surface.Image().width() / 2, surface.Image().height() / 2);
      EXPECT_NEAR(qRed(middle), 200 * percent / 100.0, 1);
      EXPECT_NEAR(qGreen(middle), 100 * percent / 100.0, 1);
      EXPECT_NEAR(qBlue(middle), 41 * percent / 100.0, 1);
      EXPECT_EQ(Painted(surface.Image()), Painted(plain.Image()));
      EXPECT_EQ(surface.Image().pixel(1, 1), Ground.rgb());
    }
  }
}

TEST(Brightness, ComesBackWhole) {
  std::vector<std::uint32_t> pixels;
  const base::Picture flat = Flat(qRgb(200, 100, 41), pixels);
  QtSurface plain = Made({100, 80}, 1);
  plain.CopyPicture(flat, {-20.3, -20, 100, 80});
  QtSurface surface = Made({100, 80}, 1);
  surface.SetBrightness(30);
  surface.CopyPicture(flat, {-20.3, -20, 100, 80});
  EXPECT_FALSE(SamePixels(surface.Image(), plain.Image()));
  surface.SetBrightness(100);
  surface.CopyPicture(flat, {-20.3, -20, 100, 80});
  EXPECT_TRUE(SamePixels(surface.Image(), plain.Image()));
}

TEST(Brightness, CostsARedrawNothing) {
  std::vector<std::uint32_t> pixels;
  const base::Picture flat = Flat(qRgb(200, 100, 41), pixels);
  std::size_t kept[2] = {};
  for (const int percent : {100, 50}) {
    QtSurface surface = Made({100, 80}, 1);
    surface.SetBrightness(percent);
    surface.CopyPicture(flat, {0, 0, 60, 40});
    surface.Capture();
    surface.TakeDirty();
    const QImage before = surface.Image().copy();
    for (int redraw = 0; redraw < 3; ++redraw) {
      surface.Restore();
      EXPECT_TRUE(SamePixels(surface.Image(), before));
      surface.Dot(50 * 15, 40 * 15, 255);
      const QRect dirty = surface.TakeDirty().boundingRect();
      EXPECT_LE(dirty.width() * dirty.height(), 64 * 64) << "no more than what was painted";
    }
    kept[percent == 50 ? 1 : 0] = surface.KeptBytes();
  }
  EXPECT_GT(kept[0], 0U);
  EXPECT_EQ(kept[0], kept[1]) << "as much is copied";
}

class BrightnessOfTheMap : public StationTest {
 protected:
  void SetUp() override {
    StationTest::SetUp();
    Start();
    station.MapOptions.SHOWGRID = false;
    windows.Refresh(base::Changed::Map);
  }
  QColor Middle() {
    const QImage shown = Picture().grab().toImage();
    return shown.pixelColor(shown.width() / 2 + 7, shown.height() / 2 + 7);
  }
  void Set(std::int32_t percent) {
    const auto rows = core::OptionsTable(station);
    windows.Refresh(core::SetOption(program, core::RowOf(rows, "sldMapBrightness"), percent));
  }
};

TEST_F(BrightnessOfTheMap, IsSeenAtOnceAndNotAgainByARedraw) {
  ASSERT_EQ(Middle(), QColor(Qt::darkGreen));  // 0, 128, 0
  const std::uint64_t draws = Picture().MapDraws();
  Set(50);
  EXPECT_EQ(Picture().MapDraws(), draws + 1);
  EXPECT_NEAR(Middle().green(), 64, 1);
  for (int redraw = 0; redraw < 3; ++redraw) windows.Refresh(base::Changed::Plots);
  EXPECT_NEAR(Middle().green(), 64, 1);
  Set(100);
  EXPECT_EQ(Middle(), QColor(Qt::darkGreen));
}

TEST_F(BrightnessOfTheMap, IsNeverLessThanCanBeSeen) {
  Set(-3);
  EXPECT_NEAR(Middle().green(), 128 * 0.2, 1);
  Set(1'000'000);
  EXPECT_EQ(Middle(), QColor(Qt::darkGreen));
}

}  // namespace
}  // namespace kestrel::shell
