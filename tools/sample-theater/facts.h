#pragma once

#include <array>
#include <string_view>

// What is told of the sample theater before it is drawn: shared by the maker of its files and by the session server
// that flies over it.
namespace kestrel::land {

/// Stem of all its files.
inline constexpr std::string_view TheaterName = "SampleStrait";
inline constexpr std::string_view TheaterDisplayName = "Sample Strait";
/// Extent of the map on both axes, map units.
inline constexpr int TheaterSize = 1024;
/// Side of the map picture, pixels.
inline constexpr int PictureSide = 2048;
/// Lower-left corner: open water of the North Atlantic, where no real coast gets in the way of an invented one.
/// Degrees.
inline constexpr std::string_view CornerLatitude = "41.25000000";
inline constexpr std::string_view CornerLongitude = "-24.50000000";

/// A reference point; map units, Y grows north.
struct SampleBullseye {
  std::string_view Name;
  int X;
  int Y;
};
/// The first one is current.
inline constexpr std::array<SampleBullseye, 3> Bullseyes = {
    {{"Narrows", 400, 676}, {"Western Range", 169, 621}, {"Far Harbour", 619, 405}}};

}  // namespace kestrel::land
