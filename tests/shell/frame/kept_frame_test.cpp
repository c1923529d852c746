#include "shell/frame/kept_frame.h"

#include <QScreen>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class KeptFrames : public StationTest {
 protected:
  void StartWith(const QByteArray& extras) {
    Write("KESTREL.ini", "[MAPS]\r\nTOTALMAPS=1\r\nMAP1=one.ini\r\nCURRENTMAP=1\r\n[KESTREL]\r\n" + extras);
    Start();
  }
};

TEST_F(KeptFrames, AsTheStationShipsNothingIsKept) {
  Start();
  Frame().setGeometry(40, 50, 500, 400);
  QCoreApplication::processEvents();
  Frame().close();
  EXPECT_FALSE(Read("KESTREL.ini").contains("[KESTREL]"));
}

TEST_F(KeptFrames, PlaceAndSizeAreTakenAndKept) {
  StartWith("KEEPFRAME=1\r\nFRAMELEFT=450\r\nFRAMETOP=600\r\nFRAMEWIDTH=9000\r\nFRAMEHEIGHT=7500\r\n");
  EXPECT_EQ(Frame().geometry(), QRect(30, 40, 600, 500));
  EXPECT_FALSE(Frame().isMaximized());
  Frame().setGeometry(45, 55, 610, 510);
  QCoreApplication::processEvents();
  Frame().close();
  const QByteArray saved = Read("KESTREL.ini");
  EXPECT_TRUE(
      saved.contains("[KESTREL]\r\nKEEPFRAME=1\r\nFRAMELEFT=675\r\nFRAMETOP=825\r\nFRAMEWIDTH=9150\r\n"
                     "FRAMEHEIGHT=7650\r\n"))
      << saved.constData();
  EXPECT_TRUE(saved.contains("\r\nLASTTHEATER=one.ini\r\n")) << saved.constData();
}

TEST_F(KeptFrames, AMaximisedFrameComesBackSoAndKeepsWhatItIsOtherwise) {
  StartWith("KEEPFRAME=1\r\nFRAMELEFT=450\r\nFRAMETOP=600\r\nFRAMEWIDTH=9000\r\nFRAMEHEIGHT=7500\r\nFRAMEMAX=1\r\n");
  EXPECT_TRUE(Frame().isMaximized());
  EXPECT_GT(Frame().width(), 600);
  Frame().close();
  const QByteArray saved = Read("KESTREL.ini");
  EXPECT_TRUE(saved.contains("FRAMELEFT=450\r\nFRAMETOP=600\r\nFRAMEWIDTH=9000\r\nFRAMEHEIGHT=7500\r\nFRAMEMAX=1\r\n"))
      << saved.constData();
}

TEST_F(KeptFrames, APlaceThatNoScreenShowsAndASizeThatNoneHoldsAreBroughtBack) {
  StartWith(
      "KEEPFRAME=1\r\nFRAMELEFT=2000000000\r\nFRAMETOP=-2000000000\r\nFRAMEWIDTH=2000000000\r\n"
      "FRAMEHEIGHT=2000000000\r\n");
  // But for the edge that the platform draws around it.
  EXPECT_TRUE(Frame().screen()->availableGeometry().adjusted(-8, -8, 8, 8).contains(Frame().geometry()));
}

}  // namespace
}  // namespace kestrel::shell
