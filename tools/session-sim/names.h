#pragma once

#include <array>
#include <string_view>

namespace kestrel::sim {

/// Names of the AI flights of the two sides, in the order in which they are used; the station's "FriendlyNames.ini"
/// lists the blue ones. At most 7 letters, so that two digits and a blank fit in a record.
inline constexpr std::array<std::string_view, 24> BlueFlights = {
    "Viper",  "Cowboy", "Hawk",   "Lobo",  "Panther", "Raven", "Sabre", "Wolf",   "Dagger", "Eagle", "Fury",  "Ghost",
    "Hornet", "Jester", "Knight", "Lance", "Mustang", "Nomad", "Otter", "Plasma", "Rider",  "Stone", "Tiger", "Uzi"};
inline constexpr std::array<std::string_view, 24> RedFlights = {
    "Bandit",  "Bogatyr", "Buran",   "Drakon", "Granit", "Grom",  "Kobra",   "Kondor",
    "Korshun", "Medved",  "Molniya", "Oryol",  "Perun",  "Rubin", "Rys",     "Sokol",
    "Strela",  "Taiga",   "Tundra",  "Ural",   "Vikhr",  "Voron", "Yastreb", "Zarya"};
inline constexpr std::array<std::string_view, 2> BlueTankers = {"Texaco", "Shell"};
inline constexpr std::array<std::string_view, 2> RedTankers = {"Midas", "Bashkir"};

/// Names of players, used in turn.
inline constexpr std::array<std::string_view, 24> Pilots = {
    "Ace",     "Badger",  "Bishop", "Blaze",   "Comet", "Dusty",  "Echo",    "Flint",
    "Hammer",  "Iceberg", "Juno",   "Kestrel", "Lucky", "Magpie", "Nitro",   "Oracle",
    "Pitbull", "Quill",   "Rook",   "Sparky",  "Tango", "Vandal", "Whisper", "Zulu"};
inline constexpr std::array<std::string_view, 4> BlueTypes = {"F-16C-52", "F-16C-40", "F-15C", "F/A-18C"};
inline constexpr std::array<std::string_view, 4> RedTypes = {"MiG-29S", "Su-27", "MiG-23ML", "Su-30"};

}  // namespace kestrel::sim
