#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "radio/frequencies.h"

// What the nodes of airfields and their navigation aids have besides what is tuned.
namespace kestrel::radio {

/// A part of the map, map units.
struct NavaidPlace {
  double MinX = 0, MinY = 0, MaxX = 0, MaxY = 0;
};

/// Where that is which a node of the second tree stands for: a TACAN, the runway end of an ILS, or the airfield with
/// all of these. Nothing for any other node, for a runway end without a name and for a place that is no number.
std::optional<NavaidPlace> PlaceOf(const Frequencies& tables, std::string_view key);

/// What is copied of a node: the value that it offers to tune, the frequency of an ILS, channel and band of a TACAN.
/// Empty for any other node and for an ILS that there is not.
std::string CopiedValue(const Frequencies& tables, std::string_view key);

}  // namespace kestrel::radio
