#include "map/text_measure.h"

#include <gtest/gtest.h>

#include "doubles/recording_surface.h"

namespace kestrel::map {
namespace {

TEST(SurfaceTexts, ATextIsAsManyMapUnitsLargeAsItHasPixels) {
  test::RecordingSurface surface;
  surface.CharacterWidth = 90;  // 6 pixels
  surface.LineHeight = 195;     // 13
  SurfaceTexts texts(surface);
  const areas::TextExtent size = texts.Extent("FLOT", {});
  EXPECT_EQ(size.Width, 24);
  EXPECT_EQ(size.Height, 13);
}

TEST(SurfaceTexts, TheBoxOfATextIsItsSizeAndFiveUnitsAround) {
  test::RecordingSurface surface;
  SurfaceTexts texts(surface);
  areas::Area area{.Type = areas::AreaType::Text, .X = 100, .Y = 200, .Text = "FLOT"};
  areas::AreaBounds(area, texts);
  EXPECT_EQ(area.MinX, 95);
  EXPECT_EQ(area.MaxX, 100 + 24 + 5);
  EXPECT_EQ(area.MinY, 200 - 13 - 5);
  EXPECT_EQ(area.MaxY, 205);
}

class FontSurface : public test::RecordingSurface {
 public:
  TextSize Measure(std::string_view text, const TextFont& font) override {
    Name = font.Name;
    Font = font;
    return RecordingSurface::Measure(text, font);
  }
  std::string Name;
  TextFont Font;
};

TEST(SurfaceTexts, MeasuresInTheFontOfTheText) {
  FontSurface surface;
  SurfaceTexts texts(surface);
  texts.Extent("x", {.Name = "Courier", .Size = 20, .Bold = areas::On, .Strikethru = areas::On});
  EXPECT_EQ(surface.Name, "Courier");
  EXPECT_EQ(surface.Font.Size, 20);
  EXPECT_TRUE(surface.Font.Bold && surface.Font.Strike);
  EXPECT_FALSE(surface.Font.Italic || surface.Font.Under);
}

}  // namespace
}  // namespace kestrel::map
