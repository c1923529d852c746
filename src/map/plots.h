#pragma once

#include <cstddef>

#include "map/renderer.h"

// How aircraft look.
namespace kestrel::map {

void RepositAllPlots(const Scene& scene, Surface& surface);
void RepositPlot(const Scene& scene, Surface& surface, std::size_t index);
void DrawRealPlot(const Scene& scene, Surface& surface, std::size_t index);
/// Every AI plot, if AIVISIBLE.
void DrawAIPlots(const Scene& scene, Surface& surface);
/// `x`, `y`: map units, Y down, as in the record.
void DrawAIPlot(const Scene& scene, Surface& surface, std::size_t index, double x, double y);
void CalculateAndDrawPlotHistories(const Scene& scene, Surface& surface);

}  // namespace kestrel::map
