#include "falcon/colour_bands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace kestrel::falcon {
namespace {

constexpr double FeetOfUnit = 3279.98;
/// How much of a colour the darkest shade loses, and of the way to white the lightest one goes.
constexpr double Darkest = 0.5, Lightest = 0.4;
/// Rows between two words of progress.
constexpr std::int32_t RowsAtOnce = 32;

using BandTable = std::array<std::uint8_t, 65536>;

std::size_t PlaceOf(std::int16_t height) { return static_cast<std::uint16_t>(height); }

/// The band of each height, 0 for the first.
BandTable TableOf(const std::vector<ColourCriterion>& bands) {
  BandTable table;
  std::size_t band = 0;
  for (int height = std::numeric_limits<std::int16_t>::min(); height <= std::numeric_limits<std::int16_t>::max();
       ++height) {
    while (band + 1 < bands.size() && height > bands[band].Height) ++band;
    table[PlaceOf(static_cast<std::int16_t>(height))] = static_cast<std::uint8_t>(band);
  }
  return table;
}

base::Colour Mixed(base::Colour colour, base::Colour with, double share) {
  const auto part = [&](std::uint8_t a, std::uint8_t b) {
    return static_cast<base::Colour>(std::lround(a + (b - a) * share));
  };
  return part(base::RedOf(colour), base::RedOf(with)) | part(base::GreenOf(colour), base::GreenOf(with)) << 8 |
         part(base::BlueOf(colour), base::BlueOf(with)) << 16;
}

/// The shades of the bands in the palette: each group of bands has as many, the middle one being the colour itself.
class Shades {
 public:
  explicit Shades(const std::vector<ColourCriterion>& all)
      : bands(all), groups(std::min(all.size(), MostShadedBands)), count(std::min(MostShades, 255 / groups)) {
    if (count % 2 == 0) --count;
  }

  /// The entry of the palette that a band has where the ground is flat.
  std::uint8_t Flat(std::size_t band) const {
    return static_cast<std::uint8_t>(1 + band * groups / bands.size() * count + Half());
  }
  int Half() const { return static_cast<int>(count / 2); }

  void AppendTo(std::vector<base::Colour>& palette) const {
    for (std::size_t group = 0; group < groups; ++group) {
      // The first band of the group is the first one that Flat tells of it.
      const std::size_t first = (group * bands.size() + groups - 1) / groups;
      const std::size_t next = ((group + 1) * bands.size() + groups - 1) / groups;
      const base::Colour colour = bands[(first + next - 1) / 2].Colour & 0xFFFFFF;
      for (int shade = -Half(); shade <= Half(); ++shade) {
        const double share = static_cast<double>(std::abs(shade)) / Half();
        palette.push_back(shade < 0 ? Mixed(colour, 0, share * Darkest) : Mixed(colour, 0xFFFFFF, share * Lightest));
      }
    }
  }

 private:
  const std::vector<ColourCriterion>& bands;
  std::size_t groups;
  std::size_t count;
};

/// How much lighter than flat ground each place of a row is, in shades. Beyond an edge the ground is flat.
class RowLight {
 public:
  RowLight(const Terrain& ground, int half)
      : terrain(ground), shades(half / (LightestSlope * 2 * std::numbers::sqrt2 * FeetOfUnit)), most(half) {}

  int At(std::int32_t x, std::int32_t y) const {
    const std::int32_t end = terrain.Size - 1;
    const auto height = [this](std::int32_t column, std::int32_t row) {
      return static_cast<int>(terrain.Heights[terrain.IndexOf(column, row)]);
    };
    const int east = height(std::min(x + 1, end), y) - height(std::max(x - 1, 0), y);
    const int north = height(x, std::min(y + 1, end)) - height(x, std::max(y - 1, 0));
    // Two map units lie between the heights. What rises to the south-east looks to the north-west.
    const auto shade = static_cast<int>(std::lround((east - north) * shades));
    return std::clamp(shade, -most, most);
  }

 private:
  const Terrain& terrain;
  double shades;
  int most;
};

/// Paints all rows; `entry` gives the entry of the palette of a place that is land.
template <class Entry>
void PaintRows(const Terrain& terrain, GroundPicture& picture, const Progress& progress, const Entry& entry) {
  const auto width = static_cast<std::size_t>(terrain.Size);
  for (std::int32_t y = 0; y < terrain.Size; ++y) {
    const std::size_t begin = terrain.IndexOf(0, y);
    const std::int16_t* const heights = terrain.Heights.data() + begin;
    const std::uint8_t* const sea = terrain.Sea.data() + begin;
    std::uint8_t* const cells = picture.Cells.data() + begin;
    for (std::size_t x = 0; x < width; ++x) {
      cells[x] = sea[x] != 0 ? std::uint8_t{0} : entry(static_cast<std::int32_t>(x), y, heights[x]);
    }
    const bool last = y + 1 == terrain.Size;
    if (progress && (last || (y + 1) % RowsAtOnce == 0)) {
      progress(static_cast<std::uint64_t>(y) + 1, static_cast<std::uint64_t>(terrain.Size));
    }
  }
}

}  // namespace

ColourScheme SchemeOf(const TwoColours& colours) { return {colours.Sea, {{colours.Land, 0}}}; }

GroundPicture PaintGround(const Terrain& terrain, const ColourScheme& scheme, const Progress& progress) {
  GroundPicture picture{terrain.Size, std::vector<std::uint8_t>(terrain.Heights.size()), {scheme.Sea & 0xFFFFFF}};
  BandTable table = TableOf(scheme.Bands);
  if (scheme.Shaded) {
    const Shades shades(scheme.Bands);
    shades.AppendTo(picture.Palette);
    for (std::uint8_t& entry : table) entry = shades.Flat(entry);
    const RowLight light(terrain, shades.Half());
    PaintRows(terrain, picture, progress, [&](std::int32_t x, std::int32_t y, std::int16_t height) {
      return static_cast<std::uint8_t>(table[PlaceOf(height)] + light.At(x, y));
    });
  } else {
    for (const ColourCriterion& band : scheme.Bands) picture.Palette.push_back(band.Colour & 0xFFFFFF);
    for (std::uint8_t& entry : table) ++entry;
    PaintRows(terrain, picture, progress,
              [&](std::int32_t, std::int32_t, std::int16_t height) { return table[PlaceOf(height)]; });
  }
  return picture;
}

}  // namespace kestrel::falcon
