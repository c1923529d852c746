#include <algorithm>
#include <cmath>
#include <span>

#include "base/files.h"
#include "base/program_title.h"
#include "falcon/colour_files.h"
#include "project_paths.h"
#include "theater_import_fixture.h"

namespace kestrel::core {
namespace {

using falcon::ColourChoice;
using falcon::ColourCriterion;
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

struct Lab {
  double L, A, B;
};
double Linear(unsigned part) {
  const double value = part / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}
Lab LabOf(double red, double green, double blue) {
  const auto root = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : t * 841 / 108 + 4.0 / 29; };
  const double x = root((0.4124564 * red + 0.3575761 * green + 0.1804375 * blue) / 0.95047);
  const double y = root(0.2126729 * red + 0.7151522 * green + 0.0721750 * blue);
  const double z = root((0.0193339 * red + 0.1191920 * green + 0.9503041 * blue) / 1.08883);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}
double Distance(const Lab& a, const Lab& b) { return std::hypot(a.L - b.L, a.A - b.A, a.B - b.B); }

/// How linear red, green and blue are seen: by most, and by those without one kind of cones (the matrices of Machado,
/// Oliveira and Fernandes, 2009, for what is wholly missing).
struct Eye {
  const char* Name;
  double Parts[9];
};
constexpr Eye Eyes[] = {
    {"usual", {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    {"no red", {0.152286, 1.052583, -0.204868, 0.114503, 0.786281, 0.099216, -0.003882, -0.048116, 1.051998}},
    {"no green", {0.367322, 0.860646, -0.227968, 0.280085, 0.672501, 0.047413, -0.011820, 0.042940, 0.968881}},
    {"no blue", {1.255528, -0.076749, -0.178779, -0.078411, 0.930809, 0.147602, 0.004733, 0.691367, 0.303900}},
};
Lab Seen(const Eye& eye, base::Colour colour) {
  const double parts[] = {Linear(base::RedOf(colour)), Linear(base::GreenOf(colour)), Linear(base::BlueOf(colour))};
  double seen[3];
  for (int n = 0; n < 3; ++n) {
    seen[n] = std::clamp(
        eye.Parts[3 * n] * parts[0] + eye.Parts[3 * n + 1] * parts[1] + eye.Parts[3 * n + 2] * parts[2], 0.0, 1.0);
  }
  return LabOf(seen[0], seen[1], seen[2]);
}

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
