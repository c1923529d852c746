#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "map/label_places.h"
#include "map/plots.h"
#include "map/renderer.h"

namespace kestrel::map {

/// The labels of all aircraft, kept apart. One for each surface, since it remembers where they stood.
class LabelLayer {
 public:
  /// Symbols are drawn by then. The label of `scene.SelectedPlot` has its first place and lies on top.
  void Draw(const Scene& scene, Surface& surface);
  /// The labels of the last draw, players first.
  const std::vector<Label>& Labels() const { return places.Labels(); }
  /// The next draw places all anew.
  void Forget() { places.Forget(); }

 private:
  struct Line {
    std::string_view Text;
    double Width = 0;  ///< surface units
  };
  /// What a label says.
  struct Lines {
    LabelNumbers Numbers;
    std::array<Line, 5> All;
    std::size_t Count = 0;
    double Height = 0;  ///< of one line, surface units
  };

  void AddPlayers(const Scene& scene, Surface& surface);
  void AddAircraft(const Scene& scene, Surface& surface);
  /// Measures its lines and adds it, if any of it can be seen.
  void Add(const Scene& scene, Surface& surface, Lines& lines, Label label);
  /// The memory of the next label to be added.
  Lines& NextLines() { return texts[places.Labels().size()]; }
  void DrawLabel(Surface& surface, std::size_t index);
  void DrawLeader(Surface& surface, const Label& label, const Box& to);

  LabelPlaces places;
  std::vector<Lines> texts;  ///< one for each label, and more that are not in use
  TextFont font;
  std::string joined;
};

/// The lines of `scene.Apart`; nothing without it.
void DrawLabelsApart(const Scene& scene, Surface& surface);

}  // namespace kestrel::map
