#pragma once

#include <QByteArray>
#include <cstddef>
#include <string>
#include <vector>

#include "areas/area_bounds.h"
#include "areas/area_file.h"
#include "theaters/theater.h"

// Areas as GeoJSON, for other programs of maps and from them. Positions are degrees, by the lower left corner of the
// theater.
namespace kestrel::shell {

/// The largest file that is read, bytes, and the most areas that are made of one.
inline constexpr std::size_t MaxGeoJsonBytes = std::size_t{32} << 20;
inline constexpr std::size_t MaxGeoJsonAreas = 100'000;

/// These groups (indexes from 1) with all their areas as a FeatureCollection, a Feature for each area: a region is a
/// MultiLineString, a flight plan a LineString with its altitudes in feet, all others a Point; what else is kept of an
/// area stands in its properties. One that does not lie on Earth has no geometry.
QByteArray WriteGeoJson(const areas::AreaCatalogue& catalogue, const std::vector<std::size_t>& groups,
                        theaters::Corner corner);

/// The groups of a file and the folders that they are in, each area with its box. What tells of no folder or group is
/// in ones called `name`; positions of other programs become icons, lines and outlines regions. RuntimeFailure when it
/// is no GeoJSON, when a position is none on Earth, and when it holds too much.
areas::AreaFile ReadGeoJson(const QByteArray& bytes, theaters::Corner corner, const std::string& name,
                            areas::TextMeasure& texts);

}  // namespace kestrel::shell
