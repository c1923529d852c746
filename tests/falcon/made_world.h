#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// A small theater with all that stands in it, chosen by hand. Whole installations of each generation are made of it
// (made_installation.h), and what a reader, a window or the built program makes of them is worked out by hand from the
// numbers below.
namespace kestrel::made {

inline constexpr int Size = 64;  ///< map units on a side
inline constexpr double FeetPerUnit = 3279.98;
inline constexpr int BullseyeX = 40, BullseyeY = 22;  ///< cell
inline constexpr double Longitude = 34.5;             ///< of the lower left corner
inline constexpr double Latitude = -29.25;
inline const std::string TheaterName = "Made Straits";   ///< in the list of theaters
inline const std::string AddOnName = "Made Add-On 0.2";  ///< of the second theater, from 4.35 on
inline const std::string DataName = "korea";             ///< of the theater's files of names, as campaigns tell it

// ---- The ground: the land rises to the east by a foot a map unit and to the north by three.

/// The sea is the lower left corner.
constexpr bool IsSea(int x, int y) { return x < 12 && y < 20; }

/// Feet. A hill of 2500 with slopes of 1500 all around it, a hole below the sea.
constexpr int HeightAt(int x, int y) {
  if (IsSea(x, y)) return 0;
  if (x == 44 && y == 50) return 2500;
  if (x >= 43 && x <= 45 && y >= 49 && y <= 51) return 1500;
  if (x == 5 && y == 60) return -70;
  return 100 + x + 3 * y;
}

// ---- Models: x forward, y right, z down, feet.

struct Model {
  std::vector<std::array<float, 3>> Points;
  std::vector<std::vector<int>> Faces;  ///< numbers of points; what is on the ground has no floor
  std::array<float, 6> Box;             ///< least and most of x, then y, then z
};

/// Those with the numbers 1, 2 and 3; 0 is none.
inline const std::array<Model, 3> Models = {{
    // A box 100 feet long, 60 wide and 30 high.
    {{{-50, -30, 0},
      {50, -30, 0},
      {50, 30, 0},
      {-50, 30, 0},
      {-50, -30, -30},
      {50, -30, -30},
      {50, 30, -30},
      {-50, 30, -30}},
     {{4, 5, 6, 7}, {0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}},
     {-50, 50, -30, 30, -30, 0}},
    // A wedge 10 feet high, its right angle in the middle, 40 feet forward and 20 to the right.
    {{{0, 0, 0}, {40, 0, 0}, {0, 20, 0}, {0, 0, -10}, {40, 0, -10}, {0, 20, -10}},
     {{3, 4, 5}, {0, 1, 4, 3}, {1, 2, 5, 4}, {2, 0, 3, 5}},
     {0, 40, 0, 20, -10, 0}},
    // What is left of the box.
    {{{-50, -30, 0}, {50, -30, 0}, {50, 30, 0}, {-50, 30, 0}}, {{0, 1, 2, 3}}, {-50, 50, -30, 30, 0, 0}},
}};

// ---- Classes of buildings and of objectives. The class is the record of the class table.

struct Building {
  int Class;
  std::string Name;
  int Model;
  int Destroyed;  ///< model; 0 is none of its own
  bool Virtual;   ///< there is nothing to be seen
};

/// The first one is record 3 of the table of buildings, the last one record 1.
inline const std::array<Building, 3> Buildings = {
    {{20, "Hangar & Shed", 1, 3, false}, {21, "Wedge", 2, 0, false}, {22, "Light", 1, 0, true}}};
enum : int { Hangar, Wedge, Light, EmptySlot };

struct Feature {
  int Building;
  float East, North;  ///< feet from the objective
  int Heading;
};

struct Spot {
  float East, North;  ///< feet from the objective
};

/// A direction of take-off and landing.
struct RunwayEnd {
  int Runway;
  double Heading;  ///< files before 4.37 have whole degrees
  Spot Begin, FarEnd;
};

struct Kind {
  int Class;
  int Type;
  std::string Name;
  std::vector<Feature> Features{};
  std::vector<RunwayEnd> Ends{};  ///< those of one runway together
  int RadarFeature = 255;
};

/// The first one is record 1 of the table of objectives.
inline const std::array<Kind, 9> Kinds = {{
    // Two runways that are parallel but for half a degree, the northern one longer: 09L and 27R, 09R and 27L.
    {3,
     1,
     "Airbase Dual",
     {{Hangar, 500, 2000, 0}, {Hangar, 800, 2000, 90}, {Light, 0, 0, 0}, {Wedge, -600, 1500, 180}},
     {{0, 90.25, {-4000, 1000}, {4000, 1000}},
      {0, 270.25, {4000, 1000}, {-4000, 1000}},
      {1, 89.75, {-4000, -500}, {3000, -500}},
      {1, 269.75, {3000, -500}, {-4000, -500}}}},
    // 02 and 20.
    {4,
     1,
     "Airbase 02_20",
     {{Wedge, -2000, 1000, 0}, {Hangar, -2200, -500, 45}, {Hangar, -2200, -900, 45}},
     {{0, 19.75, {-1500, -3500}, {1200, 4000}}, {0, 199.75, {1200, 4000}, {-1500, -3500}}}},
    {7,
     8,
     "City",
     {{Hangar, 0, 0, 0}, {Hangar, 300, 0, 0}, {Hangar, 600, 0, 90}, {Hangar, 0, 300, 0}, {Hangar, -300, -300, 270}}},
    {8, 6, "Bridge", {{Hangar, 0, 0, 30}}},
    {9, 11, "Factory", {{Hangar, 0, 0, 0}, {Hangar, 0, 200, 0}, {Hangar, 250, -100, 90}}},
    {12, 20, "Power Plant", {{Wedge, 100, 100, 270}}},
    {13, 21, "Radar Site", {{Wedge, 0, 0, -90}}, {}, 0},
    {14, 31, "SAM Site", {{EmptySlot, 0, 0, 0}, {Wedge, 150, -250, 0}}},
    {15, 29, "Village"},
}};
enum : int { DualAirbase, SingleAirbase, City, Bridge, Factory, PowerPlant, RadarSite, SamSite, Village };

// ---- The campaign.

struct Country {
  std::string Name;
  int Side;
  bool Active;
};

/// Country 1 plays within country 2.
inline const std::array<Country, 8> Countries = {{{"XX", 0, false},
                                                  {"Azuria", 2, false},
                                                  {"Borealia", 2, true},
                                                  {"Cordova", 3, true},
                                                  {"Dunmark", 4, true},
                                                  {"Estoria", 5, true},
                                                  {"Fenland", 6, true},
                                                  {"Gorania", 7, false}}};

struct Objective {
  std::uint32_t Id;
  int CampId;
  int Kind;
  int X, Y;  ///< cell
  int Owner, FirstOwner;
  std::string Name;      ///< as it is shown in every generation; bytes of the code page
  std::uint32_t Parent;  ///< 0 is none; in files without own names the name is made of that of the parent
  std::vector<std::uint32_t> Links;
  std::vector<std::uint8_t> States;  ///< of its features: 2 damaged, 3 destroyed
};

inline const std::array<Objective, 9> Objectives = {{
    {501, 101, DualAirbase, 20, 12, 2, 2, "Anvil Airbase", 0, {503, 504}, {0, 3, 0, 0}},
    {502, 102, SingleAirbase, 50, 40, 6, 6, "Birch Airbase", 0, {505}, {0, 0, 2}},
    {503, 103, City, 30, 25, 2, 6, "Dorn", 0, {501, 504}, {0, 0, 0, 0, 2}},
    {504, 7, Bridge, 31, 24, 2, 6, "Dorn Bridge", 503, {501, 503}, {0}},
    {505, 2001, Factory, 48, 44, 6, 6, "Elmsted Works", 0, {502}, {0, 1, 0}},
    {506, 2002, PowerPlant, 60, 3, 3, 3, "Farrow Power", 0, {}, {0}},
    {507, 2003, RadarSite, 44, 50, 6, 6, "Gannet Radar", 0, {508}, {0}},
    {508, 2004, SamSite, 45, 48, 6, 6, "Heron SAM Site", 0, {507}, {0, 0}},
    {509, 2005, Village, 13, 62, 0, 0, "\xC9pine", 0, {}, {}},
}};

/// From 4.38 on bridges are turned and need not stand in the middle of their cell: this one is 500 feet east and 250
/// south of it.
inline constexpr double BridgeHeading = 41.5, BridgeEast = 500, BridgeNorth = -250;

/// What has happened to an objective in "Mission.tac".
struct Change {
  std::uint32_t Id;
  int Owner;
  std::vector<std::uint8_t> States;
};
inline const std::array<Change, 2> Changes = {{{502, 2, {3, 0, 0}}, {505, 6, {0, 0, 3}}}};

/// The stations' lines: of the two airbases, of the city, which has no runways, of nothing. Before 4.35 they end behind
/// the fourth frequency of the ILS.
inline const std::array<std::string, 4> Stations = {
    "101 042 X 18 140 1 250200 118700 11030 11050 11070 0 305500 275800 292900 0 128850 2527 2435 2481 18",
    "102 7 Y 32766 70 1 0 126200 0 11130 0 0 234950 275900 306700 0 135600 3286 3287 3285 -1",
    "103 118 X 3 35 1 333300 123450 0 0 0 0 0 0 0 0 0 1 2 3 4",
    "900 99 X 4 20 1 300000 130000 0 0 0 0 0 0 0 0 0 1 2 3 4"};

// ---- The pilots. Viper and Ghost have channels, Lost has none.

inline const std::string CurrentPilot = "Viper";
/// kHz: 226000, 227000 ... 245000 of Viper; Ghost's are 50000 higher.
constexpr int UhfOf(int preset) { return 225000 + 1000 * preset; }
/// kHz: of five digits the third, 59400; else 118025, 118050 ... 118500. Those of Ghost are the same.
constexpr int VhfOf(int preset) { return preset == 3 ? 59400 : 118000 + 25 * preset; }
inline const std::string F1 = "339750", F2 = "1234";

}  // namespace kestrel::made
