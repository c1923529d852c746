// The mini map's picture is scaled when the map has been painted; it is the whole picture, whatever its size.
#include "shell/map/measure_fixture.h"
#include "shell/map/picture_levels.h"

namespace kestrel::shell {
namespace {

constexpr int LargeSide = 2304;
static_assert(qsizetype{LargeSide} * LargeSide > PictureLevels::MostAtOnce);

class MiniMapScaling : public MeasureTest {
 protected:
  /// A picture whose pixels all differ from their neighbours, for the first theater. What it is is told by its bytes.
  QImage WritePicture(int side) {
    QImage made(side, side, QImage::Format_RGB32);
    for (int y = 0; y < side; ++y) {
      auto* row = reinterpret_cast<QRgb*>(made.scanLine(y));
      for (int x = 0; x < side; ++x) row[x] = qRgb(x * 7 % 256, y * 5 % 256, (x * 3 + y * 11) % 256);
    }
    EXPECT_TRUE(made.save(folder.filePath(QStringLiteral("Theaters/one.png")), "BMP"));
    return made;
  }
  void SetUp() override {}
  /// Starts with that picture; the box lies beyond the mini map.
  void StartWith(int side) {
    StationTest::SetUp();
    picture = WritePicture(side);
    Start();
    windows.Refresh(map::ChangeRes(View(), 0.125));
    Frame().Strip().Check(core::ToolWindow::MiniMap).setChecked(true);
    MiniMap().MaxFrm();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&MiniMap()));
  }
  MiniMapPicture& Small() { return MiniMap().Picture(); }
  QImage Shown() { return Small().grab().toImage().convertToFormat(QImage::Format_RGB32); }
  bool WaitForScalings(int count) {
    return QTest::qWaitFor([this, count] { return Small().Scalings() == count; }, 60000);
  }
  QImage Scaled(int side) const { return picture.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation); }

  QImage picture;
};

TEST_F(MiniMapScaling, TheFirstIsTheWholePictureScaledSmoothly) {
  StartWith(700);
  ASSERT_TRUE(WaitForScalings(1));
  EXPECT_EQ(Shown(), Scaled(204));
}

TEST_F(MiniMapScaling, ALargeOneIsTheSameInEachSize) {
  StartWith(LargeSide);
  ASSERT_TRUE(WaitForScalings(1));
  EXPECT_EQ(Shown(), Scaled(204));
  station.MapOptions.MINIMAPSCALE = 4;
  windows.Refresh(base::Changed::MiniMap);
  EXPECT_EQ(Shown(), Scaled(256));
  EXPECT_EQ(Small().Scalings(), 2);
}

TEST_F(MiniMapScaling, TheFirstWaitsForTheMap) {
  StationTest::SetUp();
  picture = WritePicture(700);
  Start();
  Frame().Strip().Check(core::ToolWindow::MiniMap).setChecked(true);
  MiniMap().MaxFrm();
  MiniMapPicture other(program, nullptr);
  other.Reload();
  other.grab();
  EXPECT_EQ(other.Scalings(), 0);
  QCoreApplication::processEvents();
  other.grab();
  EXPECT_EQ(other.Scalings(), 1);
}

}  // namespace
}  // namespace kestrel::shell
