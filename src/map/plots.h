#pragma once

#include <cstddef>

#include "map/renderer.h"

// How aircraft look.
namespace kestrel::map {

/// All that moves: real plots, AI plots if AIVISIBLE, AI trails.
void DrawMovingLayers(const Scene& scene, Surface& surface);

void RepositAllPlots(const Scene& scene, Surface& surface);
void RepositPlot(const Scene& scene, Surface& surface, std::size_t index);
void DrawRealPlot(const Scene& scene, Surface& surface, std::size_t index);
/// `x`, `y`: map units, Y down, as in the record.
void DrawAIPlot(const Scene& scene, Surface& surface, std::size_t index, double x, double y);
void CalculateAndDrawPlotHistories(const Scene& scene, Surface& surface);

}  // namespace kestrel::map
