#include "shell/parts/look_style.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStyleOptionMenuItem>
#include <cmath>
#include <vector>

#include "shell/parts/look.h"

namespace kestrel::shell {
namespace {

constexpr QRect Box(3, 3, 16, 16);

/// Relative luminance as the contrast rules of accessibility define it.
double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const double one = Luminance(a), other = Luminance(b);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

class Indicators : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    former = QApplication::palette();
    ApplyLook(*qApp, GetParam());
  }
  void TearDown() override { QApplication::setPalette(former); }

  static QImage Drawn(QStyle::PrimitiveElement element, QStyle::State state) {
    QStyleOptionButton option;
    option.palette = QApplication::palette();
    option.rect = Box;
    option.state = state;
    QImage image(22, 22, QImage::Format_RGB32);
    image.fill(option.palette.color(QPalette::Window));
    QPainter painter(&image);
    LookStyle().drawPrimitive(element, &option, &painter, nullptr);
    return image;
  }

  QPalette former;
};

TEST_P(Indicators, OutlineStandsOutFromTheWindow) {
  for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton}) {
    const QImage image = Drawn(element, QStyle::State_Enabled | QStyle::State_Off);
    const QColor outline = image.pixelColor(Box.left(), Box.center().y());
    EXPECT_GE(Contrast(outline, QApplication::palette().color(QPalette::Window)), 3) << element;
  }
}

TEST_P(Indicators, MarkStandsOutFromItsField) {
  const QImage off = Drawn(QStyle::PE_IndicatorRadioButton, QStyle::State_Enabled | QStyle::State_Off);
  const QImage on = Drawn(QStyle::PE_IndicatorRadioButton, QStyle::State_Enabled | QStyle::State_On);
  EXPECT_GE(Contrast(on.pixelColor(Box.center()), off.pixelColor(Box.center())), 3);
  EXPECT_NE(Drawn(QStyle::PE_IndicatorCheckBox, QStyle::State_Enabled | QStyle::State_Off),
            Drawn(QStyle::PE_IndicatorCheckBox, QStyle::State_Enabled | QStyle::State_On));
  EXPECT_NE(Drawn(QStyle::PE_IndicatorCheckBox, QStyle::State_Enabled | QStyle::State_NoChange),
            Drawn(QStyle::PE_IndicatorCheckBox, QStyle::State_Enabled | QStyle::State_On));
}

TEST_P(Indicators, FrameOfAGroupIsSeenOnEveryEdgeBelowItsHeading) {
  QGroupBox group(QStringLiteral("Map"));
  group.resize(200, 100);
  const QImage image = group.grab().toImage();
  const QColor window = group.palette().color(QPalette::Window);
  QStyleOptionGroupBox option;
  option.initFrom(&group);
  option.text = group.title();
  option.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
  const QRect heading = group.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, &group);
  // Where a line through the middle of the group meets the frame, right of the heading.
  const auto lines = [&](bool downward) {
    std::vector<int> met;
    for (int at = 0; at < (downward ? image.height() : image.width()); ++at) {
      const QColor colour = downward ? image.pixelColor(150, at) : image.pixelColor(at, 60);
      if (colour == window) continue;
      met.push_back(at);
      EXPECT_GE(Contrast(colour, window), 1.5) << at;
    }
    return met;
  };
  EXPECT_EQ(lines(false), (std::vector<int>{0, 199}));
  const std::vector<int> rows = lines(true);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_GT(rows[0], heading.bottom()) << "it runs through the heading";
  EXPECT_LT(rows[0], heading.bottom() + 10);
  EXPECT_EQ(rows[1], 99);
}

TEST_P(Indicators, DisabledWordsAreDrawnOnce) {
  // A second drawing of them, beside the first, would be in the palette's light tone.
  const auto drawn = [](const QColor& light) {
    QStyleOptionMenuItem option;
    option.palette = QApplication::palette();
    option.palette.setColor(QPalette::Light, light);
    option.rect = QRect(0, 0, 160, 24);
    option.state = QStyle::State_None;
    option.menuItemType = QStyleOptionMenuItem::Normal;
    option.text = QStringLiteral("Disconnect");
    option.font = QApplication::font();
    QImage image(160, 24, QImage::Format_RGB32);
    image.fill(option.palette.color(QPalette::Window));
    QPainter painter(&image);
    LookStyle().drawControl(QStyle::CE_MenuItem, &option, &painter, nullptr);
    LookStyle().drawItemText(&painter, QRect(0, 0, 160, 24), Qt::AlignRight, option.palette, false, option.text);
    return image;
  };
  const QImage image = drawn(Qt::red);
  EXPECT_EQ(image, drawn(Qt::blue));
  QImage empty(image.size(), image.format());
  empty.fill(QApplication::palette().color(QPalette::Window));
  EXPECT_NE(image, empty);
}

INSTANTIATE_TEST_SUITE_P(BothPalettes, Indicators, testing::Bool(),
                         [](const auto& palette) { return palette.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace kestrel::shell
