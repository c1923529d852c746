#include "shell/frame/status_strip.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLayout>
#include <algorithm>
#include <iterator>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class StripOfTheFrame : public StationTest {
 protected:
  StatusStrip& Strip() { return Frame().Strip(); }
  bool ReadOutShown(const char* name) { return Strip().findChild<QLabel*>(QString::fromLatin1(name))->isVisible(); }
  /// The last lamp wants so much room, with or without its words.
  int WidthOfGuard() { return Guard().sizeHint().width(); }
  const Lamp& Guard() { return *Strip().findChild<Lamp*>(QStringLiteral("StatPic_Guard")); }
  /// The least width of the strip in which all its parts but the words of the lamps and the read-outs from
  /// `firstWithout` on, in the order in which they are kept, have room.
  int WidthWithout(std::size_t firstWithout) {
    StatusStrip& strip = Strip();
    int width = strip.minimumSizeHint().width();
    for (std::size_t index = 0; index < firstWithout; ++index) {
      width += strip.findChild<QLabel*>(QString::fromLatin1(Kept[index]))->minimumWidth() + strip.layout()->spacing();
    }
    return width;
  }
  int WidthOfAll() {
    int width = WidthWithout(std::size(Kept));
    for (const Lamp* lamp : Strip().findChildren<Lamp*>()) width += lamp->WordWidth();
    return width;
  }

  /// Gives the frame the width at which its strip has this one.
  void ResizeTo(int width) {
    Frame().resize(Frame().width() - Strip().width() + width, Frame().height());
    ASSERT_TRUE(QTest::qWaitFor([&] { return Strip().width() == width; })) << Strip().width();
  }

  /// The read-outs, from what is missed most; the first two go together.
  static constexpr const char* Kept[] = {"lblLat", "lblLong", "lblElevation", "lblZoom", "lblPosition"};
};

TEST_F(StripOfTheFrame, NarrowFrameGivesUpTheWordsOfTheLampsBeforeAnyReadOut) {
  Start();
  for (const int missing : {0, 1}) {
    ResizeTo(WidthOfAll() - missing);
    EXPECT_EQ(WidthOfGuard() > Guard().WordWidth(), missing == 0) << "with its words";
    for (const char* name : Kept) EXPECT_TRUE(ReadOutShown(name)) << name << ' ' << missing;
  }
}

TEST_F(StripOfTheFrame, NarrowerFrameGivesUpReadOutsOneByOneAndNoneWhileThereIsRoom) {
  Start();
  for (const std::size_t kept : {5, 4, 3, 2, 0}) {
    for (const int wider : {0, 1}) {
      ResizeTo(WidthWithout(kept) + wider);
      EXPECT_LT(WidthOfGuard(), Guard().WordWidth());
      for (std::size_t index = 0; index < std::size(Kept); ++index) {
        EXPECT_EQ(ReadOutShown(Kept[index]), index < kept) << Kept[index] << " of " << kept;
      }
    }
  }
}

TEST_F(StripOfTheFrame, VeryNarrowFrameGivesUpTheWordsOfTheLampsAndNothingOverlaps) {
  Start();
  StatusStrip& strip = Strip();
  strip.resize(strip.minimumSizeHint().width(), strip.height());
  strip.layout()->activate();
  QWidgetList parts = strip.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  parts.removeIf([](const QWidget* part) { return !part->isVisible(); });
  std::sort(parts.begin(), parts.end(), [](const QWidget* a, const QWidget* b) { return a->x() < b->x(); });
  EXPECT_EQ(parts.size(), 8 + 6) << "buttons and lamps";
  int end = 0;
  for (const QWidget* part : parts) {
    EXPECT_GE(part->x(), end) << qPrintable(part->objectName());
    EXPECT_GE(part->width(), qMin(part->sizeHint().width(), part->maximumWidth())) << qPrintable(part->objectName());
    end = part->x() + part->width();
  }
  EXPECT_LE(end, strip.width());
}

}  // namespace
}  // namespace kestrel::shell
