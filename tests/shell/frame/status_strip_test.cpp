#include "shell/frame/status_strip.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLayout>
#include <algorithm>

#include "shell/station_fixture.h"

namespace kestrel::shell {
namespace {

class StripOfTheFrame : public StationTest {
 protected:
  StatusStrip& Strip() { return Frame().Strip(); }
  bool ReadOutShown(const char* name) { return Strip().findChild<QLabel*>(QString::fromLatin1(name))->isVisible(); }
  /// What the last lamp wants, with or without its words.
  int WidthOfGuard() { return Strip().findChild<Lamp*>(QStringLiteral("StatPic_Guard"))->sizeHint().width(); }
  /// The least width of the strip at which its lamps keep their words: the place of the pointer fits beside them.
  int WidthWithWords() {
    StatusStrip& strip = Strip();
    int width = strip.minimumSizeHint().width();
    for (const Lamp* lamp : strip.findChildren<Lamp*>()) width += lamp->WordWidth();
    for (const char* name : {"lblLat", "lblLong"}) {
      width += strip.findChild<QLabel*>(QString::fromLatin1(name))->minimumWidth() + strip.layout()->spacing();
    }
    return width;
  }
};

TEST_F(StripOfTheFrame, NarrowFrameGivesUpReadOutsAndDrawsNoMap) {
  Start();
  const std::uint64_t draws = Picture().MapDraws();
  Strip().resize(WidthWithWords(), Strip().height());
  EXPECT_TRUE(ReadOutShown("lblLat") && ReadOutShown("lblLong"));
  EXPECT_FALSE(ReadOutShown("lblElevation") || ReadOutShown("lblZoom") || ReadOutShown("lblPosition"));
  EXPECT_EQ(Picture().MapDraws(), draws);
}

TEST_F(StripOfTheFrame, NarrowFrameGivesUpTheWordsOfTheLampsBeforeThePlaceOfThePointer) {
  Start();
  StatusStrip& strip = Strip();
  strip.resize(WidthWithWords(), strip.height());
  EXPECT_GT(WidthOfGuard(), 60) << "with its words";
  strip.resize(WidthWithWords() - 1, strip.height());
  EXPECT_LT(WidthOfGuard(), 20);
  EXPECT_TRUE(ReadOutShown("lblLat") && ReadOutShown("lblLong") && ReadOutShown("lblElevation"));
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
