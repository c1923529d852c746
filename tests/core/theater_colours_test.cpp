#include <algorithm>
#include <cmath>
#include <span>

#include "base/files.h"
#include "base/program_title.h"
#include "falcon/colour_files.h"
#include "project_paths.h"
#include "seen_colours.h"
#include "theater_import_fixture.h"

namespace kestrel::core {
namespace {

using falcon::ColourChoice;
using falcon::ColourCriterion;
using test::Distance;
using test::Eye;
using test::Eyes;
using test::Seen;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TheaterColours : public TheaterImportTest {
 protected:
  /// Colour n is n, n, n of red, green and blue.
  static std::string Greys() {
    std::string bytes;
    for (int n = 0; n < 256; ++n) bytes += std::string(3, static_cast<char>(n));
    return bytes;
  }
  void ExpectBox(const std::string& title, const std::string& text) {
    ASSERT_THAT(around.Desk.Boxes, SizeIs(1));
    EXPECT_EQ(around.Desk.Boxes[0].Title, title.empty() ? base::ProgramTitle() : title);
    EXPECT_THAT(around.Desk.Boxes[0].Text, HasSubstr(text));
    around.Desk.Boxes.clear();
  }

  ColourChoice choice;
};

TEST_F(TheaterColours, TheGradientsFirstColourIsEntryOne) {
  folder.Write("gradient.act", Greys());
  AutoCalculate(around.All, choice, 255, 2550);
  EXPECT_EQ(choice.Criteria.front(), (ColourCriterion{0x000000, 10}));
  EXPECT_EQ(choice.Criteria.back(), (ColourCriterion{0xFEFEFE, 2550}));
  EXPECT_FALSE(choice.PaletteLoaded);
  EXPECT_EQ(choice.Sea, 16762913u);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(TheaterColours, TheGradientIsFoundInTheProgramFolderToo) {
  const ProgramFolder program;
  program.Write("gradient.act", Greys());
  station.ProgramPath = program.Path;
  AutoCalculate(around.All, choice, 1, 100);
  EXPECT_THAT(choice.Criteria, ElementsAre(ColourCriterion{0xFEFEFE, 100}));
}

TEST_F(TheaterColours, AMissingGradientIsToldAndTheListIsFilledWithWhatThereIs) {
  AutoCalculate(around.All, choice, 2, 100);
  ExpectBox("Error...", "The file gradient.act was not found in program folder. Please reinstall the progam.");
  EXPECT_THAT(choice.Criteria, ElementsAre(ColourCriterion{0, 50}, ColourCriterion{0, 100}));
}

TEST_F(TheaterColours, APaletteOfThePersonsHasTheSeaFirst) {
  folder.Write("mine.act", Greys());
  ASSERT_TRUE(LoadPalette(around.All, choice, folder.Path / "mine.act", false));
  EXPECT_EQ(choice.Sea, 0u);
  // No gradient is there or needed.
  AutoCalculate(around.All, choice, 255, 255);
  EXPECT_EQ(choice.Criteria.front(), (ColourCriterion{0x010101, 1}));
  EXPECT_EQ(choice.Criteria.back(), (ColourCriterion{0xFFFFFF, 255}));
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(TheaterColours, APalFileIsReadBehindItsHead) {
  std::string bytes(24, 'R');
  for (unsigned n = 0; n < 256; ++n) bytes += test::Bytes4(n << 16 | 0x0102);
  folder.Write("mine.pal", bytes);
  ASSERT_TRUE(LoadPalette(around.All, choice, folder.Path / "mine.pal", true));
  EXPECT_EQ(choice.Sea, 0x0102u);
  EXPECT_EQ(choice.Palette[255], 0xFF0102u);
}

TEST_F(TheaterColours, APaletteThatIsCutLeavesTheColoursThatItDoesNotReach) {
  folder.Write("mine.act", "\x01\x02\x03\x04");
  ASSERT_TRUE(LoadPalette(around.All, choice, folder.Path / "mine.act", false));
  EXPECT_EQ(choice.Sea, 0x030201u);
  folder.Write("mine.act", "");
  ASSERT_TRUE(LoadPalette(around.All, choice, folder.Path / "mine.act", false));
  EXPECT_EQ(choice.Sea, 0x030201u);
}

TEST_F(TheaterColours, APaletteThatCannotBeReadIsTold) {
  EXPECT_FALSE(LoadPalette(around.All, choice, folder.Path / "none.act", false));
  ExpectBox("", "The palette cannot be read from \"none.act\": ");
  EXPECT_FALSE(LoadPalette(around.All, choice, folder.Path / "Theaters", true));
  ExpectBox("", "The palette cannot be read from \"Theaters\": ");
  EXPECT_FALSE(choice.PaletteLoaded);
}

TEST_F(TheaterColours, CriteriaGoOutAndComeBack) {
  choice.Sea = 0x112233;
  choice.Criteria = {{1, -5}, {2, 10}};
  ASSERT_TRUE(ExportCriteria(around.All, choice, folder.Path / "mine.cxp"));
  EXPECT_EQ(folder.Read("mine.cxp").size(), 60u);
  ColourChoice other;
  ASSERT_TRUE(ImportCriteria(around.All, other, folder.Path / "mine.cxp"));
  EXPECT_EQ(other.Sea, 0x112233u);
  EXPECT_EQ(other.Criteria, choice.Criteria);
  EXPECT_THAT(around.Desk.Boxes, IsEmpty());
}

TEST_F(TheaterColours, AnyOtherFileIsInvalid) {
  choice.Criteria = {{1, -5}};
  folder.Write("mine.cxp", "Color Export File (KESTREL) v1          " + std::string(8, '\0'));
  EXPECT_FALSE(ImportCriteria(around.All, choice, folder.Path / "mine.cxp"));
  ExpectBox("", "Invalid file...");
  EXPECT_EQ(choice.Criteria.size(), 1u);
  EXPECT_FALSE(ImportCriteria(around.All, choice, folder.Path / "none.cxp"));
  ExpectBox("", "The criteria cannot be read from \"none.cxp\": ");
  EXPECT_FALSE(ExportCriteria(around.All, choice, folder.Path / "no/such/folder.cxp"));
  ExpectBox("", "The criteria cannot be written to \"folder.cxp\": ");
}

// The gradient that ships.

class ShippedGradient : public TheaterColours {
 protected:
  ShippedGradient() {
    bytes = test::ReadBytes(std::filesystem::path(KESTREL_SOURCE_DIR) / "data" / "gradient.act");
    folder.Write("gradient.act", bytes);
  }
  std::string bytes;
};

TEST_F(ShippedGradient, EachColourIsLighterThanTheOneBefore) {
  ASSERT_EQ(bytes.size(), 768u);
  falcon::ColourPalette palette{};
  falcon::TakeActColours(bytes, palette);
  for (const Eye& eye : Eyes) {
    double last = 0;
    for (std::size_t n = 0; n < 256; ++n) {
      const double lightness = Seen(eye, palette[n]).L;
      // Its own steps rise exactly; seen by others they are rounded to other places.
      const double slack = &eye == &Eyes[0] ? 0 : 0.5;
      EXPECT_GT(lightness + slack, last) << eye.Name << " at " << n;
      last = lightness;
    }
  }
  EXPECT_LT(Seen(Eyes[0], palette[0]).L, 35);
  EXPECT_GT(Seen(Eyes[0], palette[255]).L, 97);
}

TEST_F(ShippedGradient, AFewBandsAndTheSeaAreToldApartByEveryEye) {
  for (const int count : {2, 4, 6, 8}) {
    AutoCalculate(around.All, choice, count, 8000);
    std::vector<base::Colour> colours = {choice.Sea};
    for (const ColourCriterion& criterion : choice.Criteria) colours.push_back(criterion.Colour);
    for (const Eye& eye : Eyes) {
      for (std::size_t a = 0; a < colours.size(); ++a) {
        for (std::size_t b = 0; b < a; ++b) {
          // 2.3 is just seen beside each other.
          EXPECT_GT(Distance(Seen(eye, colours[a]), Seen(eye, colours[b])), 7)
              << eye.Name << ": " << a << " and " << b << " of " << count;
        }
      }
    }
  }
}

}  // namespace
}  // namespace kestrel::core
