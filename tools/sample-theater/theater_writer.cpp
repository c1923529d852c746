#include "sample-theater/theater_writer.h"

#include <fstream>
#include <stdexcept>

#include "sample-theater/airfields.h"
#include "sample-theater/facts.h"
#include "sample-theater/painter.h"
#include "sample-theater/png_writer.h"
#include "sample-theater/towns.h"

namespace kestrel::land {
namespace {

constexpr int PixelsPerUnit = PictureSide / TheaterSize;

/// Mean feet of the land in a map unit, at least 1; 0 when fewer than two of its pixels are land.
std::uint16_t UnitHeight(const Terrain& terrain, int left, int top) {
  double sum = 0;
  int land = 0;
  for (int y = top; y < top + PixelsPerUnit; ++y) {
    for (int x = left; x < left + PixelsPerUnit; ++x) {
      if (terrain.Height.At(x, y) < 0) continue;
      sum += terrain.Height.At(x, y);
      ++land;
    }
  }
  return land < 2 ? std::uint16_t{0} : static_cast<std::uint16_t>(sum / land + 0.5);
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace

std::string ElevationBytes(const Terrain& terrain) {
  const int units = terrain.Height.Side() / PixelsPerUnit;
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(units) * units * 2);
  for (int north = 0; north < units; ++north) {
    for (int east = 0; east < units; ++east) {
      const std::uint16_t feet = UnitHeight(terrain, east * PixelsPerUnit, (units - 1 - north) * PixelsPerUnit);
      bytes.push_back(static_cast<char>(feet & 0xff));
      bytes.push_back(static_cast<char>(feet >> 8));
    }
  }
  return bytes;
}

std::string TheaterFileText() {
  std::string text = "[MAP]\r\n";
  const auto key = [&](const char* name, std::string_view value) {
    text.append(name).append("=").append(value).append("\r\n");
  };
  key("NAME", TheaterName);
  key("DISPLNAME", TheaterDisplayName);
  key("PIC", std::string(TheaterName) + ".png");
  key("SIZE", std::to_string(TheaterSize));
  key("BULLSEYES", std::to_string(Bullseyes.size()));
  key("CURRENTBULL", "1");
  key("PICSIZE", std::to_string(PictureSide));
  key("COORDLAT", CornerLatitude);
  key("COORDLONG", CornerLongitude);
  for (std::size_t k = 0; k < Bullseyes.size(); ++k) {
    text.append("[BULLS").append(std::to_string(k + 1)).append("]\r\n");
    key("NAME", Bullseyes[k].Name);
    key("X", std::to_string(Bullseyes[k].X));
    key("Y", std::to_string(Bullseyes[k].Y));
  }
  return text;
}

void WriteMissingFrequencies(const std::filesystem::path& folder) {
  const std::filesystem::path path = folder / (std::string(TheaterName) + "_Frequencies.dat");
  if (!std::filesystem::exists(path)) WriteFile(path, FrequencyFileText());
}

void WriteTheater(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  const Terrain terrain = MakeTerrain(PictureSide);
  const std::vector<Town> towns = PlaceTowns(terrain);
  const std::string stem(TheaterName);
  WriteFile(folder / (stem + "_Elevation.dat"), ElevationBytes(terrain));
  WriteFile(folder / (stem + ".ini"), TheaterFileText());
  WriteMissingFrequencies(folder);
  // Last, since a build takes the picture as the sign that all is there.
  WriteFile(folder / (stem + ".png"), WritePng(PaintMap(terrain, towns, BuildRoads(terrain, towns))));
}

}  // namespace kestrel::land
