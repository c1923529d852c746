#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "map/renderer.h"

// How aircraft look.
namespace kestrel::map {

// Surface units.
inline constexpr double RealLabelGap = 210;  ///< from a player's plot to the right end of its labels
inline constexpr double AILabelGap = 285;    ///< half the block of 390, and 90
inline constexpr double AIBareBlock = 195;   ///< half the block, where no altitude is shown

/// Number texts that lines of a label are made of, in memory that is kept.
struct LabelNumbers {
  std::string Id, Altitude, Speed;
};
/// What is shown of the lines of a player's label.
struct PlayerLines {
  std::array<std::string_view, 5> All;
  std::size_t Count = 0;
};
/// Its lines point into `plot` and `numbers`.
PlayerLines LinesOf(const link::PlotRecord& plot, const LabelLines& shown, LabelNumbers& numbers);

/// The font of labels.
TextFont LabelTextFont(const LabelFont& font);
/// Whether a player has a symbol while REALVISIBLE: from his second position on, and not with either coordinate at 0.
bool IsPlotShown(const link::PlotRecord& plot);

void RepositAllPlots(const Scene& scene, Surface& surface);
void RepositPlot(const Scene& scene, Surface& surface, std::size_t index);
void DrawRealPlot(const Scene& scene, Surface& surface, std::size_t index);
/// Every AI plot, if AIVISIBLE.
void DrawAIPlots(const Scene& scene, Surface& surface);
/// `x`, `y`: map units, Y down, as in the record.
void DrawAIPlot(const Scene& scene, Surface& surface, std::size_t index, double x, double y);
void CalculateAndDrawPlotHistories(const Scene& scene, Surface& surface);

}  // namespace kestrel::map
