#include "sample-theater/painter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sample-theater/canvas.h"
#include "sample-theater/noise.h"

namespace kestrel::land {
namespace {

struct Band {
  double Feet;
  Rgb Colour;
};
constexpr std::array<Band, 8> LandBands = {{{0, FromBytes(222, 230, 207)},
                                            {500, FromBytes(217, 227, 198)},
                                            {1200, FromBytes(228, 230, 199)},
                                            {2200, FromBytes(236, 226, 194)},
                                            {3400, FromBytes(229, 211, 179)},
                                            {4800, FromBytes(216, 195, 168)},
                                            {6200, FromBytes(222, 210, 196)},
                                            {7400, FromBytes(246, 244, 241)}}};
constexpr std::array<Band, 5> SeaBands = {{{-2600, FromBytes(158, 190, 212)},
                                           {-1400, FromBytes(171, 202, 220)},
                                           {-600, FromBytes(186, 214, 228)},
                                           {-180, FromBytes(201, 224, 233)},
                                           {0, FromBytes(216, 233, 237)}}};
constexpr Rgb Beach = FromBytes(242, 234, 208);
constexpr Rgb CoastLine = FromBytes(126, 154, 172);
constexpr Rgb RiverBlue = FromBytes(139, 178, 205);
constexpr Rgb Forest = FromBytes(190, 209, 176);
constexpr Rgb RoadColour = FromBytes(176, 150, 130);
constexpr Rgb TownGround = FromBytes(201, 196, 194);
constexpr Rgb TownEdge = FromBytes(165, 160, 160);
constexpr Rgb TownStreet = FromBytes(228, 225, 222);

/// Depths at which a fine line is drawn, feet.
constexpr std::array<double, 3> DepthLines = {-180, -600, -1400};

template <std::size_t N>
Rgb FromBands(const std::array<Band, N>& bands, double feet) {
  if (feet <= bands.front().Feet) return bands.front().Colour;
  for (std::size_t k = 1; k < N; ++k) {
    if (feet >= bands[k].Feet) continue;
    const double part = (feet - bands[k - 1].Feet) / (bands[k].Feet - bands[k - 1].Feet);
    // Half steps, half slope: bands that can be told apart without hard edges.
    return Blend(bands[k - 1].Colour, bands[k].Colour, 0.45 * part + 0.55 * SmoothStep(0.3, 0.7, part));
  }
  return bands.back().Colour;
}

double HeightAt(const Terrain& terrain, int x, int y) {
  const int last = terrain.Height.Side() - 1;
  return terrain.Height.At(std::clamp(x, 0, last), std::clamp(y, 0, last));
}

/// Light on the slope at a pixel, about 0.75 to 1.15; 1 on level ground. The sun stands in the north-west.
double Light(const Terrain& terrain, int x, int y) {
  const auto land = [&](int px, int py) { return std::max(0.0, HeightAt(terrain, px, py)); };
  // Feet for a pixel of the full picture, raised so that hills show at this scale.
  const double raise = terrain.Height.Side() / 2048.0 / 330.0;
  const double east = (land(x + 1, y) - land(x - 1, y)) * raise;
  const double south = (land(x, y + 1) - land(x, y - 1)) * raise;
  const double lit = (1 + 0.75 * (east + south)) / std::sqrt(1 + east * east + south * south);
  return 1 + std::clamp(0.36 * (lit - 1), -0.24, 0.12);
}

Rgb SeaColour(const Terrain& terrain, int x, int y) {
  const double feet = HeightAt(terrain, x, y);
  Rgb colour = FromBands(SeaBands, feet);
  for (const double line : DepthLines) {
    const bool crossed =
        (feet < line) != (HeightAt(terrain, x + 1, y) < line) || (feet < line) != (HeightAt(terrain, x, y + 1) < line);
    if (crossed) colour = Blend(colour, CoastLine, 0.22);
  }
  return colour;
}

Rgb LandColour(const Terrain& terrain, int x, int y) {
  const double feet = HeightAt(terrain, x, y);
  const double side = terrain.Height.Side();
  const Place place = {(x + 0.5) / side, (y + 0.5) / side};
  Rgb colour = FromBands(LandBands, feet + 120 * Fractal(place.U * 60, place.V * 60, 2, 0.5, 701));
  const double wood = Fractal(place.U * 34, place.V * 34, 5, 0.6, 731) + 0.35 * Noise(place.U * 7, place.V * 7, 761);
  const double grows = SmoothStep(0.10, 0.22, wood) * (1 - SmoothStep(3000, 4600, feet)) * SmoothStep(60, 300, feet);
  colour = Blend(colour, Forest, 0.62 * grows);
  colour = Scale(colour, Light(terrain, x, y));
  // Sand only where the shore is flat, and not everywhere there.
  const double shore = 1 - SmoothStep(0.0010, 0.0026, terrain.Shore.At(x, y));
  return Blend(colour, Beach, shore * SmoothStep(-0.2, 0.1, Noise(place.U * 30, place.V * 30, 771)));
}

bool OnCoast(const Terrain& terrain, int x, int y) {
  if (HeightAt(terrain, x, y) < 0) return false;
  return HeightAt(terrain, x - 1, y) < 0 || HeightAt(terrain, x + 1, y) < 0 || HeightAt(terrain, x, y - 1) < 0 ||
         HeightAt(terrain, x, y + 1) < 0;
}

StrokeLayer RiverLayer(const Terrain& terrain) {
  StrokeLayer layer(terrain.Height.Side());
  for (const River& river : terrain.Rivers) {
    for (std::size_t k = 1; k < river.size(); ++k) {
      layer.Add({river[k - 1].X, river[k - 1].Y, river[k - 1].Width, river[k].X, river[k].Y, river[k].Width});
    }
  }
  return layer;
}

StrokeLayer RoadLayer(int side, const std::vector<Road>& roads) {
  StrokeLayer layer(side);
  for (const Road& road : roads) {
    for (std::size_t k = 1; k < road.size(); ++k) {
      layer.Add({road[k - 1].X, road[k - 1].Y, 1.1, road[k].X, road[k].Y, 1.1});
    }
  }
  return layer;
}

/// How far out of the middle of the town a pixel lies: 0 middle, 1 its ragged edge.
double OutOfTown(const Town& town, double x, double y) {
  const double dx = (x - town.X) / town.Radius;
  const double dy = (y - town.Y) / town.Radius;
  return std::sqrt(dx * dx + dy * dy) * (1 + 0.55 * Fractal(x / town.Radius * 1.3, y / town.Radius * 1.3, 3, 0.5, 801));
}

/// A net of streets 4 pixels apart that leans with the town.
bool OnStreet(const Town& town, int x, int y) {
  const auto seed = static_cast<std::uint32_t>(Hash(static_cast<int>(town.X), static_cast<int>(town.Y), 811) % 3);
  const int lean = static_cast<int>(seed) - 1;
  const int along = 4 * x + lean * y;
  const int across = 4 * y - lean * x;
  return ((along % 20) + 20) % 20 < 4 || ((across % 20) + 20) % 20 < 4;
}

void PaintTown(const Terrain& terrain, const Town& town, Raster<Rgb>& canvas) {
  const int reach = static_cast<int>(town.Radius * 2) + 1;
  for (int y = static_cast<int>(town.Y) - reach; y <= static_cast<int>(town.Y) + reach; ++y) {
    for (int x = static_cast<int>(town.X) - reach; x <= static_cast<int>(town.X) + reach; ++x) {
      if (!canvas.Holds(x, y) || terrain.Height.At(x, y) < 0) continue;
      const double out = OutOfTown(town, x + 0.5, y + 0.5);
      if (out > 1) continue;
      const Rgb inside = OnStreet(town, x, y) ? TownStreet : TownGround;
      const Rgb colour = out > 1 - 1.2 / town.Radius ? TownEdge : inside;
      canvas.At(x, y) = Blend(canvas.At(x, y), colour, 0.9);
    }
  }
}

Image ToBytes(const Raster<Rgb>& canvas) {
  Image image{canvas.Side(), {}};
  image.Bytes.reserve(canvas.Count() * 3);
  for (std::size_t k = 0; k < canvas.Count(); ++k) {
    for (const double part : {canvas[k].R, canvas[k].G, canvas[k].B}) {
      image.Bytes.push_back(static_cast<std::uint8_t>(Clamp01(part) * 255 + 0.5));
    }
  }
  return image;
}

}  // namespace

Image PaintMap(const Terrain& terrain, const std::vector<Town>& towns, const std::vector<Road>& roads) {
  const int side = terrain.Height.Side();
  const StrokeLayer rivers = RiverLayer(terrain);
  const StrokeLayer ways = RoadLayer(side, roads);
  Raster<Rgb> canvas(side);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      if (terrain.Height.At(x, y) < 0) {
        canvas.At(x, y) = SeaColour(terrain, x, y);
        continue;
      }
      Rgb colour = LandColour(terrain, x, y);
      if (OnCoast(terrain, x, y)) colour = Blend(colour, CoastLine, 0.75);
      colour = Blend(colour, RiverBlue, 0.95 * rivers.At(x, y));
      canvas.At(x, y) = Blend(colour, RoadColour, 0.75 * ways.At(x, y));
    }
  }
  for (const Town& town : towns) PaintTown(terrain, town, canvas);
  return ToBytes(canvas);
}

}  // namespace kestrel::land
