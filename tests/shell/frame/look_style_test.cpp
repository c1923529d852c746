#include "shell/frame/look_style.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <cmath>

#include "shell/frame/look.h"

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

INSTANTIATE_TEST_SUITE_P(BothPalettes, Indicators, testing::Bool(),
                         [](const auto& palette) { return palette.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace kestrel::shell
